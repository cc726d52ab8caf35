#include <QFileInfo>

#include "albumgen/albumgen.h"
#include "cli/album_link.h"
#include "cli/commands.h"
#include "cli/table_printer.h"
#include "engine/database_file.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "store/album_source.h"

namespace cli {

namespace {

std::optional<int> intOption(const QStringList& args, const QString& name, int fallback) {
    const int at = static_cast<int>(args.indexOf(name));
    if (at < 0) {
        return fallback;
    }
    bool ok = false;
    const int value = at + 1 < args.size() ? args[at + 1].toInt(&ok) : 0;
    return ok ? std::optional<int>(value) : std::nullopt;
}

}  // namespace

int makeAlbums(const QStringList& args, Streams streams) {
    const std::optional<int> albums = intOption(args, QStringLiteral("--albums"), 100);
    const std::optional<int> seed = intOption(args, QStringLiteral("--seed"), 1);
    if (args.isEmpty() || args[0].startsWith(QLatin1String("--")) || !albums || !seed ||
        *albums < 1) {
        streams.err << "usage: mixorama-cli make-albums OUT.mdb --albums N --seed S [--no-rating]"
                    << Qt::endl;
        return 2;
    }
    albumgen::Options options;
    options.albums = *albums;
    options.seed = static_cast<quint32>(*seed);
    options.withRating = !args.contains(QStringLiteral("--no-rating"));
    try {
        if (QFileInfo::exists(args[0])) {
            engine::requireRegularFile(args[0]);  // a device or FIFO is not written over
        }
        albumgen::writeAlbumDatabase(args[0], options);
    } catch (const std::exception& error) {
        streams.err << "Cannot write " << args[0] << ": " << error.what() << Qt::endl;
        return 1;
    }
    return 0;
}

int tempSource(const QStringList& args, Streams streams) {
    const bool print = args.contains(QStringLiteral("--print"));
    QStringList files = args;
    files.removeAll(QStringLiteral("--print"));
    if (files.size() != 2) {
        streams.err << "usage: mixorama-cli tempsource DB ALBUM.mdb [--print]" << Qt::endl;
        return 2;
    }
    try {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(files[0]);
        store::AlbumSourceState state;
        if (!connectAlbumFile(database, files[1], state, streams)) {
            return 1;
        }
        store::buildTempSource(database, state);
        streams.out << state.passedCount << Qt::endl;
        if (print) {
            engine::Recordset rows = database.openRecordset(QStringLiteral("TempSource"),
                                                            engine::RecordsetType::Snapshot);
            printRows(rows, streams.out);
        }
        database.close();
    } catch (const engine::JetError& error) {
        streams.err << "Error " << error.number() << ": " << error.description() << Qt::endl;
        return 1;
    }
    return 0;
}

}  // namespace cli
