#pragma once

#include <QString>

namespace platform {

struct SplitPath {
    QString folder;    // up to and including the last separator
    QString baseName;  // the file name without its extension
};

// Splits a file path into folder and base name; "\" and "/" both separate folders. A path
// without any separator gives the whole path without extension as folder and no base name.
SplitPath splitPath(const QString& path);

}  // namespace platform
