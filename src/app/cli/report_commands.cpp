// mixorama-cli report: the print tool's lists written as PDF, with its checks and messages.
#include <QDate>
#include <map>

#include "cli/commands.h"
#include "cli/compilation_lookup.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "reports/list_sources.h"
#include "shell/print_command.h"

namespace cli {

namespace {

const QString kReportUsage =
    QStringLiteral("report DB tracks-all|tracks NAME|protocol NAME OUT.pdf [--paper a4|letter]");

// The print tool's list entry each kind stands for: the same checks apply.
const std::map<QString, int>& reportChoices() {
    static const std::map<QString, int> choices{{QStringLiteral("tracks-all"), 0},
                                                {QStringLiteral("tracks"), 1},
                                                {QStringLiteral("protocol"), 2}};
    return choices;
}

struct ReportRequest {
    QString database;
    const shell::PrintChoice* choice = nullptr;
    QString compilationName;
    QString output;
    report_engine::PageSetup paper;
};

// Takes "--paper a4|letter" out of args; false for another paper.
bool takePaper(QStringList& args, report_engine::PageSetup& paper) {
    paper = reports::listPaper();
    const qsizetype at = args.indexOf(QStringLiteral("--paper"));
    if (at < 0) {
        return true;
    }
    const QString name = args.value(at + 1).toLower();
    args.remove(at, qMin<qsizetype>(2, args.size() - at));
    if (name == QLatin1String("letter")) {
        paper.paper = report_engine::PageSetup::letter().paper;
    } else if (name == QLatin1String("a4")) {
        paper.paper = report_engine::PageSetup::a4().paper;
    } else {
        return false;
    }
    return true;
}

std::optional<ReportRequest> readRequest(QStringList args) {
    ReportRequest request;
    if (!takePaper(args, request.paper) || args.size() < 3) {
        return std::nullopt;
    }
    const auto choice = reportChoices().find(args[1]);
    if (choice == reportChoices().end()) {
        return std::nullopt;
    }
    request.choice = shell::printChoice(choice->second);
    const qsizetype expected = request.choice->allCompilations ? 3 : 4;
    if (args.size() != expected) {
        return std::nullopt;
    }
    request.database = args[0];
    request.compilationName = request.choice->allCompilations ? QString() : args[2];
    request.output = args.last();
    return request;
}

int writeReport(const ReportRequest& request, Streams streams) {
    engine::Database database =
        engine::Workspace::defaultWorkspace().openDatabase(request.database, true);
    std::optional<shell::CurrentCompilation> current;
    if (!request.choice->allCompilations) {
        const std::optional<Compilation> found =
            findCompilation(database, request.compilationName, streams);
        if (!found) {
            return 1;
        }
        current = shell::CurrentCompilation{found->id, found->stored.trackCount, {}};
    }
    if (const std::optional<QString> refusal =
            shell::printRefusal(database, *request.choice, current)) {
        streams.err << *refusal << Qt::endl;
        return 1;
    }
    const report_engine::PageModel model =
        reports::buildListReport(database, request.choice->report, current ? current->id : 0,
                                 request.paper, QDate::currentDate());
    try {
        report_engine::exportPdf(model, request.output,
                                 reports::listReportCaption(request.choice->report));
    } catch (const report_engine::WriteError& error) {
        streams.err << shell::pdfWriteMessage(error) << Qt::endl;
        return 1;
    }
    streams.out << reports::listReportCaption(request.choice->report) << ": " << model.pages.size()
                << " page(s) written to " << request.output << Qt::endl;
    return 0;
}

}  // namespace

int writeListReport(const QStringList& args, Streams streams) {
    const std::optional<ReportRequest> request = readRequest(args);
    if (!request) {
        return usage(streams, kReportUsage);
    }
    try {
        return writeReport(*request, streams);
    } catch (const engine::JetError& error) {
        return reportError(streams, error);
    }
}

}  // namespace cli
