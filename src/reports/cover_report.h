#pragma once

#include <QtGlobal>

#include "report_engine/page_model.h"

namespace engine {
class Database;
}

namespace reports {

// The cover of a compilation laid out for its format: the MD cover with its track list, or the
// CD-ROM inlay. Throws report_engine::ReportError with the print command's message for a format
// without a cover, and when there is no compilation of that id; engine::JetError for what the
// database reports.
report_engine::PageModel buildCover(engine::Database& database, qint64 compilationId);

// Only the cover's frames and fold lines, no text: a test of where they fall, on plain paper.
report_engine::PageModel coverOutline(report_engine::PageModel cover);

}  // namespace reports
