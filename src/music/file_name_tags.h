#pragma once

#include <QString>

#include "music/track_tags.h"

namespace music {

// The folder of a file's album, relative to the scanned root: "Artist/Album". A file directly in
// the root lies in the root's own folder, named by rootName.
QString albumFolder(const QString& relativePath, const QString& rootName);

// Tags read from a file's path relative to the root, for a file that has none: the title (and
// track and artist) from the file name, the album from its folder, the artist from the folder
// above the album's (inside the root; else the album folder's name).
//   "07 - Artist - Title.mp3" gives track 7, the artist and the title;
//   "07 Title.mp3" and "07 - Title.mp3" give the track and the title;
//   any other name is the title whole.
TrackTags fileNameTags(const QString& relativePath, const QString& rootName);

// Fills the title, artist, album and track that the file's tags left empty from its path, then
// the fallbacks of the names.
void fillFromPath(TrackTags& tags, const QString& relativePath, const QString& rootName);

}  // namespace music
