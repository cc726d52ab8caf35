// bench_lists [--preview] [--dir DIR]: "All Tracks" over 20,000 compilation tracks (1,000
// compilations of 20, 1,000 performers) from a compilation database. Without --preview: the
// print tool's PDF export (check, record set, layout, PDF) with its time and peak memory
// (VmHWM). With --preview: the time from the print command to the preview's first page drawn.
#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <stdexcept>

#include "engine/jet_dialect.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "raw_database.h"
#include "report_engine/page_model.h"
#include "reports/list_reports.h"
#include "reports/list_sources.h"
#include "shell/print_command.h"
#include "timing.h"
#include "ui/windows/report_preview_window.h"

namespace {

QTextStream out(stdout);

const char* const kFill = R"sql(
    BEGIN;
    WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000)
    INSERT INTO Compilation (Name, Format, C_Length, Manufacturer)
        SELECT printf('Compilation %04d', i), 'MD', 74, 'Sony' FROM n;
    WITH RECURSIVE t(no) AS (SELECT 1 UNION ALL SELECT no + 1 FROM t WHERE no < 20)
    INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, Track_Title,
        Album_Title, Album_Artist_Name, Length, RecordedStart, Live, Item, "Index", ArtistSort,
        AlbumArtistSort, AlbumLocation)
    SELECT CompilationID_P, no,
        printf('Performer %04d', (CompilationID_P * 7 + no * 13) % 1000),
        printf('Title %05d', (CompilationID_P * 31 + no * 17) % 50000),
        printf('Album %04d', (CompilationID_P * 7 + no * 13) % 1000 * 4 + no % 4), 'Various',
        120 + (CompilationID_P + no) % 300, CASE WHEN no % 5 = 0 THEN NULL ELSE 1960 + no END,
        0, 1, no, printf('Performer %04d', (CompilationID_P * 7 + no * 13) % 1000), 'Various',
        printf('Shelf %02d', no)
    FROM Compilation, t;
    UPDATE Compilation SET
        SumTrack = (SELECT count(*) FROM CompilationTrack WHERE CompilationID_F1 = CompilationID_P),
        SumTime = (SELECT sum(Length) FROM CompilationTrack WHERE CompilationID_F1 = CompilationID_P);
    COMMIT;
)sql";

QString makeDatabase(const QString& folder) {
    return bench::makeFilledDatabase(folder, QStringLiteral("lists-20000.mdb"), kFill);
}

QString peakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return QStringLiteral("?");
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return QString::fromLatin1(line.mid(6).trimmed());
    }
    return QStringLiteral("?");
}

// The print tool's steps for "ALL - List of Tracks > PDF".
double exportAllTracks(engine::Database& database, const QString& pdf) {
    return bench::secondsOf([&] {
        const shell::PrintChoice& choice = *shell::printChoice(4);
        if (shell::printRefusal(database, choice, std::nullopt))
            throw std::runtime_error("refused");
        reports::exportListPdf(database, choice.report, 0, pdf, reports::listPaper(),
                               QDate::currentDate());
    });
}

// The print tool's steps for "ALL - List of Tracks by Performer", up to the first page drawn:
// the check, the rows and their layout, the window shown with its first page.
double previewAllTracks(engine::Database& database, int& pages) {
    platform::ScriptedDialogs dialogs;
    std::unique_ptr<ui::ReportPreviewWindow> preview;
    const shell::PrintChoice& choice = *shell::printChoice(0);
    report_engine::PageModel model;
    const double check = bench::secondsOf([&] {
        if (shell::printRefusal(database, choice, std::nullopt))
            throw std::runtime_error("refused");
    });
    const double layout = bench::secondsOf([&] {
        model = reports::buildListReport(database, choice.report, 0, reports::listPaper(),
                                         QDate::currentDate());
    });
    const double shown = bench::secondsOf([&] {
        preview = std::make_unique<ui::ReportPreviewWindow>(
            std::move(model), reports::listReportCaption(choice.report), dialogs);
        preview->show();
        preview->grab();  // the first page painted
    });
    out << "check " << check << " s, rows and layout " << layout << " s, window " << shown << " s"
        << Qt::endl;
    pages = preview->pageCount();
    return check + layout + shown;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const qsizetype dirAt = args.indexOf(QStringLiteral("--dir"));
    const QString folder = dirAt >= 0 && dirAt + 1 < args.size()
                               ? args[dirAt + 1]
                               : QDir::temp().filePath(QStringLiteral("mixorama-bench"));
    const QString path = makeDatabase(folder);
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path, true);
    out << "20,000 tracks, before the command: peak " << peakMemory() << Qt::endl;
    if (args.contains(QStringLiteral("--preview"))) {
        int pages = 0;
        const double seconds = previewAllTracks(database, pages);
        out << "preview first page " << seconds << " s, " << pages << " pages, peak "
            << peakMemory() << Qt::endl;
    } else {
        const QString pdf = QDir(folder).filePath(QStringLiteral("TracksByPerformer.PDF"));
        const double seconds = exportAllTracks(database, pdf);
        out << "pdf " << seconds << " s (" << QFile(pdf).size() / 1024 << " KB), peak "
            << peakMemory() << Qt::endl;
    }
    return 0;
}
