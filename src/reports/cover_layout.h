#pragma once

#include <QString>

#include "report/report_definition.h"

// What the two cover layouts share.
namespace reports {

// The cover's page: A4 portrait with the given left and top margins (twips).
report::PageSetup coverPage(int leftMargin, int topMargin);

// The height of a control's text drawn in its box (twips).
int evaluateHeight(const report::Control& control);

// The names the covers print in: the body's font name in a size derived from the body's, bold
// for titles; never below 6 points.
report::ReportFont derivedFont(const report::ReportFont& body, double pointsMore, bool bold);

// A line or a rectangle drawn on the page itself, in twips from the paper's corner.
report::PageItem pageLine(const QLine& line);
report::PageItem pageRectangle(const QRect& rect);

}  // namespace reports
