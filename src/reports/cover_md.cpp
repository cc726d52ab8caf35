#include "reports/cover_md.h"

#include <cmath>

#include "reports/cover_body.h"
#include "reports/cover_layout.h"
#include "reports/cover_source.h"

namespace reports {

namespace {

using report_engine::Control;
using report_engine::ReportFont;
using report_engine::SectionFormat;

// Places in the section, whose corner is the page's margins: the strip's left edge and 100
// twips above its top.
constexpr int kLeftMargin = kStripOutline.left();
constexpr int kTopMargin = 700;
constexpr int kStripWidth = kStripOutline.width();
constexpr int kInset = 120;  // the texts keep clear of the cut and the fold marks
constexpr int kTitleTop = 185;
constexpr int kLowestTitle2Top = 205;
constexpr int kBodyBand = 2700;       // the cover text is centred in this height
constexpr int kTrackListEnd = 14230;  // the track list's room, title and gap included
constexpr int kRuleBelowTitle = 970;  // on the page: the rule under the strip's title
// The fold marks straddle the strip's edges.
constexpr int kLeftMark[] = {1150, 1250};
constexpr int kRightMark[] = {3700, 3800};
// The cover text stands beside the strip, a centimetre to its right.
constexpr QRect kBodyDesign{kStripWidth + 567, kTitleTop, kStripWidth, 300};

// The cover text's band on the page: the least the label with the cover text is cut out as.
constexpr QRect kBodyLabel{kLeftMargin + kBodyDesign.left(), kTopMargin + kTitleTop, kStripWidth,
                           kBodyBand};
// The disc's edge label, cut out below the cover text's label: the name on one line.
constexpr int kEdgeLabelGap = 400;
constexpr int kEdgeLabelHeight = 340;

const QString kBody = QStringLiteral("RichEditCoverShort");
const QString kTitle = QStringLiteral("fldTitle");
const QString kTitle2 = QStringLiteral("fldTitle2");
const QString kTrackList = QStringLiteral("mdcoversub");
const QString kEdgeTitle = QStringLiteral("lblTitle");

const ReportFont kTrackFont{QStringLiteral("Arial"), 7};
const ReportFont kPerformerFont{QStringLiteral("Arial"), 7, true};
const ReportFont kTitleFont{QStringLiteral("Arial"), 10, true};
const ReportFont kEdgeFont{QStringLiteral("Arial"), 8, true};

void drawOutline(SectionFormat& format) {
    format.drawOnPage(pageRectangle(kStripOutline));
    for (int y : kStripFolds) {
        format.drawOnPage(pageLine(QLine(kLeftMark[0], y, kLeftMark[1], y)));
        format.drawOnPage(pageLine(QLine(kRightMark[0], y, kRightMark[1], y)));
    }
}

void formatCover(SectionFormat& format) {
    drawOutline(format);
    format.control(kTitle).rect.moveTop(kTitleTop);
    const Control& body = format.control(kBody);
    Control& title2 = format.control(kTitle2);
    title2.rect = QRect(body.rect.left(), title2.rect.top(), body.rect.width(), 0);
    title2.font = derivedFont(
        ReportFont{QStringLiteral("Arial"), bodyFacts(body.text).font.pointSize}, 2, true);
    format.control(kEdgeTitle).text = format.value(QStringLiteral("C_Name")).toString();
}

// The edge label under the cover text's label (bodyLabel, on the page) and as wide, with its
// own line to cut along.
void placeEdgeLabel(SectionFormat& format, const QRect& bodyLabel) {
    Control& edge = format.control(kEdgeTitle);
    const QRect onPage(bodyLabel.left(), bodyLabel.bottom() + 1 + kEdgeLabelGap, bodyLabel.width(),
                       kEdgeLabelHeight);
    edge.rect = onPage.translated(-kLeftMargin, -kTopMargin);
    format.drawOnPage(pageRectangle(onPage));
}

void placeTexts(SectionFormat& format) {
    Control& body = format.control(kBody);
    body.rect.moveTop(body.rect.top() + int(std::floor((kBodyBand - body.rect.height()) / 2.0)));
    Control& title2 = format.control(kTitle2);
    title2.rect.setHeight(evaluateHeight(title2));
    title2.rect.moveTop(body.rect.top() - (title2.rect.height() + 50));
    const Control& title = format.control(kTitle);
    const int titleHeight = title.rect.height();
    Control& trackList = format.control(kTrackList);
    trackList.rect.moveTop(title.rect.top() + titleHeight + 200);
    trackList.rect.setHeight(kTrackListEnd - (titleHeight + 200));
    if (title2.rect.top() < kLowestTitle2Top) {
        title2.text.clear();
        title2.visible = false;
    }
    format.drawOnPage(pageLine(QLine(kStripOutline.left(), titleHeight + kRuleBelowTitle,
                                     kStripOutline.right() + 1, titleHeight + kRuleBelowTitle)));
    // The cover text's label gets its own line to cut along: its band, grown to hold a longer
    // text, with the strip's inset around the text.
    const QRect bodyOnPage = body.rect.translated(kLeftMargin, kTopMargin);
    const QRect bodyLabel =
        kBodyLabel.united(bodyOnPage.adjusted(-kInset, -kInset, kInset, kInset));
    format.drawOnPage(pageRectangle(bodyLabel));
    placeEdgeLabel(format, bodyLabel);
}

Control centredTitle(const QString& name, const QRect& rect) {
    Control title = report_engine::textBox(name, rect, QStringLiteral("C_Name"), kTitleFont);
    title.alignment = Qt::AlignHCenter | Qt::AlignTop;
    return title;
}

report_engine::Section trackRow(QVector<QString> performers) {
    constexpr int kLine = 180;
    constexpr int kNumberWidth = 300;
    constexpr int kTextLeft = kNumberWidth + 60;
    constexpr int kTextWidth = kStripWidth - 2 * kInset - kTextLeft;
    Control number =
        report_engine::textBox(QStringLiteral("fldtrackno"), QRect(0, 0, kNumberWidth, kLine),
                               QStringLiteral("TrackNo"), kTrackFont);
    number.alignment = Qt::AlignRight | Qt::AlignTop;
    Control track =
        report_engine::textBox(QStringLiteral("fldTrack"), QRect(kTextLeft, 0, kTextWidth, kLine),
                               QStringLiteral("Track_Title"), kTrackFont);
    track.canGrow = true;
    // Only the last track of a performer's run names the performer, under its title.
    Control performer = report_engine::textBox(
        QStringLiteral("fldArtist"), QRect(kTextLeft, kLine, kTextWidth, kLine),
        [performers = std::move(performers)](const SectionFormat& format) {
            const int trackNo = format.value(QStringLiteral("TrackNo")).toInt();
            return performers.value(trackNo);
        },
        kPerformerFont);
    performer.alignment = Qt::AlignRight | Qt::AlignTop;
    performer.canGrow = true;
    report_engine::Section row =
        report_engine::section(QStringLiteral("Detail"), 2 * kLine, {number, track, performer});
    // A row without performer is one line tall.
    row.onFormat = [](SectionFormat& format) {
        if (format.control(QStringLiteral("fldArtist")).text.isEmpty()) {
            format.setHeight(kLine);
        }
    };
    return row;
}

QVector<QString> performersOf(const report_engine::RowSource& tracks) {
    const int number = tracks.fieldIndex(QStringLiteral("TrackNo"));
    const int performer = tracks.fieldIndex(QStringLiteral("Track_Artist_Name"));
    QVector<std::pair<int, QString>> rows;
    for (int row = 0; row < tracks.rowCount(); ++row) {
        rows.append({tracks.value(row, number).toInt(), tracks.value(row, performer).toString()});
    }
    return runLastPerformers(rows);
}

}  // namespace

std::shared_ptr<const report_engine::ReportDefinition> mdCoverSub(
    std::shared_ptr<const report_engine::RowSource> tracks) {
    auto definition = std::make_shared<report_engine::ReportDefinition>();
    definition->name = QStringLiteral("mdcoversub");
    definition->detail = trackRow(performersOf(*tracks));
    return definition;
}

std::shared_ptr<const report_engine::ReportDefinition> mdCoverMain(
    std::shared_ptr<const report_engine::RowSource> tracks) {
    Control body = report_engine::richText(kBody, kBodyDesign, QString());
    body.expression = [](const SectionFormat& format) {
        return coverBodyRtf(format.value(QStringLiteral("covermemo")).toString(), Qt::AlignHCenter);
    };
    body.canGrow = true;
    Control title = centredTitle(kTitle, QRect(kInset, kTitleTop, kStripWidth - 2 * kInset, 300));
    title.canGrow = true;
    title.canShrink = true;
    const Control title2 =
        centredTitle(kTitle2, QRect(kBodyDesign.left(), 0, kBodyDesign.width(), 0));
    const Control trackList = report_engine::subReport(
        kTrackList, QRect(kInset, kTitleTop + 500, kStripWidth - 2 * kInset, kTrackListEnd - 500),
        mdCoverSub(tracks), [tracks](const report_engine::RowView&) { return tracks; });
    Control edge = report_engine::label(kEdgeTitle,
                                        QRect(kBodyDesign.left(), 0, kStripWidth, kEdgeLabelHeight),
                                        QString(), kEdgeFont);
    edge.alignment = Qt::AlignCenter;
    edge.wordWrap = false;
    report_engine::Section detail =
        report_engine::section(QStringLiteral("Detail"), kStripOutline.bottom() + 1 - kTopMargin,
                               {body, title, title2, trackList, edge});
    detail.canGrow = false;
    detail.onFormat = formatCover;
    detail.onBeforePrint = placeTexts;

    auto definition = std::make_shared<report_engine::ReportDefinition>();
    definition->name = QStringLiteral("MDCoverMain");
    definition->page = coverPage(kLeftMargin, kTopMargin);
    definition->detail = std::move(detail);
    return definition;
}

}  // namespace reports
