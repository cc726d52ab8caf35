// The track picker from the command line: add tracks of an album database to a compilation,
// remove one, list them with the time against the medium.
#include <optional>

#include "assembly/track_picker.h"
#include "cli/album_link.h"
#include "cli/commands.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "query/field_values.h"
#include "query/time_text.h"
#include "store/album_source.h"
#include "store/compilation_queries.h"
#include "store/grid_layouts.h"

namespace cli {

namespace {

const QString kAddTracksUsage = QStringLiteral(
    "add-tracks DB NAME ALBUM.mdb [--where \"WHERE ...\"] [--order \"ORDER BY ...\"] "
    "[--first N] [--skip-recorded]");

int usage(Streams streams, const QString& text) {
    streams.err << "usage: mixorama-cli " << text << Qt::endl;
    return 2;
}

int reportError(Streams streams, const engine::JetError& error) {
    streams.err << "Error " << error.number() << ": " << error.description() << Qt::endl;
    return 1;
}

struct AddTracksArgs {
    QStringList files;  // DB, NAME, ALBUM.mdb
    QString where;
    QString order;
    std::optional<int> first;
    bool skipRecorded = false;
};

// Nothing when an option lacks its value or --first is not a whole number of at least 0.
std::optional<AddTracksArgs> parseAddTracks(const QStringList& args) {
    AddTracksArgs parsed;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const bool takesValue = arg == QLatin1String("--where") ||
                                arg == QLatin1String("--order") || arg == QLatin1String("--first");
        if (takesValue && i + 1 >= args.size()) {
            return std::nullopt;
        }
        if (arg == QLatin1String("--where")) {
            parsed.where = args[++i];
        } else if (arg == QLatin1String("--order")) {
            parsed.order = args[++i];
        } else if (arg == QLatin1String("--first")) {
            bool ok = false;
            parsed.first = args[++i].toInt(&ok);
            if (!ok || *parsed.first < 0) {
                return std::nullopt;
            }
        } else if (arg == QLatin1String("--skip-recorded")) {
            parsed.skipRecorded = true;
        } else if (arg.startsWith(QLatin1String("--"))) {
            return std::nullopt;
        } else {
            parsed.files << arg;
        }
    }
    if (parsed.files.size() != 3) {
        return std::nullopt;
    }
    return parsed;
}

struct Compilation {
    qint64 id = 0;
    int lengthMinutes = 0;
    assembly::TrackSums stored;  // SumTrack and SumTime as the file holds them
};

// The compilation of that name (compared as the engine compares names); prints a message and
// gives nothing when there is none.
std::optional<Compilation> findCompilation(engine::Database& database, const QString& name,
                                           Streams streams) {
    engine::Recordset row = database.openRecordset(
        QStringLiteral("SELECT CompilationID_P, C_Length, SumTrack, SumTime FROM Compilation "
                       "WHERE Name='") +
            query::escapeSql(QStringLiteral("AVOID"), name) + QStringLiteral("'"),
        engine::RecordsetType::Snapshot);
    if (row.eof()) {
        streams.err << "There is no compilation named \"" << name << "\"." << Qt::endl;
        return std::nullopt;
    }
    return Compilation{row.value(0).toLongLong(),
                       row.value(1).toInt(),
                       {row.value(2).toInt(), row.value(3).toLongLong()}};
}

// "fits", or by how much the tracks exceed the medium as m:ss.
QString fitText(const assembly::TrackSums& sums, int lengthMinutes) {
    const qint64 over = sums.totalTime - assembly::timeCapacity(lengthMinutes, sums.trackCount);
    if (over <= 0) {
        return QStringLiteral("fits");
    }
    return QStringLiteral("exceeds the medium by %1:%2")
        .arg(over / 60)
        .arg(over % 60, 2, 10, QLatin1Char('0'));
}

void printLookup(engine::Recordset& lookup, const assembly::SourceTrack& track, Streams streams) {
    streams.out << "Already recorded: " << track.performerTrack.toString() << " - "
                << track.titleTrack.toString() << Qt::endl;
    for (lookup.moveFirst(); !lookup.eof(); lookup.moveNext()) {
        streams.out << "  " << lookup.value(QStringLiteral("Name")).toString() << ", track "
                    << lookup.value(QStringLiteral("TrackNo")).toString() << Qt::endl;
    }
}

// Adds the chosen rows of TempSource; returns how many were added.
int addSourceRows(engine::Database& database, const Compilation& compilation,
                  const AddTracksArgs& args, assembly::TrackSums& sums, Streams streams) {
    engine::Recordset source = database.openRecordset(
        QStringLiteral("SELECT * FROM tempsource ") + args.where + QStringLiteral(" ") + args.order,
        engine::RecordsetType::Snapshot);
    int added = 0;
    for (int row = 0; !source.eof() && (!args.first || row < *args.first);
         ++row, source.moveNext()) {
        const assembly::SourceTrack track = assembly::sourceTrackAt(source);
        const assembly::AddResult result =
            assembly::addTrack(database, compilation.id, track, [&](engine::Recordset& lookup) {
                printLookup(lookup, track, streams);
                if (args.skipRecorded) {
                    streams.out << "  not added" << Qt::endl;
                }
                return !args.skipRecorded;
            });
        added += result.added ? 1 : 0;
        sums = result.sums;
    }
    return added;
}

void printTrackRows(engine::Recordset& rows, Streams streams) {
    const std::vector<store::GridColumnSpec>& columns =
        *store::gridColumns(QStringLiteral("get_target"));
    QStringList cells;
    for (const store::GridColumnSpec& column : columns) {
        cells << column.caption;
    }
    streams.out << cells.join(QLatin1Char('\t')) << Qt::endl;
    for (; !rows.eof(); rows.moveNext()) {
        cells.clear();
        for (const store::GridColumnSpec& column : columns) {
            const QVariant value = rows.value(column.dataField);
            if (value.isNull()) {
                cells << QString();
            } else if (column.format == store::ColumnFormat::FormatTextEvent) {
                cells << query::formatTime(value.toDouble());
            } else if (column.format == store::ColumnFormat::YesNo) {
                cells << (value.toBool() ? QStringLiteral("Yes") : QStringLiteral("No"));
            } else {
                cells << value.toString();
            }
        }
        streams.out << cells.join(QLatin1Char('\t')) << Qt::endl;
    }
}

// remove-track DB NAME TRACKNO with a TRACKNO the compilation does not have.
int noSuchTrack(engine::Database& database, const Compilation& compilation, const QStringList& args,
                Streams streams) {
    const int count = assembly::countTracks(database, compilation.id).trackCount;
    streams.err << "\"" << args[2] << "\" is no track number of \"" << args[1] << "\": "
                << (count == 0 ? QStringLiteral("it has no tracks.")
                               : QStringLiteral("its tracks are 1 to %1.").arg(count))
                << Qt::endl;
    return 1;
}

}  // namespace

