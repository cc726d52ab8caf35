#pragma once

#include <QString>
#include <optional>

#include "platform/dialogs.h"

namespace app {

// The database an installed program opens when started without a file the first time: a demo
// made in the user's data folder, as ./run.sh makes one in the build folder's. None when the
// demo is there already (it is one Open away: the Open dialog starts in that folder), when
// the program runs from a program folder, or when the demo cannot be made (the user is told why).
std::optional<QString> firstStartDemo(platform::Dialogs& dialogs);

}  // namespace app
