// One file, several programs: a compaction beside a writer loses nothing the writer reported as
// stored; paths that name no regular file are refused by every command without being touched.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include <QRegularExpression>
#include <atomic>
#include <cstring>
#include <thread>

#include "app/program_run.h"

namespace {

using testsupport::cli;
using testsupport::ProgramRun;

TEST(SharedFile, ACompactionBesideAWriterLosesNothingTheWriterStored) {
    testsupport::TempDir dir;
    const QString path = dir.file("comp.mdb");
    testsupport::createReclaimableDatabase(path, 3000, 300, 3);  // each compaction takes a while
    const QRegularExpression storedLine("^Compilation (\\d+) stored\\.$",
                                        QRegularExpression::MultilineOption);
    QStringList stored;  // "id name" of each compilation the writer was told is stored
    QStringList failures;
    std::atomic<bool> writing{true};
    std::thread writer([&] {
        for (int i = 1; i <= 60; ++i) {
            const QString name = QStringLiteral("Q%1").arg(i);
            const ProgramRun add =
                cli({"add-compilation", path, name, "--format", "MD", "--length", "74"});
            const QRegularExpressionMatch match = storedLine.match(add.out);
            (add.exitCode == 0 && match.hasMatch() ? stored : failures)
                << (match.captured(1) + " " + name + add.err);
        }
        writing = false;
    });
    const QString inUse = QStringLiteral("Error %1: ").arg(engine::jet::kFileInUse);
    int compacted = 0;
    QStringList otherOutcomes;  // besides done and refused as in use
    while (writing) {
        const ProgramRun compact = cli({"compact", path});
        compacted += compact.exitCode == 0 ? 1 : 0;
        if (compact.exitCode != 0 && !compact.err.startsWith(inUse)) {
            otherOutcomes << compact.err;
        }
    }
    writer.join();
    // Every add waited for the compaction in its way instead of failing.
    EXPECT_EQ(failures.join("\n").toStdString(), "");
    EXPECT_EQ(otherOutcomes.join("\n").toStdString(), "");
    EXPECT_GT(compacted, 0) << "no compaction ran between the writes";
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
    // The writer stored them one after another, so in the order of their ids.
    EXPECT_EQ(testsupport::queryRaw(path,
                                    "SELECT group_concat(CompilationID_P || ' ' || Name, "
                                    "', ') FROM (SELECT * FROM Compilation WHERE Name GLOB "
                                    "'Q*' ORDER BY CompilationID_P)")
                  .toStdString(),
              stored.join(", ").toStdString());
}

// Things that are no regular file, each made in a folder of its own, or the system's null
// device: a compaction that failed to refuse it would replace it, so only an administrator gets
// a node of it in the folder.
QString makeNotAFile(const testsupport::TempDir& dir, const QString& kind) {
    const QString path = dir.file("it.mdb");
    const QByteArray name = QFile::encodeName(path);
    if (kind == "FIFO") {
        EXPECT_EQ(::mkfifo(name.constData(), 0600), 0);
    } else if (kind == "folder") {
        EXPECT_TRUE(QDir(dir.path()).mkdir("it.mdb"));
    } else if (kind == "socket") {
        const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, name.constData(), sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        ::close(fd);  // the socket file stays
    } else if (::geteuid() != 0) {
        return QStringLiteral("/dev/null");
    } else {
        EXPECT_EQ(::mknod(name.constData(), S_IFCHR | 0666, makedev(1, 3)), 0);
    }
    return path;
}

mode_t fileType(const QString& path) {
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & S_IFMT : 0;
}

class NotARegularFile : public ::testing::TestWithParam<const char*> {};

TEST_P(NotARegularFile, EveryCommandRefusesItWithoutWaitingOrTouchingIt) {
    testsupport::TempDir dir;
    const QString kind = GetParam();
    const QString path = makeNotAFile(dir, kind);
    const mode_t type = fileType(path);
    ASSERT_TRUE(type != 0 && type != S_IFREG);
    const QString other = dir.file("other.mdb");
    testsupport::createCompilationDatabase(other);
    for (const QStringList& command :
         QList<QStringList>{{"compact", path},
                            {"sql", path, "SELECT Count(*) FROM Compilation"},
                            {"add-compilation", path, "Mix", "--format", "MD", "--length", "74"},
                            {"convert", path, dir.file("converted.mdb")},
                            {"tempsource", other, path},
                            {"new", path}}) {
        const ProgramRun run = cli(command, 20000);
        EXPECT_EQ(run.exitCode, 1) << command.join(' ').toStdString();
        // The messages say what it is: "a FIFO", "a character device", ...
        EXPECT_TRUE(run.err.contains(" " + kind) && run.err.contains(path))
            << command.join(' ').toStdString() << ": " << run.err.toStdString();
    }
    EXPECT_EQ(fileType(path), type);
    // Nothing written beside it: no temporary file, no converted copy, no journal.
    const bool inFolder = type != S_IFDIR && path.startsWith(dir.path());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::System, QDir::Name),
              (inFolder ? QStringList{"it.mdb", "other.mdb"} : QStringList{"other.mdb"}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, NotARegularFile,
                         ::testing::Values("FIFO", "folder", "socket", "device"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
