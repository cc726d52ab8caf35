// Compaction rewrites a file the user keeps: whatever happens, the rows, the
// file's place (a link stays a link) and its permissions survive, and a refusal
// changes nothing.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <future>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "shell/database_files.h"
#include "shell_fixture.h"
#include "support/faulty_files.h"

namespace {

using Fault = testsupport::FaultyFiles::Fault;

class Compaction : public ShellTest {
  protected:
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
        return shell::compactDatabase(dialogs, feedback);
    }

    const QString path = dir.file("coll.mdb");
    const QString temp = dir.file("coll.$$$");
};

// Each case prepares what must make the compaction refuse, and returns the file
// to compact.
struct Refusal {
    const char* cause;
    std::function<QString()> prepare;
    int error;
    QString says;
    bool beforeRepair = true;  // else the repair has rewritten the file, keeping its rows
};

// A refusal names the file and its cause, comes at once (a FIFO is never waited
// on), and leaves the file's rows (its bytes, when refused before the repair)
// with no temporary file beside it.
TEST_F(Compaction, EveryRefusalNamesItsCauseAndChangesNothing) {
    makeDatabase(path);
    const QString fifo = dir.file("pipe.mdb");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QDir(dir.path()).mkdir("sub");
    const QString ownTemp = QFileInfo(makeDatabase(dir.file("sub/own.$$$"))).canonicalFilePath();
    QFile::link(ownTemp, dir.file("own.mdb"));
    engine::Workspace elsewhere;  // another program, which the command does not close
    std::optional<testsupport::FaultyFiles> faulty;
    // A command on the FIFO that waits is let go by a writer after a while, and
    // fails.
    const auto atOnce = [&](const std::function<int()>& command) {
        auto done = std::async(std::launch::async, command);
        if (done.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
            ADD_FAILURE() << "waited on the FIFO";
            ::close(::open(QFile::encodeName(fifo).constData(), O_WRONLY | O_NONBLOCK));
        }
        return done.get();
    };
    const Refusal refusals[] = {
        {"in use elsewhere", [&] { return elsewhere.openDatabase(path, true), path; },
         engine::jet::kFileInUse, "'" + path + "'; file already in use"},
        {"a FIFO", [&] { return fifo; }, engine::jet::kNotADatabase, "'" + fifo + "' is a FIFO"},
        // Through a link, whose name does not end in ".$$$": only the file it names does.
        {"its own temporary name", [&] { return dir.file("own.mdb"); },
         engine::jet::kDatabaseExists, ownTemp + "' cannot be compacted"},
        {"a full disk", [&] { return faulty.emplace(".$$$", Fault::DiskFull), path; },
         engine::jet::kDiskError, "'" + temp + "'", false},
        {"a forbidden folder", [&] { return faulty.emplace(".$$$", Fault::NoPermission), path; },
         engine::jet::kCannotOpenFile, "'" + temp + "'", false},
        {"a folder in the way", [&] { return QDir(dir.path()).mkpath("coll.$$$/inside"), path; },
         engine::jet::kDatabaseExists, "'" + temp + "'", false},
    };
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.cause);
        const QString file = refusal.prepare();
        const QByteArray bytes = QFileInfo(file).isFile() ? fileBytes(file) : QByteArray();
        const QStringList rows = content(path);
        QString description;
        EXPECT_EQ(atOnce([&] {
                      return errorNumber([&] { shell::repairAndCompact(file); }, &description);
                  }),
                  refusal.error);
        EXPECT_TRUE(description.contains(refusal.says)) << description.toStdString();
        if (refusal.beforeRepair && !bytes.isEmpty()) {
            EXPECT_EQ(fileBytes(file), bytes);
        }
        EXPECT_EQ(content(path), rows);
        EXPECT_EQ(testsupport::integrityCheck(path), "ok");
        EXPECT_FALSE(QFileInfo(temp).isFile() || QFile::exists(temp + "-journal"));
        faulty.reset();
        elsewhere.close();
        QDir(temp).removeRecursively();
    }
    // Refused by the commands, the cause is shown.
    elsewhere.openDatabase(path, true);
    EXPECT_FALSE(compactThroughCommand(path));
    EXPECT_TRUE(dialogs.lastMessageText().contains("already in use"));
    elsewhere.close();
    EXPECT_EQ(
        atOnce([&] { return int(shell::databaseToOpen(fifo, dialogs, feedback).has_value()); }), 0);
    EXPECT_TRUE(dialogs.lastMessageText().contains("is a FIFO"));
}

TEST_F(Compaction, ALinkStaysALinkAndTheFileItPointsToIsCompactedBesideItself) {
    // The file on another file system than the link where the machine has one:
    // /tmp, not /dev/shm.
    QTemporaryDir elsewhere(QDir::tempPath() + "/mixorama-target-XXXXXX");
    const QString target = makeDatabase(elsewhere.filePath("real.mdb"));
    const QStringList rows = content(target);
    const QString link = dir.file("link.mdb");
    ASSERT_TRUE(QFile::link(target, link));
    // What a killed compaction leaves beside the file is cleared away first.
    for (const QString& stale : {QString("real.$$$"), QString("real.$$$-journal")})
        QFile(elsewhere.filePath(stale)).open(QIODevice::WriteOnly);
    EXPECT_TRUE(compactThroughCommand(link)) << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(QFileInfo(link).symLinkTarget(), target);
    EXPECT_EQ(testsupport::queryRaw(target, "PRAGMA freelist_count"), "0");
    EXPECT_EQ(content(target), rows);
    EXPECT_EQ(QDir(elsewhere.path()).entryList(QDir::Files), QStringList({"real.mdb"}));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::System), QStringList({"link.mdb"}));
}

TEST_F(Compaction, TheNewFileKeepsTheModeGroupAndOwnerOfTheOld) {
    makeDatabase(path);
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
    struct stat after {};
    ::stat(name.constData(), &before);
    shell::repairAndCompact(path);
    ASSERT_EQ(::stat(name.constData(), &after), 0);
    EXPECT_EQ(after.st_mode & 07777, 0640u);
    EXPECT_EQ(std::pair(after.st_uid, after.st_gid), std::pair(before.st_uid, before.st_gid));
    EXPECT_NE(after.st_ino, before.st_ino);  // a new file took the old one's place
}

// A compaction killed while it repaired the file leaves a hot journal: Compact rolls it back
// instead of calling the file foreign (opening it is the engine's, InterruptedChange).
TEST_F(Compaction, CompactRecoversAnInterruptedChange) {
    makeDatabase(path);
    const QStringList rows = content(path);
    testsupport::leaveInterruptedChange(
        path, "UPDATE Compilation SET Name = 'x' || Name; DELETE FROM LstLength;");
    EXPECT_TRUE(compactThroughCommand(path)) << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(content(path), rows);
    EXPECT_FALSE(QFile::exists(path + "-journal"));
}

}  // namespace
