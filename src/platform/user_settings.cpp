#include "platform/user_settings.h"

namespace platform {

QSettings userSettings() {
    return QSettings(QStringLiteral("Mixorama"), QStringLiteral("Mixorama"));
}

QString settingsKeyOf(const QString& text) {
    // Base64 in its URL form: letters, digits, "-" and "_", which every settings format keeps
    // as they are (an INI file drops the "%" of a percent-encoded key).
    return QString::fromLatin1(
        text.toUtf8().toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

bool storeSettings(QSettings& settings) {
    settings.sync();
    return settings.status() == QSettings::NoError;
}

}  // namespace platform
