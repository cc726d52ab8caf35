// Compaction rewrites a file the user keeps: whatever happens, the rows, the file's place (a link
// stays a link) and its permissions survive, and a refusal changes nothing.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <future>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "shell/app_state.h"
#include "shell/database_commands.h"
#include "shell/database_files.h"
#include "support/databases.h"
#include "support/faulty_files.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

namespace {

using testsupport::errorNumber;
using testsupport::fileBytes;

class Compaction : public ::testing::Test, public shell::CommandFeedback {
  protected:
    void setBusy(bool) override {}
    void setStatusText(const QString&) override {}
    void processPendingEvents() override {}

    // A database with room to reclaim: half of its compilations are deleted.
    QString makeDatabase(const QString& path) {
        testsupport::createReclaimableDatabase(path, 60, 900, 2);
        return path;
    }
    // What must survive any compaction: every table's rows and the names kept.
    static QStringList content(const QString& path) {
        return testsupport::rowCounts(path)
               << testsupport::queryRaw(path, "SELECT group_concat(Name, '|') FROM Compilation");
    }
    bool compactThroughCommand(const QString& path) {
        dialogs.answerFile(path);
        return shell::compactDatabase(dialogs, *this);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
};

TEST_F(Compaction, AFileNamedLikeItsTemporaryFileIsRefusedBeforeAnythingChanges) {
    const QString path = makeDatabase(dir.file("coll.$$$"));
    const QByteArray bytes = fileBytes(path);
    QDir(dir.path()).mkdir("sub");
    QFile::link(path, dir.file("link.mdb"));
    QFile::link(dir.path(), dir.file("alias"));
    // The same file by its name, through "." and "..", a link to it and a linked folder.
    for (const QString& name : {path, dir.path() + "/./sub/../coll.$$$", dir.file("link.mdb"),
                                dir.file("alias/coll.$$$")}) {
        QString description;
        EXPECT_EQ(errorNumber([&] { shell::repairAndCompact(name); }, &description),
                  engine::jet::kDatabaseExists)
            << name.toStdString();
        EXPECT_TRUE(description.contains("'" + QFileInfo(path).canonicalFilePath() + "'"))
            << description.toStdString();
        EXPECT_TRUE(description.contains(".$$$")) << description.toStdString();
        EXPECT_EQ(fileBytes(path), bytes) << name.toStdString();
    }
    EXPECT_FALSE(compactThroughCommand(dir.file("link.mdb")));
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_TRUE(dialogs.lastMessageText().startsWith("The database '"))
        << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(fileBytes(path), bytes);
}

TEST_F(Compaction, ALinkStaysALinkAndTheFileItPointsToIsCompactedBesideItself) {
    // The file on another file system than the link where the machine has one: /tmp, not /dev/shm.
    QTemporaryDir elsewhere(QDir::tempPath() + "/mixorama-target-XXXXXX");
    const QString target = makeDatabase(elsewhere.filePath("real.mdb"));
    const QStringList rows = content(target);
    const QString link = dir.file("link.mdb");
    ASSERT_TRUE(QFile::link(target, link));
    // What a killed compaction leaves beside the file is cleared away first.
    for (const QString& stale :
         {elsewhere.filePath("real.$$$"), elsewhere.filePath("real.$$$-journal")}) {
        QFile file(stale);
        file.open(QIODevice::WriteOnly);
        file.write("left over");
    }

    EXPECT_TRUE(compactThroughCommand(link)) << dialogs.lastMessageText().toStdString();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(QFileInfo(link).symLinkTarget(), target);
    EXPECT_EQ(testsupport::queryRaw(target, "PRAGMA freelist_count"), "0");
    EXPECT_EQ(content(target), rows);
    EXPECT_EQ(QDir(elsewhere.path()).entryList(QDir::Files), QStringList({"real.mdb"}));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::System), QStringList({"link.mdb"}));
}

TEST_F(Compaction, TheNewFileKeepsTheModeGroupAndOwnerOfTheOld) {
    const QString path = makeDatabase(dir.file("coll.mdb"));
    const QByteArray name = QFile::encodeName(path);
    ASSERT_EQ(::chmod(name.constData(), 0640), 0);
    if (::geteuid() == 0) {  // an administrator may hand the file to anyone
        ASSERT_EQ(::chown(name.constData(), 4321, 4322), 0);
    } else {
        gid_t groups[64];
        const int count = ::getgroups(64, groups);
        for (int i = 0; i < count; ++i) {
            if (groups[i] != ::getegid()) {
                ASSERT_EQ(::chown(name.constData(), static_cast<uid_t>(-1), groups[i]), 0);
                break;
            }
        }
    }
    struct stat before {};
    ::stat(name.constData(), &before);

    shell::repairAndCompact(path);
    struct stat after {};
    ASSERT_EQ(::stat(name.constData(), &after), 0);
    EXPECT_EQ(after.st_mode & 07777, 0640u);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_NE(after.st_ino, before.st_ino);  // a new file took the old one's place
}

