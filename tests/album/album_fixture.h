#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <ostream>

#include "albumgen/albumgen.h"
#include "engine/database.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/temp_dir.h"

// Failed comparisons show texts, not code units.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace albumtest {

// A row of TempSource as cell texts in the order of kSourceColumns: "<null>" for Null, yes or no
// for Live, else the value's text.
using SourceRow = QStringList;
inline const QString kNull = QStringLiteral("<null>");
// TempSource's columns in the order they stand in when the album database has ratings.
extern const QStringList kSourceColumns;

// The rows TempSource must hold for a collection, worked out from it directly: one per track
// performer per album performer, a rating or location the collection does not hold as Null, an
// empty version as Null and the recording year from the trimmed date text. Sorted.
QList<SourceRow> expectedSourceRows(const albumgen::Collection& collection);

// A compilation database with the compilation "Road Trip", open in the engine, with Access files
// read through the reading program; album files are connected as the editor's Connect button
// does.
class AlbumFileTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    void connect(const QString& albumPath);
    void connectAndBuild(const QString& albumPath);
    // TempSource in its own row order, and its columns in their order.
    QList<SourceRow> sourceRows();
    QStringList sourceColumns();

    testsupport::TempDir dir;
    QString compilationPath;
    engine::Database database;
    platform::ScriptedDialogs dialogs;
    store::AlbumSourceState state;
    store::EditorConnection editor;
};

}  // namespace albumtest
