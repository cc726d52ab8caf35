#include "support/paths.h"

#include <QDir>

namespace testsupport {

namespace {

// The scans of music folders that tests connect (and the programs they start, which inherit the
// environment) are cached under the temporary folder, never in the user's cache folder.
const bool kMusicCacheSet = [] {
    if (qEnvironmentVariableIsEmpty("MIXORAMA_MUSIC_CACHE")) {
        qputenv("MIXORAMA_MUSIC_CACHE",
                QFile::encodeName(QDir::tempPath() + QStringLiteral("/mixorama-test-scans")));
    }
    return true;
}();

// Their settings (printer calibrations, the media's modes, the album folder) likewise go to a
// folder of their own, never into the user's.
const bool kSettingsFolderSet = [] {
    qputenv("XDG_CONFIG_HOME",
            QFile::encodeName(QDir::tempPath() + QStringLiteral("/mixorama-test-config")));
    return true;
}();

}  // namespace

QString programPath(const QString& name) {
    return QStringLiteral(MIXORAMA_PROGRAM_DIR "/") + name;
}

QString sourcePath(const QString& relative) {
    return QStringLiteral(MIXORAMA_SOURCE_DIR "/") + relative;
}

}  // namespace testsupport
