#pragma once

#include <QRect>
#include <memory>

#include "report_engine/report_definition.h"

// The CD-ROM cover: an inlay for a jewel case, cut out along its frame, with the cover text in
// the middle and the compilation's name on both spines. It prints the fields C_Name, C_SumTime
// and CoverMemo of one compilation row.
namespace reports {

// The inlay on the paper (twips from the paper's corner): 150 by 118 mm, a 340-twip (6 mm)
// spine at each side behind a fold line.
inline constexpr QRect kInlayFrame{1500, 1240, 8505, 6690};
inline constexpr int kLeftFoldX = 1840;
inline constexpr int kRightFoldX = 9665;

std::shared_ptr<const report_engine::ReportDefinition> cdromCoverShort();

}  // namespace reports
