#pragma once

#include <QString>

#include "playlists/playlist_writer.h"

namespace engine {
class Database;
}
namespace platform {
class Dialogs;
}

namespace shell {

// A compilation's tracks in their order as a playlist: the compilation's name, the performer
// when every track has the same one, and each track's music file where it has one (tracks from
// an album database have none; a file that is gone counts as none). Throws JetError.
playlists::Playlist compilationPlaylist(engine::Database& database, qint64 compilationId);

// Asked before an M3U8 playlist or a CUE sheet is written; No (the default) writes paths
// relative to the list's folder.
extern const QString kFullPathsQuestion;

// The file dialog's filter: M3U8, XSPF and CUE, in that order.
extern const QString kPlaylistFilter;

// "14 tracks written to FILE", then the tracks left out when there are any.
QString exportOutcome(const playlists::ExportResult& result, const QString& file);

// The Export command of the windows that show a compilation's tracks: asks for the file (its
// extension, or the filter chosen, gives the format), asks before replacing one and whether to
// write full paths, writes the playlist and tells the outcome. A failure is told; it leaves no file
// half-written.
void exportCompilationPlaylist(engine::Database& database, qint64 compilationId,
                               platform::Dialogs& dialogs);

}  // namespace shell
