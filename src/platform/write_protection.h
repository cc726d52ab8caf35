#pragma once

class QFileInfo;

namespace platform {

// True when the file or folder may not be written: its write permission bits are all off, or
// the user may not write it. The bits count even for an administrator, who could write anyway:
// a read-only file or folder is how a user keeps a file as it is.
bool isWriteProtected(const QFileInfo& info);

}  // namespace platform
