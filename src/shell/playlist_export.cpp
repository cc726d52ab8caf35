#include "shell/playlist_export.h"

#include <QFileInfo>

#include "assembly/compilation_record.h"
#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "platform/dialogs.h"
#include "playlists/playlist_writer.h"
#include "store/track_files.h"

namespace shell {

const QString kPlaylistFilter = QStringLiteral(
    "M3U8 Playlist (*.m3u8)|*.m3u8|XSPF Playlist (*.xspf)|*.xspf|CUE Sheet (*.cue)|*.cue");

namespace {

// A name for the file dialog to start with: the compilation's, without the folder separator.
QString suggestedFileName(const QString& name) {
    return QString(name).replace(QLatin1Char('/'), QLatin1Char('-'));
}

// M3U8 and CUE name the files relative to the list unless the user wants them in full; XSPF
// always names them in full.
playlists::PathStyle pathStyle(playlists::PlaylistFormat format, platform::Dialogs& dialogs) {
    if (format == playlists::PlaylistFormat::Xspf ||
        !dialogs.askYesNo(kFullPathsQuestion, platform::MessageAnswer::No)) {
        return playlists::PathStyle::Relative;
    }
    return playlists::PathStyle::Absolute;
}

}  // namespace

const QString kFullPathsQuestion = QStringLiteral(
    "Write the full paths of the music files?\n(No: paths relative to the playlist's folder, "
    "so that the folder can move together with its music.)");

playlists::Playlist compilationPlaylist(engine::Database& database, qint64 compilationId) {
    playlists::Playlist playlist;
    playlist.name = assembly::readCompilation(database, compilationId).name;
    engine::Recordset tracks = database.openRecordset(
        QStringLiteral("SELECT * FROM CompilationTrack WHERE CompilationID_F1 = ") +
            QString::number(compilationId) + QStringLiteral(" ORDER BY TrackNo"),
        engine::RecordsetType::Snapshot);
    const bool withFiles = tracks.fieldIndex(store::kTrackFileColumn) >= 0;
    QStringList performers;
    for (; !tracks.eof(); tracks.moveNext()) {
        playlists::PlaylistTrack track;
        track.number = tracks.value(QStringLiteral("TrackNo")).toInt();
        track.performer = tracks.value(QStringLiteral("Track_Artist_Name")).toString();
        track.title = tracks.value(QStringLiteral("Track_Title")).toString();
        track.album = tracks.value(QStringLiteral("Album_Title")).toString();
        track.seconds = tracks.value(QStringLiteral("Length")).toInt();
        const QString file =
            withFiles ? tracks.value(store::kTrackFileColumn).toString() : QString();
        track.file = QFileInfo::exists(file) ? file : QString();  // a file gone counts as none
        performers << track.performer;
        playlist.tracks.push_back(track);
    }
    performers.removeDuplicates();
    playlist.performer = performers.size() == 1 ? performers.first() : QString();
    return playlist;
}

QString exportOutcome(const playlists::ExportResult& result, const QString& file) {
    QString told =
        QStringLiteral("%1 %2 written to %3")
            .arg(result.written)
            .arg(result.written == 1 ? QStringLiteral("track") : QStringLiteral("tracks"), file);
    const QString leftOut = playlists::leftOutMessage(result);
    return leftOut.isEmpty() ? told : told + QStringLiteral(".\n") + leftOut;
}

void exportCompilationPlaylist(engine::Database& database, qint64 compilationId,
                               platform::Dialogs& dialogs) {
    try {
        const playlists::Playlist playlist = compilationPlaylist(database, compilationId);
        platform::FileRequest request;
        request.title = QStringLiteral("Export Playlist");
        request.filter = kPlaylistFilter;
        request.fileName = suggestedFileName(playlist.name);
        const std::optional<QString> chosen = dialogs.saveFile(request);
        if (!chosen) {
            return;
        }
        const std::optional<playlists::PlaylistFormat> format = playlists::formatForFile(*chosen);
        if (!format) {
            dialogs.exclamation(
                QStringLiteral("Choose a file name ending in .m3u8, .xspf or .cue."));
            return;
        }
        if (QFileInfo::exists(*chosen) &&
            !dialogs.askYesNo(QStringLiteral("The file '%1' exists. Replace it?").arg(*chosen))) {
            return;
        }
        const playlists::ExportResult result =
            playlists::writePlaylist(playlist, *chosen, *format, pathStyle(*format, dialogs));
        const QString outcome = exportOutcome(result, *chosen);
        result.leftOut.empty() ? dialogs.information(outcome) : dialogs.exclamation(outcome);
    } catch (const playlists::ExportError& error) {
        dialogs.exclamation(error.message());
    } catch (const engine::JetError& error) {
        dialogs.exclamation(error.description());
    }
}

}  // namespace shell
