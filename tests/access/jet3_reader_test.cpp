// Access 97 (Jet 3) files, whose text is in a Windows code page, read through the program.
#if __has_include("jet4/jet4.h")

#include <gtest/gtest.h>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QScopeGuard>

#include "access/access_reader.h"
#include "jet4/jet4.h"
#include "support/paths.h"
#include "support/sqlite_rows.h"
#include "support/temp_dir.h"

using namespace accessfile;
using jet4::Format;
using jet4::Type;

namespace {

const QString kProgram = testsupport::programPath("mixorama-mdbread");
const QString kWestern = QStringLiteral("äöüß éèñ € “Zitat” it's – Ærø ½ ™ Œuvre");

QByteArray digest(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

// Text that changes along its length, so misplaced parts of a long value show.
QString numberedText(int characters) {
    QString text;
    for (int i = 0; text.size() < characters; ++i)
        text += QStringLiteral("%1 Größe „€“|").arg(i);
    return text.left(characters);
}

jet4::Table jet3Table(const QString& name, std::vector<jet4::Column> columns) {
    return jet4::Table(name, std::move(columns), Format::Jet3);
}

jet4::Table allTypes() {
    jet4::Table table =
        jet3Table(QStringLiteral("Künstler"), {{QStringLiteral("Flag"), Type::Boolean},
                                               {QStringLiteral("Small"), Type::Byte},
                                               {QStringLiteral("Int"), Type::Integer},
                                               {QStringLiteral("Big"), Type::Long},
                                               {QStringLiteral("Money"), Type::Currency},
                                               {QStringLiteral("Float"), Type::Single},
                                               {QStringLiteral("Real"), Type::Double},
                                               {QStringLiteral("When"), Type::DateTime},
                                               {QStringLiteral("Name"), Type::Text, 50},
                                               {QStringLiteral("Notiz"), Type::Memo},
                                               {QStringLiteral("Blob"), Type::Ole},
                                               {QStringLiteral("Größe"), Type::Text}});
    table.addRow({true, 255, -32768, 2147483647, 1234.5678, 1.1, 3.141592653589793,
                  QDateTime(QDate(1987, 5, 1), QTime(13, 45, 30)), QStringLiteral("Die Ärzte"),
                  kWestern, QByteArray("\x00\x01\xff", 3), QStringLiteral("Motörhead")});
    table.addRow({false, 0, 32767, -2147483647 - 1, -0.0001, -2.25e10, 1e-300, QDate(1899, 12, 30),
                  QStringLiteral("Señor “Ñ”"), numberedText(5000), QByteArray(9000, 'o'),
                  numberedText(255)});
    table.addRow(QVariantList(12));
    table.addRow({true,
                  1,
                  0,
                  0,
                  0,
                  0,
                  0,
                  QDateTime(QDate(1800, 1, 1), QTime(6, 0)),
                  QString(""),
                  QString(""),
                  {},
                  numberedText(254)});
    return table;
}

class Jet3Copy : public ::testing::Test {
  protected:
    QList<QVariantList> copy(const std::vector<jet4::Table>& tables, const QString& query) {
        jet4::writeDatabase(album, tables, Format::Jet3);
        QStringList names;
        for (const jet4::Table& t : tables)
            names << t.name();
        reader.copyTables(album, names, out);
        return sqliteRows(out, query);
    }

    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album97.mdb"));
    const QString out = dir.file(QStringLiteral("out.sqlite"));
    AccessTableReader reader{kProgram};
};

}  // namespace

TEST_F(Jet3Copy, KeepsEveryValueAndTurnsTheCodePageIntoUnicode) {
    jet4::writeDatabase(album, {allTypes()}, Format::Jet3);
    const QByteArray before = digest(album);
    reader.copyTables(album, {QStringLiteral("Künstler")}, out);
    EXPECT_EQ(digest(album), before);

    const QList<QVariantList> rows = sqliteRows(out, QStringLiteral("SELECT * FROM Künstler"));
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0],
              (QVariantList{-1, 255, -32768, 2147483647, 1234.5678, 1.1, 3.141592653589793,
                            QStringLiteral("1987-05-01 13:45:30"), QStringLiteral("Die Ärzte"),
                            kWestern, QByteArray("\x00\x01\xff", 3), QStringLiteral("Motörhead")}));
    EXPECT_EQ(rows[1],
              (QVariantList{0, 0, 32767, -2147483647LL - 1, -0.0001, -2.25e10, 1e-300,
                            QStringLiteral("1899-12-30"), QStringLiteral("Señor “Ñ”"),
                            numberedText(5000), QByteArray(9000, 'o'), numberedText(255)}));
    EXPECT_EQ(rows[2], (QVariantList{0, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}}));
    EXPECT_EQ(rows[3], (QVariantList{-1,
                                     1,
                                     0,
                                     0,
                                     0.0,
                                     0.0,
                                     0.0,
                                     QStringLiteral("1800-01-01 06:00:00"),
                                     QString(""),
                                     QString(""),
                                     {},
                                     numberedText(254)}));
    const QList<QVariantList> columns =
        sqliteRows(out, QStringLiteral("SELECT name, type FROM pragma_table_info('Künstler') "
                                       "WHERE name IN ('Name', 'Größe') ORDER BY cid"));
    EXPECT_EQ(columns,
              (QList<QVariantList>{{QStringLiteral("Name"), QStringLiteral("TEXT(50)")},
                                   {QStringLiteral("Größe"), QStringLiteral("TEXT(255)")}}));
}

