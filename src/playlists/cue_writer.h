#pragma once

#include <QByteArray>

#include "playlists/playlist.h"

namespace playlists {

// The most tracks an audio CD holds.
inline constexpr int kMaxCdTracks = 99;

// A cue sheet for an audio CD of one music file per track, in UTF-8, for a sheet in `folder`:
// the total time, the compilation's performer and title, then each track's file, number (01 on),
// title, performer and its start at the beginning of its file. Every track must have a file.
// Throws ExportError for no tracks or more than kMaxCdTracks, and for a file name the sheet
// cannot write.
QByteArray cueBytes(const Playlist& playlist, const QString& folder, PathStyle style);

}  // namespace playlists
