#include <cstdio>
#include <memory>

#include <QFile>

#include "engine/transaction.h"
#include "engine_fixture.h"

using testsupport::fileBytes;

using DatabaseStatements = EngineFixture;

TEST_F(DatabaseStatements, ExecuteCountsTouchedRowsAndKeepsJetTypes) {
    EXPECT_EQ(db.execute("UPDATE Compilation SET Box = 'Box 9' WHERE Format = 'MD'"), 2);
    EXPECT_EQ(db.execute("DELETE FROM CompilationTrack WHERE Live = True"), 1);
    EXPECT_EQ(db.execute("SELECT Track_Title, Live, Length INTO Copy FROM CompilationTrack"), 2);
    engine::Recordset copy = db.openRecordset("Copy");
    EXPECT_EQ(copy.value("Live").typeId(), QMetaType::Bool);
    EXPECT_EQ(copy.field(copy.fieldIndex("Length")).type, engine::FieldType::Long);
    // The copy compares text without regard to case, like its source.
    copy.findFirst("Track_Title = 'HELP!'");
    EXPECT_FALSE(copy.noMatch());
    EXPECT_EQ(errorNumber([&] { db.execute("SELECT * INTO Copy FROM Compilation"); }),
              engine::jet::kTableExists);
}

TEST_F(DatabaseStatements, UnknownTablesAndBrokenStatementsGiveJetErrors) {
    QString description;
    EXPECT_EQ(errorNumber([&] { db.openRecordset("Nowhere"); }, &description),
              engine::jet::kCannotFindInputTable);
    EXPECT_TRUE(description.contains("Nowhere"));
    EXPECT_NE(errorNumber([&] { db.execute("UPDATE Compilation SET Name = 'x' WHERE"); }), 0);
    EXPECT_EQ(
        errorNumber([&] { db.execute("INSERT INTO Compilation (Name) VALUES ('No format')"); }),
        engine::jet::kFieldRequired);
}

TEST_F(DatabaseStatements, NamedQueriesAreKeptAndDropped) {
    db.createQueryDef("queryNavigate", "SELECT * FROM Compilation WHERE Format = 'md'");
    EXPECT_EQ(db.queryDefNames(), QStringList({"queryNavigate"}));
    engine::Recordset rows = db.openRecordset("SELECT DISTINCT Format FROM queryNavigate");
    EXPECT_EQ(rows.recordCount(), 1);
    EXPECT_EQ(errorNumber([&] { db.createQueryDef("queryNavigate", "SELECT 1"); }),
              engine::jet::kTableExists);
    db.deleteQueryDef("queryNavigate");
    EXPECT_TRUE(db.queryDefNames().isEmpty());
}

TEST_F(DatabaseStatements, AStepRolledBackLeavesNothingBehind) {
    {
        engine::ScopedTransaction step(db);
        db.execute("DELETE FROM CompilationTrack");
        db.execute("UPDATE Compilation SET SumTrack = 0");
        // no commit: the user's step failed half-way
    }
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "3");
    {
        engine::ScopedTransaction step(db);
        db.execute("DELETE FROM CompilationTrack WHERE CompilationID_F1 = 2");
        step.commit();
    }
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "2");
}

using LinkedTables = EngineFixture;

