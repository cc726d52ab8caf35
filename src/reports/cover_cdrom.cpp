#include "reports/cover_cdrom.h"

#include <cmath>

#include "reports/cover_body.h"
#include "reports/cover_layout.h"
#include "reports/cover_source.h"

namespace reports {

namespace {

using report_engine::Control;
using report_engine::SectionFormat;

// Places in the section, whose corner is the page's margins: the inlay's 6520-twip text height
// starts 285 twips down, 85 inside the frame.
constexpr int kMargin = 1040;
constexpr int kInlayTop = 285;
constexpr int kInlayHeight = 6520;
constexpr QRect kBodyDesign{1012, kInlayTop, 7400, 300};  // centred between the fold lines
constexpr QRect kLeftSpine{490, kInlayTop, 300, kInlayHeight};
constexpr QRect kRightSpine{8636, kInlayTop, 300, kInlayHeight};
constexpr int kBodyPadding = 300;     // beside the widest line
constexpr int kTextGap = 200;         // between the body and its title and time
constexpr int kLowestTitleTop = 300;  // a title any higher leaves the frame
constexpr int kSpinePoints = 10;

const QString kBody = QStringLiteral("RichEditCoverShort");
const QString kTitle = QStringLiteral("fldTitle");
const QString kTime = QStringLiteral("fldTime");

// Fits the body's width to its widest line, keeping its centre. A track list (it has a tab
// stop) keeps its width; a line wider than the inlay wraps rather than run onto the spines.
void moveBody2Right(Control& body, const BodyFacts& facts) {
    if (facts.lineCount < 1 || facts.hasTab) {
        return;
    }
    const int width = qMin(facts.widestLine + kBodyPadding, kBodyDesign.width());
    body.rect.moveLeft(body.rect.left() + (body.rect.width() - width) / 2);
    body.rect.setWidth(width);
}

void drawFrame(SectionFormat& format) {
    format.drawOnPage(pageRectangle(kInlayFrame));
    for (int x : {kLeftFoldX, kRightFoldX}) {
        format.drawOnPage(pageLine(QLine(x, kInlayFrame.top(), x, kInlayFrame.bottom() + 1)));
    }
}

void formatCover(SectionFormat& format) {
    Control& body = format.control(kBody);
    const BodyFacts facts = bodyFacts(body.text);
    moveBody2Right(body, facts);
    drawFrame(format);
    for (const QString& spine : {QStringLiteral("lblSplineL"), QStringLiteral("lblSplineR")}) {
        format.control(spine).font =
            report_engine::ReportFont{facts.font.family, kSpinePoints, true};
    }
    format.control(kTime).font = derivedFont(facts.font, -2, false);
    Control& title = format.control(kTitle);
    title.font = derivedFont(facts.font, 2, true);
    title.rect = QRect(body.rect.left(), title.rect.top(), body.rect.width(), 0);
}

// Centres the visible lines in the inlay's height (the composed text ends with an empty line),
// with the title above and the time below; a text too tall for a title prints without both.
void placeTexts(SectionFormat& format) {
    Control& body = format.control(kBody);
    Control& title = format.control(kTitle);
    Control& time = format.control(kTime);
    const int lineCount = bodyFacts(body.text).lineCount;
    title.rect.setHeight(evaluateHeight(title));
    const int lineHeight = lineCount >= 1 ? body.rect.height() / lineCount : 0;
    const int spare = kInlayHeight - (body.rect.height() - lineHeight);
    body.rect.moveTop(body.rect.top() + int(std::floor(spare / 2.0)));
    const int timeHeight = evaluateHeight(time);
    time.rect = QRect(title.rect.left(), body.rect.bottom() + 1 - timeHeight + kTextGap,
                      title.rect.width(), timeHeight);
    title.rect.moveTop(body.rect.top() - (title.rect.height() + kTextGap));
    if (title.rect.top() < kLowestTitleTop) {
        title.text.clear();
        time.text.clear();
    }
}

Control spineLabel(const QString& name, const QRect& rect, int angle) {
    Control spine = report_engine::textBox(name, rect, QStringLiteral("C_Name"));
    spine.angle = angle;
    spine.alignment = Qt::AlignCenter;
    spine.wordWrap = false;
    return spine;
}

report_engine::Section coverSection() {
    Control body = report_engine::richText(kBody, kBodyDesign, QString());
    body.expression = [](const SectionFormat& format) {
        return coverBodyRtf(format.value(QStringLiteral("covermemo")).toString(), Qt::AlignLeft);
    };
    body.canGrow = true;
    Control title = report_engine::textBox(
        kTitle, QRect(kBodyDesign.left(), 0, kBodyDesign.width(), 0), QStringLiteral("C_Name"));
    title.alignment = Qt::AlignHCenter | Qt::AlignTop;
    Control time = report_engine::textBox(
        kTime, QRect(kBodyDesign.left(), kInlayTop, kBodyDesign.width(), 0),
        [](const SectionFormat& format) {
            return QStringLiteral("Total Playtime ") +
                   playtimeText(format.value(QStringLiteral("C_SumTime")).toDouble());
        });
    time.alignment = Qt::AlignHCenter | Qt::AlignTop;
    report_engine::Section section = report_engine::section(
        QStringLiteral("Detail"), kInlayFrame.bottom() + 1 - kMargin,
        {body, spineLabel(QStringLiteral("lblSplineL"), kLeftSpine, 900),
         spineLabel(QStringLiteral("lblSplineR"), kRightSpine, -900), title, time});
    section.canGrow = false;
    section.onFormat = formatCover;
    section.onBeforePrint = placeTexts;
    return section;
}

}  // namespace

// The cover is one page for its one row, laid out in the detail section.
std::shared_ptr<const report_engine::ReportDefinition> cdromCoverShort() {
    auto definition = std::make_shared<report_engine::ReportDefinition>();
    definition->name = QStringLiteral("CDROMCoverShort");
    definition->page = coverPage(kMargin, kMargin);
    definition->detail = coverSection();
    return definition;
}

}  // namespace reports
