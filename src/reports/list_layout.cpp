#include "reports/list_layout.h"

#include "reports/list_texts.h"

namespace reports::layout {

using namespace report_engine;

ReportFont arial(double points, bool bold, bool italic) {
    ReportFont font;
    font.family = QStringLiteral("Arial");
    font.pointSize = points;
    font.bold = bold;
    font.italic = italic;
    return font;
}

Control pageFrame(int width, int height) {
    return rectangle(QStringLiteral("shpPage"), QRect(0, 0, width, height), 20);
}

Section pageFooter(int width, QVector<Control> more) {
    const int countLeft = width - kPageCountWidth;
    Control number = textBox(
        QStringLiteral("txtPageNumber"), QRect(countLeft - kPageCountGap - 1800, 160, 1800, 260),
        [](const SectionFormat& format) {
            return QStringLiteral("Page ") + QString::number(format.pageNumber()) +
                   QStringLiteral(" of");
        },
        arial(9));
    number.alignment = Qt::AlignRight | Qt::AlignTop;
    Control count = textBox(
        QStringLiteral("txtPageCount"), QRect(countLeft, 160, kPageCountWidth, 260),
        [](const SectionFormat& format) { return QString::number(format.pageCount()); }, arial(9));
    QVector<Control> controls{line(QStringLiteral("Line1"), QLine(0, 80, width, 80), 15), number,
                              count};
    controls += more;
    for (Control& control : controls) {
        control.wordWrap = false;
    }
    return section(QStringLiteral("PageFooter"), 560, controls);
}

QVector<Control> compilationFooterTexts(int width) {
    Control formatText = textBox(
        QStringLiteral("fldFormatManufact"), QRect(0, 160, 3800, 260),
        [](const SectionFormat& format) {
            return formatAndManufacturer(format.value(QStringLiteral("Format")),
                                         format.value(QStringLiteral("Manufacturer")));
        },
        arial(9));
    Control date = textBox(
        QStringLiteral("fldDate"), QRect(width / 2 - 1000, 160, 2000, 260),
        [](const SectionFormat& format) {
            return dateText(format.value(QStringLiteral("RecDate")));
        },
        arial(9));
    date.alignment = Qt::AlignHCenter | Qt::AlignTop;
    return {formatText, date};
}

}  // namespace reports::layout
