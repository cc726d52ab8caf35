// bench_editor [--compilations N] [--runs R] [--cache DIR]: the compilation editor on a large
// compilation database: opening it on a compilation ("edit": its values, the three value lists
// and the cover controls' track state) and pressing Update.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include "assembly/compilation_editor.h"
#include "compilation_cache.h"
#include "demo/demo_collection.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "timing.h"

namespace {

void openEditor(assembly::CompilationEditor& editor, qint64 id) {
    editor.loadEditor(assembly::EditorMode::Edit, id);
    for (const assembly::ValueList list : {assembly::ValueList::Format, assembly::ValueList::Length,
                                           assembly::ValueList::Manufacturer}) {
        assembly::valueList(editor.database(), list);
    }
    editor.setCoverControls(editor.values.cover.isEmpty(), false);
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const bench::CompilationBenchOptions options =
        bench::readCompilationBenchOptions(app.arguments(), 21);
    const QString path = bench::cachedCompilations(options.cache, options.compilations);
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    QTextStream out(stdout);

    std::vector<double> opening, updating;
    for (int run = 0; run < options.runs; ++run) {
        const qint64 id = 1 + (qint64(run) * 4721) % options.compilations;
        assembly::CompilationEditor editor(database);
        opening.push_back(bench::secondsOf([&] { openEditor(editor, id); }));
        editor.values.notes = QStringLiteral("bench run %1").arg(run);
        platform::ScriptedDialogs dialogs;
        bool saved = false;
        updating.push_back(
            bench::secondsOf([&] { saved = editor.updateCompilation(dialogs).saved(); }));
        if (!saved) {
            out << "Update failed on compilation " << id << ": " << dialogs.lastMessageText()
                << Qt::endl;
            return 1;
        }
    }
    out << "compilations " << options.compilations << ", runs " << options.runs << Qt::endl;
    out << "editor opening (edit)  median " << bench::median(opening) * 1000 << " ms" << Qt::endl;
    out << "Update                 median " << bench::median(updating) * 1000 << " ms" << Qt::endl;
    return 0;
}
