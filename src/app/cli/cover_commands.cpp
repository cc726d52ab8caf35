// cover: a compilation's cover as PDF, with the checks the print command makes first; moved and
// scaled for a printer that does not print true, or only its frames, on request.
#include "cli/commands.h"
#include "cli/compilation_lookup.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "reports/calibration_page.h"
#include "reports/cover_report.h"
#include "reports/cover_source.h"

namespace cli {

namespace {

const QString kCoverPdfUsage = QStringLiteral(
    "cover DB NAME OUT.pdf [--offset-x MM] [--offset-y MM] [--scale-x PCT] "
    "[--scale-y PCT] [--outline]");

struct CoverRequest {
    QString database;
    QString name;
    QString pdf;
    report_engine::Calibration calibration;
    bool outline = false;
};

// One number of the calibration; false (with a message) for what is not a number in range.
bool readCalibrationValue(const Arguments& arguments, const QString& option, double& value,
                          Streams streams) {
    if (!arguments.options.contains(option)) {
        return true;
    }
    bool number = false;
    value = arguments.options.value(option).toDouble(&number);
    const bool offset = option.startsWith(QLatin1String("--offset"));
    const bool inRange = offset ? qAbs(value) <= report_engine::kMaxOffsetMm
                                : value >= report_engine::kMinScalePercent &&
                                      value <= report_engine::kMaxScalePercent;
    if (number && inRange) {
        return true;
    }
    streams.err << option
                << (offset ? QStringLiteral(" takes millimetres from -%1 to %1")
                                 .arg(report_engine::kMaxOffsetMm)
                           : QStringLiteral(" takes a percentage from %1 to %2")
                                 .arg(report_engine::kMinScalePercent)
                                 .arg(report_engine::kMaxScalePercent))
                << ", not \"" << arguments.options.value(option) << "\"." << Qt::endl;
    return false;
}

std::optional<CoverRequest> readCoverRequest(const QStringList& args, Streams streams) {
    const std::optional<Arguments> arguments =
        splitArguments(args,
                       {QStringLiteral("--offset-x"), QStringLiteral("--offset-y"),
                        QStringLiteral("--scale-x"), QStringLiteral("--scale-y")},
                       {QStringLiteral("--outline")});
    if (!arguments || arguments->positional.size() != 3) {
        usage(streams, kCoverPdfUsage);
        return std::nullopt;
    }
    CoverRequest request;
    request.database = arguments->positional[0];
    request.name = arguments->positional[1];
    request.pdf = arguments->positional[2];
    request.outline = !arguments->flags.isEmpty();
    report_engine::Calibration& calibration = request.calibration;
    const bool valid = readCalibrationValue(*arguments, QStringLiteral("--offset-x"),
                                            calibration.offsetXMm, streams) &&
                       readCalibrationValue(*arguments, QStringLiteral("--offset-y"),
                                            calibration.offsetYMm, streams) &&
                       readCalibrationValue(*arguments, QStringLiteral("--scale-x"),
                                            calibration.scaleXPercent, streams) &&
                       readCalibrationValue(*arguments, QStringLiteral("--scale-y"),
                                            calibration.scaleYPercent, streams);
    return valid ? std::optional(request) : std::nullopt;
}

int writeCover(engine::Database& database, const CoverRequest& request, Streams streams) {
    const QString& name = request.name;
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
    report_engine::PageModel cover = reports::buildCover(database, compilation->id);
    if (request.outline) {
        cover = reports::coverOutline(std::move(cover));
    }
    report_engine::exportPdf(cover, request.pdf, name, request.calibration);
    return 0;
}

}  // namespace

int cover(const QStringList& args, Streams streams) {
    const std::optional<CoverRequest> request = readCoverRequest(args, streams);
    if (!request) {
        return 2;
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(request->database, true);
        const int code = writeCover(database, *request, streams);
        database.close();
        return code;
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    } catch (const report_engine::ReportError& error) {
        streams.err << error.description() << Qt::endl;
        return 1;
    }
}

int calibrationPage(const QStringList& args, Streams streams) {
    if (args.size() != 1) {
        return usage(streams, QStringLiteral("calibration-page OUT.pdf"));
    }
    try {
        report_engine::exportPdf(reports::calibrationTestPage(), args[0],
                                 QStringLiteral("Printer calibration"));
    } catch (const report_engine::ReportError& error) {
        streams.err << error.description() << Qt::endl;
        return 1;
    }
    return 0;
}

}  // namespace cli
