#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QStringList>
#include <vector>

#include "album/expected_source.h"
#include "engine/database.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/temp_dir.h"

namespace albumtest {

// A compilation database with one compilation, open in the engine, with Access files read
// through the reading program; album files are connected as the editor's Connect button does.
class AlbumFileTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    void connect(const QString& albumPath);
    void connectAndBuild(const QString& albumPath);

    // TempSource in the table's own row order.
    std::vector<SourceRow> sourceRows();
    QStringList sourceFieldNames();
    // The compilations the database holds, read past the engine.
    QString compilationCount() const;

    testsupport::TempDir dir;
    QString compilationPath;
    engine::Database database;
    platform::ScriptedDialogs dialogs;
    store::AlbumSourceState state;
    store::EditorConnection editor;
};

QByteArray fileBytes(const QString& path);

}  // namespace albumtest
