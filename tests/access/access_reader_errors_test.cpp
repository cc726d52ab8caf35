#include "access/access_reader.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include "access/fake_program.h"
#include "engine/jet_error.h"
#include "support/paths.h"
#include "support/temp_dir.h"

using namespace accessfile;
using namespace std::chrono_literals;

namespace {

const QString kProgram = testsupport::programPath("mixorama-mdbread");
const ProcessLimits kTestLimits{20s, 60s};

QByteArray randomBytes(qsizetype size, quint32 seed) {
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

// The first page of an Access file of the given engine version (0 Jet 3, 1 Jet 4).
QByteArray jetStart(char version, qsizetype pageSize) {
    QByteArray page("\x00\x01\x00\x00Standard Jet DB\x00", 20);
    page.append(version);
    page.append(pageSize - page.size(), '\0');
    return page;
}

QByteArray sqliteFile(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    sqlite3_exec(db, "CREATE TABLE Album (AlbumID INTEGER, Title TEXT)", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
}

QByteArray digest(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

int errorNumber(const std::function<void()>& action) {
    try {
        action();
    } catch (const engine::JetError& error) {
        return error.number();
    }
    return 0;
}

struct ForeignFile {
    const char* name;
    std::function<QByteArray(const QString& path)> make;
};

class ForeignFiles : public ::testing::TestWithParam<ForeignFile> {};

}  // namespace

// Whatever the file holds, reading it ends in "unrecognized format", never in a crash or hang of
// this process, and the file is left exactly as it was.
TEST_P(ForeignFiles, AreRejectedAndLeftUntouched) {
    testsupport::TempDir dir;
    const QString path = dir.file(QStringLiteral("album.mdb"));
    const QByteArray bytes = GetParam().make(path);
    writeFile(path, bytes);
    const QByteArray before = digest(path);
    AccessTableReader reader(kProgram, kTestLimits);
    const QString out = dir.file(QStringLiteral("out.sqlite"));

    EXPECT_EQ(errorNumber([&] { reader.tableNames(path); }), engine::jet::kNotADatabase);
    EXPECT_EQ(errorNumber([&] { reader.copyTables(path, {QStringLiteral("Album")}, out); }),
              engine::jet::kNotADatabase);
    EXPECT_EQ(digest(path), before);
}

INSTANTIATE_TEST_SUITE_P(
    AccessReader, ForeignFiles,
    ::testing::Values(
        ForeignFile{"Empty", [](const QString&) { return QByteArray(); }},
        ForeignFile{"Text",
                    [](const QString&) { return QByteArray("Album;Title\n1;Abbey Road\n"); }},
        ForeignFile{"Sqlite", [](const QString& path) { return sqliteFile(path); }},
        ForeignFile{"RandomBytes", [](const QString&) { return randomBytes(64 * 1024, 7); }},
        ForeignFile{"Jet4HeaderOnly", [](const QString&) { return jetStart(1, 4096); }},
        ForeignFile{"Jet4HeaderCutShort",
                    [](const QString&) { return jetStart(1, 4096).left(100); }},
        ForeignFile{"Jet3HeaderThenGarbage",
                    [](const QString&) { return jetStart(0, 2048) + randomBytes(40 * 2048, 11); }},
        ForeignFile{"Jet4HeaderThenGarbage",
                    [](const QString&) { return jetStart(1, 4096) + randomBytes(40 * 4096, 13); }},
        ForeignFile{"Jet4HeaderThenZeros",
                    [](const QString&) { return jetStart(1, 4096) + QByteArray(8 * 4096, '\0'); }}),
    [](const ::testing::TestParamInfo<ForeignFile>& info) { return std::string(info.param.name); });

TEST(AccessReader, ChecksTheHeaderWithoutChangingTheFile) {
    testsupport::TempDir dir;
    const QString jet = dir.file(QStringLiteral("jet.mdb"));
    const QString text = dir.file(QStringLiteral("text.mdb"));
    writeFile(jet, jetStart(1, 4096));
    writeFile(text, "not an album");
    const QByteArray before = digest(jet);
    AccessTableReader reader(kProgram);
    EXPECT_TRUE(reader.canRead(jet));
    EXPECT_FALSE(reader.canRead(text));
    EXPECT_FALSE(reader.canRead(dir.file(QStringLiteral("missing.mdb"))));
    EXPECT_EQ(digest(jet), before);
}

TEST(AccessReader, AMissingFileIsNotFound) {
    testsupport::TempDir dir;
    AccessTableReader reader(kProgram, kTestLimits);
    const QString missing = dir.file(QStringLiteral("missing.mdb"));
    try {
        reader.tableNames(missing);
        FAIL() << "no error";
    } catch (const engine::JetError& error) {
        EXPECT_EQ(error.number(), engine::jet::kFileNotFound);
        EXPECT_TRUE(error.description().contains(missing));
    }
}

// The program's ways of ending, each turned into the engine's error.
class ProgramEnding : public ::testing::Test {
  protected:
    void SetUp() override { writeFile(album, jetStart(1, 4096)); }

    engine::JetError copyWith(const QByteArray& script) {
        AccessTableReader reader(writeFakeProgram(dir.file(QStringLiteral("fake")), script),
                                 {500ms, 5s});
        try {
            reader.copyTables(album, {QStringLiteral("Album"), QStringLiteral("TrackRating")},
                              dir.file(QStringLiteral("out.sqlite")));
        } catch (const engine::JetError& error) {
            return error;
        }
        return engine::JetError(0, QString());
    }

    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album.mdb"));
};

TEST_F(ProgramEnding, AMissingTableIsNamed) {
    const engine::JetError error =
        copyWith("echo 'mixorama-mdbread: table not found: TrackRating' >&2; exit 3");
    EXPECT_EQ(error.number(), engine::jet::kObjectNotFound);
    EXPECT_EQ(error.description(),
              QStringLiteral("The Microsoft Jet database engine could not find the object "
                             "'TrackRating'. Make sure the object exists and that you spell its "
                             "name and the path name correctly."));
}

TEST_F(ProgramEnding, CrashHangAndDamageMeanAnUnrecognizedFormat) {
    const QString expected = QStringLiteral("Unrecognized database format '%1'.").arg(album);
    for (const QByteArray& script : {QByteArray("kill -SEGV $$"), QByteArray("exec sleep 60"),
                                     QByteArray("exit 2"), QByteArray("exit 77")}) {
        const engine::JetError error = copyWith(script);
        EXPECT_EQ(error.number(), engine::jet::kNotADatabase) << script.constData();
        EXPECT_EQ(error.description(), expected) << script.constData();
    }
}

TEST_F(ProgramEnding, OtherFailuresCarryTheProgramsMessage) {
    const engine::JetError error = copyWith("echo 'SQLite: disk I/O error' >&2; exit 4");
    EXPECT_EQ(error.number(), engine::jet::kGeneral);
    EXPECT_EQ(error.description(), QStringLiteral("SQLite: disk I/O error"));
}

TEST_F(ProgramEnding, AProgramThatCannotStartIsAnError) {
    AccessTableReader reader(dir.file(QStringLiteral("no-such-program")), {500ms, 5s});
    EXPECT_EQ(errorNumber([&] { reader.tableNames(album); }), engine::jet::kGeneral);
}

TEST(AccessReader, InstallsItselfAsTheEnginesReader) {
    installAccessReader();
    EXPECT_NE(dynamic_cast<AccessTableReader*>(engine::foreignTableReader()), nullptr);
    engine::setForeignTableReader(nullptr);
}

TEST(AccessReader, TheProgramComesFromTheEnvironmentFirst) {
    qputenv("MIXORAMA_MDBREAD", "/somewhere/reader");
    EXPECT_EQ(readerProgramPath(), QStringLiteral("/somewhere/reader"));
    qunsetenv("MIXORAMA_MDBREAD");
    EXPECT_TRUE(readerProgramPath().endsWith(QStringLiteral("/mixorama-mdbread")));
}
