#include <gtest/gtest.h>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "shell/session.h"
#include "store/compilation_queries.h"
#include "store/data_control.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

// Compilations "Comp 001" ... "Comp <count>" (ids 1 ... count), the list sorted by name.
QString compilationRows(int count) {
    return QStringLiteral(
               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
               "INSERT INTO Compilation (Name, SumTrack, SumTime, Format, C_Length) "
               "SELECT printf('Comp %03d', i), 0, 0, 'MD', 74 FROM n;")
        .arg(count);
}

class SessionTest : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, compilationRows(10));
        QObject::connect(&session, &shell::Session::databaseOpened,
                         [this] { events << "opened " + session.state().databasePath; });
        // At the announcement the database must still be usable.
        QObject::connect(&session, &shell::Session::databaseClosing, [this] {
            events << QStringLiteral("closing %1 tables")
                          .arg(session.database().tableNames().contains("Compilation"));
        });
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    testsupport::TempDir dir;
    QString path;
    platform::ScriptedDialogs dialogs;
    shell::Session session;
    QStringList events;
};

TEST_F(SessionTest, AnnouncesOpeningAndClosingWhileTheDatabaseIsUsable) {
    session.close();  // nothing open: nothing to announce
    EXPECT_TRUE(events.isEmpty());

    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    EXPECT_TRUE(session.isOpen());
    EXPECT_EQ(session.state().inputHint, shell::kInputHint);

    // A second database replaces the first one, which is closed with its announcement.
    const QString other = dir.file("other.mdb");
    testsupport::createCompilationDatabase(other);
    ASSERT_EQ(session.open(other, dialogs), shell::OpenOutcome::Opened);
    session.close();
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(events, QStringList({"opened " + path, "closing 1 tables", "opened " + other,
                                   "closing 1 tables"}));
}

TEST_F(SessionTest, AFailedOpenAnnouncesNothingAndAbandonForgetsThePath) {
    const QString foreign = dir.file("albums.mdb");
    testsupport::execRaw(foreign, "CREATE TABLE Album (x)");
    EXPECT_EQ(session.open(foreign, dialogs), shell::OpenOutcome::WrongStructure);
    EXPECT_TRUE(events.isEmpty());
    EXPECT_FALSE(session.isOpen());

    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    session.abandon();
    EXPECT_EQ(events, QStringList({"opened " + path, "closing 1 tables"}));
    EXPECT_TRUE(session.state().databasePath.isEmpty());
    EXPECT_FALSE(session.isOpen());
}

TEST_F(SessionTest, CompactClosesAnOpenDatabaseFirst) {
    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    struct NoFeedback : shell::CommandFeedback {
        void setBusy(bool) override {}
        void setStatusText(const QString&) override {}
        void processPendingEvents() override {}
    } feedback;
    dialogs.answerFile(path);
    EXPECT_TRUE(session.compact(dialogs, feedback));
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(events.last(), "closing 1 tables");
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
}

// The main list over the session's database, following its announcements.
class FollowingList : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
        list.setDatabase(session.database());
        list.setRecordSource(store::standardStatement("compilation"));
        list.refresh();
        shell::followCompilations(list, session);
        QObject::connect(&list, &store::DataControl::rowsAboutToBeReread,
                         [this](const store::RowChange& change) {
                             EXPECT_EQ(list.recordset().recordCount(), change.oldCount);
                         });
        QObject::connect(&list, &store::DataControl::rowsReread,
                         [this](const store::RowChange& change) { changes.push_back(change); });
    }
    QString current() { return list.recordset().value("C_Name").toString(); }
    void run(const QString& sql) { session.database().execute(sql); }
    void expectChange(int before, int after, bool oneRow = true) {
        ASSERT_FALSE(changes.empty());
        EXPECT_EQ(changes.back().before, before);
        EXPECT_EQ(changes.back().after, after);
        EXPECT_EQ(changes.back().oneRow, oneRow);
        EXPECT_EQ(changes.back().newCount, list.recordset().recordCount());
    }

    store::DataControl list;
    std::vector<store::RowChange> changes;
};

TEST_F(FollowingList, ARenamedRowMovesAndTheCurrentRowStaysOnItsKey) {
    list.recordset().setAbsolutePosition(6);  // Comp 007
    run("UPDATE Compilation SET Name = 'Zulu' WHERE CompilationID_P = 2");
    session.announceCompilationChanged(2);
    expectChange(1, 9);
    EXPECT_EQ(current(), "Comp 007");
    EXPECT_EQ(list.recordset().absolutePosition(), 5);

    // A change that keeps the row's place.
    run("UPDATE Compilation SET Box = 'B7' WHERE CompilationID_P = 7");
    session.announceCompilationChanged(7);
    expectChange(5, 5);
    EXPECT_EQ(list.recordset().value("C_Box").toString(), "B7");
}

