// The recording protocol: the albums to fetch, by shelf, then the compilation's tracks with
// the album, item and index to play for each.
#include "reports/list_layout.h"
#include "reports/list_reports.h"
#include "reports/list_texts.h"

namespace reports {

using namespace report_engine;
using layout::arial;

namespace {

Section reportHeader(int width, std::shared_ptr<const RowSource> albums, const PageSetup& page) {
    Control heading =
        label(QStringLiteral("Label1"), QRect(0, 120, width, 320),
              QStringLiteral("Albums required for this compilation:"), arial(11, true));
    auto albumList = std::make_shared<const ReportDefinition>(albumsNeededReport(page));
    Control list = subReport(QStringLiteral("RecordingProtocolSub"), QRect(0, 620, width, 10),
                             albumList, [albums](const RowView&) { return albums; });
    Control spacer = label(QStringLiteral("fldSpaceFiller"), QRect(0, 700, width, 200), QString());
    return section(QStringLiteral("ReportHeader"), 1000,
                   {heading, line(QStringLiteral("Line2"), QLine(0, 500, width, 500), 10), list,
                    spacer, line(QStringLiteral("Line3"), QLine(0, 920, width, 920), 10)});
}

Section pageHeader(int width) {
    Control caption = label(QStringLiteral("lblRecordingProtocol"), QRect(150, 130, 4000, 330),
                            QStringLiteral("Recording Protocol"), arial(10, true));
    Control title = textBox(
        QStringLiteral("fldCompilationTitle"), QRect(150, 430, width - 300, 420),
        [](const SectionFormat& format) {
            return compilationTitle(format.value(QStringLiteral("Name")),
                                    format.value(QStringLiteral("SumTime")));
        },
        arial(14, true));
    caption.wordWrap = title.wordWrap = false;
    return section(QStringLiteral("PageHeader"), 1200,
                   {layout::pageFrame(width, 960), caption, title});
}

// The performer, album and track wrap in their columns; the row grows with the longest.
Section detail(int width) {
    const int lengthLeft = width - 700;
    Control index = textBox(QStringLiteral("fldTargetIndex"), QRect(0, 50, 400, 250),
                            QStringLiteral("TrackNo"), arial(9, true));
    index.alignment = Qt::AlignRight | Qt::AlignTop;
    Control performer = textBox(QStringLiteral("fldPerformer"), QRect(550, 50, 2300, 250),
                                QStringLiteral("Album_Artist_Name"), arial(9));
    Control album = textBox(QStringLiteral("fldAlbum"), QRect(2950, 50, 2500, 250),
                            QStringLiteral("Album_Title"), arial(9, false, true));
    Control itemIndex = textBox(
        QStringLiteral("fldItemIndex"), QRect(5550, 50, 800, 250),
        [](const SectionFormat& format) {
            return itemAndIndex(format.value(QStringLiteral("Item")),
                                format.value(QStringLiteral("Index")));
        },
        arial(9));
    itemIndex.alignment = Qt::AlignHCenter | Qt::AlignTop;
    Control track = textBox(QStringLiteral("fldTrack"), QRect(6450, 50, lengthLeft - 6550, 250),
                            QStringLiteral("Track_Title"), arial(9));
    Control length = textBox(
        QStringLiteral("fldLength"), QRect(lengthLeft, 50, 700, 250),
        [](const SectionFormat& format) {
            return trackTime(format.value(QStringLiteral("Length")));
        },
        arial(9));
    length.alignment = Qt::AlignRight | Qt::AlignTop;
    for (Control* growing : {&performer, &album, &track}) {
        growing->canGrow = true;
    }
    index.wordWrap = itemIndex.wordWrap = length.wordWrap = false;
    return section(QStringLiteral("Detail"), 330,
                   {index, performer, album, itemIndex, track, length});
}

}  // namespace

ReportDefinition albumsNeededReport(const PageSetup& page) {
    const int width = page.printable().width();
    Control location = textBox(QStringLiteral("fldAlbumLocation"), QRect(0, 30, 2200, 250),
                               QStringLiteral("AlbumLocation"), arial(9, true));
    Control performer = textBox(QStringLiteral("fldArtistSort"), QRect(2350, 30, 3000, 250),
                                QStringLiteral("AlbumArtistSort"), arial(9));
    Control album = textBox(QStringLiteral("fldAlbum_Title"), QRect(5500, 30, width - 5500, 250),
                            QStringLiteral("Album_Title"), arial(9, false, true));
    for (Control* growing : {&location, &performer, &album}) {
        growing->canGrow = true;
    }
    ReportDefinition definition;
    definition.name = QStringLiteral("RecordingProtocolSub");
    definition.page = page;
    definition.detail = section(QStringLiteral("Detail"), 300, {location, performer, album});
    return definition;
}

ReportDefinition recordingProtocolReport(const PageSetup& page,
                                         std::shared_ptr<const RowSource> albums) {
    const int width = page.printable().width();
    ReportDefinition definition;
    definition.name = QStringLiteral("RecordingProtocolMain");
    definition.page = page;
    definition.reportHeader = reportHeader(width, std::move(albums), page);
    definition.pageHeader = pageHeader(width);
    definition.detail = detail(width);
    definition.pageFooter = layout::pageFooter(width, layout::compilationFooterTexts(width));
    definition.reportFooter = section(QStringLiteral("ReportFooter"), 0);
    return definition;
}

}  // namespace reports
