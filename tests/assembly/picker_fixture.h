#pragma once

#include <gtest/gtest.h>

#include "assembly/track_picker.h"
#include "engine/workspace.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/samples.h"
#include "support/temp_dir.h"

// A compilation database with three empty compilations: 1 "Road Trip", 2 "Beat Club" and
// 3 "Old Friends".
class PickerTest : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::SampleCompilation compilation;
        for (const char* name : {"Road Trip", "Beat Club", "Old Friends"}) {
            compilation.name = name;
            testsupport::addSample(path, compilation);
        }
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    engine::Database& open() {
        if (!database.isOpen()) {
            database = engine::Workspace::defaultWorkspace().openDatabase(path);
        }
        return database;
    }
    static assembly::SourceTrack track(const QString& performer, const QString& title,
                                       const QVariant& length = 60) {
        assembly::SourceTrack source;
        source.performerTrack = performer;
        source.titleTrack = title;
        source.length = length;
        return source;
    }
    // Adds without being asked about tracks already recorded.
    assembly::AddResult add(qint64 compilation, const QString& title, const QVariant& length = 60) {
        return assembly::addTrack(open(), compilation, track("Performer", title, length), {});
    }
    // Writes of the column fail from now on when the condition holds.
    void failWrites(const QString& table, const QString& column, const QString& when = "1") {
        database.close();
        testsupport::execRaw(path, QString("CREATE TRIGGER write_fails BEFORE UPDATE OF %1 ON %2 "
                                           "WHEN %3 BEGIN SELECT RAISE(ABORT, 'disk full'); END")
                                       .arg(column, table, when));
    }
    QString tracksOf(qint64 id) const { return testsupport::trackList(path, id); }
    QString storedSums(qint64 id) const { return testsupport::storedSums(path, id); }
    testsupport::TempDir dir;
    const QString path = dir.file("picker.mdb");
    engine::Database database;
};
