#pragma once

#include <QSettings>

namespace platform {

// The user's own settings of Mixorama (on Linux ~/.config/Mixorama/Mixorama.conf): what the
// user chose, never what a compilation database holds.
QSettings userSettings();

// A text (a file's path, a printer's name) as one level of a settings key, one text to one key:
// QSettings reads "/" and "\" as group separators and an INI file mangles other characters.
QString settingsKeyOf(const QString& text);

// Writes the settings out; false when they could not be written (a read-only settings file).
bool storeSettings(QSettings& settings);

}  // namespace platform
