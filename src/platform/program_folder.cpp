#include "platform/program_folder.h"

#include <QCoreApplication>
#include <QDir>

namespace platform {

QString programFolder() {
    const QString home = qEnvironmentVariable("MIXORAMA_HOME");
    if (!home.isEmpty()) {
        return QDir::cleanPath(home);
    }
    if (QCoreApplication::instance() != nullptr) {
        return QCoreApplication::applicationDirPath();
    }
    return QDir::currentPath();
}

QString dataFolder() {
    const QString folder = programFolder() + QStringLiteral("/data");
    QDir().mkpath(folder);
    return folder;
}

}  // namespace platform
