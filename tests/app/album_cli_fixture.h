#pragma once

#include <gtest/gtest.h>

#include <QStringList>

#include "app/program_run.h"
#include "support/temp_dir.h"

// A compilation database of the test's own and a generated album database shared by the suite,
// both reached through mixorama-cli.
class AlbumCliTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        albums = new testsupport::TempDir;
        const testsupport::ProgramRun made =
            testsupport::cli({"make-albums", albumPath(), "--albums", "20", "--seed", "3"});
        ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    }
    static void TearDownTestSuite() {
        delete albums;
        albums = nullptr;
    }
    static QString albumPath() { return albums->file("albums.mdb"); }

    // Makes the compilation database and runs the statement that fills it.
    void makeDatabase(const QString& compilations) {
        ASSERT_EQ(testsupport::cli({"new", path}).exitCode, 0);
        sql(compilations);
    }
    // The rows a statement prints, without the header line.
    QStringList sql(const QString& statement) {
        const testsupport::ProgramRun result = testsupport::cli({"sql", path, statement});
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        return result.out.split('\n', Qt::SkipEmptyParts).mid(1);
    }

    static inline testsupport::TempDir* albums = nullptr;
    testsupport::TempDir dir;
    const QString path = dir.file("c.mdb");
};
