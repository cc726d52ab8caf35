// cover: a compilation's cover as PDF, with the checks the print command makes first.
#include "cli/commands.h"
#include "cli/compilation_lookup.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "reports/cover_report.h"
#include "reports/cover_source.h"

namespace cli {

namespace {

const QString kCoverPdfUsage = QStringLiteral("cover DB NAME OUT.pdf");

int writeCover(engine::Database& database, const QString& name, const QString& pdf,
               Streams streams) {
    const std::optional<Compilation> compilation = findCompilation(database, name, streams);
    if (!compilation) {
        return 1;
    }
    const std::optional<QString> refusal =
        reports::coverRefusal(compilation->format, compilation->stored.trackCount);
    if (refusal) {
        streams.err << *refusal << Qt::endl;
        return 1;
    }
    report_engine::exportPdf(reports::buildCover(database, compilation->id), pdf, name);
    return 0;
}

}  // namespace

int cover(const QStringList& args, Streams streams) {
    if (args.size() != 3) {
        return usage(streams, kCoverPdfUsage);
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(args[0], true);
        const int code = writeCover(database, args[1], args[2], streams);
        database.close();
        return code;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    } catch (const report_engine::ReportError& error) {
        streams.err << error.description() << Qt::endl;
        return 1;
    }
}

}  // namespace cli