TEST_F(Jet3Copy, CopiesManyPagesOfRows) {
    jet4::Table tracks =
        jet3Table(QStringLiteral("Track"), {{QStringLiteral("TrackID"), Type::Long},
                                            {QStringLiteral("Title"), Type::Text, 100},
                                            {QStringLiteral("Live"), Type::Boolean}});
    for (int id = 1; id <= 20000; ++id)
        tracks.addRow({id, QStringLiteral("Titel Nummer %1 – Überlänge €").arg(id), id % 3 == 0});
    const QList<QVariantList> summary = copy(
        {tracks}, QStringLiteral("SELECT count(*), sum(TrackID), max(Title), sum(Live), "
                                 "(SELECT Title FROM Track WHERE TrackID = 12345) FROM Track"));
    EXPECT_EQ(summary,
              (QList<QVariantList>{{20000, 20000 * 20001 / 2,
                                    QStringLiteral("Titel Nummer 9999 – Überlänge €"), -6666,
                                    QStringLiteral("Titel Nummer 12345 – Überlänge €")}}));
}

TEST_F(Jet3Copy, ReadsTheCodePageTheUserNames) {
    jet4::Table names = jet3Table(QStringLiteral("Artist"), {{QStringLiteral("Name"), Type::Text}});
    names.addRow({QStringLiteral("Ìóìèé Òðîëëü")});  // the bytes of Cyrillic text in code page 1251
    qputenv("MDB_JET3_CHARSET", "CP1251");
    const auto restore = qScopeGuard([] { qunsetenv("MDB_JET3_CHARSET"); });
    EXPECT_EQ(copy({names}, QStringLiteral("SELECT Name FROM Artist")),
              (QList<QVariantList>{{QStringLiteral("Мумий Тролль")}}));
}

TEST(Jet3File, IsRecognisedAndListsItsTables) {
    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album97.mdb"));
    jet4::writeDatabase(
        album,
        {jet3Table(QStringLiteral("Album"), {{QStringLiteral("Title"), Type::Text}}),
         jet3Table(QStringLiteral("Künstler"), {{QStringLiteral("Name"), Type::Text}})},
        Format::Jet3);
    AccessTableReader reader(kProgram);
    EXPECT_TRUE(reader.canRead(album));
    EXPECT_EQ(reader.tableNames(album),
              (QStringList{QStringLiteral("Album"), QStringLiteral("Künstler")}));
}

#endif
