// add-compilation and cover-text: the compilation editor's Update and cover buttons.
#include "assembly/compilation_editor.h"
#include "assembly/compilation_record.h"
#include "assembly/cover_composer.h"
#include "cli/commands.h"
#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "reports/cover_source.h"

namespace cli {

namespace {

const QString kAddUsage = QStringLiteral(
    "usage: mixorama-cli add-compilation DB NAME --format F --length MIN [--manufacturer M] "
    "[--storage S] [--date DD.MM.YY] [--notes N]");
const QString kCoverUsage =
    QStringLiteral("usage: mixorama-cli cover-text DB NAME p|pa|ps [--by-time]");

void printMessages(const platform::ScriptedDialogs& dialogs, QTextStream& stream) {
    for (const platform::MessageRequest& message : dialogs.messages()) {
        stream << QString(message.text).replace(QLatin1Char('\r'), QLatin1Char('\n')) << Qt::endl;
    }
}

int addWithEditor(engine::Database& database, const Arguments& arguments, Streams streams) {
    assembly::CompilationEditor editor(database);
    editor.loadEditor(assembly::EditorMode::Add, std::nullopt);
    editor.values.name = arguments.positional[1];
    editor.values.format = arguments.options.value(QStringLiteral("--format"));
    editor.values.length = arguments.options.value(QStringLiteral("--length"));
    editor.values.manufacturer = arguments.options.value(QStringLiteral("--manufacturer"));
    editor.values.storage = arguments.options.value(QStringLiteral("--storage"));
    editor.values.notes = arguments.options.value(QStringLiteral("--notes"));
    editor.values.dateText =
        arguments.options.value(QStringLiteral("--date"), assembly::kEmptyDateMask);
    platform::ScriptedDialogs dialogs;
    const QString& manufacturer = editor.values.manufacturer;
    if (!manufacturer.isEmpty() && !assembly::isListedManufacturer(database, manufacturer)) {
        dialogs.answerMessage(platform::MessageAnswer::Yes);
        assembly::offerManufacturer(database, dialogs, manufacturer);
        dialogs.clear();
    }
    const assembly::UpdateOutcome outcome = editor.updateCompilation(dialogs);
    if (!outcome.saved()) {
        printMessages(dialogs, streams.err);
        if (outcome.result == assembly::UpdateResult::Failed) {
            streams.err << outcome.errorDescription << Qt::endl;
        }
        return 1;
    }
    streams.out << "Compilation " << editor.compilationId().value_or(0) << " stored." << Qt::endl;
    return 0;
}

// The compilation's format and track count, by name.
struct CompilationFacts {
    qint64 id = 0;
    QString format;
    int tracks = 0;
};

std::optional<CompilationFacts> compilationFacts(engine::Database& database, const QString& name) {
    const std::optional<qint64> id = assembly::compilationIdByName(database, name);
    if (!id) {
        return std::nullopt;
    }
    const assembly::CompilationRecord record = assembly::readCompilation(database, *id);
    return CompilationFacts{*id, record.format, record.stored.trackCount};
}

int composeCover(engine::Database& database, const QString& name, assembly::CoverMode mode,
                 bool byTime, Streams streams) {
    const std::optional<CompilationFacts> facts = compilationFacts(database, name);
    if (!facts) {
        streams.err << "There is no compilation named \"" << name << "\"." << Qt::endl;
        return 1;
    }
    const assembly::CoverControls offered = assembly::coverControls(
        assembly::contentOfTracks(facts->tracks), facts->format, false, false);
    if (facts->tracks < 1) {
        streams.err << reports::kNoTracksOnCompilation << Qt::endl;
        return 1;
    }
    if (!offered.getEnabled[static_cast<int>(mode)]) {
        streams.err << "A cover of the format " << facts->format
                    << " lists performer and song only (ps)." << Qt::endl;
        return 1;
    }
    const assembly::ComposedCover cover =
        assembly::retrieveCoverData(database, facts->id, mode, facts->format, byTime);
    streams.out << cover.text;
    for (const assembly::BoldRange& range : cover.bold) {
        streams.out << range.start << ' ' << range.length << '\n';
    }
    streams.out.flush();
    return 0;
}

}  // namespace

int addCompilation(const QStringList& args, Streams streams) {
    const std::optional<Arguments> arguments =
        splitArguments(args, {QStringLiteral("--format"), QStringLiteral("--length"),
                              QStringLiteral("--manufacturer"), QStringLiteral("--storage"),
                              QStringLiteral("--date"), QStringLiteral("--notes")});
    if (!arguments || arguments->positional.size() != 2) {
        streams.err << kAddUsage << Qt::endl;
        return 2;
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(arguments->positional[0]);
        const int code = addWithEditor(database, *arguments, streams);
        database.close();
        return code;
    } catch (const engine::JetError& error) {
        streams.err << "Error " << error.number() << ": " << error.description() << Qt::endl;
        return 1;
    }
}

int coverText(const QStringList& args, Streams streams) {
    QStringList positional = args;
    const bool byTime = positional.removeAll(QStringLiteral("--by-time")) > 0;
    const std::optional<assembly::CoverMode> mode =
        positional.size() == 3 ? assembly::coverModeFromText(positional[2]) : std::nullopt;
    if (!mode) {
        streams.err << kCoverUsage << Qt::endl;
        return 2;
    }
    try {
        engine::Database database =
            engine::Workspace::defaultWorkspace().openDatabase(positional[0]);
        const int code = composeCover(database, positional[1], *mode, byTime, streams);
        database.close();
        return code;
    } catch (const engine::JetError& error) {
        streams.err << "Error " << error.number() << ": " << error.description() << Qt::endl;
        return 1;
    }
}

}  // namespace cli
