#pragma once

#include <QString>

namespace testsupport {

// Writes the album tables into an SQLite file (the engine links those like any database), with
// the rows the tests name: a two-performer track on a two-performer album, a track without
// performer link, dates with and without a leading blank, empty and real versions.
void createSqliteAlbumDatabase(const QString& path, bool withRating);

}  // namespace testsupport
