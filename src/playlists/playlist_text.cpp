#include "playlists/playlist_text.h"

#include <QDir>

namespace playlists {

QString singleLine(const QString& text) {
    QString line = text;
    for (QChar& c : line) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator) {
            c = u' ';
        }
    }
    return line;
}

QString trackLabel(const PlaylistTrack& track) {
    const QString title = singleLine(track.title);
    return track.performer.isEmpty() ? title
                                     : singleLine(track.performer) + QStringLiteral(" - ") + title;
}

QString pathInPlaylist(const QString& file, const QString& folder, PathStyle style) {
    if (singleLine(file) != file) {
        throw ExportError(
            QStringLiteral("The file name \"%1\" holds a line break, which a playlist cannot "
                           "write; rename the file.")
                .arg(file));
    }
    const QString path =
        style == PathStyle::Relative ? QDir(folder).relativeFilePath(file) : QDir::cleanPath(file);
    return QDir::fromNativeSeparators(path);
}

}  // namespace playlists
