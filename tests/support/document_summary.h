#pragma once

#include <QString>
#include <QStringList>
#include <ostream>
#include <vector>

class QTextDocument;

namespace testsupport {

// A document as the cover text cares about it: paragraphs of runs, each run with its effective
// character formatting (the document's default font filled in). Neighbouring runs of equal
// formatting are merged, so two documents compare equal when they look the same.
struct RunSummary {
    QString text;
    QString family;
    double points = 0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    QString color;  // "#rrggbb", or empty for the default colour
    bool operator==(const RunSummary&) const = default;
};

struct ParagraphSummary {
    QString alignment;  // "left", "center", "right", "justify"
    int leftTwips = 0;
    int firstLineTwips = 0;
    std::vector<int> tabTwips;
    std::vector<RunSummary> runs;
    bool operator==(const ParagraphSummary&) const = default;
};

std::vector<ParagraphSummary> summarize(const QTextDocument& document);

// The characters of a plain text that are bold, as "start+length" ranges of document positions.
QStringList boldRanges(const QTextDocument& document);

void PrintTo(const RunSummary& run, std::ostream* out);
void PrintTo(const ParagraphSummary& paragraph, std::ostream* out);

}  // namespace testsupport

// Failure messages show texts as text.
void PrintTo(const QString& text, std::ostream* out);
