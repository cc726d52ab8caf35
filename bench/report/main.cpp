// bench_report [--rows N] [--out FILE.pdf]: the report engine on a long grouped track list, laid
// out and written as PDF. Prints the layout and PDF times, the page count and the peak memory
// (VmHWM), so that memory can be compared with the page model's size.
// bench_report --cover-tabs N: a plain cover text of one line with N tabs, then 4 N, made into
// the covers' RTF and measured; the times grow with N, not with its square.
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTextStream>

#include "report_engine/layout.h"
#include "report_engine/pdf_export.h"
#include "report_engine/text_measure.h"
#include "reports/cover_body.h"
#include "timing.h"

namespace {

QTextStream out(stdout);

int optionValue(const QStringList& arguments, const QString& name, int fallback) {
    const int at = int(arguments.indexOf(name));
    return at >= 0 && at + 1 < arguments.size() ? arguments[at + 1].toInt() : fallback;
}

QString peakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return QStringLiteral("?");
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return QString::fromLatin1(line.mid(6).trimmed());
        }
    }
    return QStringLiteral("?");
}

// Performers of about 20 tracks on albums of about 5, as a grouped list sorts them.
report_engine::RowTable trackRows(int count) {
    report_engine::RowTable rows({"ArtistSort", "Album_Title", "Track_Title", "TrackNo", "Name"});
    for (int i = 0; i < count; ++i) {
        rows.append({QStringLiteral("Performer %1").arg(i / 20, 5, 10, QChar('0')),
                     QStringLiteral("Album %1").arg(i / 5),
                     QStringLiteral("Track title %1   3:25").arg(i), i % 18 + 1,
                     QStringLiteral("Compilation %1").arg(i % 300)});
    }
    return rows;
}

report_engine::ReportDefinition trackList() {
    using namespace report_engine;
    ReportDefinition definition;
    definition.name = "Tracks";
    definition.pageHeader = section(
        "PageHeader", 700,
        {rectangle("shpPage", QRect(0, 0, 9000, 600)),
         label("lblPageHeader", QRect(100, 100, 6000, 400),
               "Compilations: The Songs Sorted By Performer", ReportFont{"Arial", 12, true})});
    Group performer;
    performer.field = "ArtistSort";
    performer.header = section("grpPerformer", 320,
                               {textBox("fldTrackPerformer", QRect(0, 40, 6000, 280), "ArtistSort",
                                        ReportFont{"Arial", 10, true})});
    Group album;
    album.field = "Album_Title";
    album.header = section("grpAlbum", 280,
                           {textBox("fldAlbum", QRect(300, 0, 6000, 280), "Album_Title",
                                    ReportFont{"Arial", 9, false, true})});
    definition.groups = {performer, album};
    Control title = textBox("fldTrackExtended", QRect(600, 0, 4800, 240), "Track_Title",
                            ReportFont{"Arial", 9});
    title.canGrow = true;
    definition.detail = section(
        "Detail", 240,
        {title,
         textBox("fldTargetIndex", QRect(5500, 0, 500, 240), "TrackNo", ReportFont{"Arial", 9}),
         textBox("fldCompilationName", QRect(6100, 0, 2900, 240), "Name", ReportFont{"Arial", 9})});
    definition.pageFooter =
        section("PageFooter", 400,
                {line("Line1", QLine(0, 50, 9000, 50)),
                 textBox("txtPageNumber", QRect(7000, 100, 1300, 250),
                         [](const SectionFormat& f) {
                             return QStringLiteral("Page %1 of").arg(f.pageNumber());
                         }),
                 textBox("txtPageCount", QRect(8300, 100, 700, 250),
                         [](const SectionFormat& f) { return QString::number(f.pageCount()); })});
    return definition;
}

// The CD-ROM cover's body (twips): wide enough for a track list's line.
constexpr int kCoverBodyWidth = 7400;

// The seconds a cover text of one line of tabs takes to become the body, be measured and laid
// out.
double coverTabsSeconds(int tabs) {
    QString memo = QStringLiteral("1.");
    for (int i = 0; i < tabs; ++i) {
        memo += QStringLiteral("\tx");
    }
    return bench::secondsOf([&] {
        const QString body = reports::coverBodyRtf(memo, Qt::AlignLeft);
        reports::bodyFacts(body);
        report_engine::richDocument(body, kCoverBodyWidth)
            ->size();  // laid out as the cover prints it
    });
}

int coverTabs(int tabs) {
    const double once = coverTabsSeconds(tabs);
    const double fourTimes = coverTabsSeconds(4 * tabs);
    out << "cover of " << tabs << " tabs " << once << " s, of " << 4 * tabs << " tabs " << fourTimes
        << " s (x" << fourTimes / once << ")" << Qt::endl;
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.contains("--cover-tabs")) {
        return coverTabs(optionValue(arguments, "--cover-tabs", 16000));
    }
    const int count = optionValue(arguments, "--rows", 20000);
    const int outAt = int(arguments.indexOf("--out"));
    QTemporaryDir dir;
    const QString path = outAt >= 0 && outAt + 1 < arguments.size() ? arguments[outAt + 1]
                                                                    : dir.filePath("tracks.pdf");

    const report_engine::RowTable rows = trackRows(count);
    const report_engine::ReportDefinition definition = trackList();
    out << "rows " << count << ", before layout: peak " << peakMemory() << Qt::endl;
    report_engine::PageModel model;
    const double layout =
        bench::secondsOf([&] { model = report_engine::layoutReport(definition, rows); });
    out << "layout " << layout << " s, " << model.pages.size() << " pages, peak " << peakMemory()
        << Qt::endl;
    const double pdf = bench::secondsOf([&] { report_engine::exportPdf(model, path); });
    out << "pdf " << pdf << " s (" << QFile(path).size() / 1024 << " KB), total " << layout + pdf
        << " s, peak " << peakMemory() << Qt::endl;
    return 0;
}
