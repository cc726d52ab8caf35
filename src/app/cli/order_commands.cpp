// The running order from the command line: move one track, or renumber all by a sort order.
#include <optional>

#include "assembly/track_order.h"
#include "cli/commands.h"
#include "cli/compilation_lookup.h"
#include "cli/order_options.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "query/time_text.h"
#include "shell/medium_text.h"

namespace cli {

namespace {

// The number of a track as given; nothing for text that is no whole number.
std::optional<int> trackNumber(const QString& text) {
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok ? std::optional<int>(number) : std::nullopt;
}

// The --sort levels of renumber; a message when one is not well formed or anything else is given.
QString parseRenumberSort(const QStringList& args, SortOption& sort) {
    for (int i = 2; i < args.size(); ++i) {
        if (args[i] != QLatin1String("--sort")) {
            return QStringLiteral("Unknown argument ") + args[i] + QLatin1Char('.');
        }
        const QString message = takeSortLevel(args, i, sort);
        if (!message.isEmpty()) {
            return message;
        }
    }
    return {};
}

}  // namespace

int moveTrack(const QStringList& args, Streams streams) {
    const std::optional<int> from = trackNumber(args.value(2));
    const std::optional<int> to = trackNumber(args.value(3));
    if (args.size() != 4 || !from || !to) {
        return usage(streams, QStringLiteral("move-track DB NAME FROM TO (track numbers)"));
    }
    try {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(args[0]);
        const std::optional<Compilation> compilation = findCompilation(database, args[1], streams);
        if (!compilation) {
            return 1;
        }
        // The logic refuses a number no track has, with its own message.
        assembly::moveTrack(database, compilation->id, *from, *to);
        database.close();
        streams.out << "Track " << *from << " is now track " << *to << Qt::endl;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

namespace {

// renumber --balance: a cassette's sides as even as they can be.
int renumberBalanced(const QStringList& args, Streams streams) {
    try {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(args[0]);
        const std::optional<Compilation> compilation = findCompilation(database, args[1], streams);
        if (!compilation) {
            return 1;
        }
        if (shell::mediumKindOf(compilation->format) != shell::MediumKind::Cassette) {
            streams.err << shell::kOnlyCassettesHaveSides << Qt::endl;
            return 1;
        }
        const auto balanced =
            assembly::renumberBalanced(database, compilation->id, compilation->lengthMinutes);
        database.close();
        if (!balanced) {
            streams.err << shell::kTracksFitNoSides << Qt::endl;
            return 1;
        }
        streams.out << QStringLiteral(
                           "Side A: %1 track(s), %2; side B: %3; turn the tape after "
                           "track %1")
                           .arg(balanced->sideATracks)
                           .arg(query::formatTime(double(balanced->sideA)),
                                query::formatTime(double(balanced->sideB)))
                    << Qt::endl;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

}  // namespace

int renumber(const QStringList& args, Streams streams) {
    const QString kUsage = QStringLiteral(
        "renumber DB NAME [--sort VARIABLE Ascending|Descending]... | renumber DB NAME --balance");
    if (args.size() < 2) {
        return usage(streams, kUsage);
    }
    if (args.size() == 3 && args[2] == QLatin1String("--balance")) {
        return renumberBalanced(args, streams);
    }
    SortOption sort;
    const QString badSort = parseRenumberSort(args, sort);
    if (!badSort.isEmpty()) {
        streams.err << badSort << Qt::endl;
        return usage(streams, kUsage);
    }
    QString orderText;
    const QString badCaption = composeOrderText(sort, query::SortCaller::Compilation, orderText);
    if (!badCaption.isEmpty()) {
        streams.err << badCaption << Qt::endl;
        return 1;
    }
    try {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(args[0]);
        const std::optional<Compilation> compilation = findCompilation(database, args[1], streams);
        if (!compilation) {
            return 1;
        }
        const int count = assembly::renumberBySort(database, compilation->id, orderText);
        database.close();
        streams.out << count << " track(s) renumbered" << Qt::endl;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

}  // namespace cli
