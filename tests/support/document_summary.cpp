#include "support/document_summary.h"

#include <QTextBlock>
#include <QTextDocument>
#include <cmath>

namespace testsupport {

namespace {

constexpr double kTwipsPerUnit = 15.0;

int twips(double units) {
    return static_cast<int>(std::lround(units * kTwipsPerUnit));
}

QString alignmentName(Qt::Alignment alignment) {
    const Qt::Alignment horizontal = alignment & Qt::AlignHorizontal_Mask;
    if (horizontal & Qt::AlignJustify) {
        return "justify";
    }
    if (horizontal & Qt::AlignHCenter) {
        return "center";
    }
    if (horizontal & Qt::AlignRight) {
        return "right";
    }
    return "left";
}

RunSummary runOf(const QTextFragment& fragment, const QTextDocument& document) {
    const QTextCharFormat format = fragment.charFormat();
    RunSummary run;
    run.text = fragment.text();
    run.family = format.fontFamilies().toStringList().value(0);
    if (run.family.isEmpty()) {
        run.family = document.defaultFont().family();
    }
    run.points =
        format.fontPointSize() > 0 ? format.fontPointSize() : document.defaultFont().pointSizeF();
    run.bold = format.fontWeight() > QFont::Medium;
    run.italic = format.fontItalic();
    run.underline = format.fontUnderline();
    run.strike = format.fontStrikeOut();
    if (format.foreground().style() != Qt::NoBrush) {
        run.color = format.foreground().color().name();
    }
    return run;
}

}  // namespace

std::vector<ParagraphSummary> summarize(const QTextDocument& document) {
    std::vector<ParagraphSummary> paragraphs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        ParagraphSummary paragraph;
        paragraph.alignment = alignmentName(format.alignment());
        paragraph.leftTwips = twips(format.leftMargin());
        paragraph.firstLineTwips = twips(format.textIndent());
        for (const QTextOption::Tab& tab : format.tabPositions()) {
            paragraph.tabTwips.push_back(twips(tab.position));
        }
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            RunSummary run = runOf(it.fragment(), document);
            if (!paragraph.runs.empty()) {
                RunSummary& last = paragraph.runs.back();
                RunSummary probe = run;
                probe.text = last.text;
                if (probe == last) {
                    last.text += run.text;
                    continue;
                }
            }
            paragraph.runs.push_back(run);
        }
        paragraphs.push_back(paragraph);
    }
    return paragraphs;
}

QStringList boldRanges(const QTextDocument& document) {
    QStringList ranges;
    int start = -1;
    const int end = document.characterCount() - 1;
    for (int position = 0; position <= end; ++position) {
        bool bold = false;
        if (position < end) {
            const QTextBlock block = document.findBlock(position);
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextFragment fragment = it.fragment();
                if (fragment.contains(position)) {
                    bold = fragment.charFormat().fontWeight() > QFont::Medium;
                }
            }
        }
        if (bold && start < 0) {
            start = position;
        } else if (!bold && start >= 0) {
            ranges << QStringLiteral("%1+%2").arg(start).arg(position - start);
            start = -1;
        }
    }
    return ranges;
}

void PrintTo(const RunSummary& run, std::ostream* out) {
    *out << '"' << run.text.toStdString() << "\" " << run.family.toStdString() << ' ' << run.points
         << (run.bold ? " b" : "") << (run.italic ? " i" : "") << (run.underline ? " u" : "")
         << (run.strike ? " s" : "") << ' ' << run.color.toStdString();
}

void PrintTo(const ParagraphSummary& paragraph, std::ostream* out) {
    *out << '[' << paragraph.alignment.toStdString() << " li" << paragraph.leftTwips << " fi"
         << paragraph.firstLineTwips << " tabs";
    for (int tab : paragraph.tabTwips) {
        *out << ' ' << tab;
    }
    *out << ":";
    for (const RunSummary& run : paragraph.runs) {
        *out << " {";
        PrintTo(run, out);
        *out << '}';
    }
    *out << ']';
}

}  // namespace testsupport

void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
