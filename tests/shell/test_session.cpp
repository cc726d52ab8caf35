// The session announces its database's opening and closing (the windows' lists follow it).
#include "shell/session.h"
#include "shell_fixture.h"

namespace {

class SessionTest : public ShellTest {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        QObject::connect(&session, &shell::Session::databaseOpened,
                         [this] { events << "opened " + session.state().databasePath; });
        // At the announcement the database must still be usable.
        QObject::connect(&session, &shell::Session::databaseClosing, [this] {
            events << QStringLiteral("closing %1").arg(session.database().hasTable("Compilation"));
        });
    }

    const QString path = dir.file("coll.mdb");
    shell::Session session;
    QStringList events;
};

TEST_F(SessionTest, AnnouncesOpeningAndClosingWhileTheDatabaseIsUsable) {
    session.close();  // nothing open: nothing to announce
    const QString foreign = dir.file("albums.mdb");
    testsupport::execRaw(foreign, "CREATE TABLE Album (x)");
    EXPECT_EQ(session.open(foreign, dialogs), shell::OpenOutcome::WrongStructure);
    EXPECT_TRUE(events.isEmpty());

    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    // A second database replaces the first one, which is closed with its announcement.
    const QString other = dir.file("other.mdb");
    testsupport::createCompilationDatabase(other);
    ASSERT_EQ(session.open(other, dialogs), shell::OpenOutcome::Opened);
    session.abandon();
    EXPECT_TRUE(session.state().databasePath.isEmpty());
    EXPECT_EQ(events, QStringList({"opened " + path, "closing 1", "opened " + other, "closing 1"}));

    ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
    dialogs.answerFile(path);
    EXPECT_TRUE(session.compact(dialogs, feedback));  // closes the database first
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(events.last(), "closing 1");
}

}  // namespace
