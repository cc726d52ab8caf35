#pragma once

#include <QString>

namespace shell {

// Puts a finished replacement in the place of a file in one step. The replacement first gets the
// file's permissions, its group and, where this process may set them, its owner; it is flushed
// to the disk, renamed over the file, and the folder is flushed so that the rename itself lasts.
// Both must be in one folder. On failure the replacement is removed, the file is left as it was,
// and JetError 3043 says why.
void replaceFile(const QString& replacement, const QString& target);

// Removes a file left behind by an earlier run, and its journal; a symbolic link is removed, not
// the file it points to. Throws JetError 3204 naming the file when it cannot be removed.
void removeLeftover(const QString& path);

}  // namespace shell