int addTracks(const QStringList& args, Streams streams) {
    const std::optional<AddTracksArgs> parsed = parseAddTracks(args);
    if (!parsed) {
        return usage(streams, kAddTracksUsage);
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(parsed->files[0]);
        const std::optional<Compilation> compilation =
            findCompilation(database, parsed->files[1], streams);
        if (!compilation) {
            return 1;
        }
        store::AlbumSourceState state;
        if (!connectAlbumFile(database, parsed->files[2], state, streams)) {
            return 1;
        }
        store::buildTempSource(database, state);
        assembly::TrackSums sums = compilation->stored;
        int added = 0;
        try {
            added = addSourceRows(database, *compilation, *parsed, sums, streams);
        } catch (const engine::JetError&) {
            store::dropAlbumLinks(database);  // the tracks added so far stay
            throw;
        }
        store::dropAlbumLinks(database);
        database.close();
        streams.out << added << " track(s) added" << Qt::endl;
        streams.out << "Total time " << query::formatTime(double(sums.totalTime)) << " ("
                    << sums.trackCount << " tracks): " << fitText(sums, compilation->lengthMinutes)
                    << Qt::endl;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

int removeTrack(const QStringList& args, Streams streams) {
    if (args.size() != 3) {
        return usage(streams, QStringLiteral("remove-track DB NAME TRACKNO"));
    }
    try {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(args[0]);
        const std::optional<Compilation> compilation = findCompilation(database, args[1], streams);
        if (!compilation) {
            return 1;
        }
        bool ok = false;
        const int trackNo = args[2].toInt(&ok);
        if (!ok) {
            return noSuchTrack(database, *compilation, args, streams);
        }
        assembly::TrackSums sums;
        try {
            sums = assembly::removeTrack(database, compilation->id, trackNo);
        } catch (const engine::JetError& error) {
            if (error.number() != engine::jet::kNoCurrentRecord) {
                throw;
            }
            return noSuchTrack(database, *compilation, args, streams);
        }
        database.close();
        streams.out << "Track " << trackNo << " removed; total time "
                    << query::formatTime(double(sums.totalTime)) << " (" << sums.trackCount
                    << " tracks): " << fitText(sums, compilation->lengthMinutes) << Qt::endl;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

int tracks(const QStringList& args, Streams streams) {
    if (args.size() != 2) {
        return usage(streams, QStringLiteral("tracks DB NAME"));
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(args[0], true);
        const std::optional<Compilation> compilation = findCompilation(database, args[1], streams);
        if (!compilation) {
            return 1;
        }
        engine::Recordset rows = database.openRecordset(
            store::standardStatement(QStringLiteral("compilationtrack"), compilation->id),
            engine::RecordsetType::Snapshot);
        printTrackRows(rows, streams);
        const assembly::TrackSums& sums = compilation->stored;
        streams.out << "Tracks: " << sums.trackCount << Qt::endl;
        streams.out << "Total time: " << query::formatTime(double(sums.totalTime)) << Qt::endl;
        streams.out << "Capacity: "
                    << query::formatTime(double(
                           assembly::timeCapacity(compilation->lengthMinutes, sums.trackCount)))
                    << Qt::endl;
        streams.out << fitText(sums, compilation->lengthMinutes) << Qt::endl;
        database.close();
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

}  // namespace cli
