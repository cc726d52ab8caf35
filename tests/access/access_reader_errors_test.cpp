#include "access/access_reader.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QRandomGenerator>

#include "access/fake_program.h"
#include "engine/jet_error.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/paths.h"
#include "support/temp_dir.h"

using namespace accessfile;
using namespace std::chrono_literals;
using testsupport::errorNumber;
using testsupport::fileBytes;

namespace {

const QString kProgram = testsupport::programPath("mixorama-mdbread");

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
    return page.append(pageSize - page.size(), '\0');
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
}

struct ForeignFile {
    const char* name;
    std::function<QByteArray(const QString& path)> make;
};

void PrintTo(const ForeignFile& file, std::ostream* out) {
    *out << file.name;
}

class ForeignFiles : public ::testing::TestWithParam<ForeignFile> {};

}  // namespace

// Whatever the file holds, reading it ends in "unrecognized format", never in a crash or hang of
// this process, and the file is left exactly as it was.
TEST_P(ForeignFiles, AreRejectedAndLeftUntouched) {
    testsupport::TempDir dir;
    const QString path = dir.file(QStringLiteral("album.mdb"));
    writeFile(path, GetParam().make(path));
    const QByteArray before = fileBytes(path);
    AccessTableReader reader(kProgram, {20s, 60s});
    const QString out = dir.file(QStringLiteral("out.sqlite"));

    EXPECT_EQ(errorNumber([&] { reader.tableNames(path); }), engine::jet::kNotADatabase);
    EXPECT_EQ(errorNumber([&] { reader.copyTables(path, {QStringLiteral("Album")}, out); }),
              engine::jet::kNotADatabase);
    EXPECT_EQ(fileBytes(path), before);
}

INSTANTIATE_TEST_SUITE_P(
    AccessReader, ForeignFiles,
    ::testing::Values(
        ForeignFile{"Empty", [](const QString&) { return QByteArray(); }},
        ForeignFile{"Text",
                    [](const QString&) { return QByteArray("Album;Title\n1;Abbey Road\n"); }},
        ForeignFile{"Sqlite",
                    [](const QString& path) {
                        testsupport::execRaw(path, "CREATE TABLE Album (AlbumID INTEGER)");
                        return fileBytes(path);
                    }},
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
    AccessTableReader reader(kProgram);
    EXPECT_TRUE(reader.canRead(jet));
    EXPECT_FALSE(reader.canRead(text));
    EXPECT_FALSE(reader.canRead(dir.file(QStringLiteral("missing.mdb"))));
    EXPECT_EQ(fileBytes(jet), jetStart(1, 4096));

    QString description;
    const QString missing = dir.file(QStringLiteral("missing.mdb"));
    EXPECT_EQ(errorNumber([&] { reader.tableNames(missing); }, &description),
              engine::jet::kFileNotFound);
    EXPECT_TRUE(description.contains(missing)) << description.toStdString();
}

// The program's ways of ending, each turned into the engine's error.
TEST(AccessReader, TurnsEachEndOfTheProgramIntoTheEnginesError) {
    testsupport::TempDir dir;
    const QString album = dir.file(QStringLiteral("album.mdb"));
    writeFile(album, jetStart(1, 4096));
    const QString unrecognized = QStringLiteral("Unrecognized database format '%1'.").arg(album);
    const struct {
        QByteArray script;
        int number;
        QString description;  // a part of it
    } cases[] = {
        {"echo 'mixorama-mdbread: table not found: TrackRating' >&2; exit 3",
         engine::jet::kObjectNotFound, "could not find the object 'TrackRating'."},
        {"kill -SEGV $$", engine::jet::kNotADatabase, unrecognized},
        {"exec sleep 60", engine::jet::kNotADatabase, unrecognized},
        {"exit 2", engine::jet::kNotADatabase, unrecognized},
        {"exit 77", engine::jet::kNotADatabase, unrecognized},
        {"echo 'SQLite: disk I/O error' >&2; exit 4", engine::jet::kGeneral,
         "SQLite: disk I/O error"},
    };
    int run = 0;
    for (const auto& [script, number, part] : cases) {
        SCOPED_TRACE(script.constData());
        const QString program = writeFakeProgram(dir.file(QString::number(++run)), script);
        AccessTableReader reader(program, {500ms, 5s});
        QString description;
        EXPECT_EQ(errorNumber(
                      [&] {
                          reader.copyTables(album, {"Album", "TrackRating"}, dir.file("o.sqlite"));
                      },
                      &description),
                  number);
        EXPECT_TRUE(description.contains(part)) << description.toStdString();
    }
    AccessTableReader missing(dir.file(QStringLiteral("no-such-program")), {500ms, 5s});
    EXPECT_EQ(errorNumber([&] { missing.tableNames(album); }), engine::jet::kGeneral);
}

TEST(AccessReader, IsTheEnginesReaderAndRunsTheProgramTheEnvironmentNames) {
    installAccessReader();
    EXPECT_NE(dynamic_cast<AccessTableReader*>(engine::foreignTableReader()), nullptr);
    engine::setForeignTableReader(nullptr);
    qputenv("MIXORAMA_MDBREAD", "/somewhere/reader");
    EXPECT_EQ(readerProgramPath(), QStringLiteral("/somewhere/reader"));
    qunsetenv("MIXORAMA_MDBREAD");
    EXPECT_TRUE(readerProgramPath().endsWith(QStringLiteral("/mixorama-mdbread")));
}
