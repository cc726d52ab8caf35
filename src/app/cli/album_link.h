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
// answer. False, after printing the connect's message (or a plain one), when it failed.
bool connectAlbumFile(engine::Database& database, const QString& albumFile,
                      store::AlbumSourceState& state, Streams streams);

}  // namespace cli
