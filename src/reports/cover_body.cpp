#include "reports/cover_body.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <cmath>

#include "assembly/cover_composer.h"
#include "report_engine/text_measure.h"
#include "rtf/rtf.h"

namespace reports {

namespace {

// Wide enough that no cover line wraps while it is measured.
constexpr int kUnwrappedTwips = 1'000'000;

// A tab before a paragraph's tab stop has Qt measure the rest of the paragraph, once per line it
// starts; over a paragraph of many tabs that time grows with their square. A track list's line
// has one tab, so only paragraphs of a few tabs get the stop; the others take the default stops.
constexpr qsizetype kMostTabsAtTheStop = 8;

// The hanging indent of a track list, for every paragraph, and its tab stop where it serves.
void setTrackListParagraphs(QTextDocument& document) {
    const double indent = assembly::kCoverTabStopTwips / rtf::kTwipsPerUnit;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat paragraph;
        paragraph.setLeftMargin(indent);
        paragraph.setTextIndent(-indent);
        if (block.text().count(u'\t') <= kMostTabsAtTheStop) {
            paragraph.setTabPositions({QTextOption::Tab(indent, QTextOption::LeftTab)});
        }
        QTextCursor(block).mergeBlockFormat(paragraph);
    }
}

report_engine::ReportFont fontOf(const QTextDocument& document) {
    report_engine::ReportFont font = kBodyDesignFont;
    const QTextBlock first = document.begin();
    if (!first.isValid() || first.begin().atEnd()) {
        return font;
    }
    const QTextCharFormat format = first.begin().fragment().charFormat();
    const QStringList families = format.fontFamilies().toStringList();
    if (!families.isEmpty() && !families.first().isEmpty()) {
        font.family = families.first();
    }
    if (format.fontPointSize() > 0) {
        font.pointSize = format.fontPointSize();
    }
    return font;
}

}  // namespace

QString coverBodyRtf(const QString& stored, Qt::Alignment plainAlignment) {
    if (rtf::isRtf(stored)) {
        return stored;
    }
    QTextDocument document;
    rtf::readInto(stored, document);
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    QTextCharFormat font;
    font.setFontFamilies({kBodyDesignFont.family});
    font.setFontPointSize(kBodyDesignFont.pointSize);
    all.mergeCharFormat(font);
    QTextBlockFormat paragraph;
    paragraph.setAlignment(plainAlignment);
    all.mergeBlockFormat(paragraph);
    if (stored.contains(u'\t')) {
        setTrackListParagraphs(document);
    }
    return rtf::write(document);
}

BodyFacts bodyFacts(const QString& rtf) {
    const auto document = report_engine::richDocument(rtf, kUnwrappedTwips);
    BodyFacts facts;
    facts.font = fontOf(*document);
    facts.lineCount = document->blockCount();
    facts.widestLine = int(std::ceil(document->idealWidth() * rtf::kTwipsPerUnit));
    facts.hasTab = document->toPlainText().contains(u'\t');
    return facts;
}

}  // namespace reports
