// The track list of one compilation, in medium order, for its box or folder.
#include "reports/list_layout.h"
#include "reports/list_reports.h"
#include "reports/list_texts.h"

namespace reports {

using namespace report_engine;
using layout::arial;

namespace {

Section pageHeader(int width) {
    Control title = textBox(
        QStringLiteral("fldCompilationTitle"), QRect(150, 170, width - 3450, 480),
        [](const SectionFormat& format) {
            return compilationTitle(format.value(QStringLiteral("Name")),
                                    format.value(QStringLiteral("SumTime")));
        },
        arial(14, true));
    Control box = textBox(QStringLiteral("fldBox"), QRect(width - 3150, 250, 3000, 330),
                          QStringLiteral("Box"), arial(11));
    box.alignment = Qt::AlignRight | Qt::AlignTop;
    title.wordWrap = box.wordWrap = false;
    return section(QStringLiteral("PageHeader"), 1100, {layout::pageFrame(width, 820), title, box});
}

Section detail(int width) {
    Control index = textBox(QStringLiteral("fldTargetIndex"), QRect(0, 60, 450, 260),
                            QStringLiteral("TrackNo"), arial(10, true));
    index.alignment = Qt::AlignRight | Qt::AlignTop;
    Control performer = textBox(QStringLiteral("fldPerformer"), QRect(600, 60, 3300, 260),
                                QStringLiteral("Track_Artist_Name"), arial(10, true));
    Control album = textBox(QStringLiteral("fldAlbum"), QRect(600, 310, 3300, 230),
                            QStringLiteral("Album_Title"), arial(8, false, true));
    Control track = textBox(
        QStringLiteral("fldTrackExtended"), QRect(4050, 60, width - 4050, 260),
        [](const SectionFormat& format) {
            return titleTimeAndYear(format.value(QStringLiteral("Track_Title")),
                                    format.value(QStringLiteral("Length")),
                                    format.value(QStringLiteral("RecordedStart")));
        },
        arial(10));
    Control live = textBox(
        QStringLiteral("fldLive"), QRect(4050, 310, 3000, 230),
        [](const SectionFormat& format) { return liveText(format.value(QStringLiteral("Live"))); },
        arial(8, false, true));
    Control dummy = label(QStringLiteral("fldDummy"), QRect(0, 560, width, 20), QString());
    QVector<Control> controls{index, performer, album, track, live, dummy};
    for (Control& control : controls) {
        control.wordWrap = false;
    }
    return section(QStringLiteral("Detail"), 600, controls);
}

}  // namespace

ReportDefinition tracksCompilationReport(const PageSetup& page) {
    const int width = page.printable().width();
    ReportDefinition definition;
    definition.name = QStringLiteral("TracksCompilation");
    definition.page = page;
    definition.pageHeader = pageHeader(width);
    definition.detail = detail(width);
    definition.pageFooter = layout::pageFooter(width, layout::compilationFooterTexts(width));
    return definition;
}

}  // namespace reports
