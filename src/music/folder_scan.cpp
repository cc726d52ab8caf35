#include "music/folder_scan.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QLocale>

#include "engine/jet_error.h"
#include "music/file_name_tags.h"
#include "music/scan_cache.h"
#include "music/track_tags.h"

namespace music {

namespace {

constexpr int kBatchSize = 200;  // files read per transaction: what a cancel or a crash keeps

QString counted(qint64 count, const char* one, const char* many) {
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    return english.toString(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

bool cancelled(const ScanProgress& progress) {
    return progress.cancel != nullptr && progress.cancel->load();
}

QString cleanRoot(const QString& root) {
    const QFileInfo info(root);
    if (root.isEmpty() || !info.isDir()) {
        throw engine::JetError(engine::jet::kFileNotFound,
                               QStringLiteral("The music folder '%1' does not exist.").arg(root));
    }
    return QDir::cleanPath(info.absoluteFilePath());
}

// Walks the tree and keeps the cache's rows in step with it; false when cancelled.
bool scanTree(const QString& root, ScanCache& cache, const ScanProgress& progress,
              ScanSummary& summary) {
    const QString rootName = QFileInfo(root).fileName();
    const QDir rootDir(root);
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    qint64 found = 0;
    qint64 readInBatch = 0;
    cache.beginBatch();
    while (files.hasNext()) {
        files.next();
        const QFileInfo info = files.fileInfo();
        if (!isAudioFileName(info.fileName()))
            continue;
        if (cancelled(progress)) {
            cache.commitBatch();
            return false;
        }
        ++found;
        const QString path = rootDir.relativeFilePath(info.filePath());
        const FileStamp stamp{info.size(), info.lastModified().toMSecsSinceEpoch()};
        if (!cache.keepIfUnchanged(path, stamp)) {
            std::optional<TrackTags> tags = readTags(info.filePath());
            if (tags)
                fillFromPath(*tags, path, rootName);
            cache.store(path, albumFolder(path, rootName), stamp, tags);
            ++summary.filesRead;
            ++readInBatch;
        }
        if (progress.report)
            progress.report(found, summary.filesRead);
        // Files met unchanged cost no commit of their own: an unchanged tree is one transaction.
        if (readInBatch == kBatchSize) {
            cache.commitBatch();
            cache.beginBatch();
            readInBatch = 0;
        }
    }
    return true;
}

}  // namespace

bool isAudioFileName(const QString& name) {
    static const QStringList extensions{"flac", "mp3", "ogg", "oga",  "opus", "m4a", "aac",
                                        "wma",  "wav", "aif", "aiff", "ape",  "wv"};
    return extensions.contains(QFileInfo(name).suffix(), Qt::CaseInsensitive);
}

ScanSummary scanFolder(const QString& root, const QString& cacheFile,
                       const ScanProgress& progress) {
    const QString folder = cleanRoot(root);
    ScanSummary summary;
    try {
        ScanCache cache(cacheFile, folder);
        summary.cancelled = !scanTree(folder, cache, progress, summary);
        if (!summary.cancelled) {
            cache.finish();
            cache.commitBatch();
            summary.tracks = cache.trackCount();
            summary.albums = cache.albumCount();
        }
        summary.unreadableFiles = cache.unreadableFiles();
    } catch (const engine::JetError& error) {
        throw engine::JetError(
            error.number(), QStringLiteral("The music folder cache '%1' could not be written: %2")
                                .arg(cacheFile, error.description()));
    }
    return summary;
}

QString summaryLine(const ScanSummary& summary) {
    if (summary.cancelled)
        return QStringLiteral("Scan cancelled after %1")
            .arg(counted(summary.filesRead, "file read", "files read"));
    QString line = counted(summary.tracks, "track", "tracks") + QStringLiteral(" in ") +
                   counted(summary.albums, "album", "albums");
    if (!summary.unreadableFiles.isEmpty())
        line += QStringLiteral("; ") + counted(summary.unreadableFiles.size(),
                                               "file could not be read", "files could not be read");
    return line;
}

}  // namespace music
