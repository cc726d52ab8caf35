// bench_source_tools [--tracks N] [--runs R] [--cache DIR]: the tools of the track picker's
// source on an album collection of N tracks, with the picker open: filter Apply with its count,
// sort Apply (three keys, the grid showing its first screen), the source goto list refilled
// after the filter, and the navigator's root level and one performer's children, on the plain
// source, a sorted one and a filtered and sorted one.
#include <QApplication>
#include <QTemporaryDir>
#include <QTextStream>
#include <map>

#include "access/access_reader.h"
#include "album_cache.h"
#include "engine/database.h"
#include "platform/scripted_dialogs.h"
#include "query/filter_clause.h"
#include "query/goto_lists.h"
#include "store/album_source.h"
#include "target_compilation.h"
#include "timing.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/performer_tree_model.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/overview_window.h"

namespace {

const QString kSort = QStringLiteral("ORDER BY TitleAlbum, Length DESC, TitleTrack");

// The performer with the most source rows under a filter: the largest child level there is.
QString busiestPerformer(engine::Database& database, const QString& filterClause) {
    engine::Recordset groups =
        database.openRecordset(QStringLiteral("SELECT ArtistSort, Count(*) AS N FROM TempSource ") +
                                   filterClause + QStringLiteral(" GROUP BY ArtistSort"),
                               engine::RecordsetType::Snapshot);
    QString busiest;
    qint64 most = -1;
    for (; !groups.eof(); groups.moveNext()) {
        if (!groups.value(0).toString().isEmpty() && groups.value(1).toLongLong() > most) {
            most = groups.value(1).toLongLong();
            busiest = groups.value(0).toString();
        }
    }
    return busiest;
}

// What the navigator's tree costs on the picker's current source.
struct TreeTimes {
    double root = 0;
    double children = 0;
    int performers = 0;
    int childNodes = 0;
};

TreeTimes timeTree(ui::GetSongsWindow& picker, engine::Database& database,
                   const QString& performer) {
    ui::PerformerTreeModel model(database, [&] { return picker.sourceRows().recordSource(); });
    TreeTimes times;
    times.root = bench::secondsOf([&] { model.loadRoot(); });
    times.performers = model.rowCount();
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex node = model.index(row, 0);
        if (node.data().toString() == performer) {
            times.children = bench::secondsOf([&] { model.fetchMore(node); });
            times.childNodes = model.rowCount(node);
        }
    }
    return times;
}

// Requeries the source as Apply does and lets the grid show its first screen.
void requeryAndShow(ui::GetSongsWindow& picker) {
    picker.requerySource();
    QApplication::processEvents();
}

using Samples = std::map<QString, std::vector<double>>;

void printMedian(QTextStream& out, const Samples& samples, const QString& name, double target) {
    const double seconds = bench::median(samples.at(name));
    out << "  " << name << ": " << seconds * 1000 << " ms (target < " << target * 1000 << " ms)"
        << (seconds < target ? "" : "  MISSED") << "\n";
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::AlbumBenchOptions options = bench::readAlbumBenchOptions(app.arguments());
    QTemporaryDir work;
    qputenv("XDG_CONFIG_HOME", work.filePath(QStringLiteral("config")).toUtf8());
    accessfile::installAccessReader();
    const QString albums = bench::cachedAlbumFile(options.cache, options.tracks);
    QTextStream out(stdout);

    Samples samples;
    qint64 sourceRows = 0, passed = 0;
    int gotoEntries = 0;
    TreeTimes plain, sorted, filtered;
    QString performer, filteredPerformer;
    for (int run = 0; run < options.runs; ++run) {
        platform::ScriptedDialogs dialogs;
        ui::OverviewWindow window(dialogs);
        window.show();
        if (!window.loadDatabase(bench::templateCopy(work, run)))
            return 1;
        const qint64 id = bench::addTargetCompilation(window.state().database);
        QWidget editor;
        editor.show();
        store::EditorConnection connection;
        connection.isSaved = true;
        dialogs.answerFile(albums);
        shell::AppState& state = window.state();
        store::connectAlbumDatabase(state.database, dialogs, state.album, connection);
        auto* picker =
            new ui::GetSongsWindow(window.session(), window.windowRegistry(), dialogs, id, &editor);
        picker->show();
        QApplication::processEvents();
        sourceRows = picker->sourceGrid()->model()->rowCount();
        performer = busiestPerformer(state.database, QString());

        plain = timeTree(*picker, state.database, performer);
        samples["sort Apply"].push_back(bench::secondsOf([&] {
            state.sortClause = kSort;
            requeryAndShow(*picker);
        }));
        sorted = timeTree(*picker, state.database, performer);
        samples["filter Apply"].push_back(bench::secondsOf([&] {
            const query::FilterOutcome outcome = query::applyFilter(
                state.database,
                {query::FilterRow{QStringLiteral("Track Performer"), QStringLiteral("Starts"),
                                  QStringLiteral("B")},
                 query::FilterRow{QStringLiteral("Time"), QStringLiteral(">="),
                                  QStringLiteral("000300")}},
                QStringLiteral("And"), state.filterClause, state.album.passedCount);
            if (!outcome.failed())
                requeryAndShow(*picker);
        }));
        passed = state.album.passedCount;
        samples["goto refill"].push_back(bench::secondsOf([&] {
            gotoEntries = query::fillSourceGotoList(state.database, QStringLiteral("ArtistSort"),
                                                    state.filterClause, state.inputHint)
                              .count;
        }));
        filteredPerformer = busiestPerformer(state.database, state.filterClause);
        filtered = timeTree(*picker, state.database, filteredPerformer);
        for (const auto& [name, times] : {std::pair{"plain", plain}, std::pair{"sorted", sorted},
                                          std::pair{"filtered", filtered}}) {
            samples[QStringLiteral("root, %1").arg(name)].push_back(times.root);
            samples[QStringLiteral("children, %1").arg(name)].push_back(times.children);
        }
        picker->close();
        window.unloadAll();
    }
    out << "album tracks asked: " << options.tracks << ", source rows: " << sourceRows
        << ", runs: " << options.runs << " (medians)\n";
    out << "filter passes " << passed << " rows, goto list " << gotoEntries << " entries\n";
    out << "performers plain/sorted/filtered: " << plain.performers << "/" << sorted.performers
        << "/" << filtered.performers << "; children of '" << performer << "': " << plain.childNodes
        << ", of '" << filteredPerformer << "' filtered: " << filtered.childNodes << "\n";
    printMedian(out, samples, QStringLiteral("filter Apply"), 0.3);
    printMedian(out, samples, QStringLiteral("sort Apply"), 0.5);
    printMedian(out, samples, QStringLiteral("goto refill"), 0.3);
    for (const char* name : {"plain", "sorted", "filtered"}) {
        printMedian(out, samples, QStringLiteral("root, %1").arg(name), 0.3);
        printMedian(out, samples, QStringLiteral("children, %1").arg(name), 0.05);
    }
    return 0;
}
