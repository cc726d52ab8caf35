#pragma once

#include <QString>
#include <optional>

namespace platform {
class Dialogs;
}

namespace store {

// The caption of the connect dialog's choice of a music folder instead of an album file.
extern const QString kMusicFolderChoice;

// The cache file of a music folder's scan: one file per folder, in the user's cache folder
// (MIXORAMA_MUSIC_CACHE names another folder, for tests and scripts). Scanning the folder again
// reads only what changed since.
QString musicCacheFile(const QString& folder);

// Scans the music folder into its cache with the progress shown, and tells the outcome: the
// summary line, with the files that could not be read on request. Returns the cache file, an
// album database of its own, or nothing when the scan was cancelled, failed or found no track
// (after a message).
std::optional<QString> scanMusicFolder(const QString& folder, platform::Dialogs& dialogs);

}  // namespace store