TEST_F(Compaction, AFullDiskOrAForbiddenFolderLeavesTheFileWholeAndNoTemporaryFile) {
    const QString path = makeDatabase(dir.file("coll.mdb"));
    const QStringList rows = content(path);
    const QString temp = dir.file("coll.$$$");
    const std::pair<testsupport::FaultyFiles::Fault, int> faults[] = {
        {testsupport::FaultyFiles::Fault::DiskFull, engine::jet::kDiskError},
        {testsupport::FaultyFiles::Fault::NoPermission, engine::jet::kCannotOpenFile}};
    for (const auto& [fault, number] : faults) {
        testsupport::FaultyFiles faulty(".$$$", fault);
        dialogs.clear();
        EXPECT_FALSE(compactThroughCommand(path));
        ASSERT_EQ(dialogs.messages().size(), 1u);
        EXPECT_TRUE(dialogs.lastMessageText().contains("'" + temp + "'"))
            << dialogs.lastMessageText().toStdString();
        EXPECT_EQ(errorNumber([&] { shell::repairAndCompact(path); }), number);
        EXPECT_FALSE(QFile::exists(temp));
        EXPECT_FALSE(QFile::exists(temp + "-journal"));
    }
    EXPECT_EQ(content(path), rows);
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
}

TEST_F(Compaction, AReadOnlyFileOrAFolderInTheWayIsNamedAndLeftAlone) {
    const QString path = makeDatabase(dir.file("coll.mdb"));
    const QStringList rows = content(path);
    const QByteArray bytes = fileBytes(path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup);
    EXPECT_FALSE(compactThroughCommand(path));
    EXPECT_TRUE(dialogs.lastMessageText().contains("'" + path + "'"));
    EXPECT_TRUE(dialogs.lastMessageText().contains("read-only"));
    EXPECT_EQ(fileBytes(path), bytes);

    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    const QString temp = dir.file("coll.$$$");
    QDir(dir.path()).mkpath("coll.$$$/inside");
    QString description;
    EXPECT_EQ(errorNumber([&] { shell::repairAndCompact(path); }, &description),
              engine::jet::kDatabaseExists);
    EXPECT_TRUE(description.contains("'" + temp + "'")) << description.toStdString();
    EXPECT_EQ(content(path), rows);
    EXPECT_TRUE(QFileInfo(temp).isDir());
}

// A compaction killed while it repaired the file leaves a hot journal: Open and Compact roll it
// back instead of calling the file foreign.
TEST_F(Compaction, OpenAndCompactRecoverAnInterruptedChange) {
    const QString path = makeDatabase(dir.file("coll.mdb"));
    const QStringList rows = content(path);
    const QString change = "UPDATE Compilation SET Name = 'x' || Name; DELETE FROM LstLength;";
    testsupport::leaveInterruptedChange(path, change);
    shell::AppState state;
    EXPECT_EQ(shell::openCompilationDatabase(path, state, dialogs), shell::OpenOutcome::Opened)
        << dialogs.lastMessageText().toStdString();
    shell::closeCompilationDatabase(state);
    EXPECT_EQ(content(path), rows);

    testsupport::leaveInterruptedChange(path, change);
    EXPECT_TRUE(compactThroughCommand(path)) << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(content(path), rows);
    EXPECT_FALSE(QFile::exists(path + "-journal"));
}

// Open in another program (here another workspace of this one, which the command does not
// close): the compaction refuses, naming the file, and changes nothing until it is closed.
TEST_F(Compaction, AFileOpenElsewhereIsRefusedAsInUseAndLeftAlone) {
    const QString path = makeDatabase(dir.file("coll.mdb"));
    const QByteArray bytes = fileBytes(path);
    engine::Workspace elsewhere;
    elsewhere.openDatabase(path, true);
    EXPECT_FALSE(compactThroughCommand(path));
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_TRUE(dialogs.lastMessageText().contains("'" + path + "'") &&
                dialogs.lastMessageText().contains("in use"))
        << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(fileBytes(path), bytes);
    EXPECT_FALSE(QFile::exists(dir.file("coll.$$$")));
    elsewhere.close();
    EXPECT_TRUE(compactThroughCommand(path)) << dialogs.lastMessageText().toStdString();
}

// Open and Compact of the window on a FIFO: refused by what it is, without waiting for a writer
// that never comes. One that does wait is let go by a writer the test opens, and fails.
TEST_F(Compaction, OpenAndCompactRefuseAFifoWithoutWaitingOnIt) {
    const QString fifo = dir.file("pipe.mdb");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const auto refusedAtOnce = [&](const std::function<void()>& command) {
        auto done = std::async(std::launch::async, command);
        if (done.wait_for(std::chrono::seconds(10)) == std::future_status::ready) {
            return true;
        }
        const int writer = ::open(QFile::encodeName(fifo).constData(), O_WRONLY | O_NONBLOCK);
        ::close(writer);
        done.wait();
        return false;
    };
    EXPECT_TRUE(refusedAtOnce(
        [&] { EXPECT_EQ(shell::databaseToOpen(fifo, dialogs, *this), std::nullopt); }));
    EXPECT_TRUE(refusedAtOnce([&] { EXPECT_FALSE(compactThroughCommand(fifo)); }));
    ASSERT_EQ(dialogs.messages().size(), 2u);
    for (const platform::MessageRequest& message : dialogs.messages()) {
        EXPECT_TRUE(message.text.contains("'" + fifo + "' is a FIFO"))
            << message.text.toStdString();
    }
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(fifo).constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::System), QStringList{"pipe.mdb"});
}

}  // namespace
