#pragma once

#include "report_engine/page_model.h"

namespace reports {

// The printer calibration's test page (A4): a frame of report_engine::nominalTestFrame() with a
// millimetre scale inside its top and left lines, each tenth tick labelled with its distance
// from the paper's edge, and how to measure it.
report_engine::PageModel calibrationTestPage();

}  // namespace reports
