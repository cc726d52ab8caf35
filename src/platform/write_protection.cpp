#include "platform/write_protection.h"

#include <QFileInfo>

namespace platform {

bool isWriteProtected(const QFileInfo& info) {
    constexpr QFile::Permissions kAnyWrite =
        QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return !info.isWritable() || !(info.permissions() & kAnyWrite);
}

}  // namespace platform
