// mixorama-cli report: each list as PDF, and the print tool's refusals.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "app/program_run.h"
#include "support/databases.h"
#include "support/list_samples.h"
#include "support/temp_dir.h"

using testsupport::cli;
using testsupport::ProgramRun;

namespace {

QString pdfWords(const QString& path) {
    QProcess process;
    process.start("pdftotext", {path, "-"});
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAllStandardOutput()).simplified();
}

class ReportCommand : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::fillListSamples(path);
    }
    void expectWritten(const ProgramRun& run, const QString& caption) {
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out, caption + ": 1 page(s) written to " + pdf + "\n");
    }

    testsupport::TempDir dir;
    QString path = dir.file("c.mdb");
    QString pdf = dir.file("out.pdf");
};

TEST_F(ReportCommand, WritesEachListAsPdf) {
    expectWritten(cli({"report", path, "tracks-all", pdf}), "All Tracks");
    const QString all = pdfWords(pdf);
    for (const char* text : {"Nina Simone", "Feeling Good 10:00", "Autumn", "Road Trip"}) {
        EXPECT_TRUE(all.contains(text)) << text << ": " << all.toStdString();
    }

    expectWritten(cli({"report", path, "tracks", "Road Trip", pdf, "--paper", "letter"}),
                  "Tracks on Selected Compilation");
    const QString tracks = pdfWords(pdf);
    EXPECT_TRUE(tracks.contains("0:05:22")) << tracks.toStdString();
    EXPECT_TRUE(tracks.contains("MD, Sony")) << tracks.toStdString();

    expectWritten(cli({"report", path, "protocol", "Autumn", pdf}), "Recording Protocol");
    const QString protocol = pdfWords(pdf);
    EXPECT_TRUE(protocol.contains("Albums required for this compilation: Jazz shelf"))
        << protocol.toStdString();
    EXPECT_TRUE(protocol.contains("Page 1 of 1"));
}

TEST_F(ReportCommand, RefusesWithThePrintToolsMessages) {
    const auto expectRefused = [&](const QStringList& args, const QString& message) {
        const ProgramRun run = cli(args);
        EXPECT_EQ(run.exitCode, 1) << args.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains(message + "\n")) << run.err.toStdString();
        EXPECT_FALSE(QFile::exists(pdf));
    };
    expectRefused({"report", path, "tracks", "Empty One", pdf},
                  "The selected compilation contains no tracks");
    expectRefused({"report", path, "protocol", "Empty One", pdf},
                  "The selected compilation contains no tracks");
    expectRefused({"report", path, "tracks", "Nowhere", pdf},
                  "There is no compilation named \"Nowhere\".");

    testsupport::execRaw(path, "DELETE FROM CompilationTrack");
    expectRefused({"report", path, "tracks-all", pdf}, "No compilation contains any tracks");

    EXPECT_EQ(cli({"report", path, "protocol", pdf}).exitCode, 2);
    EXPECT_EQ(cli({"report", path, "covers", "Road Trip", pdf}).exitCode, 2);
    EXPECT_EQ(cli({"report", path, "tracks-all", pdf, "--paper", "A3"}).exitCode, 2);
}

TEST_F(ReportCommand, APdfThatCannotBeWrittenKeepsTheEarlierOne) {
    QFile earlier(pdf);
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.write("earlier");
    earlier.close();
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    const ProgramRun run = cli({"report", path, "tracks-all", pdf});
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Cannot write to PDF file. May be it is open?\n"));
    EXPECT_EQ(testsupport::fileBytes(pdf), "earlier");
    // A full disk is named as the cause.
    if (QFileInfo::exists("/dev/full")) {
        EXPECT_TRUE(cli({"report", path, "tracks-all", "/dev/full"})
                        .err.endsWith("Cannot write to PDF file. May be it is open?\n"
                                      "No space left on device.\n"));
    }
}

}  // namespace
