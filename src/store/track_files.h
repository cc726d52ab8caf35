#pragma once

#include <QString>

namespace engine {
class Database;
}

namespace store {

// Tracks taken from a music folder keep the absolute path of their file in this column of
// CompilationTrack, so that a playlist finds them again; tracks from an album database leave it
// Null. Files made before music folders lack the column: the first track with a file adds it,
// inside the transaction that adds the track.
extern const QString kTrackFileColumn;

bool hasTrackFileColumn(engine::Database& database);

// Adds the column when it is missing. Throws JetError.
void ensureTrackFileColumn(engine::Database& database);

}  // namespace store
