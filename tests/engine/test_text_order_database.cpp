#include <sqlite3.h>

#include <QHash>
#include <string>
#include <vector>

#include "engine/text_collation_layout.h"
#include "engine_fixture.h"
#include "support/samples.h"
#include "text_samples.h"

namespace {

using testsupport::sqlText;

// The fixture's database without its compilations.
class TextOrderDatabase : public EngineFixture {
  protected:
    void SetUp() override {
        EngineFixture::SetUp();
        db.execute("DELETE FROM Compilation");
    }

    void add(const QString& name, const QString& box = QStringLiteral("Box")) {
        db.execute(
            QStringLiteral(
                "INSERT INTO Compilation (Name, Format, C_Length, Box) VALUES (%1, 'MD', 74, %2)")
                .arg(sqlText(name), sqlText(box)));
    }
    int addNumber(const QString& name) {
        return errorNumber([&] { add(name); });
    }
    QStringList values(const QString& select) {
        engine::Recordset rows = db.openRecordset(select, engine::RecordsetType::Snapshot);
        QStringList out;
        for (int i = 0; i < rows.recordCount(); ++i)
            out << rows.rowAt(i).value(0).toString();
        return out;
    }
    QStringList namesEqualTo(const QString& name) {
        return values("SELECT Name FROM Compilation WHERE Name = " + sqlText(name));
    }
};

TEST_F(TextOrderDatabase, GroupingDistinctAndLikeFoldAsEqualityDoes) {
    add("One", "Ärzte");
    add("Two", "ÄRZTE");
    add("Three", "A\u0308rzte");  // decomposed
    add("Four", "Arzte");
    add("Five", "サクラ");
    add("Six", "さくら");
    EXPECT_EQ(values("SELECT Count(*) FROM Compilation GROUP BY Box ORDER BY Box"),
              (QStringList{"1", "3", "1", "1"}));
    EXPECT_EQ(values("SELECT DISTINCT Box FROM Compilation").size(), 4);
    // "?" takes one character of the folded text, however the text spells it
    EXPECT_EQ(values("SELECT Name FROM Compilation WHERE Box LIKE '?rz*' ORDER BY Name"),
              (QStringList{"Four", "One", "Three", "Two"}));
    EXPECT_EQ(values("SELECT Name FROM Compilation WHERE Box LIKE 'ä*' ORDER BY Name"),
              (QStringList{"One", "Three", "Two"}));
    EXPECT_EQ(values("SELECT Name FROM Compilation WHERE Box LIKE 'さ*'"), QStringList{"Six"});
}

// Random names from the mixed alphabet: a name is refused as a duplicate exactly when its folded
// form (computed by Qt) is that of a name already in; every name in is found by "=". The Émile
// names come first: their order once disagreed between two comparison paths, which left the
// index without one of its rows.
TEST_F(TextOrderDatabase, RandomNamesRefusedExactlyWhenFoldedAlike) {
    QHash<QString, QString> inByFolded;
    std::vector<std::string> texts{"Émile 😀", "Emile 🎵 Mix", "Émile 🎵", "émile 🎵"};
    for (const std::string& text : textsamples::randomTexts(1500, 2611))
        texts.push_back(text);
    for (const std::string& text : texts) {
        const QString name = QString::fromStdString(text);
        const QString folded = textsamples::qtFolded(text);
        const int expected = inByFolded.contains(folded) ? engine::jet::kDuplicateValue : 0;
        ASSERT_EQ(addNumber(name), expected) << text;
        if (expected == 0)
            inByFolded.insert(folded, name);
    }
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
    EXPECT_EQ(values("SELECT Count(*) FROM Compilation"),
              QStringList{QString::number(inByFolded.size())});
    for (const QString& name : inByFolded)
        ASSERT_EQ(namesEqualTo(name), QStringList{name}) << name.toStdString();
}

// The engine's collation name ordering by reversed bytes: an index written under it is out of
// order for the engine.
int reversedBytes(void*, int lengthA, const void* a, int lengthB, const void* b) {
    const std::string textA(static_cast<const char*>(a), size_t(lengthA));
    const std::string textB(static_cast<const char*>(b), size_t(lengthB));
    return textB.compare(textA);
}

void writeNamesUnderReversedOrder(const QString& path, const QStringList& names) {
    const testsupport::SqliteFile file(path, {.plain = true});
    sqlite3_create_collation_v2(file.db(), engine::kTextCollation, SQLITE_UTF8, nullptr,
                                reversedBytes, nullptr);
    for (const QString& name : names) {
        file.exec("INSERT INTO Compilation (Name, Format, C_Length) VALUES (" + sqlText(name) +
                  ", 'MD', 74)");
    }
}

TEST(TextOrderRepair, RepairAndCompactRebuildTheNameIndex) {
    testsupport::TempDir dir;
    const QString damaged = dir.file("damaged.mdb");
    const QString compacted = dir.file("compacted.mdb");
    testsupport::createCompilationDatabase(damaged);
    const QStringList names{"Émile 😀", "Emile 🎵 Mix", "Émile 🎵",  "さくら",  "さくや",
                            "Mix 😀",   "Mix 🎵",       "abba",     "Beatles", "Ärzte",
                            "Arzte",   "Zappa",       "İstanbul", "Ölfass"};
    writeNamesUnderReversedOrder(damaged, names);
    ASSERT_NE(testsupport::integrityCheck(damaged), "ok");

    engine::Workspace::repairDatabase(damaged);
    engine::Workspace::compactDatabase(damaged, compacted);

    EXPECT_EQ(testsupport::integrityCheck(compacted), "ok");
    engine::Database db = engine::Workspace::defaultWorkspace().openDatabase(compacted);
    for (const QString& name : names) {
        engine::Recordset rows =
            db.openRecordset("SELECT Name FROM Compilation WHERE Name = " + sqlText(name.toUpper()),
                             engine::RecordsetType::Snapshot);
        ASSERT_EQ(rows.recordCount(), 1) << name.toStdString();
        EXPECT_EQ(rows.value("Name").toString(), name);
    }
    engine::Workspace::defaultWorkspace().close();
}

}  // namespace

