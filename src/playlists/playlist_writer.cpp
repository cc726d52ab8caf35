#include "playlists/playlist_writer.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>

#include "platform/write_protection.h"
#include "playlists/cue_writer.h"
#include "playlists/m3u8_writer.h"
#include "playlists/playlist_text.h"
#include "playlists/xspf_writer.h"

namespace playlists {

namespace {

// Tracks named in the message before "and N more".
constexpr qsizetype kNamedLeftOut = 5;

[[noreturn]] void failWrite(const QString& path, const QString& reason) {
    throw ExportError(QStringLiteral("Cannot write the playlist \"%1\": %2.").arg(path, reason));
}

QByteArray formatted(const Playlist& playlist, const QString& outFile, PlaylistFormat format,
                     PathStyle style) {
    const QString folder = QFileInfo(outFile).absolutePath();
    switch (format) {
        case PlaylistFormat::M3u8:
            return m3u8Bytes(playlist, folder, style);
        case PlaylistFormat::Xspf:
            return xspfBytes(playlist);
        case PlaylistFormat::Cue:
            return cueBytes(playlist, folder, style);
    }
    return {};
}

// A new file in place of a folder or a pipe would take the place of something that is not a
// playlist: QSaveFile would rename over the one and replace the other.
void checkTarget(const QString& path) {
    const QFileInfo target(path);
    const QFileInfo folder(target.absolutePath());
    if (target.isDir()) {
        failWrite(path, QStringLiteral("it is a folder"));
    }
    if (target.exists() && !target.isFile()) {
        failWrite(path, QStringLiteral("it is not a regular file"));
    }
    if (!folder.isDir()) {
        failWrite(path, QStringLiteral("its folder does not exist"));
    }
    if (platform::isWriteProtected(folder) ||
        (target.exists() && platform::isWriteProtected(target))) {
        failWrite(path, QStringLiteral("the file or its folder is read-only"));
    }
}

// Unbuffered, so that a write cut short by a full disk fails here with the system's cause.
void saveBytes(const QString& path, const QByteArray& bytes) {
    checkTarget(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        failWrite(path, file.errorString());
    }
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0) {
            const QString reason = file.errorString();
            file.cancelWriting();
            failWrite(path, reason);
        }
        done += written;
    }
    if (!file.commit()) {
        failWrite(path, file.errorString());
    }
}

}  // namespace

ExportResult writePlaylist(const Playlist& playlist, const QString& outFile, PlaylistFormat format,
                           PathStyle style) {
    ExportResult result;
    Playlist withFiles{playlist.name, playlist.performer, {}};
    for (const PlaylistTrack& track : playlist.tracks) {
        (track.file.isEmpty() ? result.leftOut : withFiles.tracks).push_back(track);
    }
    saveBytes(outFile, formatted(withFiles, outFile, format, style));
    result.written = int(withFiles.tracks.size());
    return result;
}

QString leftOutMessage(const ExportResult& result) {
    const auto count = qsizetype(result.leftOut.size());
    if (count == 0) {
        return {};
    }
    QStringList named;
    for (qsizetype i = 0; i < std::min(count, kNamedLeftOut); ++i) {
        const PlaylistTrack& track = result.leftOut[size_t(i)];
        named << QString::number(track.number) + u' ' + trackLabel(track);
    }
    QString list = named.join(QStringLiteral(", "));
    if (count > kNamedLeftOut) {
        list += QStringLiteral(" and %1 more").arg(count - kNamedLeftOut);
    }
    if (result.written == 0) {
        return QStringLiteral("None of the tracks has a file, so the playlist is empty: %1.")
            .arg(list);
    }
    const QString total = QString::number(result.written + count);
    return count == 1
               ? QStringLiteral("1 of %1 tracks has no file and was left out: %2.").arg(total, list)
               : QStringLiteral("%1 of %2 tracks have no file and were left out: %3.")
                     .arg(QString::number(count), total, list);
}

}  // namespace playlists
