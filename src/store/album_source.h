#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace engine {
class Database;
}
namespace platform {
class Dialogs;
}

namespace store {

// What the last connect of an album database left for the rest of the run.
struct AlbumSourceState {
    QString albumDatabasePath;  // the album database chosen last
    bool albumHasRating = false;
    bool albumIsFolder = false;  // a music folder's scan: every track has its file's path
    qint64 passedCount = 0;      // source rows shown; wide enough for any collection
};

// The part of the compilation editor that a connect reads and changes.
struct EditorConnection {
    bool albumConnected = false;
    bool isSaved = false;           // the editor's values are the stored ones
    bool getTracksEnabled = false;  // the editor's "Get Tracks" button
};

extern const QString kNotAnAlbumDatabase;  // the three-line structure message

// The album tables, in the order their links are appended.
const QStringList& albumLinkOrder();

// The folder of the album database chosen last (per-user setting "Parameter/AlbumoryPath").
QString albumFolderSetting();
void setAlbumFolderSetting(const QString& folder);

// Lets the user choose the album database and links its seven tables into the compilation
// database. A file without the album tables shows the structure message; an album database
// without TrackRating is accepted; TempSource or links of an earlier connect that cannot be
// removed give the engine's message. Failures leave "Get Tracks" disabled.
void connectAlbumDatabase(engine::Database& database, platform::Dialogs& dialogs,
                          AlbumSourceState& state, EditorConnection& editor);

// Removes TempSource and the album links, both of the connection alone (they also end with it);
// missing ones are no failure, any other failure throws JetError. The album file itself is never
// touched.
void dropAlbumLinks(engine::Database& database);

// TempSource without rows: the flattened album tables' columns with their types; from a music
// folder with TrackFile, each track's file.
QString tempSourceShapeStatement(const AlbumSourceState& state);

// Fills the shaped TempSource (with MyRecorded, and RatingTrack when the album has no ratings,
// appended) in one pass, ordered by performer: the recording year (the first four characters of
// the trimmed date text, where they are a whole number) and Null for empty versions.
QString tempSourceFillStatement(const AlbumSourceState& state);

// Builds TempSource from the linked album tables and sets passedCount to its rows. TempSource is
// the connection's own table: only this connection sees it, and the file never holds it. Without
// links no TempSource is made and passedCount is 0. Any failure throws JetError and leaves
// passedCount 0; the caller must then not read TempSource, which may still hold rows of an earlier
// build.
void buildTempSource(engine::Database& database, AlbumSourceState& state);

// The recording year of a RecordedStart text: its first four characters after trimming blanks.
QVariant recordingYear(const QString& recordedStart);

}  // namespace store
