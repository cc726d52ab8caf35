#pragma once

#include <QString>

// Compilations the printed lists are tested on, written straight into a compilation database.
namespace testsupport {

// Three compilations:
// - 1 "Road Trip" (MD, Sony, box "Shelf A", recorded 12.05.01), 3 tracks, 322 s:
//   1 Miles Davis "So What" (Kind of Blue, 59 s, 1959, item 1 index 1, "Jazz shelf"),
//   2 The Beatles "Help!" (Help!, 138 s, no year, live, item 1 index 2, "Pop shelf"),
//   3 The Beatles "Yesterday" (Help!, 125 s, 1965, item 1 index 13, "Attic box"): the album
//     Help! in two locations.
// - 2 "Autumn" (CD-ROM, no manufacturer, box "B2"), 2 tracks, 3600 s: 1 Miles Davis "So What"
//   (3000 s), 2 Nina Simone "Feeling Good" (600 s, no year).
// - 3 "Empty One" (MD, no tracks).
void fillListSamples(const QString& path);

// A compilation of count tracks by performers of perPerformer tracks each, album titles of five
// tracks each, for lists that run over many pages.
void fillLongCompilation(const QString& path, qint64 id, const QString& name, int count,
                         int perPerformer = 20);

}  // namespace testsupport
