// One call of the engine runs one statement: text after it is refused before anything runs.
#include <sqlite3.h>

#include "engine/connection.h"
#include "engine/sqlite_statement.h"
#include "engine_fixture.h"

namespace {

constexpr int kAfterEnd = engine::jet::kCharactersAfterEnd;

// The number of the error `action` throws, its description checked when it is 3142.
int errorOf(const std::function<void()>& action) {
    QString description;
    const int number = errorNumber(action, &description);
    if (number == kAfterEnd) {
        EXPECT_EQ(description, "Characters found after end of SQL statement.");
    }
    return number;
}

// The guard where SQLite prepares: no path can run a second statement, translated or not.
TEST(OneStatementAtSqlite, ASecondStatementIsRefusedAndNothingRuns) {
    const testsupport::SqliteFile file(":memory:");
    sqlite3* db = file.db();
    file.exec("CREATE TABLE t (x)");
    EXPECT_EQ(errorOf([&] { engine::Statement(db, "SELECT 1; DROP TABLE t"); }), kAfterEnd);
    EXPECT_EQ(errorOf([&] { engine::execSqlite(db, "CREATE TABLE u (y); DROP TABLE t"); }),
              kAfterEnd);
    EXPECT_EQ(errorOf([&] { engine::execSqlite(db, "INSERT INTO t VALUES (1);-- note"); }),
              kAfterEnd);
    EXPECT_EQ(file.value("SELECT group_concat(name) FROM sqlite_master"), "t");
    engine::execSqlite(db, "INSERT INTO t VALUES (';');");
    engine::execSqlite(db, "INSERT INTO t VALUES (2) ; \n ;");
    engine::Statement rows(db, "SELECT group_concat(x, '|') FROM t;  ");
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.text(0), ";|2");
}

// Every path of the engine, with a second statement that would destroy the tracks.
class OneStatementPaths : public EngineFixture {
  protected:
    static constexpr const char* kDrop = "; DROP TABLE CompilationTrack";

    void expectNothingRan() {
        EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "3");
        EXPECT_EQ(testsupport::queryRaw(path, "SELECT group_concat(Box) FROM Compilation"),
                  "Box 1,Box [2],Box 1");
        EXPECT_EQ(sqlite3_get_autocommit(db.connection()->db()), 1) << "a transaction is open";
        EXPECT_FALSE(db.hasTable("Copy"));
        EXPECT_TRUE(db.queryDefNames().isEmpty());
    }
};

TEST_F(OneStatementPaths, NoPathRunsAnyPartOfAStatementWithASecondOne) {
    const QString select = QString("SELECT * FROM Compilation") + kDrop;
    engine::Recordset rows = db.openRecordset("Compilation", engine::RecordsetType::Dynaset);
    const std::function<void()> paths[] = {
        [&] {
            db.execute(QString("INSERT INTO CompilationTrack (CompilationID_F1) VALUES (4)") +
                       kDrop);
        },
        [&] { db.execute(QString("UPDATE Compilation SET Box = 'gone'") + kDrop); },
        [&] { db.execute(QString("DELETE FROM CompilationTrack") + kDrop); },
        [&] { db.execute(QString("SELECT * INTO Copy FROM Compilation") + kDrop); },
        [&] { db.openRecordset(select, engine::RecordsetType::Snapshot); },
        [&] { db.openRecordset(select, engine::RecordsetType::Dynaset); },
        [&] { db.createQueryDef("queryNavigate", select); },
        [&] { db.createQueryDef("", QString("DELETE FROM Compilation") + kDrop); },
        [&] { rows.findFirst(QString("Name = 'Zappa'") + kDrop); },
        [&] { rows.findNext("Name = 'Zappa'); DELETE FROM Compilation; ("); },
        [&] {
            rows.setSort(QString("Name") + kDrop);
            rows.openRecordset();
        },
    };
    for (size_t i = 0; i < std::size(paths); ++i)
        EXPECT_EQ(errorOf(paths[i]), kAfterEnd) << "path " << i;
    expectNothingRan();
}

TEST_F(OneStatementPaths, AStatementEndingInASemicolonStillRuns) {
    EXPECT_EQ(db.execute("UPDATE Compilation SET Notes = 'a; b' WHERE Name = 'Zappa' ;  "), 1);
    engine::Recordset rows =
        db.openRecordset("SELECT Notes FROM Compilation WHERE Notes = 'A; B';");
    ASSERT_EQ(rows.recordCount(), 1);
    rows.findFirst("Notes = 'a; b'");
    EXPECT_FALSE(rows.noMatch());
}

}  // namespace
