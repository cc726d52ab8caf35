#include "cli/commands.h"
#include "cli/table_printer.h"

#include <QDate>
#include <QDateTime>

#include "engine/jet_dialect.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "shell/database_conversion.h"
#include "shell/database_files.h"
#include "shell/database_upgrade.h"

namespace cli {

int usage(Streams streams, const QString& text) {
    streams.err << "usage: mixorama-cli " << text << Qt::endl;
    return 2;
}

int reportError(Streams streams, const engine::JetError& error) {
    streams.err
        << "Error " << error.number() << ": "
        << QString(error.description()).replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
        << Qt::endl;
    return 1;
}

std::optional<Arguments> splitArguments(const QStringList& args, const QStringList& options,
                                        const QStringList& flags) {
    Arguments result;
    for (int i = 0; i < args.size(); ++i) {
        if (!args[i].startsWith(QLatin1String("--"))) {
            result.positional << args[i];
        } else if (flags.contains(args[i])) {
            result.flags << args[i];
        } else if (options.contains(args[i]) && i + 1 < args.size()) {
            result.options.insert(args[i], args[i + 1]);
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return result;
}

int newDatabase(const QStringList& args, Streams streams) {
    if (args.size() != 1) {
        return usage(streams, QStringLiteral("new FILE"));
    }
    try {
        shell::createFromTemplate(args[0]);
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

int runSql(const QStringList& args, Streams streams) {
    if (args.size() != 2) {
        return usage(streams, QStringLiteral("sql FILE \"STATEMENT\""));
    }
    try {
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(args[0]);
        const engine::TranslatedSql translated = engine::translateJetSql(args[1]);
        if (translated.returnsRows) {
            engine::Recordset rows =
                database.openRecordset(args[1], engine::RecordsetType::Snapshot);
            printRows(rows, streams.out);
        } else {
            const int touched = database.execute(args[1]);
            streams.out << touched << " row(s) affected" << Qt::endl;
        }
        database.close();
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    return 0;
}

int compact(const QStringList& args, Streams streams) {
    if (args.size() != 1) {
        return usage(streams, QStringLiteral("compact FILE"));
    }
    QStringList changes;
    try {
        changes = shell::repairAndCompact(args[0]);
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    streams.out << "Database successfully repaired and compacted." << Qt::endl;
    for (const QString& change : changes) {
        streams.out << change << Qt::endl;
    }
    return 0;
}

int check(const QStringList& args, Streams streams) {
    if (args.size() != 1) {
        return usage(streams, QStringLiteral("check FILE"));
    }
    QStringList problems;
    try {
        problems = shell::checkDatabaseFile(args[0]);
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
    for (const QString& problem : problems) {
        streams.out << problem << Qt::endl;
    }
    if (problems.isEmpty()) {
        streams.out << "ok" << Qt::endl;
    }
    return problems.isEmpty() ? 0 : 1;
}

int convert(const QStringList& args, Streams streams) {
    QStringList files = args;
    shell::ConversionOptions options;
    options.keepPartial = files.removeAll(QStringLiteral("--keep-partial")) > 0;
    if (files.size() != 2) {
        return usage(streams, QStringLiteral("convert OLD.mdb NEW.mdb [--keep-partial]"));
    }
    shell::ConversionCounts counts;
    try {
        counts = shell::convertAccessDatabase(files[0], files[1], {}, options);
    } catch (const engine::JetError& error) {
        reportError(streams, error);
        if (error.number() == engine::jet::kDatabaseCorrupt) {
            streams.err << "Nothing was written. With --keep-partial the rows that could be "
                           "read are copied."
                        << Qt::endl;
        }
        return 1;
    }
    streams.out << "Copied " << counts.compilations << " compilation(s) and " << counts.tracks
                << " track(s) into " << files[1] << "." << Qt::endl;
    if (counts.tracksLeftOut > 0) {
        streams.out << counts.tracksLeftOut
                    << " track(s) belong to no compilation and were not copied." << Qt::endl;
    }
    for (const QString& note : counts.notes) {
        streams.out << note << Qt::endl;
    }
    for (const QString& correction : counts.corrections) {
        streams.out << "Corrected: " << correction << Qt::endl;
    }
    return 0;
}

}  // namespace cli
