#pragma once

#include <QVector>
#include <functional>

#include "report_engine/block.h"
#include "report_engine/report_definition.h"

namespace report_engine {

struct SectionContext {
    RowView row;
    int pageNumber = 1;
    int pageCount = 0;  // 0 while the pages are still being filled
};

// Lays out a sub-report control's report for the parent's row; the blocks start at 0, 0.
using SubReportRunner = std::function<QVector<Block>(const Control&, const RowView&)>;

// One printing of a section: binds the texts, runs the format step, measures and grows the
// controls, runs the before-print step, and cuts the result into blocks at the sub-reports' own
// block edges (a section without a sub-report is one block). Nothing when the section is hidden
// or a step cancels it.
QVector<Block> layoutSection(const Section& section, const SectionContext& context,
                             const SubReportRunner& runSubReport);

// A section's blocks stacked into one (page headers and footers are never split).
Block stacked(const QVector<Block>& blocks);

}  // namespace report_engine
