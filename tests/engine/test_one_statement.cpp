// One call of the engine runs one statement: text after it is refused before anything runs.
#include <sqlite3.h>

#include "engine/connection.h"
#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "engine/sqlite_statement.h"
#include "engine_fixture.h"

namespace {

// The number of the error `action` throws, its description checked when it is 3142.
int errorOf(const std::function<void()>& action) {
    QString description;
    const int number = errorNumber(action, &description);
    if (number == engine::jet::kCharactersAfterEnd) {
        EXPECT_EQ(description, "Characters found after end of SQL statement.");
    }
    return number;
}

constexpr int kAfterEnd = engine::jet::kCharactersAfterEnd;

TEST(OneStatementTranslation, TextAfterTheFirstStatementIsRefused) {
    for (const char* jet :
         {"SELECT 1; DROP TABLE Compilation", "SELECT 1;SELECT 2",
          "UPDATE Compilation SET Box = 'x'; DELETE FROM Compilation", "SELECT 1;;", "SELECT 1; ;",
          "SELECT 1); DROP TABLE Compilation", "SELECT * FROM [a;b]; x", "SELECT 'a;b'; 'c'"}) {
        EXPECT_EQ(errorOf([&] { engine::translateJetSql(jet); }), kAfterEnd) << jet;
    }
}

TEST(OneStatementTranslation, ASemicolonInALiteralOrAtTheEndIsAllowed) {
    EXPECT_EQ(engine::translateJetSql("SELECT 1;").sql, "SELECT 1");
    EXPECT_EQ(engine::translateJetSql("SELECT 1 ;  \n").sql, "SELECT 1");
    EXPECT_EQ(engine::translateJetSql("SELECT 'a; DROP TABLE x' AS [b;c];").sql,
              "SELECT 'a; DROP TABLE x' COLLATE MIXORAMA_TEXT AS \"b;c\"");
}

TEST(OneStatementTranslation, CriteriaRefuseAnySemicolon) {
    EXPECT_EQ(errorOf([] { engine::translateJetExpression("Name = 'x'; DROP TABLE Compilation"); }),
              kAfterEnd);
    EXPECT_EQ(errorOf([] { engine::translateJetExpression("Name = 'x';"); }), kAfterEnd);
    EXPECT_EQ(engine::translateJetExpression("Name = 'x;y'"), "Name = 'x;y' COLLATE MIXORAMA_TEXT");
}

// The guard where SQLite prepares: no path can run a second statement, translated or not.
class OneStatementAtSqlite : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(sqlite3_open(":memory:", &db_), SQLITE_OK);
        engine::execSqlite(db_, "CREATE TABLE t (x)");
    }
    void TearDown() override { sqlite3_close(db_); }

    int tables() {
        engine::Statement count(db_, "SELECT count(*) FROM sqlite_master WHERE type = 'table'");
        count.step();
        return int(count.int64(0));
    }

    sqlite3* db_ = nullptr;
};

TEST_F(OneStatementAtSqlite, ASecondStatementIsRefusedAndNothingRuns) {
    EXPECT_EQ(errorOf([&] { engine::Statement(db_, "SELECT 1; DROP TABLE t"); }), kAfterEnd);
    EXPECT_EQ(errorOf([&] { engine::execSqlite(db_, "CREATE TABLE u (y); DROP TABLE t"); }),
              kAfterEnd);
    EXPECT_EQ(errorOf([&] { engine::execSqlite(db_, "INSERT INTO t VALUES (1);-- note"); }),
              kAfterEnd);
    EXPECT_EQ(tables(), 1);
    engine::Statement rows(db_, "SELECT count(*) FROM t");
    rows.step();
    EXPECT_EQ(rows.int64(0), 0);
}

TEST_F(OneStatementAtSqlite, BlanksAndSemicolonsMayEndAStatement) {
    engine::execSqlite(db_, "INSERT INTO t VALUES (';');");
    engine::execSqlite(db_, "INSERT INTO t VALUES (2) ; \n ;");
    engine::Statement rows(db_, "SELECT group_concat(x, '|') FROM t;  ");
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.text(0), ";|2");
}

// Every path of the engine, with a second statement that would destroy the tracks.
class OneStatementPaths : public EngineFixture {
  protected:
    static constexpr const char* kDrop = "; DROP TABLE CompilationTrack";

    void expectNothingRan() {
        EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "3");
        EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM Compilation"), "4");
        EXPECT_EQ(testsupport::queryRaw(path, "SELECT group_concat(Box) FROM Compilation"),
                  "Box 1,Box [2],Box 1");
        EXPECT_EQ(sqlite3_get_autocommit(db.connection()->db()), 1) << "a transaction is open";
        EXPECT_FALSE(db.hasTable("Copy"));
        EXPECT_TRUE(db.queryDefNames().isEmpty());
    }
};

TEST_F(OneStatementPaths, ExecuteRunsNoPartOfAStatementWithASecondOne) {
    for (const QString& first :
         {QString("INSERT INTO CompilationTrack (CompilationID_F1, TrackNo) VALUES (4, 1)"),
          QString("UPDATE Compilation SET Box = 'gone'"), QString("DELETE FROM CompilationTrack"),
          QString("DROP TABLE Compilation"), QString("SELECT * INTO Copy FROM Compilation")}) {
        EXPECT_EQ(errorOf([&] { db.execute(first + kDrop); }), kAfterEnd) << first.toStdString();
    }
    expectNothingRan();
}

TEST_F(OneStatementPaths, RecordSetsAndQueryDefinitionsRefuseASecondStatement) {
    const QString select = QString("SELECT * FROM Compilation") + kDrop;
    EXPECT_EQ(errorOf([&] { db.openRecordset(select, engine::RecordsetType::Snapshot); }),
              kAfterEnd);
    EXPECT_EQ(errorOf([&] { db.openRecordset(select, engine::RecordsetType::Dynaset); }),
              kAfterEnd);
    EXPECT_EQ(errorOf([&] { db.createQueryDef("queryNavigate", select); }), kAfterEnd);
    EXPECT_EQ(errorOf([&] { db.createQueryDef("", QString("DELETE FROM Compilation") + kDrop); }),
              kAfterEnd);
    expectNothingRan();
}

TEST_F(OneStatementPaths, FindsAndSortsRefuseASecondStatement) {
    engine::Recordset rows = db.openRecordset("Compilation", engine::RecordsetType::Dynaset);
    EXPECT_EQ(errorOf([&] { rows.findFirst(QString("Name = 'Zappa'") + kDrop); }), kAfterEnd);
    EXPECT_EQ(
        errorOf([&] { rows.findNext(QString("Name = 'Zappa'); DELETE FROM Compilation; (")); }),
        kAfterEnd);
    rows.setSort(QString("Name") + kDrop);
    EXPECT_EQ(errorOf([&] { rows.openRecordset(); }), kAfterEnd);
    expectNothingRan();
}

TEST_F(OneStatementPaths, AStatementEndingInASemicolonStillRuns) {
    EXPECT_EQ(db.execute("UPDATE Compilation SET Notes = 'a; b' WHERE Name = 'Zappa' ;  "), 1);
    engine::Recordset rows =
        db.openRecordset("SELECT Notes FROM Compilation WHERE Notes = 'A; B';");
    ASSERT_EQ(rows.recordCount(), 1);
    EXPECT_EQ(rows.value("Notes").toString(), "a; b");
    rows.findFirst("Notes = 'a; b'");
    EXPECT_FALSE(rows.noMatch());
}

}  // namespace
