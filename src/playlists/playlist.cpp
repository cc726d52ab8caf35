#include "playlists/playlist.h"

#include <QFileInfo>

namespace playlists {

std::optional<PlaylistFormat> formatForFile(const QString& outFile) {
    const QString extension = QFileInfo(outFile).suffix().toLower();
    if (extension == u"m3u8" || extension == u"m3u") {
        return PlaylistFormat::M3u8;
    }
    if (extension == u"xspf") {
        return PlaylistFormat::Xspf;
    }
    if (extension == u"cue") {
        return PlaylistFormat::Cue;
    }
    return std::nullopt;
}

}  // namespace playlists
