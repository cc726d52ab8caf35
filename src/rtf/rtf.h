#pragma once

#include <QString>

class QTextDocument;

// The cover text is kept as RTF. This codec covers what the covers use and what word processors
// and Windows rich-text boxes write for such texts: fonts, sizes, bold, italic, underline,
// strike-through, colours, alignment, indents, tab stops, line and paragraph breaks, text in the
// document's code page and Unicode escapes. Everything else is skipped.
namespace rtf {

// Lengths in RTF are twips; a document's lengths are pixels at 96 dpi (its layout scales them to
// the paint device), so one unit is 15 twips.
inline constexpr double kTwipsPerUnit = 15.0;

// True when the text is RTF (starts with "{\rtf"); anything else is plain text.
bool isRtf(const QString& stored);

// Replaces the document's content. RTF is read as far as it goes: damaged input (unbalanced
// braces, a truncated text, junk) gives what could be read before and around the damage. Plain
// text is set as it is, "\r\n" (or a lone "\r") being one line break.
void readInto(const QString& stored, QTextDocument& document);

// The document as RTF in code page 1252; characters outside it are written as Unicode escapes.
QString write(const QTextDocument& document);

}  // namespace rtf
