#pragma once

#include <QFont>
#include <QString>
#include <memory>

#include "report_engine/page_model.h"

class QTextDocument;

// Text is measured and drawn in twips: fonts are sized in twips (a point is 20), so a measure
// does not depend on the screen or the printer, and what was measured is what is drawn.
namespace report_engine {

QFont twipsFont(const ReportFont& font);

// QPainter/QFontMetrics flags for a text item's alignment and wrapping.
int textFlags(Qt::Alignment alignment, bool wordWrap);

// The height of text drawn into a box of the width (twips, rounded up); 0 for empty text.
int textHeight(const ReportFont& font, const QString& text, int width, bool wordWrap = true);
// The width of one line of text (twips, rounded up).
int textWidth(const ReportFont& font, const QString& text);

// Rich text: the stored RTF (or plain text) as a document, laid out at a fixed resolution of
// rtf::kTwipsPerUnit twips per document unit and wrapped at the width.
std::shared_ptr<QTextDocument> richDocument(const QString& stored, int width);
int documentHeight(const QTextDocument& document);  // twips, rounded up

}  // namespace report_engine
