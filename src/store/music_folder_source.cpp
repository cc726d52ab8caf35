#include "store/music_folder_source.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>
#include <atomic>

#include "engine/jet_error.h"
#include "music/folder_scan.h"
#include "platform/dialogs.h"

namespace store {

const QString kMusicFolderChoice = QStringLiteral("Music Folder");

namespace {

QString cacheFolder() {
    const QString chosen = qEnvironmentVariable("MIXORAMA_MUSIC_CACHE");
    if (!chosen.isEmpty()) {
        return chosen;
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/mixorama/music-folders");
}

QString progressLine(qint64 found, qint64 read) {
    const QLocale numbers(QLocale::English);
    return QStringLiteral("%1 music files found, %2 read")
        .arg(numbers.toString(found), numbers.toString(read));
}

}  // namespace

QString musicCacheFile(const QString& folder) {
    const QByteArray key = QFileInfo(folder).absoluteFilePath().toUtf8();
    const QString name = QString::fromLatin1(
        QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex().left(20));
    return cacheFolder() + QLatin1Char('/') + name + QStringLiteral(".sqlite");
}

std::optional<QString> scanMusicFolder(const QString& folder, platform::Dialogs& dialogs) {
    const QString cache = musicCacheFile(folder);
    if (!QDir().mkpath(QFileInfo(cache).absolutePath())) {
        dialogs.exclamation(QStringLiteral("The folder '%1' for the music folders' scans cannot "
                                           "be made.")
                                .arg(QFileInfo(cache).absolutePath()));
        return std::nullopt;
    }
    std::unique_ptr<platform::Progress> shown =
        dialogs.startProgress(QStringLiteral("Reading the music folder"));
    std::atomic<bool> cancel{false};
    music::ScanProgress progress;
    progress.cancel = &cancel;
    progress.report = [&](qint64 found, qint64 read) {
        shown->report(progressLine(found, read));
        cancel = shown->cancelled();
    };
    music::ScanSummary summary;
    try {
        summary = music::scanFolder(folder, cache, progress);
    } catch (const engine::JetError& error) {
        shown.reset();
        dialogs.exclamation(error.description());
        return std::nullopt;
    }
    shown.reset();
    if (summary.cancelled) {
        return std::nullopt;  // the user stopped it: nothing to tell
    }
    if (summary.tracks == 0 && summary.unreadableFiles.isEmpty()) {
        dialogs.exclamation(QStringLiteral("The folder '%1' holds no music files.").arg(folder));
        return std::nullopt;
    }
    platform::MessageRequest told{platform::kAppTitle, music::summaryLine(summary),
                                  summary.tracks == 0 ? platform::MessageIcon::Exclamation
                                                      : platform::MessageIcon::Information};
    told.details = summary.unreadableFiles.join(QLatin1Char('\n'));
    dialogs.message(told);
    return summary.tracks == 0 ? std::nullopt : std::optional<QString>(cache);
}

}  // namespace store
