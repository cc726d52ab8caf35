#pragma once

#include "report_engine/page_model.h"
#include "report_engine/report_definition.h"
#include "report_engine/rows.h"

namespace report_engine {

// Lays a report out on pages: the report header, then for each row the group footers of the
// groups that end and the group headers of those that begin, the detail, and at the end the
// last group footers and the report footer. Pages are filled first; then each page gets its page
// header (formatted with the first row on the page) and page footer (with the last row), which
// therefore know the page count. Throws ReportError for a group field the rows lack, and for
// what the format steps throw.
PageModel layoutReport(const ReportDefinition& definition, const RowSource& rows);

}  // namespace report_engine