TEST_F(FollowingList, AddedAndDeletedRows) {
    list.recordset().setAbsolutePosition(3);  // Comp 004
    run("INSERT INTO Compilation (Name, Format, C_Length) VALUES ('Comp 000', 'MD', 74)");
    session.announceCompilationAdded(11);
    expectChange(-1, 0);
    EXPECT_EQ(current(), "Comp 004");
    EXPECT_EQ(list.recordset().recordCount(), 11);

    // The current row deleted elsewhere: the row that took its place becomes current.
    run("DELETE FROM Compilation WHERE CompilationID_P = 4");
    session.announceCompilationDeleted(4);
    expectChange(4, -1);
    EXPECT_EQ(current(), "Comp 005");

    // The last row deleted while current: the new last row.
    list.recordset().moveLast();
    run("DELETE FROM Compilation WHERE CompilationID_P = 10");
    session.announceCompilationDeleted(10);
    expectChange(9, -1);
    EXPECT_EQ(current(), "Comp 009");
}

TEST_F(FollowingList, TrackChangesRereadTheirCompilationsSums) {
    run("INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Length) VALUES (3, 1, 200)");
    run("UPDATE Compilation SET SumTrack = 1, SumTime = 200 WHERE CompilationID_P = 3");
    session.announceTracksChanged(3);
    expectChange(2, 2);
    list.recordset().setAbsolutePosition(2);
    EXPECT_EQ(list.recordset().value("C_SumTime").toInt(), 200);
}

TEST_F(FollowingList, RowsChangedBeyondTheAnnouncedOneAreNotOneRow) {
    run("INSERT INTO Compilation (Name, Format, C_Length) VALUES ('A', 'MD', 74), "
        "('B', 'MD', 74)");
    session.announceCompilationAdded(11);
    expectChange(-1, 0, false);
    EXPECT_EQ(list.recordset().recordCount(), 12);
    // An announcement about a row the list does not show changes nothing.
    session.announceCompilationDeleted(99);
    expectChange(-1, -1);
}

TEST_F(FollowingList, ClosingDropsTheRowsAndLaterAnnouncementsAreIgnored) {
    session.close();
    EXPECT_FALSE(list.hasRecordset());
    session.announceCompilationChanged(1);
    EXPECT_TRUE(changes.empty());
}

TEST_F(FollowingList, AFailedRereadDropsTheRowsAndIsReported) {
    QList<int> failures;
    QObject::connect(&session, &shell::Session::followFailed,
                     [&](int number, const QString&) { failures << number; });
    list.setRecordSource("SELECT Name FROM NoSuchTable");
    session.announceCompilationChanged(1);
    EXPECT_FALSE(list.hasRecordset());
    ASSERT_EQ(failures.size(), 1);
    EXPECT_NE(failures.first(), 0);
    EXPECT_TRUE(changes.empty());
}

TEST_F(FollowingList, TheTracksOfOneCompilationFollowOnlyIt) {
    run("INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title) VALUES "
        "(3, 1, 'One'), (3, 2, 'Two'), (3, 3, 'Three')");
    store::DataControl tracks;
    tracks.setDatabase(session.database());
    tracks.setRecordSource(
        "SELECT TrackNo, Track_Title FROM CompilationTrack WHERE CompilationID_F1 = 3 "
        "ORDER BY TrackNo");
    tracks.refresh();
    tracks.recordset().setAbsolutePosition(2);
    qint64 shown = 3;
    shell::followTracks(tracks, session, [&] { return shown; });
    std::vector<store::RowChange> trackChanges;
    QObject::connect(&tracks, &store::DataControl::rowsReread,
                     [&](const store::RowChange& change) { trackChanges.push_back(change); });

    run("DELETE FROM CompilationTrack WHERE TrackNo = 2");
    run("UPDATE CompilationTrack SET TrackNo = 2 WHERE TrackNo = 3");
    session.announceTracksChanged(4);  // another compilation
    EXPECT_TRUE(trackChanges.empty());
    session.announceTracksChanged(3);
    ASSERT_EQ(trackChanges.size(), 1u);
    EXPECT_FALSE(trackChanges[0].oneRow);
    EXPECT_EQ(trackChanges[0].oldCount, 3);
    EXPECT_EQ(trackChanges[0].newCount, 2);
    // Without a key the current row keeps its place, the last one when rows went.
    EXPECT_EQ(tracks.recordset().value("Track_Title").toString(), "Three");

    shown = -1;  // following every compilation
    session.announceCompilationChanged(7);
    EXPECT_EQ(trackChanges.size(), 2u);
    session.close();
    EXPECT_FALSE(tracks.hasRecordset());
}

}  // namespace
