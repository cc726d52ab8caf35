#pragma once

struct sqlite3;

namespace music {

// The album artist of an album whose tracks name several.
inline constexpr char kVariousArtists[] = "Various Artists";

// (Re)writes the seven album tables of a scan cache from its file rows, in the caller's
// transaction: the shapes an album database has (text columns in the engine's order, which must
// be installed on db), plus Track.FilePath. Track ids are the file rows' ids; album ids come
// from ScanAlbum (one per album folder and title) and artist ids from ScanArtist (one per name),
// both kept across scans while used and never given again.
void writeAlbumTables(sqlite3* db);

}  // namespace music
