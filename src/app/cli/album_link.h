#pragma once

#include <QString>

#include "cli/commands.h"

namespace engine {
class Database;
}
namespace store {
struct AlbumSourceState;
}

namespace cli {

// Connects the album database file as the editor's Connect does, with the file as the dialog's
// answer, printing its messages (a damaged album file connects with one). False, after a plain
// message when the connect gave none, when it failed.
bool connectAlbumFile(engine::Database& database, const QString& albumFile,
                      store::AlbumSourceState& state, Streams streams);

}  // namespace cli
