#include "support/paths.h"

namespace testsupport {

QString programPath(const QString& name) {
    return QStringLiteral(MIXORAMA_PROGRAM_DIR "/") + name;
}

QString sourcePath(const QString& relative) {
    return QStringLiteral(MIXORAMA_SOURCE_DIR "/") + relative;
}

}  // namespace testsupport
