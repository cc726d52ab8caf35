#include "playlists/m3u8_writer.h"

#include "playlists/playlist_text.h"

namespace playlists {

QByteArray m3u8Bytes(const Playlist& playlist, const QString& folder, PathStyle style) {
    QString text = QStringLiteral("#EXTM3U\n");
    for (const PlaylistTrack& track : playlist.tracks) {
        text += QStringLiteral("#EXTINF:%1,%2\n%3\n")
                    .arg(QString::number(track.seconds), trackLabel(track),
                         pathInPlaylist(track.file, folder, style));
    }
    return text.toUtf8();
}

}  // namespace playlists
