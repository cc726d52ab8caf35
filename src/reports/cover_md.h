#pragma once

#include <QRect>
#include <memory>

#include "report_engine/report_definition.h"
#include "report_engine/rows.h"

// The MD cover: a fold-out strip with the compilation's name and its track list, cut out along
// its outline; beside it the disc's label, the cover text under the name, and below that the
// disc's edge label with the name. It prints the fields C_Name and CoverMemo of one compilation
// row.
namespace reports {

// The strip on the paper (twips from the paper's corner): 45 by 254 mm.
inline constexpr QRect kStripOutline{1200, 800, 2552, 14402};
// Where the strip folds; a short mark straddles each edge there.
inline constexpr int kStripFolds[] = {4486, 8115, 11687};

// The track list: one row per track with the fields TrackNo, Track_Title and Track_Artist_Name
// in track order.
std::shared_ptr<const report_engine::ReportDefinition> mdCoverSub(
    std::shared_ptr<const report_engine::RowSource> tracks);

std::shared_ptr<const report_engine::ReportDefinition> mdCoverMain(
    std::shared_ptr<const report_engine::RowSource> tracks);

}  // namespace reports
