#pragma once

#include <gtest/gtest.h>

#include <QString>

#include "assembly/track_picker.h"
#include "engine/database.h"
#include "engine/workspace.h"
#include "support/databases.h"
#include "support/temp_dir.h"

// A compilation database with three compilations: 1 "Road Trip" (MD, 74 minutes, empty),
// 2 "Beat Club" (CD-R, 80, empty) and 3 "Old Friends" (MD, 60, empty).
class PickerTest : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path,
                             "INSERT INTO Compilation (Name, Format, C_Length) VALUES "
                             "('Road Trip', 'MD', 74), ('Beat Club', 'CD-R', 80), "
                             "('Old Friends', 'MD', 60)");
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    engine::Database& open() {
        if (!database.isOpen()) {
            database = engine::Workspace::defaultWorkspace().openDatabase(path);
        }
        return database;
    }
    void closeDatabase() { database.close(); }

    static assembly::SourceTrack track(const QString& performer, const QString& title,
                                       const QVariant& length) {
        assembly::SourceTrack source;
        source.performerTrack = performer;
        source.titleTrack = title;
        source.length = length;
        return source;
    }
    // Adds without being asked about tracks already recorded.
    assembly::AddResult add(qint64 compilation, const QString& performer, const QString& title,
                            const QVariant& length) {
        return assembly::addTrack(open(), compilation, track(performer, title, length), {});
    }

    // "performer/title/length" of the compilation's tracks in TrackNo order, and the numbers.
    QString tracksOf(qint64 compilation) const {
        return testsupport::queryRaw(
            path, QStringLiteral("SELECT group_concat(TrackNo || ':' || Track_Title, ' ') FROM "
                                 "(SELECT TrackNo, Track_Title FROM CompilationTrack WHERE "
                                 "CompilationID_F1 = %1 ORDER BY TrackNo)")
                      .arg(compilation));
    }
    QString storedSums(qint64 compilation) const {
        return testsupport::queryRaw(
            path, QStringLiteral("SELECT SumTrack || '/' || SumTime FROM Compilation WHERE "
                                 "CompilationID_P = %1")
                      .arg(compilation));
    }
    testsupport::TempDir dir;
    const QString path = dir.file("picker.mdb");
    engine::Database database;
};
