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

// The options that set the calibration, each one of its numbers.
struct CalibrationOption {
    const char* name;
    double report_engine::Calibration::*value;
    bool offset;  // else a scale
};

const CalibrationOption kCalibrationOptions[] = {
    {"--offset-x", &report_engine::Calibration::offsetXMm, true},
    {"--offset-y", &report_engine::Calibration::offsetYMm, true},
    {"--scale-x", &report_engine::Calibration::scaleXPercent, false},
    {"--scale-y", &report_engine::Calibration::scaleYPercent, false}};

// One number of the calibration; false (with a message) for what is not a number in range.
bool readCalibrationValue(const Arguments& arguments, const CalibrationOption& option,
                          report_engine::Calibration& calibration, Streams streams) {
    const QString name = QLatin1String(option.name);
    if (!arguments.options.contains(name)) {
        return true;
    }
    bool number = false;
    const double value = arguments.options.value(name).toDouble(&number);
    if (number && (option.offset ? report_engine::isPlausibleOffset(value)
                                 : report_engine::isPlausibleScale(value))) {
        calibration.*option.value = value;
        return true;
    }
    streams.err << name
                << (option.offset ? QStringLiteral(" takes millimetres from -%1 to %1")
                                        .arg(report_engine::kMaxOffsetMm)
                                  : QStringLiteral(" takes a percentage from %1 to %2")
                                        .arg(report_engine::kMinScalePercent)
                                        .arg(report_engine::kMaxScalePercent))
                << ", not \"" << arguments.options.value(name) << "\"." << Qt::endl;
    return false;
}

std::optional<CoverRequest> readCoverRequest(const QStringList& args, Streams streams) {
    QStringList options;
    for (const CalibrationOption& option : kCalibrationOptions) {
        options << QLatin1String(option.name);
    }
    const std::optional<Arguments> arguments =
        splitArguments(args, options, {QStringLiteral("--outline")});
    if (!arguments || arguments->positional.size() != 3) {
        usage(streams, kCoverPdfUsage);
        return std::nullopt;
    }
    CoverRequest request;
    request.database = arguments->positional[0];
    request.name = arguments->positional[1];
    request.pdf = arguments->positional[2];
    request.outline = !arguments->flags.isEmpty();
    for (const CalibrationOption& option : kCalibrationOptions) {
        if (!readCalibrationValue(*arguments, option, request.calibration, streams)) {
            return std::nullopt;
        }
    }
    return request;
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
