#pragma once

#include <QString>

#include "report_engine/report_definition.h"

// What the two cover layouts share.
namespace reports {

// The cover's page: A4 portrait with the given left and top margins (twips).
report_engine::PageSetup coverPage(int leftMargin, int topMargin);

// The height of a control's text drawn in its box (twips).
int evaluateHeight(const report_engine::Control& control);

// The names the covers print in: the body's font name in a size derived from the body's, bold
// for titles; never below 6 points.
report_engine::ReportFont derivedFont(const report_engine::ReportFont& body, double pointsMore,
                                      bool bold);

// A line or a rectangle drawn on the page itself, in twips from the paper's corner.
report_engine::PageItem pageLine(const QLine& line);
report_engine::PageItem pageRectangle(const QRect& rect);

}  // namespace reports
