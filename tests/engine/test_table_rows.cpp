#include "engine_fixture.h"

using engine::Recordset;

// An updatable record set on a whole table reads the table's rows in place; any other statement
// over the same rows copies them. Both must answer every question alike.
namespace {

// The same rows as the table, through a statement that is copied.
QString copiedStatement(const QString& table) {
    return QStringLiteral("SELECT * FROM %1 WHERE True").arg(table);
}

// The rows as text, read one by one. Reading them all at once, as a report does, must give the
// same values in the same order.
QStringList allRows(Recordset& rows) {
    QVector<QVariant> oneByOne;
    QStringList out;
    for (int i = 0; i < rows.recordCount(); ++i) {
        QStringList cells;
        for (const QVariant& value : rows.rowAt(i)) {
            cells << (value.isNull() ? QStringLiteral("<null>") : value.toString());
            oneByOne << value;
        }
        out << cells.join(QLatin1Char('|'));
    }
    EXPECT_EQ(rows.allRows(), oneByOne);
    return out;
}

QStringList fieldsOf(const Recordset& rows) {
    QStringList out;
    for (int i = 0; i < rows.fieldCount(); ++i) {
        const engine::FieldInfo& field = rows.field(i);
        out << field.name + QLatin1Char(':') + QString::number(int(field.type)) + QLatin1Char(':') +
                   field.originTable;
    }
    return out;
}

// Where a run of finds leaves the cursor: the position after each step, -2 for a miss.
QList<int> findTrail(Recordset& rows, const QString& criterion) {
    QList<int> trail;
    auto step = [&](const std::function<void()>& find) {
        find();
        trail << (rows.noMatch() ? -2 : rows.absolutePosition());
    };
    step([&] { rows.findFirst(criterion); });
    step([&] { rows.findNext(criterion); });
    step([&] { rows.findLast(criterion); });
    step([&] { rows.findPrevious(criterion); });
    return trail;
}

}  // namespace

class TableRows : public EngineFixture {
  protected:
    void SetUp() override {
        EngineFixture::SetUp();
        // Gaps in the row ids, as deletes leave them.
        testsupport::execRaw(path, R"sql(
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, Length, Live)
            VALUES (2, 2, 'Waterloo', 168, 0), (2, 3, 'help!', NULL, -1), (1, 3, 'Girl', 150, 0);
            DELETE FROM CompilationTrack WHERE Track_Title = 'SOS';
        )sql");
    }
};

TEST_F(TableRows, ReadInPlaceAnswersLikeTheCopy) {
    for (const QString& table :
         {QStringLiteral("Compilation"), QStringLiteral("CompilationTrack")}) {
        SCOPED_TRACE(table.toStdString());
        Recordset direct = db.openRecordset(table);
        Recordset copied = db.openRecordset(copiedStatement(table));
        EXPECT_EQ(fieldsOf(direct), fieldsOf(copied));
        ASSERT_EQ(direct.recordCount(), copied.recordCount());
        EXPECT_GT(direct.recordCount(), 3);
        EXPECT_EQ(allRows(direct), allRows(copied));
        for (int i = 0; i < direct.fieldCount(); ++i) {
            const QString name = direct.field(i).name;
            direct.setSort(name + QStringLiteral(" DESC"));
            copied.setSort(name + QStringLiteral(" DESC"));
            Recordset sortedDirect = direct.openRecordset();
            Recordset sortedCopy = copied.openRecordset();
            EXPECT_EQ(allRows(sortedDirect), allRows(sortedCopy)) << name.toStdString();
        }
    }
}

TEST_F(TableRows, FindsPositionsAndBookmarksAgree) {
    Recordset direct = db.openRecordset("CompilationTrack");
    Recordset copied = db.openRecordset(copiedStatement("CompilationTrack"));
    for (const QString& criterion :
         {QStringLiteral("Track_Title LIKE 'help*'"), QStringLiteral("Length Is Null"),
          QStringLiteral("CompilationTrack.Length > 150"), QStringLiteral("TrackNo = 9")}) {
        EXPECT_EQ(findTrail(direct, criterion), findTrail(copied, criterion))
            << criterion.toStdString();
    }
    direct.setAbsolutePosition(3);
    const engine::Bookmark mark = direct.bookmark();
    Recordset twin = direct.clone();
    direct.moveFirst();
    twin.setBookmark(mark);
    EXPECT_EQ(twin.absolutePosition(), 3);
    EXPECT_EQ(twin.value("Track_Title").toString(), "help!");
}

TEST_F(TableRows, ASnapshotKeepsItsOwnCopy) {
    Recordset snapshot = db.openRecordset("Compilation", engine::RecordsetType::Snapshot);
    db.execute("UPDATE Compilation SET Name = 'Changed' WHERE CompilationID_P = 1");
    snapshot.findFirst("CompilationID_P = 1");
    EXPECT_EQ(snapshot.value("Name").toString(), "Beatles Best");
    EXPECT_EQ(errorNumber([&] { snapshot.edit(); }), engine::jet::kReadOnly);
}
