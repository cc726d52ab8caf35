#include "platform/program_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace platform {

namespace {

const QString kTemplate = QStringLiteral("/template.mdb");

ProgramLayout selfContained(const QString& folder) {
    const QString clean = QDir::cleanPath(folder);
    return {clean, clean + QStringLiteral("/data"), false};
}

QString executableFolder() {
    if (QCoreApplication::instance() != nullptr) {
        return QCoreApplication::applicationDirPath();
    }
    return QDir::currentPath();
}

}  // namespace

ProgramLayout layoutFor(const QString& home, const QString& executableFolder,
                        const QString& userDataHome) {
    if (!home.isEmpty()) {
        return selfContained(home);
    }
    const QString shared = QDir::cleanPath(executableFolder + QStringLiteral("/../share/mixorama"));
    if (QFileInfo::exists(executableFolder + kTemplate) || !QFileInfo::exists(shared + kTemplate)) {
        return selfContained(executableFolder);
    }
    return {shared, QDir::cleanPath(userDataHome + QStringLiteral("/mixorama")), true};
}

ProgramLayout programLayout() {
    return layoutFor(qEnvironmentVariable("MIXORAMA_HOME"), executableFolder(),
                     QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

QString programFolder() {
    return programLayout().programFolder;
}

QString dataFolder() {
    const QString folder = programLayout().dataFolder;
    QDir().mkpath(folder);
    return folder;
}

}  // namespace platform
