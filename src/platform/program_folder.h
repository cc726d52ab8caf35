#pragma once

#include <QString>

namespace platform {

// The program folder: MIXORAMA_HOME when set, else the folder of the executable.
// It holds template.mdb, the intro picture and the help pages; data/ is made on demand.
QString programFolder();
QString dataFolder();  // programFolder()/data, created when missing

}  // namespace platform
