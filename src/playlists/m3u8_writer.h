#pragma once

#include <QByteArray>

#include "playlists/playlist.h"

namespace playlists {

// An extended M3U playlist in UTF-8 without a byte order mark, for a playlist in `folder`: per
// track "#EXTINF:seconds,Performer - Title" and the file's path. Every track must have a file.
// Throws ExportError for a path the format cannot write.
QByteArray m3u8Bytes(const Playlist& playlist, const QString& folder, PathStyle style);

}  // namespace playlists
