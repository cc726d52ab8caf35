#pragma once

#include <QString>
#include <vector>

#include "playlists/playlist.h"

namespace playlists {

struct ExportResult {
    int written = 0;                     // tracks in the file
    std::vector<PlaylistTrack> leftOut;  // tracks without a file, in the playlist's order
};

// Writes the playlist's tracks that have a file to `outFile` in `format`; the others are left
// out and listed in the result. The file is written beside its destination and takes its place
// only when complete. Throws ExportError when the format cannot hold the tracks or the file
// cannot be written (a read-only folder, a full disk, a folder or a pipe in its place); nothing
// is written then, and an earlier file stays as it was.
ExportResult writePlaylist(const Playlist& playlist, const QString& outFile, PlaylistFormat format,
                           PathStyle style = PathStyle::Relative);

// What a window or the command line tells about the tracks left out: how many of how many and
// which, the first few by number and "Performer - Title". Empty when no track was left out.
QString leftOutMessage(const ExportResult& result);

}  // namespace playlists
