// bench_picker_window [--tracks N] [--runs R] [--cache DIR]: the track picker's opening as the
// user meets it, on an album collection of N tracks: Connect (linking the album tables), then
// the window itself (TempSource build, both grids shown, the source goto list).
#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <QTextStream>

#include "access/access_reader.h"
#include "album_cache.h"
#include "engine/database.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "target_compilation.h"
#include "timing.h"
#include "ui/controls/data_grid.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/overview_window.h"

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::AlbumBenchOptions options = bench::readAlbumBenchOptions(app.arguments());
    QTemporaryDir work;
    qputenv("XDG_CONFIG_HOME", work.filePath(QStringLiteral("config")).toUtf8());
    accessfile::installAccessReader();
    const QString albums = bench::cachedAlbumFile(options.cache, options.tracks);
    QTextStream out(stdout);

    std::vector<double> connecting, opening;
    qint64 sourceRows = 0, rowsRead = 0;
    int gotoEntries = 0;
    for (int run = 0; run < options.runs; ++run) {
        platform::ScriptedDialogs dialogs;
        ui::OverviewWindow window(dialogs);
        window.show();
        if (!window.loadDatabase(bench::templateCopy(work, run)))
            return 1;
        const qint64 id = bench::addTargetCompilation(window.state().database);
        QWidget editor;
        editor.show();
        QApplication::processEvents();
        store::EditorConnection connection;
        connection.isSaved = true;
        dialogs.answerFile(albums);
        connecting.push_back(bench::secondsOf([&] {
            store::connectAlbumDatabase(window.state().database, dialogs, window.state().album,
                                        connection);
        }));
        ui::GetSongsWindow* picker = nullptr;
        opening.push_back(bench::secondsOf([&] {
            picker = new ui::GetSongsWindow(window.session(), window.windowRegistry(), dialogs, id,
                                            &editor);
            picker->show();
            QApplication::processEvents();
        }));
        sourceRows = picker->sourceGrid()->model()->rowCount();
        rowsRead = picker->sourceGrid()->recordsetModel().rowsRead();
        gotoEntries = picker->findChild<QComboBox*>(QStringLiteral("cmbGotoSourceSong"))->count();
        picker->close();
        window.unloadAll();
    }
    const double connect = bench::median(connecting);
    const double open = bench::median(opening);
    out << "album tracks asked: " << options.tracks << ", source rows: " << sourceRows
        << ", source rows read by the grid: " << rowsRead << ", goto entries: " << gotoEntries
        << ", runs: " << options.runs << "\n";
    out << "connect: " << connect << " s, picker window (build, grids, goto list): " << open
        << " s, in all: " << connect + open << " s (medians)\n";
    return 0;
}
