// One file, several programs: a compaction beside a writer loses nothing the writer reported as
// stored; paths that name no regular file are refused by every command without being touched.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <atomic>
#include <cstring>
#include <functional>
#include <iostream>
#include <thread>

#include "app/program_run.h"
#include "support/databases.h"
#include "support/temp_dir.h"

using testsupport::cli;
using testsupport::ProgramRun;

namespace {

// The writer of the loop: compilations added one by one, each by a program of its own.
struct WriterLog {
    QSet<QString> storedIds;
    QStringList storedNames;
    QStringList failures;
    int duplicateIds = 0;
};

WriterLog addCompilations(const QString& path, int count) {
    static const QRegularExpression storedLine(QStringLiteral("^Compilation (\\d+) stored\\.$"),
                                               QRegularExpression::MultilineOption);
    WriterLog log;
    for (int i = 1; i <= count; ++i) {
        const QString name = QStringLiteral("Q%1").arg(i);
        const ProgramRun run =
            cli({"add-compilation", path, name, "--format", "MD", "--length", "74"});
        const QRegularExpressionMatch stored = storedLine.match(run.out);
        if (run.exitCode != 0 || !stored.hasMatch()) {
            log.failures << name + ": " + run.err;
            continue;
        }
        log.duplicateIds += log.storedIds.contains(stored.captured(1)) ? 1 : 0;
        log.storedIds.insert(stored.captured(1));
        log.storedNames << name;
    }
    return log;
}

TEST(SharedFile, ACompactionBesideAWriterLosesNothingTheWriterStored) {
    testsupport::TempDir dir;
    const QString path = dir.file("comp.mdb");
    // Enough rows that each compaction takes a while, with room it reclaims.
    testsupport::createReclaimableDatabase(path, 3000, 300, 3);

    constexpr int kAdds = 60;
    std::atomic<bool> writing{true};
    WriterLog log;
    std::thread writer([&] {
        log = addCompilations(path, kAdds);
        writing = false;
    });
    int compacted = 0;
    QStringList otherCompactOutcomes;
    int refused = 0;
    while (writing) {
        const ProgramRun compact = cli({"compact", path});
        if (compact.exitCode == 0 &&
            compact.out == "Database successfully repaired and compacted.\n") {
            ++compacted;
        } else if (compact.exitCode == 1 && compact.err.startsWith("Error 3045: ") &&
                   compact.err.contains("'" + path + "'") && compact.err.contains("in use")) {
            ++refused;
        } else {
            otherCompactOutcomes << QString::number(compact.exitCode) + " " + compact.out +
                                        compact.err;
        }
    }
    writer.join();

    // Every add waited for the compaction in its way instead of failing.
    EXPECT_EQ(log.failures.join("\n").toStdString(), "");
    EXPECT_EQ(log.storedNames.size(), kAdds);
    EXPECT_EQ(log.duplicateIds, 0);
    EXPECT_EQ(otherCompactOutcomes.join("\n").toStdString(), "");
    EXPECT_GT(compacted, 0) << "no compaction ran between the writes; refused " << refused;
    std::cout << compacted << " compaction(s), " << refused << " refused\n";

    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT Count(*) FROM Compilation WHERE Name GLOB 'Q*'")
                  .toInt(),
              log.storedNames.size());
    QStringList inFile;
    for (const QString& id : log.storedIds) {
        inFile << testsupport::queryRaw(
            path, "SELECT Name FROM Compilation WHERE CompilationID_P = " + id);
    }
    inFile.sort();
    QStringList expected = log.storedNames;
    expected.sort();
    EXPECT_EQ(inFile.join(' ').toStdString(), expected.join(' ').toStdString())
        << "a stored compilation is missing or has another's id";
}

// Things that are no regular file, each made in a folder of its own (or the system's null
// device, which must stay what it is).
struct NotAFile {
    const char* kind;  // as the messages name it
    std::function<QString(const testsupport::TempDir&)> make;
};

