#pragma once

#include "report_engine/report_definition.h"

// What the track lists and the recording protocol share: their fonts, the frame that heads
// every page and the rule with "Page N of M" that ends it.
namespace reports::layout {

report_engine::ReportFont arial(double points, bool bold = false, bool italic = false);

// Twips between the page number and the page count: one blank of the footer's font.
inline constexpr int kPageCountGap = 60;
inline constexpr int kPageCountWidth = 600;

// The frame around a page header of the printable width.
report_engine::Control pageFrame(int width, int height);
// A page footer with a rule over the page number, the page count right beside it at the right
// edge, and the given controls.
report_engine::Section pageFooter(int width, QVector<report_engine::Control> more = {});

// The compilation's format and manufacturer at the left and its recording date in the middle of
// a page footer.
QVector<report_engine::Control> compilationFooterTexts(int width);

}  // namespace reports::layout
