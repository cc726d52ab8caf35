#include "album/album_fixture.h"

#include <QHash>
#include <algorithm>

#include "access/access_reader.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/databases.h"

namespace albumtest {

const QStringList kSourceColumns{
    "ArtistSort",     "PerformerTrack",  "TitleTrack",   "Item",          "Index",
    "Length",         "Version",         "Live",         "RecordedStart", "TitleAlbum",
    "PerformerAlbum", "AlbumArtistSort", "TrackTrackID", "TrackAlbumID",  "RatingTrack",
    "Location",       "ArtistID",        "TrackID",      "MyRecorded"};

QList<SourceRow> expectedSourceRows(const albumgen::Collection& c) {
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
    QList<SourceRow> rows;
    for (const albumgen::Track& t : c.tracks) {
        const auto a =
            std::find_if(c.albums.begin(), c.albums.end(),
                         [&](const albumgen::Album& album) { return album.id == t.albumId; });
        if (a == c.albums.end())
            continue;
        const QString year = t.recordedStart.trimmed().left(4);
        for (qint32 performer : performers(c.artistTrackLinks, t.id)) {
            for (qint32 albumPerformer : performers(c.artistAlbumLinks, a->id)) {
                rows.append(SourceRow{
                    t.artistSort, artists[performer], t.title, number(t.item), number(t.index),
                    number(t.length), orNull(t.version), t.live ? "yes" : "no", t.recordedStart,
                    a->title, artists[albumPerformer], a->artistSort, number(t.id),
                    number(t.albumId), orNull(ratings.value(t.ratingId.value_or(0))),
                    orNull(locations.value(a->locationId.value_or(0))), number(performer),
                    number(t.id), year.isEmpty() ? kNull : number(year.toInt())});
            }
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void AlbumFileTest::SetUp() {
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
    accessfile::installAccessReader();
    compilationPath = dir.file("compilations.mdb");
    testsupport::createCompilationDatabase(compilationPath);
    testsupport::execRaw(compilationPath,
                         "INSERT INTO Compilation (Name, Format, C_Length) "
                         "VALUES ('Road Trip', 'CD-R', 74)");
    database = engine::Workspace::defaultWorkspace().openDatabase(compilationPath);
    editor.isSaved = true;
}

void AlbumFileTest::TearDown() {
    engine::Workspace::defaultWorkspace().close();
}

void AlbumFileTest::connect(const QString& albumPath) {
    dialogs.answerFile(albumPath);
    store::connectAlbumDatabase(database, dialogs, state, editor);
}

void AlbumFileTest::connectAndBuild(const QString& albumPath) {
    connect(albumPath);
    store::buildTempSource(database, state);
}

QList<SourceRow> AlbumFileTest::sourceRows() {
    engine::Recordset table =
        database.openRecordset(QStringLiteral("TempSource"), engine::RecordsetType::Snapshot);
    QList<SourceRow> rows;
    for (int r = 0; r < table.recordCount(); ++r) {
        const QVector<QVariant> values = table.rowAt(r);
        SourceRow row;
        for (const QString& column : kSourceColumns) {
            const QVariant value = values.value(table.fieldIndex(column));
            if (value.isNull())
                row << kNull;
            else if (column == "Live")
                row << (value.toBool() ? "yes" : "no");
            else
                row << value.toString();
        }
        rows.append(row);
    }
    return rows;
}

QStringList AlbumFileTest::sourceColumns() {
    engine::Recordset table =
        database.openRecordset(QStringLiteral("TempSource"), engine::RecordsetType::Snapshot);
    QStringList names;
    for (int i = 0; i < table.fieldCount(); ++i)
        names << table.field(i).name;
    return names;
}

}  // namespace albumtest
