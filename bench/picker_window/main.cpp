// bench_picker_window [--tracks N] [--runs R] [--cache DIR]: the track picker's opening as the
// user meets it, on an album collection of N tracks: Connect (linking the album tables), then
// the window itself (TempSource build, both grids shown, the source goto list).
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>

#include "access/access_reader.h"
#include "albumgen/albumgen.h"
#include "engine/database.h"
#include "platform/program_folder.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
#include "target_compilation.h"
#include "timing.h"
#include "ui/controls/data_grid.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/overview_window.h"

namespace {

constexpr int kTracksPerAlbum = 12;  // what the generator averages

struct Options {
    int tracks = 100000;
    int runs = 3;
    QString cache = QDir::temp().filePath(QStringLiteral("mixorama-bench"));
};

Options readOptions(const QStringList& args) {
    Options options;
    for (int i = 0; i + 1 < args.size(); ++i) {
        if (args[i] == QLatin1String("--tracks"))
            options.tracks = args[i + 1].toInt();
        if (args[i] == QLatin1String("--runs"))
            options.runs = args[i + 1].toInt();
        if (args[i] == QLatin1String("--cache"))
            options.cache = args[i + 1];
    }
    return options;
}

// The same collections bench_tempsource generates (and shares through the cache folder).
QString albumFile(const Options& options) {
    const QString path =
        QDir(options.cache).filePath(QStringLiteral("albums-%1.mdb").arg(options.tracks));
    if (!QFileInfo::exists(path)) {
        QDir().mkpath(options.cache);
        albumgen::Options generate;
        generate.albums = options.tracks / kTracksPerAlbum;
        generate.seed = 1;
        albumgen::writeAlbumDatabase(path, generate);
    }
    return path;
}

// A copy of the template with one compilation of 20 tracks, the picker's target.
QString compilationFile(const QTemporaryDir& work, int run) {
    const QString path = work.filePath(QStringLiteral("compilations-%1.mdb").arg(run));
    QFile::copy(platform::programFolder() + QStringLiteral("/template.mdb"), path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return path;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const Options options = readOptions(app.arguments());
    QTemporaryDir work;
    qputenv("XDG_CONFIG_HOME", work.filePath(QStringLiteral("config")).toUtf8());
    accessfile::installAccessReader();
    const QString albums = albumFile(options);
    QTextStream out(stdout);

    std::vector<double> connecting, opening;
    qint64 sourceRows = 0, rowsRead = 0;
    int gotoEntries = 0;
    for (int run = 0; run < options.runs; ++run) {
        platform::ScriptedDialogs dialogs;
        ui::OverviewWindow window(dialogs);
        window.show();
        if (!window.loadDatabase(compilationFile(work, run)))
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
