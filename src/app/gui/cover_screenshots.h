#pragma once

#include <QString>

namespace engine {
class Database;
}

namespace app {

// Pictures of the covers of the first MD and the first CD-ROM compilation with tracks, their
// texts composed and set as the editor does, and of that CD-ROM cover with a text too long for
// its title and time. The covers' texts are changed in the database. False when one is missing
// or cannot be written.
bool coverPictures(engine::Database& database, const QString& folder);

}  // namespace app
