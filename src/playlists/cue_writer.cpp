#include "playlists/cue_writer.h"

#include <QFileInfo>

#include "playlists/playlist_text.h"

namespace playlists {

namespace {

// A quoted text: the format has no escape for a double quote, so it becomes a single one.
QString quoted(const QString& text) {
    return u'"' + singleLine(text).replace(u'"', u'\'') + u'"';
}

// Burning programs choose the decoder of a file by its FILE type, not by its contents: MP3 and
// AIFF have types of their own, and WAVE is the type under which they decode every other audio
// format they know (FLAC, Ogg, Opus, AAC ...). BINARY would burn the file's bytes as noise.
QString fileType(const QString& file) {
    const QString extension = QFileInfo(file).suffix().toLower();
    if (extension == u"mp3") {
        return QStringLiteral("MP3");
    }
    if (extension == u"aif" || extension == u"aiff" || extension == u"aifc") {
        return QStringLiteral("AIFF");
    }
    return QStringLiteral("WAVE");
}

QString fileLine(const QString& file, const QString& folder, PathStyle style) {
    const QString path = pathInPlaylist(file, folder, style);
    if (path.contains(u'"')) {
        throw ExportError(QStringLiteral("The file name \"%1\" holds a double quote, which a cue "
                                         "sheet cannot write; rename the file.")
                              .arg(file));
    }
    return QStringLiteral("FILE \"%1\" %2\n").arg(path, fileType(file));
}

void checkTrackCount(const Playlist& playlist) {
    const auto count = qsizetype(playlist.tracks.size());
    if (count == 0) {
        throw ExportError(QStringLiteral("A cue sheet needs at least one track with a file."));
    }
    if (count > kMaxCdTracks) {
        throw ExportError(
            QStringLiteral("A CD holds at most %1 tracks, and \"%2\" has %3 with a "
                           "file; split it into several cue sheets.")
                .arg(QString::number(kMaxCdTracks), playlist.name, QString::number(count)));
    }
}

QString totalTime(const Playlist& playlist) {
    qint64 seconds = 0;
    for (const PlaylistTrack& track : playlist.tracks) {
        seconds += track.seconds;
    }
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

}  // namespace

QByteArray cueBytes(const Playlist& playlist, const QString& folder, PathStyle style) {
    checkTrackCount(playlist);
    const QString performer =
        playlist.performer.isEmpty() ? QStringLiteral("Various") : playlist.performer;
    QString text = QStringLiteral("REM TOTAL %1\nPERFORMER %2\nTITLE %3\n")
                       .arg(totalTime(playlist), quoted(performer), quoted(playlist.name));
    int number = 0;
    // A CD's tracks are numbered from 01 without gaps, whatever numbers the compilation gave.
    for (const PlaylistTrack& track : playlist.tracks) {
        text += fileLine(track.file, folder, style);
        text += QStringLiteral(
                    "  TRACK %1 AUDIO\n    TITLE %2\n    PERFORMER %3\n"
                    "    INDEX 01 00:00:00\n")
                    .arg(++number, 2, 10, QChar(u'0'))
                    .arg(quoted(track.title), quoted(track.performer));
    }
    return text.toUtf8();
}

}  // namespace playlists
