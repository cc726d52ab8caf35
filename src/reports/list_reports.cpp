#include "reports/list_reports.h"

#include "engine/database.h"
#include "report_engine/layout.h"
#include "report_engine/pdf_export.h"
#include "reports/list_sources.h"
#include "reports/recordset_rows.h"

namespace reports {

namespace {

std::shared_ptr<const RecordsetRows> rowsOf(engine::Database& database, const QString& statement) {
    return std::make_shared<const RecordsetRows>(
        database.openRecordset(statement, engine::RecordsetType::Snapshot));
}

}  // namespace

QString listReportCaption(ListReport kind) {
    switch (kind) {
        case ListReport::TracksCompilation:
            return QStringLiteral("Tracks on Selected Compilation");
        case ListReport::TracksAll:
            return QStringLiteral("All Tracks");
        case ListReport::RecordingProtocol:
            return QStringLiteral("Recording Protocol");
    }
    return QString();
}

report_engine::PageModel buildListReport(engine::Database& database, ListReport kind,
                                         qint64 compilationId, const report_engine::PageSetup& page,
                                         const QDate& today) {
    switch (kind) {
        case ListReport::TracksCompilation:
            return report_engine::layoutReport(
                tracksCompilationReport(page),
                *rowsOf(database, compilationTracksStatement(compilationId)));
        case ListReport::TracksAll:
            return report_engine::layoutReport(tracksAllReport(page, today),
                                               *rowsOf(database, allTracksStatement()));
        case ListReport::RecordingProtocol: {
            auto albums = rowsOf(database, albumsNeededStatement(compilationId));
            return report_engine::layoutReport(
                recordingProtocolReport(page, albums),
                *rowsOf(database, compilationTracksStatement(compilationId)));
        }
    }
    return {};
}

void exportListPdf(engine::Database& database, ListReport kind, qint64 compilationId,
                   const QString& path, const report_engine::PageSetup& page, const QDate& today) {
    report_engine::exportPdf(buildListReport(database, kind, compilationId, page, today), path,
                             listReportCaption(kind));
}

}  // namespace reports
