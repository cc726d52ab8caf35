#include "reports/cover_report.h"

#include "engine/database.h"
#include "report_engine/layout.h"
#include "report_engine/report_error.h"
#include "reports/cover_cdrom.h"
#include "reports/cover_md.h"
#include "reports/cover_source.h"
#include "reports/recordset_rows.h"
#include "store/compilation_queries.h"

namespace reports {

report_engine::PageModel buildCover(engine::Database& database, qint64 compilationId) {
    const RecordsetRows compilation(database.openRecordset(
        store::compilationRowStatement(compilationId), engine::RecordsetType::Snapshot));
    if (compilation.rowCount() == 0) {
        throw report_engine::ReportError(
            QStringLiteral("There is no compilation with the id %1.").arg(compilationId));
    }
    const QString format =
        compilation.value(0, compilation.fieldIndex(QStringLiteral("C_Format"))).toString();
    const std::optional<store::CoverKind> kind = store::coverKindOf(format);
    if (!kind) {
        throw report_engine::ReportError(noCoverMessage(format));
    }
    if (*kind == store::CoverKind::CdRom) {
        return report_engine::layoutReport(*cdromCoverShort(), compilation);
    }
    const auto tracks = std::make_shared<const RecordsetRows>(database.openRecordset(
        store::standardStatement(QStringLiteral("compilationtrack"), compilationId),
        engine::RecordsetType::Snapshot));
    return report_engine::layoutReport(*mdCoverMain(tracks), compilation);
}

report_engine::PageModel coverOutline(report_engine::PageModel cover) {
    for (report_engine::Page& page : cover.pages) {
        page.items.removeIf([](const report_engine::PageItem& item) {
            return item.kind != report_engine::ItemKind::Line &&
                   item.kind != report_engine::ItemKind::Rectangle;
        });
    }
    return cover;
}

}  // namespace reports
