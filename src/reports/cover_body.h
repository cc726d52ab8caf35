#pragma once

#include <QString>

#include "report_engine/page_model.h"

// The cover text as the covers print it: the compilation's CoverMemo, rich text or plain.
namespace reports {

// Plain text has no fonts of its own; it prints in the body's design font.
inline const report_engine::ReportFont kBodyDesignFont{QStringLiteral("Times New Roman"), 10};

// The stored cover text as RTF: rich text as it is. Plain text, as the composer leaves it, gets
// what the editor would give it: the body's design font, the alignment, and for a track list
// (it has tabs) the hanging indent and tab stop.
QString coverBodyRtf(const QString& stored, Qt::Alignment plainAlignment);

// What the cover layouts need to know about a body text.
struct BodyFacts {
    report_engine::ReportFont font;  // of the text's first character: the font the user chose
    int lineCount = 0;    // its paragraphs, the empty one after a final line break included
    int widestLine = 0;   // twips, the widest paragraph laid out without wrapping
    bool hasTab = false;  // a track list with its tab stop (its width is kept)
};

BodyFacts bodyFacts(const QString& rtf);

}  // namespace reports