// A linked table joins local ones and is dropped again; its file is only ever read. A table the
// file lacks gives 3011 naming it.
TEST_F(LinkedTables, ALinkedTableJoinsLocalTablesAndIsDroppedAgain) {
    const QString other = dir.file("other;1.db");  // a file name may hold the separator
    testsupport::execRaw(other,
                         "CREATE TABLE Location (LocationID INTEGER, Location TEXT(50));"
                         "INSERT INTO Location VALUES (1, 'Shelf A'), (2, 'Attic');");
    const QByteArray before = fileBytes(other);
    db.appendTable({"Location", ";DATABASE=" + other, "Location", {}});
    engine::Recordset rows = db.openRecordset(
        "SELECT DISTINCT CompilationTrack.Track_Title FROM CompilationTrack INNER JOIN Location "
        "ON CompilationTrack.AlbumLocation = Location.Location ORDER BY "
        "CompilationTrack.Track_Title");
    EXPECT_EQ(column(rows, "Track_Title"), QStringList({"Help!", "Yesterday"}));
    db.deleteTable("Location");
    EXPECT_FALSE(db.hasTable("Location"));
    EXPECT_EQ(fileBytes(other), before);

    QString description;
    EXPECT_EQ(errorNumber(
                  [&] {
                      db.appendTable({"Rating", ";DATABASE=" + other, "Rating", {}});
                  },
                  &description),
              engine::jet::kObjectNotFound);
    EXPECT_TRUE(description.contains("'Rating'"));
    EXPECT_FALSE(db.hasTable("Rating"));
    EXPECT_NE(errorNumber([&] {
                  db.appendTable({"Album", ";DATABASE=" + dir.file("none.mdb"), "Album", {}});
              }),
              0);
}

TEST(Workspace, ForeignAndDamagedFilesAreRefused) {
    testsupport::TempDir dir;
    const QString text = dir.file("notes.mdb");
    QFile file(text);
    file.open(QIODevice::WriteOnly);
    file.write("just some text, not a database at all\n");
    file.close();
    EXPECT_EQ(errorNumber([&] { engine::Workspace::defaultWorkspace().openDatabase(text); }),
              engine::jet::kNotADatabase);
    EXPECT_EQ(errorNumber([&] { engine::Workspace::repairDatabase(text); }),
              engine::jet::kNotADatabase);
    EXPECT_EQ(errorNumber([&] { engine::Workspace::compactDatabase(text, dir.file("out.mdb")); }),
              engine::jet::kNotADatabase);
    EXPECT_FALSE(QFile::exists(dir.file("out.mdb")));
    EXPECT_EQ(errorNumber([&] {
                  engine::Workspace::defaultWorkspace().openDatabase(dir.file("gone.mdb"));
              }),
              engine::jet::kFileNotFound);
}

// Another program that changes the file holds it locked past the wait: opening it says so,
// naming the file, instead of calling it no database.
TEST(OpeningAFile, ABusyFileIsLockedNotForeign) {
    testsupport::TempDir dir;
    const QString path = dir.file("busy.mdb");
    testsupport::createCompilationDatabase(path);
    auto writer =
        std::make_unique<testsupport::SqliteFile>(path, testsupport::SqliteOptions{.plain = true});
    writer->exec("BEGIN EXCLUSIVE; DELETE FROM LstLength");
    QString description;
    EXPECT_EQ(errorNumber([&] { engine::Workspace::defaultWorkspace().openDatabase(path, true); },
                          &description),
              engine::jet::kLocked);
    EXPECT_TRUE(description.contains("'" + path + "'") && description.contains("locked"))
        << description.toStdString();
    writer.reset();
    EXPECT_EQ(
        errorNumber([&] { engine::Workspace::defaultWorkspace().openDatabase(path).close(); }), 0);
}

// The file is renamed over by a program that does not share its use: a change through the
// connection opened before fails, naming the file, and goes into neither file.
TEST_F(DatabaseStatements, AFileReplacedUnderAnOpenConnectionTakesNoChange) {
    const QString other = dir.file("other.mdb");
    testsupport::createCompilationDatabase(other);
    const QByteArray replacement = fileBytes(other);
    ASSERT_EQ(::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()),
              0);
    QString description;
    EXPECT_EQ(errorNumber([&] { db.execute("DELETE FROM CompilationTrack"); }, &description),
              engine::jet::kDiskError);
    EXPECT_TRUE(description.contains("'" + path + "'") && description.contains("replaced"))
        << description.toStdString();
    EXPECT_EQ(db.openRecordset("SELECT Count(*) AS N FROM CompilationTrack").value("N").toInt(), 3);
    EXPECT_EQ(fileBytes(path), replacement);
    EXPECT_FALSE(QFile::exists(path + "-journal"));
}
