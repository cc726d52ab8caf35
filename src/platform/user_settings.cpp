#include "platform/user_settings.h"

#include <QUrl>

namespace platform {

QSettings userSettings() {
    return QSettings(QStringLiteral("Mixorama"), QStringLiteral("Mixorama"));
}

QString settingsKeyOf(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

bool storeSettings(QSettings& settings) {
    settings.sync();
    return settings.status() == QSettings::NoError;
}

}  // namespace platform
