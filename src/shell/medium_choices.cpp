#include "shell/medium_choices.h"

#include <QFileInfo>

#include "platform/user_settings.h"

namespace shell {

namespace {

// One file reached by two paths (a link, "./") is one database.
QString mdModeKey(const QString& databasePath, qint64 compilationId) {
    const QFileInfo file(databasePath);
    const QString canonical = file.canonicalFilePath();
    return QStringLiteral("MediumChoice/%1/%2/MdMode")
        .arg(platform::settingsKeyOf(canonical.isEmpty() ? file.absoluteFilePath() : canonical))
        .arg(compilationId);
}

}  // namespace

std::optional<medium::MdMode> chosenMdMode(const QString& databasePath, qint64 compilationId) {
    return medium::mdModeNamed(
        platform::userSettings().value(mdModeKey(databasePath, compilationId)).toString());
}

bool storeMdMode(const QString& databasePath, qint64 compilationId, medium::MdMode mode) {
    QSettings settings = platform::userSettings();
    settings.setValue(mdModeKey(databasePath, compilationId), medium::mdModeName(mode));
    return platform::storeSettings(settings);
}

}  // namespace shell
