#include "store/album_source.h"

#include <QFileInfo>

#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/transaction.h"
#include "platform/dialogs.h"
#include "platform/split_path.h"
#include "platform/user_settings.h"
#include "store/music_folder_source.h"

namespace store {

const QString kNotAnAlbumDatabase = QStringLiteral(
    "Wrong Database structure. This is not a Albumory database.\r\n"
    "Maybe it's the Compilation database?\r\n"
    "Solution: open an existing Albumory database.");

namespace {

const QString kRatingTable = QStringLiteral("TrackRating");

// Ends a connect: the editor cannot get tracks and the album counts as unrated.
void markConnectFailed(AlbumSourceState& state, EditorConnection& editor) {
    editor.getTracksEnabled = false;
    editor.albumConnected = false;
    state.albumHasRating = false;
}

void markConnected(EditorConnection& editor) {
    editor.albumConnected = true;
    if (editor.isSaved) {
        editor.getTracksEnabled = true;
    }
}

// Deletes a table or link; one that is not there is no failure. Anything else ends the step that
// asked: TempSource must never outlive a failed attempt to replace it unnoticed.
void deleteIfPresent(engine::Database& database, const QString& table) {
    try {
        database.deleteTable(table);
    } catch (const engine::JetError& error) {
        if (error.number() != engine::jet::kItemNotFound) {
            throw;
        }
    }
}

// The album tables TempSource is made from; TrackRating is optional.
bool albumTablesLinked(const engine::Database& database) {
    for (const QString& table : albumLinkOrder()) {
        if (table != kRatingTable && database.linkConnect(table).isEmpty()) {
            return false;
        }
    }
    return true;
}

// A damaged page of the album file reads as no rows: the user hears which tracks are missing
// from the source rather than missing them unnoticed.
void reportIncompleteTables(const engine::Database& database, const QString& albumPath,
                            platform::Dialogs& dialogs) {
    const std::vector<engine::IncompleteTable> incomplete = database.incompleteLinks();
    if (incomplete.empty()) {
        return;
    }
    dialogs.exclamation(
        QStringLiteral("The album database '%1' is damaged: not every row could be read.\r\n")
            .arg(albumPath) +
        engine::describeIncompleteTables(incomplete).join(QStringLiteral("\r\n")) +
        QStringLiteral("\r\nThe rows that could not be read are missing from the tracks."));
}

}  // namespace

const QStringList& albumLinkOrder() {
    static const QStringList order{"Album",           "Artist",   "Track",      "ArtistAlbumLink",
                                   "ArtistTrackLink", "Location", "TrackRating"};
    return order;
}

QString albumFolderSetting() {
    QSettings settings = platform::userSettings();
    return settings.value(QStringLiteral("Parameter/AlbumoryPath")).toString();
}

void setAlbumFolderSetting(const QString& folder) {
    QSettings settings = platform::userSettings();
    settings.setValue(QStringLiteral("Parameter/AlbumoryPath"), folder);
}

void connectAlbumDatabase(engine::Database& database, platform::Dialogs& dialogs,
                          AlbumSourceState& state, EditorConnection& editor) {
    state.albumHasRating = true;
    platform::FileRequest request;
    request.title = QStringLiteral("Connect to Album Database");
    request.filter = QStringLiteral("MS Access Files (*.mdb)|*.mdb");
    request.filterIndex = 1;
    request.initialFolder = albumFolderSetting();
    request.folderChoice = kMusicFolderChoice;
    const std::optional<QString> chosen = dialogs.openFile(request);
    if (!chosen) {
        markConnectFailed(state, editor);
        return;
    }
    try {
        dropAlbumLinks(database);
    } catch (const engine::JetError& error) {
        // TempSource or the links of an earlier connect could not be removed: going on would
        // show their rows as those of the chosen file.
        markConnectFailed(state, editor);
        dialogs.exclamation(error.description());
        return;
    }
    // A music folder is scanned into a cache that is an album database of its own.
    const bool folder = QFileInfo(*chosen).isDir();
    const std::optional<QString> albumFile = folder ? scanMusicFolder(*chosen, dialogs) : chosen;
    if (!albumFile) {
        markConnectFailed(state, editor);
        return;
    }
    try {
        setAlbumFolderSetting(folder ? *chosen : platform::splitPath(*chosen).folder);
        state.albumDatabasePath = *chosen;
        state.albumIsFolder = folder;
        const QString connect = QStringLiteral(";DATABASE=") + *albumFile;
        std::vector<engine::TableDef> links;
        for (const QString& table : albumLinkOrder()) {
            links.push_back(engine::TableDef{table, connect, table, {}});
        }
        database.appendTables(links);
    } catch (const engine::JetError& error) {
        markConnectFailed(state, editor);
        if (error.number() == engine::jet::kNotADatabase) {
            dialogs.exclamation(error.description());  // a damaged or foreign file
            return;
        }
        if (error.number() != engine::jet::kObjectNotFound) {
            return;  // anything else ends the connect without a word
        }
        if (!error.description().contains(kRatingTable, Qt::CaseInsensitive)) {
            dialogs.exclamation(kNotAnAlbumDatabase);
            return;
        }
        // No rating table: the album database is fine without it. TrackRating is linked last,
        // so every other link is in place.
    }
    reportIncompleteTables(database, state.albumDatabasePath, dialogs);
    markConnected(editor);
}

void dropAlbumLinks(engine::Database& database) {
    QStringList tables{QStringLiteral("TempSource")};
    tables << "Album"
           << "Artist"
           << "Track"
           << "ArtistAlbumLink"
           << "ArtistTrackLink"
           << "TrackRating"
           << "Location";
    for (const QString& table : tables) {
        deleteIfPresent(database, table);
    }
    database.refreshTableDefs();
}

namespace {

// The year of a recording: the first four characters of the trimmed date text, where they are a
// whole number.
const QString kRecordingYear = QStringLiteral(
    "IIf(Left(Trim(Track.RecordedStart), 4) LIKE '#*' And "
    "    Not Left(Trim(Track.RecordedStart), 4) LIKE '*[!0-9]*', "
    "    Val(Left(Trim(Track.RecordedStart), 4)), Null)");

// The picked columns; with `fixed`, an empty version reads Null.
QString tempSourceColumns(const AlbumSourceState& state, bool fixed) {
    const bool withRating = state.albumHasRating;
    QString sql = QStringLiteral(
        "SELECT Track.ArtistSort, Artist.Name As PerformerTrack, "
        "       Track.Title As TitleTrack, Track.Item, Track.Index, Track.Length, ");
    sql += fixed ? QStringLiteral("IIf(Track.Version = '', Null, Track.Version), ")
                 : QStringLiteral("Track.Version, ");
    sql += QStringLiteral(
        "       Track.Live, Track.RecordedStart, "
        "       Album.Title As TitleAlbum, Artist_1.Name As PerformerAlbum, "
        "       Album.ArtistSort As AlbumArtistSort, "
        "       Track.TrackID As TrackTrackID, Track.AlbumID As TrackAlbumID, ");
    sql +=
        withRating
            ? QStringLiteral("       TrackRating.TrackRating As RatingTrack, Location.Location, ")
            : QStringLiteral("       Location.Location, ");
    if (state.albumIsFolder) {
        sql += QStringLiteral("       Track.FilePath As TrackFile, ");
    }
    sql += QStringLiteral("       ArtistTrackLink.ArtistID, ArtistTrackLink.TrackID ");
    return sql;
}

QString tempSourceJoins(bool withRating) {
    QString sql =
        withRating
            ? QStringLiteral("FROM   (((((Artist INNER JOIN (Track INNER JOIN ArtistTrackLink ON ")
            : QStringLiteral("FROM   ((((Artist INNER JOIN (Track INNER JOIN ArtistTrackLink ON ");
    sql += QStringLiteral(
        "       Track.TrackID = ArtistTrackLink.TrackID) ON "
        "       Artist.ArtistID = ArtistTrackLink.ArtistID) INNER JOIN Album ON "
        "       Track.AlbumID = Album.AlbumID) INNER JOIN ArtistAlbumLink ON "
        "       Album.AlbumID = ArtistAlbumLink.AlbumID) INNER JOIN "
        "       Artist AS Artist_1 ON ArtistAlbumLink.ArtistID = Artist_1.ArtistID) ");
    if (withRating) {
        sql += QStringLiteral(
            "       LEFT JOIN TrackRating ON "
            "       Track.TrackRatingID = TrackRating.TrackRatingID) ");
    }
    sql += QStringLiteral("       LEFT JOIN Location ON Album.LocationID = Location.LocationID ");
    return sql;
}

const QString kTempSourceOrder = QStringLiteral(
    "       ORDER BY Track.ArtistSort, Album.ArtistSort, Album.Title, Track.Item, Track.Index");

}  // namespace

QString tempSourceShapeStatement(const AlbumSourceState& state) {
    return tempSourceColumns(state, false) + QStringLiteral("INTO   TempSource ") +
           tempSourceJoins(state.albumHasRating) + QStringLiteral("       WHERE False");
}

QString tempSourceFillStatement(const AlbumSourceState& state) {
    QString sql = QStringLiteral("INSERT INTO TempSource ") + tempSourceColumns(state, true);
    sql += QStringLiteral(", ") + kRecordingYear;
    if (!state.albumHasRating) {
        sql += QStringLiteral(", Null");
    }
    return sql + QLatin1Char(' ') + tempSourceJoins(state.albumHasRating) + kTempSourceOrder;
}

void buildTempSource(engine::Database& database, AlbumSourceState& state) {
    state.passedCount = 0;
    // TempSource is a table of this connection (engine/connection_tables.h), deliberately not of
    // the compilation file as in earlier versions: another window or program on the same file
    // would replace it under the rows this one shows and adds, and a killed run would leave it.
    // One transaction for the whole build: the table's new pages then need no journal, and a
    // failed build leaves no half TempSource.
    engine::ScopedTransaction build(database);
    deleteIfPresent(database, QStringLiteral("TempSource"));
    if (!albumTablesLinked(database)) {
        build.commit();  // nothing connected: no source rows
        return;
    }
    // The empty table takes its column types from the album tables; the rows then arrive
    // already fixed up, in one pass.
    database.execute(tempSourceShapeStatement(state));
    database.refreshTableDefs();
    database.appendField(QStringLiteral("TempSource"),
                         {QStringLiteral("MyRecorded"), engine::FieldType::Integer, 0});
    if (!state.albumHasRating) {
        database.appendField(QStringLiteral("TempSource"),
                             {QStringLiteral("RatingTrack"), engine::FieldType::Text, 50});
    }
    database.execute(tempSourceFillStatement(state));
    engine::Recordset rows = database.openRecordset(
        QStringLiteral("SELECT Count(*) AS N FROM TempSource"), engine::RecordsetType::Snapshot);
    const qint64 count = rows.value(0).toLongLong();
    rows.close();
    build.commit();
    state.passedCount = count;
}

QVariant recordingYear(const QString& recordedStart) {
    return QVariant(recordedStart.trimmed().left(4));
}

}  // namespace store