QString makeFifo(const testsupport::TempDir& dir) {
    const QString path = dir.file("pipe.mdb");
    EXPECT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    return path;
}

QString makeFolder(const testsupport::TempDir& dir) {
    const QString path = dir.file("folder.mdb");
    EXPECT_TRUE(QDir(dir.path()).mkdir("folder.mdb"));
    return path;
}

QString makeSocket(const testsupport::TempDir& dir) {
    const QString path = dir.file("socket.mdb");
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::memcpy(address.sun_path, name.constData(),
                std::min<size_t>(name.size(), sizeof address.sun_path - 1));
    EXPECT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(fd);  // the socket file stays
    return path;
}

// The null device. An administrator gets a node of it in the folder: a compaction that failed to
// refuse it would otherwise replace the system's own. Anyone else may not write to /dev.
QString makeDevice(const testsupport::TempDir& dir) {
    if (::geteuid() != 0) {
        return QStringLiteral("/dev/null");
    }
    const QString path = dir.file("null.mdb");
    EXPECT_EQ(::mknod(QFile::encodeName(path).constData(), S_IFCHR | 0666, makedev(1, 3)), 0);
    return path;
}

mode_t fileType(const QString& path) {
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & S_IFMT : 0;
}

class NotARegularFile : public ::testing::TestWithParam<NotAFile> {};

TEST_P(NotARegularFile, EveryCommandRefusesItWithoutWaitingOrTouchingIt) {
    testsupport::TempDir dir;
    const QString path = GetParam().make(dir);
    const mode_t type = fileType(path);
    ASSERT_NE(type, 0u);
    ASSERT_NE(type, static_cast<mode_t>(S_IFREG));
    const QString kind = QString::fromLatin1(GetParam().kind);
    const QString other = dir.file("other.mdb");
    testsupport::createCompilationDatabase(other);
    const QList<QStringList> commands{
        {"compact", path},
        {"tracks", path, "Mix"},
        {"sql", path, "SELECT Count(*) FROM Compilation"},
        {"add-compilation", path, "Mix", "--format", "MD", "--length", "74"},
        {"convert", path, dir.file("converted.mdb")},
        {"tempsource", other, path},
        {"new", path},
    };
    for (const QStringList& command : commands) {
        const ProgramRun run = cli(command, 20000);
        EXPECT_EQ(run.exitCode, 1)
            << command.join(' ').toStdString() << ": " << run.out.toStdString();
        // The album file's connection prints the message its window shows, without a number.
        const QString number = command[0] == "new" ? "Error 3204: " : "Error 3343: ";
        const bool numbered = command[0] != "tempsource";
        EXPECT_TRUE((!numbered || run.err.startsWith(number)) && run.err.contains(kind) &&
                    run.err.contains(path))
            << command.join(' ').toStdString() << ": " << run.err.toStdString();
    }
    EXPECT_EQ(fileType(path), type);
    // Nothing written beside it: no temporary file, no converted copy, no journal.
    QStringList expected{"other.mdb"};
    if (type != S_IFDIR && QFileInfo(path).absolutePath() == QDir(dir.path()).absolutePath()) {
        expected << QFileInfo(path).fileName();
    }
    expected.sort();
    EXPECT_EQ(
        QDir(dir.path()).entryList(QDir::Files | QDir::System, QDir::Name).join(' ').toStdString(),
        expected.join(' ').toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, NotARegularFile,
    ::testing::Values(NotAFile{"a FIFO", makeFifo}, NotAFile{"a folder", makeFolder},
                      NotAFile{"a socket", makeSocket}, NotAFile{"a character device", makeDevice}),
    [](const ::testing::TestParamInfo<NotAFile>& info) {
        return QString::fromLatin1(info.param.kind).section(' ', -1).replace('(', "").toStdString();
    });

}  // namespace
