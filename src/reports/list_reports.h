#pragma once

#include <QDate>
#include <QString>
#include <memory>

#include "report_engine/page_model.h"
#include "report_engine/report_definition.h"

namespace engine {
class Database;
}

// The printed lists of compilation tracks: one compilation's tracks, every track by performer,
// and the recording protocol with the albums to fetch.
namespace reports {

enum class ListReport { TracksCompilation, TracksAll, RecordingProtocol };

// The preview's caption: "Tracks on Selected Compilation", "All Tracks", "Recording Protocol".
QString listReportCaption(ListReport kind);

// The layouts on their paper. The rows are those of the statements of list_sources.h.
report_engine::ReportDefinition tracksCompilationReport(const report_engine::PageSetup& page);
report_engine::ReportDefinition tracksAllReport(const report_engine::PageSetup& page,
                                                const QDate& today);
// The protocol prints the albums needed (rows of albumsNeededStatement) before the tracks.
report_engine::ReportDefinition recordingProtocolReport(
    const report_engine::PageSetup& page, std::shared_ptr<const report_engine::RowSource> albums);
report_engine::ReportDefinition albumsNeededReport(const report_engine::PageSetup& page);

// Reads the rows from the database and lays the report out. compilationId is ignored by
// TracksAll. today is the date TracksAll prints in its page headers. Throws engine::JetError
// when the rows cannot be read and report_engine::ReportError when they do not fit the layout.
report_engine::PageModel buildListReport(engine::Database& database, ListReport kind,
                                         qint64 compilationId, const report_engine::PageSetup& page,
                                         const QDate& today);

// Lays the list out and writes it as a PDF file titled by its caption. Throws
// report_engine::ReportError when the file cannot be written; an earlier file stays as it was.
void exportListPdf(engine::Database& database, ListReport kind, qint64 compilationId,
                   const QString& path, const report_engine::PageSetup& page, const QDate& today);

}  // namespace reports
