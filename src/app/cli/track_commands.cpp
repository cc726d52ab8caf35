// The track picker from the command line: add tracks of an album database to a compilation,
// remove one, list them with the time against the medium.
#include <optional>

#include "assembly/track_picker.h"
#include "cli/album_link.h"
#include "cli/commands.h"
#include "cli/compilation_lookup.h"
#include "cli/order_options.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "query/columns.h"
#include "query/time_text.h"
#include "shell/medium_choices.h"
#include "shell/medium_text.h"
#include "store/album_source.h"
#include "store/compilation_queries.h"
#include "store/grid_layouts.h"

namespace cli {

namespace {

const QString kAddTracksUsage = QStringLiteral(
    "add-tracks DB NAME ALBUM.mdb [--where \"WHERE ...\" | --filter VARIABLE COMPARISON TEXT "
    "[And|Or VARIABLE COMPARISON TEXT]] [--order \"ORDER BY ...\" | --sort VARIABLE "
    "Ascending|Descending ...] [--show-clause] [--first N] [--skip-recorded]");

struct AddTracksArgs {
    QStringList files;  // DB, NAME, ALBUM.mdb
    QString where;
    QString order;
    std::optional<FilterOption> filter;
    SortOption sort;
    bool showClause = false;
    std::optional<int> first;
    bool skipRecorded = false;
};

// Reads one option at args[i] and the values it takes; a message when it is not well formed.
QString takeOption(const QStringList& args, int& i, AddTracksArgs& parsed) {
    const QString& arg = args[i];
    const bool takesValue = arg == QLatin1String("--where") || arg == QLatin1String("--order") ||
                            arg == QLatin1String("--first");
    if (takesValue && i + 1 >= args.size()) {
        return arg + QStringLiteral(" needs a value.");
    }
    if (arg == QLatin1String("--where")) {
        parsed.where = args[++i];
    } else if (arg == QLatin1String("--order")) {
        parsed.order = args[++i];
    } else if (arg == QLatin1String("--first")) {
        bool ok = false;
        parsed.first = args[++i].toInt(&ok);
        if (!ok || *parsed.first < 0) {
            return QStringLiteral("--first needs a whole number of at least 0.");
        }
    } else if (arg == QLatin1String("--filter")) {
        parsed.filter.emplace();
        return takeFilter(args, i, *parsed.filter);
    } else if (arg == QLatin1String("--sort")) {
        return takeSortLevel(args, i, parsed.sort);
    } else if (arg == QLatin1String("--show-clause")) {
        parsed.showClause = true;
    } else if (arg == QLatin1String("--skip-recorded")) {
        parsed.skipRecorded = true;
    } else {
        return QStringLiteral("Unknown option ") + arg + QLatin1Char('.');
    }
    return {};
}

// The dialog's options and the raw clauses name the same thing twice, so only one of each pair
// may be given.
QString checkCombination(const AddTracksArgs& parsed) {
    if (parsed.filter && !parsed.where.isEmpty()) {
        return QStringLiteral("--filter and --where cannot be combined: give one of them.");
    }
    if (!parsed.sort.levels.isEmpty() && !parsed.order.isEmpty()) {
        return QStringLiteral("--sort and --order cannot be combined: give one of them.");
    }
    return {};
}

// A message when an option is not well formed or the three files are not given.
QString parseAddTracks(const QStringList& args, AddTracksArgs& parsed) {
    for (int i = 0; i < args.size(); ++i) {
        if (!args[i].startsWith(QLatin1String("--"))) {
            parsed.files << args[i];
            continue;
        }
        const QString message = takeOption(args, i, parsed);
        if (!message.isEmpty()) {
            return message;
        }
    }
    if (parsed.files.size() != 3) {
        return QStringLiteral("add-tracks needs DB, NAME and ALBUM.mdb.");
    }
    return checkCombination(parsed);
}

// The WHERE and ORDER BY clauses of the source rows: --where and --order as given, or the
// clauses the filter and sort dialogs compose from --filter and --sort (the default order when
// neither --sort nor --order is given). A message when the filter does not validate or a sort
// caption is unknown.
QString composeClauses(AddTracksArgs& parsed) {
    if (parsed.filter) {
        const query::FilterOutcome outcome =
            query::buildFilterClause(parsed.filter->rows, parsed.filter->concatenation);
        if (outcome.failed()) {
            return outcome.message;
        }
        parsed.where = outcome.clause;
    }
    if (!parsed.order.isEmpty()) {
        return {};
    }
    QString orderText;
    const QString message = composeOrderText(parsed.sort, query::SortCaller::Source, orderText);
    parsed.order = query::sourceSortClause(orderText).trimmed();
    return message;
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
        query::sourceRecordSource(args.where, args.order), engine::RecordsetType::Snapshot);
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
        store::gridColumns(store::GridKind::GetTarget);
    QStringList cells;
    for (const store::GridColumnSpec& column : columns) {
        cells << column.caption;
    }
    streams.out << cells.join(QLatin1Char('\t')) << Qt::endl;
    for (; !rows.eof(); rows.moveNext()) {
        cells.clear();
        for (const store::GridColumnSpec& column : columns) {
            cells
                << query::valueText(column.kind, rows.value(column.dataField)).value_or(QString());
        }
        streams.out << cells.join(QLatin1Char('\t')) << Qt::endl;
    }
}
}  // namespace

int addTracks(const QStringList& args, Streams streams) {
    AddTracksArgs parsed;
    const QString badArguments = parseAddTracks(args, parsed);
    if (!badArguments.isEmpty()) {
        streams.err << badArguments << Qt::endl;
        return usage(streams, kAddTracksUsage);
    }
    const QString badClause = composeClauses(parsed);
    if (!badClause.isEmpty()) {
        streams.err << badClause << Qt::endl;
        return 1;
    }
    if (parsed.showClause) {
        streams.out << parsed.where << Qt::endl << parsed.order << Qt::endl;
        return 0;
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(parsed.files[0]);
        const std::optional<Compilation> compilation =
            findCompilation(database, parsed.files[1], streams);
        if (!compilation) {
            return 1;
        }
        store::AlbumSourceState state;
        if (!connectAlbumFile(database, parsed.files[2], state, streams)) {
            return 1;
        }
        // Only rows built from this album file are added: a build that fails ends the command.
        store::buildTempSource(database, state);
        assembly::TrackSums sums = compilation->stored;
        const int added = addSourceRows(database, *compilation, parsed, sums, streams);
        streams.out << added << " track(s) added" << Qt::endl;
        streams.out << "Total time " << query::formatTime(double(sums.totalTime)) << " ("
                    << sums.trackCount << " tracks): " << fitText(sums, compilation->lengthMinutes)
                    << Qt::endl;
        database.close();
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
            return noSuchTrack(database, *compilation, args[1], args[2], streams);
        }
        assembly::TrackSums sums;
        try {
            sums = assembly::removeTrack(database, compilation->id, trackNo);
        } catch (const engine::JetError& error) {
            if (error.number() != engine::jet::kNoCurrentRecord) {
                throw;
            }
            return noSuchTrack(database, *compilation, args[1], args[2], streams);
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
        for (const QString& line : shell::mediumFitLines(
                 compilation->format, compilation->lengthMinutes, shell::mediumTracks(rows),
                 shell::chosenMdMode(args[0], compilation->id))) {
            streams.out << line << Qt::endl;
        }
        database.close();
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

}  // namespace cli
