#include "shell/print_command.h"

#include "engine/database.h"
#include "platform/program_folder.h"
#include "reports/cover_source.h"
#include "shell/toolbar_tools.h"
#include "store/compilation_queries.h"

namespace shell {

namespace {

using reports::ListReport;

std::vector<PrintChoice> makeChoices() {
    const QStringList& entries = reportTypes();
    std::vector<PrintChoice> choices{
        {0, entries[0], PrintOutput::Preview, ListReport::TracksAll, true, {}},
        {1, entries[1], PrintOutput::Preview, ListReport::TracksCompilation, false, {}},
        {2, entries[2], PrintOutput::Preview, ListReport::RecordingProtocol, false, {}},
        {3, entries[3], PrintOutput::Cover, ListReport::TracksCompilation, false, {}},
        {4, entries[4], PrintOutput::Pdf, ListReport::TracksAll, true,
         QStringLiteral("TracksByPerformer.PDF")},
        {5, entries[5], PrintOutput::Pdf, ListReport::TracksCompilation, false,
         QStringLiteral("TracksOnCompilation.PDF")},
    };
    return choices;
}

bool anyTrack(engine::Database& database) {
    return !database
                .openRecordset(QStringLiteral("CompilationTrack"), engine::RecordsetType::Snapshot)
                .eof();
}

}  // namespace

const std::vector<PrintChoice>& printChoices() {
    static const std::vector<PrintChoice> choices = makeChoices();
    return choices;
}

const PrintChoice* printChoice(int index) {
    const std::vector<PrintChoice>& choices = printChoices();
    return index >= 0 && index < int(choices.size()) ? &choices[size_t(index)] : nullptr;
}

std::optional<QString> printRefusal(engine::Database& database, const PrintChoice& choice,
                                    const std::optional<CurrentCompilation>& current) {
    if (choice.allCompilations) {
        return anyTrack(database) ? std::nullopt : std::optional<QString>(kNoTracksAnywhere);
    }
    const CurrentCompilation compilation = current.value_or(CurrentCompilation{});
    if (choice.output == PrintOutput::Cover) {
        return reports::coverRefusal(compilation.format, compilation.trackCount);
    }
    if (compilation.trackCount == 0) {
        return kNoTracksOnCompilation;
    }
    return std::nullopt;
}

std::optional<CoverView> coverView(const QString& format) {
    const std::optional<store::CoverKind> kind = store::coverKindOf(format);
    if (!kind) {
        return std::nullopt;
    }
    if (*kind == store::CoverKind::Md) {
        return CoverView{QStringLiteral("MD Cover"), 110};
    }
    return CoverView{QStringLiteral("CD-ROM Cover"), std::nullopt};
}

QString pdfPath(const PrintChoice& choice) {
    return platform::dataFolder() + QLatin1Char('/') + choice.pdfFileName;
}

QString pdfWriteMessage(const report_engine::WriteError& error) {
    QString cause = error.reason();
    if (!cause.isEmpty()) {
        cause[0] = cause[0].toUpper();
    }
    return kPdfWriteError + QLatin1Char('\n') + cause + QLatin1Char('.');
}

}  // namespace shell
