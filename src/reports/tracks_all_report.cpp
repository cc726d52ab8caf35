// Every track on every compilation, by performer and album: where a song was recorded.
#include "query/date_text.h"
#include "reports/list_layout.h"
#include "reports/list_reports.h"
#include "reports/list_texts.h"

namespace reports {

using namespace report_engine;
using layout::arial;

namespace {

Section pageHeader(int width, const QDate& today) {
    Control title =
        label(QStringLiteral("lblPageHeader"), QRect(150, 220, width - 2700, 420),
              QStringLiteral("Compilations: The Songs Sorted By Performer"), arial(13, true));
    Control date = label(QStringLiteral("lblDate"), QRect(width - 2350, 290, 2200, 300),
                         query::shortDateText(today), arial(10));
    date.alignment = Qt::AlignRight | Qt::AlignTop;
    title.wordWrap = date.wordWrap = false;
    return section(QStringLiteral("PageHeader"), 1050,
                   {layout::pageFrame(width, 820), title, date});
}

// The performer's and the album's headers print again at the top of a page their rows go on
// to, so that every page says whose tracks it lists.
Group performerGroup(int width) {
    Control performer = textBox(QStringLiteral("fldTrackPerformer"), QRect(0, 110, width, 290),
                                QStringLiteral("Track_Artist_Name"), arial(11, true));
    performer.wordWrap = false;
    Group group;
    group.field = QStringLiteral("ArtistSort");
    group.header = section(QStringLiteral("grpPerformer"), 420, {performer});
    group.footer = section(QStringLiteral("GroupFooter1"), 0);
    group.repeatHeader = true;
    return group;
}

Group albumGroup(int width) {
    Control album = textBox(QStringLiteral("fldAlbum"), QRect(300, 20, width - 300, 250),
                            QStringLiteral("Album_Title"), arial(9, false, true));
    album.wordWrap = false;
    Group group;
    group.field = QStringLiteral("Album_Title");
    group.header = section(QStringLiteral("grpAlbum"), 280, {album});
    group.footer = section(QStringLiteral("GroupFooter2"), 80);
    group.repeatHeader = true;
    return group;
}

Section detail(int width) {
    const int indexLeft = width - 3650;
    Control track = textBox(
        QStringLiteral("fldTrackExtended"), QRect(600, 0, indexLeft - 700, 240),
        [](const SectionFormat& format) {
            return titleTimeMaybeYear(format.value(QStringLiteral("Track_Title")),
                                      format.value(QStringLiteral("Length")),
                                      format.value(QStringLiteral("RecordedStart")));
        },
        arial(9));
    Control index = textBox(QStringLiteral("fldTargetIndex"), QRect(indexLeft, 0, 450, 240),
                            QStringLiteral("TrackNo"), arial(9));
    index.alignment = Qt::AlignRight | Qt::AlignTop;
    Control name = textBox(QStringLiteral("fldCompilationName"),
                           QRect(indexLeft + 600, 0, width - indexLeft - 600, 240),
                           QStringLiteral("Name"), arial(9));
    QVector<Control> controls{track, index, name};
    for (Control& control : controls) {
        control.wordWrap = false;
    }
    Section section = report_engine::section(QStringLiteral("Detail"), 250, controls);
    section.canGrow = false;
    return section;
}

}  // namespace

ReportDefinition tracksAllReport(const PageSetup& page, const QDate& today) {
    const int width = page.printable().width();
    ReportDefinition definition;
    definition.name = QStringLiteral("TracksAll");
    definition.page = page;
    definition.pageHeader = pageHeader(width, today);
    definition.groups = {performerGroup(width), albumGroup(width)};
    definition.detail = detail(width);
    definition.pageFooter = layout::pageFooter(width);
    return definition;
}

}  // namespace reports
