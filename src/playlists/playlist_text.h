#pragma once

#include <QString>

#include "playlists/playlist.h"

// Text pieces the writers share.
namespace playlists {

// The text on one line: line breaks, tabs and other control characters become spaces (formats of
// one entry per line have no way to write them; XML 1.0 forbids most of them).
QString singleLine(const QString& text);

// "Performer - Title", or the title alone when the performer is empty; on one line.
QString trackLabel(const PlaylistTrack& track);

// A music file as a playlist in `folder` names it, with forward slashes. Throws ExportError when
// the path holds a line break, which no line-based format can write.
QString pathInPlaylist(const QString& file, const QString& folder, PathStyle style);

}  // namespace playlists
