#pragma once

#include <QString>
#include <optional>
#include <stdexcept>
#include <vector>

// A compilation as the programs that play or burn it read it: M3U8 and XSPF playlists and CUE
// sheets. Nothing here knows the database; the caller fills a Playlist from a compilation.
namespace playlists {

struct PlaylistTrack {
    int number = 0;
    QString performer, title, album;
    int seconds = 0;
    QString file;  // the absolute path of the track's music file; empty when it has none
};

struct Playlist {
    QString name;
    QString performer;  // may be empty: a cue sheet then names the performer "Various"
    std::vector<PlaylistTrack> tracks;
};

enum class PlaylistFormat { M3u8, Xspf, Cue };

// How M3U8 and CUE name the music files: relative to the playlist's folder, so that the folder
// can move with its music, or as absolute paths. XSPF always names them by absolute file URIs.
enum class PathStyle { Relative, Absolute };

// The format an output file's extension asks for (.m3u8 and .m3u, .xspf, .cue, in any case);
// nullopt for any other.
std::optional<PlaylistFormat> formatForFile(const QString& outFile);

// A playlist that cannot be written: the format cannot hold it (a cue sheet of more than 99
// tracks, a file name the format cannot write) or the file cannot be written (a read-only folder,
// a full disk, a folder or a pipe in the file's place). what() is the message for the user.
class ExportError : public std::runtime_error {
  public:
    explicit ExportError(const QString& message)
        : std::runtime_error(message.toStdString()), message_(message) {}
    const QString& message() const { return message_; }

  private:
    QString message_;
};

}  // namespace playlists
