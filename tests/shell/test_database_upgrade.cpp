// Files of the earlier text order are converted before they are written; the lookup's index is
// made only where a file is written.
#include <sys/stat.h>

#include <QFile>

#include "engine/connection.h"
#include "engine/text_collation_layout.h"
#include "shell/app_state.h"
#include "shell/database_files.h"
#include "shell/database_upgrade.h"
#include "shell_fixture.h"
#include "support/samples.h"

namespace {

const QString kForeignTrack = QStringLiteral(
    "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title) VALUES (1, 9, 'x')");
const QString kLookupIndexCount =
    QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'CompilationTrack_Lookup'");

class DatabaseUpgrade : public ShellTest {
  protected:
    // Names whose order under SQLite's ASCII NOCASE differs from the engine's, and "Road Trip"
    // with the tracks A, B, C; in the earlier text order when asked for.
    QString makeDatabase(bool earlierOrder) {
        testsupport::createCompilationDatabase(path);
        testsupport::addSample(path, {.name = "Road Trip",
                                      .tracks = {{.performer = "Ärzte", .title = "A"},
                                                 {.performer = "abba", .title = "B"},
                                                 {.performer = "Émile", .title = "C"}}});
        for (const char* name : {"Ärzte", "abba", "Émile", "Zappa"})
            testsupport::addSample(path, {.name = name});
        if (earlierOrder)
            testsupport::makeOldLayout(path);
        return path;
    }
    // What a converted file must be: the engine's collation, whole, found by the engine's
    // case-blind comparison, and refused to any program without that collation.
    void expectConverted() {
        EXPECT_FALSE(engine::hasNocaseLayout(path));
        EXPECT_EQ(testsupport::integrityCheck(path), "ok");
        EXPECT_EQ(testsupport::queryRaw(path, "SELECT Name FROM Compilation WHERE Name = 'ärzte'"),
                  "Ärzte");
        EXPECT_EQ(testsupport::queryRaw(path,
                                        "SELECT group_concat(Track_Title, '') FROM "
                                        "(SELECT Track_Title FROM CompilationTrack "
                                        "ORDER BY TrackNo)"),
                  "ABC");
        // Another program can read it, but neither write its text nor misjudge its indexes.
        EXPECT_EQ(testsupport::plainSqlite(path, "SELECT count(*) FROM CompilationTrack"), "3");
        for (const QString& sql : {kForeignTrack, QStringLiteral("PRAGMA integrity_check")}) {
            EXPECT_EQ(testsupport::plainSqlite(path, sql),
                      "no such collation sequence: MIXORAMA_TEXT");
        }
        EXPECT_EQ(testsupport::queryRaw(path, kLookupIndexCount), "1");
        EXPECT_TRUE(shell::checkDatabaseFile(path).isEmpty())
            << shell::checkDatabaseFile(path).join('\n').toStdString();
    }

    const QString path = dir.file("coll.mdb");
};

TEST_F(DatabaseUpgrade, AnEarlierFileIsNotWrittenUntilConvertedOnOpenAfterAsking) {
    makeDatabase(true);
    // As the earlier version left it, it is whole under its own order, out of order for others.
    ASSERT_EQ(testsupport::oldOrderIntegrityCheck(path), "ok");
    ASSERT_NE(testsupport::plainSqlite(path, "PRAGMA integrity_check"), "ok");
    // Its check judges it in its own order: the layout is the one problem, no damage.
    const QStringList problems = shell::checkDatabaseFile(path);
    ASSERT_EQ(problems.size(), 1) << problems.join('\n').toStdString();
    EXPECT_TRUE(problems[0].contains("earlier version"));
    EXPECT_EQ(errorNumber([&] { engine::Workspace::defaultWorkspace().openDatabase(path); }),
              engine::jet::kCannotOpenFile);
    const QByteArray before = testsupport::fileBytes(path);

    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(shell::databaseToOpen(path, dialogs, feedback));
    EXPECT_TRUE(dialogs.messages()[0].text.contains("earlier version"));
    EXPECT_EQ(testsupport::fileBytes(path), before) << "declining leaves the file as it was";

    testsupport::execRaw(path, "UPDATE Compilation SET SumTime = 7 WHERE Name = 'abba'");
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    EXPECT_EQ(shell::databaseToOpen(path, dialogs, feedback), std::optional<QString>(path));
    EXPECT_EQ(dialogs.lastMessageText(),
              "Repaired while converting:\r\nCompilation 'abba': SumTime set from 7 to 0.");
    expectConverted();
    shell::AppState state;
    EXPECT_EQ(shell::openCompilationDatabase(path, state, dialogs), shell::OpenOutcome::Opened);
}

// Compact converts an earlier file and says so; a conversion that cannot finish leaves the file
// as it was.
TEST_F(DatabaseUpgrade, CompactConvertsAnEarlierFileOrLeavesItAsItWas) {
    makeDatabase(true);
    testsupport::execRaw(path, "DROP INDEX CompilationTrack_Lookup");
    // Two names the earlier order kept apart in a foreign program's hands: equal for the engine.
    const QString twin =
        "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('ärzte', 'MD', 74)";
    ASSERT_EQ(testsupport::plainSqlite(path, twin), "ok");
    QString description;
    EXPECT_EQ(errorNumber([&] { shell::repairAndCompact(path); }, &description),
              engine::jet::kDuplicateValue);
    EXPECT_TRUE(description.contains("cannot be converted")) << description.toStdString();
    EXPECT_TRUE(engine::hasNocaseLayout(path));
    EXPECT_FALSE(QFile::exists(shell::compactionTempPath(path)));
    EXPECT_FALSE(QFile::exists(shell::compactionTempPath(path) + "-journal"));
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM Compilation"), "6");

    ASSERT_EQ(testsupport::plainSqlite(path, "DELETE FROM Compilation WHERE Name = 'ärzte'"), "ok");
    const QStringList changes = shell::repairAndCompact(path);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(changes.value(0).startsWith("Text columns converted"))
        << changes.join('\n').toStdString();
    expectConverted();
    EXPECT_TRUE(shell::repairAndCompact(path).isEmpty()) << "a converted file stays as it is";
}

TEST_F(DatabaseUpgrade, TheLookupIndexIsMadeWhereAFileIsOpenedForWritingOnly) {
    makeDatabase(false);
    testsupport::execRaw(path, "DROP INDEX CompilationTrack_Lookup");
    shell::AppState state;
    // A write-protected file opens, and stays without it.
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0444), 0);
    ASSERT_TRUE(engine::isWriteProtected(path));
    EXPECT_EQ(shell::openCompilationDatabase(path, state, dialogs), shell::OpenOutcome::Opened);
    shell::closeCompilationDatabase(state);
    EXPECT_EQ(testsupport::queryRaw(path, kLookupIndexCount), "0");
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0644), 0);
    EXPECT_EQ(shell::openCompilationDatabase(path, state, dialogs), shell::OpenOutcome::Opened);
    shell::closeCompilationDatabase(state);
    EXPECT_EQ(testsupport::queryRaw(path, kLookupIndexCount), "1");
}

}  // namespace
