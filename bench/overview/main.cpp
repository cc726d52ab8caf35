// bench_overview [--compilations N] [--runs R] [--cache DIR]: the main window on a large
// compilation database: opening it with the grid shown, scrolling the grid to the end, and
// filling the compilation goto list for each goto field.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QScrollBar>
#include <QTextStream>
#include <cstdio>

#include "compilation_cache.h"
#include "demo/demo_collection.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "query/goto_lists.h"
#include "shell/app_state.h"
#include "timing.h"
#include "ui/controls/data_grid.h"
#include "ui/windows/overview_window.h"

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::CompilationBenchOptions options =
        bench::readCompilationBenchOptions(app.arguments(), 5);
    const QString path = bench::cachedCompilations(options.cache, options.compilations);
    QTextStream out(stdout);

    std::vector<double> opening, scrolling;
    qint64 rowsRead = 0;
    qsizetype widgetsBefore = 0, widgetsAfter = 0;
    for (int run = 0; run < options.runs; ++run) {
        platform::ScriptedDialogs dialogs;
        ui::OverviewWindow window(dialogs);
        window.show();
        QApplication::processEvents();
        opening.push_back(bench::secondsOf([&] {
            window.loadDatabase(path);
            QApplication::processEvents();
        }));
        ui::DataGrid* grid = window.grid();
        widgetsBefore = grid->findChildren<QWidget*>().size();
        const qint64 readBefore = grid->recordsetModel().rowsRead();
        scrolling.push_back(bench::secondsOf([&] {
            grid->scrollToBottom();
            QApplication::processEvents();
        }));
        rowsRead = grid->recordsetModel().rowsRead() - readBefore;
        widgetsAfter = grid->findChildren<QWidget*>().size();
        window.unloadAll();
    }

    out << "compilations: " << options.compilations << ", runs: " << options.runs << "\n";
    out << "open database and show the grid: " << bench::median(opening) << " s (median)\n";
    out << "scroll to the end: " << bench::median(scrolling) << " s, rows read " << rowsRead
        << ", child widgets of the grid " << widgetsBefore << " -> " << widgetsAfter << "\n";

    shell::AppState state;
    state.database = engine::Workspace::defaultWorkspace().openDatabase(path);
    for (const char* field : {"c_name", "c_box", "c_format", "c_notes", "c_sumtime", "recdate"}) {
        std::vector<double> times;
        int entries = 0;
        for (int run = 0; run < options.runs; ++run) {
            times.push_back(bench::secondsOf([&] {
                entries =
                    query::fillCompilationGotoList(state.database, field, shell::kInputHint).count;
            }));
        }
        out << "goto list " << field << ": " << bench::median(times) << " s, " << entries
            << " entries\n";
    }
    engine::Workspace::defaultWorkspace().close();
    return 0;
}
