#pragma once

#include <QByteArray>

#include "playlists/playlist.h"

namespace playlists {

// An XSPF playlist (XML, version 1): the playlist's title and creator, and per track its file as
// a percent-encoded file URI, title, creator, album, number and duration in milliseconds. Every
// track must have a file.
QByteArray xspfBytes(const Playlist& playlist);

}  // namespace playlists
