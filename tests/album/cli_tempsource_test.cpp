#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>

#include "album/expected_source.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace albumtest {
namespace {

struct CliRun {
    int exitCode = -1;
    QString out;
    QString err;
};

CliRun runCli(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(MIXORAMA_PROGRAM_DIR "/mixorama-cli"), arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

class CliTempSource : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::exists(MIXORAMA_PROGRAM_DIR "/mixorama-cli"))
            << "build mixorama-cli first";
        qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
        testsupport::createCompilationDatabase(compilations);
    }

    testsupport::TempDir dir;
    QString compilations = dir.file("compilations.mdb");
};

TEST_F(CliTempSource, PrintsTheRowCountOfASmallCollection) {
    albumgen::Options options;
    options.albums = 5;
    options.seed = 3;
    const QString albums = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(albums, options);
    const size_t rows = expectedSourceRows(albumgen::tableRows(albumgen::generate(options))).size();

    const CliRun run = runCli({"tempsource", compilations, albums});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.trimmed(), QString::number(rows));
}

TEST_F(CliTempSource, FailsWithTheMessageOnADamagedFile) {
    const QString damaged = dir.file("damaged.mdb");
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not an album database at all");
    file.close();

    const CliRun run = runCli({"tempsource", compilations, damaged});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains("Unrecognized database format")) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(damaged)) << run.err.toStdString();
}

}  // namespace
}  // namespace albumtest
