// bench_picker [--runs R] [--dir DIR]: the track picker's steps on a compilation database of
// 10,000 compilations and 200,000 tracks: addTrack with its lookup (a track on no compilation
// yet, and one on several), removeTrack of the first track of a 100-track compilation, a drop
// and a renumbering by sort on that compilation, and the lookup alone with and without its index.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <stdexcept>

#include "assembly/track_order.h"
#include "assembly/track_picker.h"
#include "engine/jet_dialect.h"
#include "engine/workspace.h"
#include "query/sort_clause.h"
#include "raw_database.h"
#include "timing.h"

namespace {

struct Options {
    int runs = 30;
    QString dir = QDir::temp().filePath(QStringLiteral("mixorama-bench"));
};

Options readOptions(const QStringList& args) {
    Options options;
    for (int i = 0; i + 1 < args.size(); ++i) {
        if (args[i] == QLatin1String("--runs"))
            options.runs = args[i + 1].toInt();
        if (args[i] == QLatin1String("--dir"))
            options.dir = args[i + 1];
    }
    return options;
}

// 10,000 compilations of 20 tracks (compilation 1 of 100), 50,000 titles of 2,000 performers,
// so that a performer and title stand on about four compilations. Written past the engine, with its
// text order, in one transaction.
const char* const kFill = R"sql(
    BEGIN;
    WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000)
    INSERT INTO Compilation (Name, Format, C_Length)
        SELECT printf('Compilation %05d', i), 'MD', 74 FROM n;
    WITH RECURSIVE t(no) AS (SELECT 1 UNION ALL SELECT no + 1 FROM t WHERE no < 100)
    INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, Track_Title,
        Album_Title, Album_Artist_Name, Length, RecordedStart, Live, Item, "Index", ArtistSort,
        AlbumArtistSort, AlbumoryTrackID, AlbumoryAlbumID)
    SELECT CompilationID_P, no,
        printf('Performer %04d', (CompilationID_P * 31 + no * 17) % 50000 % 2000),
        printf('Title %05d', (CompilationID_P * 31 + no * 17) % 50000),
        printf('Album %04d', no * 3 % 5000), 'Various', 120 + (CompilationID_P + no) % 300,
        1960 + no % 40, 0, 1, no,
        printf('Performer %04d', (CompilationID_P * 31 + no * 17) % 50000 % 2000), 'Various', no,
        no
    FROM Compilation, t WHERE no <= 20 OR CompilationID_P = 1;
    UPDATE Compilation SET
        SumTrack = (SELECT count(*) FROM CompilationTrack WHERE CompilationID_F1 = CompilationID_P),
        SumTime = (SELECT sum(Length) FROM CompilationTrack WHERE CompilationID_F1 = CompilationID_P);
    COMMIT;
)sql";

QString makeDatabase(const Options& options) {
    return bench::makeFilledDatabase(options.dir, QStringLiteral("picker-200000.mdb"), kFill);
}

assembly::SourceTrack sourceTrack(const QString& performer, const QString& title) {
    assembly::SourceTrack track;
    track.performerTrack = performer;
    track.titleTrack = title;
    track.length = 200;
    track.titleAlbum = QStringLiteral("Bench Album");
    track.live = false;
    return track;
}

// Median milliseconds of runs calls of step.
double medianMs(int runs, const std::function<void(int)>& step) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run)
        times.push_back(bench::secondsOf([&] { step(run); }) * 1000);
    return bench::median(times);
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const Options options = readOptions(app.arguments());
    QTextStream out(stdout);
    const QString path = makeDatabase(options);
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    out << "database " << path << ": 10,000 compilations, "
        << assembly::countTracks(database, 1).trackCount + 9999 * 20 << " tracks" << Qt::endl;

    const auto confirm = [](engine::Recordset&) { return true; };
    // A performer and title that stand on several compilations.
    engine::Recordset recorded = database.openRecordset(
        "SELECT Track_Artist_Name, Track_Title FROM CompilationTrack WHERE CompilationID_F1 = "
        "7000 AND TrackNo = 5",
        engine::RecordsetType::Snapshot);
    const QString performer = recorded.value(0).toString();
    const QString title = recorded.value(1).toString();
    int fewestRecorded = -1;
    int mostRecorded = 0;
    const double addNew = medianMs(options.runs, [&](int run) {
        assembly::addTrack(database, 5000 + run,
                           sourceTrack(QStringLiteral("New Performer %1").arg(run), "New"),
                           confirm);
    });
    const double addRecorded = medianMs(options.runs, [&](int run) {
        assembly::addTrack(database, 6000 + run, sourceTrack(performer, title),
                           [&](engine::Recordset& lookup) {
                               mostRecorded = lookup.recordCount();
                               fewestRecorded = fewestRecorded < 0 ? mostRecorded : fewestRecorded;
                               return true;
                           });
    });
    std::vector<double> removeTimes;
    for (int run = 0; run < options.runs; ++run) {
        removeTimes.push_back(bench::secondsOf([&] { assembly::removeTrack(database, 1, 1); }) *
                              1000);
        assembly::addTrack(database, 1, sourceTrack("Back", "Again"), confirm);  // 100 again
    }
    const double remove = bench::median(removeTimes);
    // The first track to the end and back: every track of the compilation changes its number.
    const double drop = medianMs(options.runs, [&](int run) {
        run % 2 ? assembly::moveTrack(database, 1, 100, 1)
                : assembly::moveTrack(database, 1, 1, 100);
    });
    const double renumber = medianMs(options.runs, [&](int run) {
        assembly::renumberBySort(database, 1,
                                 run % 2 ? QStringLiteral("Length DESC")
                                         : query::defaultSortOrder(query::SortCaller::Compilation));
    });
    const double lookup = medianMs(options.runs, [&](int run) {
        assembly::findTrackOnCompilations(
            database, QStringLiteral("Performer %1").arg(run, 4, 10, QLatin1Char('0')), title);
    });
    database.execute(QStringLiteral("DROP INDEX CompilationTrack_Lookup"));
    database.close();
    database = engine::Workspace::defaultWorkspace().openDatabase(path, true);
    const double lookupUnindexed = medianMs(std::min(options.runs, 5), [&](int) {
        assembly::findTrackOnCompilations(database, performer, title);
    });
    database.close();
    database = engine::Workspace::defaultWorkspace().openDatabase(path);
    const double firstLookup =
        bench::secondsOf([&] { assembly::findTrackOnCompilations(database, performer, title); }) *
        1000;

    out << "median of " << options.runs << " runs (ms):" << Qt::endl;
    out << "  addTrack, track on no compilation:        " << addNew << Qt::endl;
    out << "  addTrack, track on " << fewestRecorded << " to " << mostRecorded
        << " compilations:  " << addRecorded << Qt::endl;
    out << "  removeTrack 1 of a 100-track compilation: " << remove << Qt::endl;
    out << "  moveTrack 1 <-> 100:                      " << drop << Qt::endl;
    out << "  renumberBySort of 100 tracks:             " << renumber << Qt::endl;
    out << "  lookup alone, with its index:             " << lookup << Qt::endl;
    out << "  lookup alone, without an index:           " << lookupUnindexed << Qt::endl;
    out << "  first lookup of a file without the index: " << firstLookup << " (makes it)"
        << Qt::endl;
    database.close();
    QFile::remove(path);
    return 0;
}