// Only a collation named NOCASE is renamed: the same words in strings, names and comments stay.
TEST(NocaseLayout, RenamesTheCollationAndNothingElse) {
    const std::vector<std::pair<QString, QString>> cases{
        {"CREATE TABLE t (a TEXT(50) COLLATE NOCASE NOT NULL, b TEXT collate nocase)",
         "CREATE TABLE t (a TEXT(50) COLLATE MIXORAMA_TEXT NOT NULL, b TEXT collate "
         "MIXORAMA_TEXT)"},
        {"CREATE TABLE t (a TEXT COLLATE \"NoCase\", b TEXT COLLATE /* x */ [NOCASE])",
         "CREATE TABLE t (a TEXT COLLATE MIXORAMA_TEXT, b TEXT COLLATE /* x */ MIXORAMA_TEXT)"},
        {"CREATE TABLE t (a TEXT DEFAULT 'COLLATE NOCASE' COLLATE BINARY, \"COLLATE\" NOCASE, "
         "b -- COLLATE NOCASE\n TEXT)",
         "CREATE TABLE t (a TEXT DEFAULT 'COLLATE NOCASE' COLLATE BINARY, \"COLLATE\" NOCASE, "
         "b -- COLLATE NOCASE\n TEXT)"},
        {"CREATE VIEW v AS SELECT a FROM t WHERE a = 'it''s' COLLATE NOCASE ORDER BY a COLLATE "
         "NOCASE",
         "CREATE VIEW v AS SELECT a FROM t WHERE a = 'it''s' COLLATE MIXORAMA_TEXT ORDER BY a "
         "COLLATE MIXORAMA_TEXT"},
    };
    for (const auto& [schema, renamed] : cases)
        EXPECT_EQ(engine::renameNocaseCollation(schema), renamed) << schema.toStdString();
}
