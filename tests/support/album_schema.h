#pragma once

#include <QString>

namespace testsupport {

// Writes the album database's tables, empty, into an SQLite file (the engine links those like
// any album database); TrackRating only when asked for.
void createAlbumTables(const QString& path, bool withRating);

}  // namespace testsupport
