#pragma once

#include <gtest/gtest.h>

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <optional>

#include "access/access_reader.h"
#include "albumgen/albumgen.h"
#include "engine/database.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "support/databases.h"
#include "support/document_summary.h"  // texts in failure messages
#include "support/temp_dir.h"

namespace albumtest {

// A row of TempSource is compared as the texts of its cells joined by '|': "<null>" for Null, yes
// or no for Live, else the value's text.
inline const QString kNull = QStringLiteral("<null>");
// TempSource's columns in the order they stand in when the album database has ratings.
inline const QStringList kSourceColumns{
    "ArtistSort",     "PerformerTrack",  "TitleTrack",   "Item",          "Index",
    "Length",         "Version",         "Live",         "RecordedStart", "TitleAlbum",
    "PerformerAlbum", "AlbumArtistSort", "TrackTrackID", "TrackAlbumID",  "RatingTrack",
    "Location",       "ArtistID",        "TrackID",      "MyRecorded"};

// The rows TempSource must hold for a collection, worked out from it directly: one per track
// performer per album performer, a rating or location the collection does not hold as Null, an
// empty version as Null and the recording year from the trimmed date text. In kSourceColumns,
// sorted.
inline QStringList expectedSourceRows(const albumgen::Collection& c) {
    QHash<qint32, QString> artists, ratings, locations;
    for (const albumgen::Artist& artist : c.artists)
        artists.insert(artist.id, artist.name);
    for (const albumgen::Named& rating : c.ratings)
        ratings.insert(rating.id, rating.name);
    for (const albumgen::Named& location : c.locations)
        locations.insert(location.id, location.name);
    const auto orNull = [](const QString& text) { return text.isEmpty() ? kNull : text; };
    const auto number = [](qint64 value) { return QString::number(value); };
    // The artists linked to a track or an album.
    const auto performers = [&](const std::vector<albumgen::Link>& links, qint32 id) {
        QList<qint32> linked;
        for (const albumgen::Link& link : links) {
            if (link.otherId == id && artists.contains(link.artistId))
                linked << link.artistId;
        }
        return linked;
    };
    QStringList rows;
    for (const albumgen::Track& t : c.tracks) {
        const QString year = t.recordedStart.trimmed().left(4);
        for (const albumgen::Album& a : c.albums) {
            if (a.id != t.albumId)
                continue;
            for (qint32 performer : performers(c.artistTrackLinks, t.id))
                for (qint32 albumPerformer : performers(c.artistAlbumLinks, a.id))
                    rows.append(QStringList{
                        t.artistSort, artists[performer], t.title, number(t.item), number(t.index),
                        number(t.length), orNull(t.version), t.live ? "yes" : "no", t.recordedStart,
                        a.title, artists[albumPerformer], a.artistSort, number(t.id),
                        number(t.albumId), orNull(ratings.value(t.ratingId.value_or(0))),
                        orNull(locations.value(a.locationId.value_or(0))), number(performer),
                        number(t.id), year.isEmpty() ? kNull : number(year.toInt())}
                                    .join('|'));
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

// A compilation database with the compilation "Road Trip", open in the engine, with Access files
// read through the reading program; album files are connected as the editor's Connect button
// does.
class AlbumFileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
        accessfile::installAccessReader();
        testsupport::createCompilationDatabase(compilationPath);
        testsupport::execRaw(compilationPath,
                             "INSERT INTO Compilation (Name, Format, C_Length) "
                             "VALUES ('Road Trip', 'CD-R', 74)");
        database = engine::Workspace::defaultWorkspace().openDatabase(compilationPath);
        editor.isSaved = true;
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    void connect(const std::optional<QString>& albumPath) {
        dialogs.answerFile(albumPath);
        store::connectAlbumDatabase(database, dialogs, state, editor);
    }
    void connectAndBuild(const QString& albumPath) {
        connect(albumPath);
        store::buildTempSource(database, state);
    }
    // TempSource's rows, in the given columns and order (its own without one).
    QStringList sourceRows(const QStringList& columns = kSourceColumns,
                           const QString& order = "rowid") {
        QStringList cells;
        for (const QString& column : columns) {
            cells << (column == "Live" ? QString("iif(Live, 'yes', 'no')")
                                       : "ifnull([" + column + "], '" + kNull + "')");
        }
        return query("SELECT group_concat(row, char(10)) FROM (SELECT " +
                     cells.join(" || '|' || ") + " AS row FROM TempSource AS s ORDER BY " + order +
                     ")")
            .split('\n');
    }
    QString query(const QString& sql) { return testsupport::queryOnConnection(database, sql); }

    testsupport::TempDir dir;
    QString compilationPath = dir.file("compilations.mdb");
    engine::Database database;
    platform::ScriptedDialogs dialogs;
    store::AlbumSourceState state;
    store::EditorConnection editor;
};

}  // namespace albumtest
