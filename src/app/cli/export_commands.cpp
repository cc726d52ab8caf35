// export: a compilation's tracks as an M3U8 or XSPF playlist or a CUE sheet.
#include "cli/commands.h"
#include "cli/compilation_lookup.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "playlists/playlist_writer.h"
#include "shell/playlist_export.h"

namespace cli {

namespace {

const QString kExportUsage = QStringLiteral("export DB NAME OUT.(m3u8|xspf|cue) [--absolute]");

int writeExport(engine::Database& database, const QStringList& args, Streams streams) {
    const std::optional<playlists::PlaylistFormat> format = playlists::formatForFile(args[2]);
    if (!format) {
        return usage(streams, kExportUsage);
    }
    const std::optional<Compilation> compilation = findCompilation(database, args[1], streams);
    if (!compilation) {
        return 1;
    }
    const playlists::PathStyle style =
        args.size() == 4 ? playlists::PathStyle::Absolute : playlists::PathStyle::Relative;
    const playlists::ExportResult result = playlists::writePlaylist(
        shell::compilationPlaylist(database, compilation->id), args[2], *format, style);
    streams.err << shell::exportOutcome(result, args[2]) << Qt::endl;
    return 0;
}

}  // namespace

int exportPlaylist(const QStringList& args, Streams streams) {
    if (args.size() < 3 || args.size() > 4 ||
        (args.size() == 4 && args[3] != QLatin1String("--absolute"))) {
        return usage(streams, kExportUsage);
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(args[0], true);
        const int code = writeExport(database, args, streams);
        database.close();
        return code;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    } catch (const playlists::ExportError& error) {
        streams.err << error.message() << Qt::endl;
        return 1;
    }
}

}  // namespace cli
