// mixorama [FILE]: the desktop program; FILE opens at start as if chosen with Open (installed,
// the first start without one makes and opens a demo).
// mixorama --screenshots DIR: writes pictures of the windows into DIR and exits.
#include <QApplication>
#include <QTextStream>
#include <cstdio>

#include "access/access_reader.h"
#include "engine/scratch_files.h"
#include "gui/first_start.h"
#include "gui/screenshots.h"
#include "ui/controls/focus_frame_style.h"
#include "ui/qt_dialogs.h"
#include "ui/windows/overview_window.h"

namespace {

bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// Printed by --help; the manual page's options are made from it.
void printHelp() {
    QTextStream(stdout)
        << "usage: mixorama [FILE]\n"
           "       mixorama --screenshots DIR\n"
           "  FILE                   open this compilation database at start; an installed\n"
           "                         program started the first time without one makes a\n"
           "                         demo in the user's data folder and opens it\n"
           "  --screenshots DIR      write pictures of the windows into DIR and exit\n"
           "  --help                 print this text and exit\n";
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc == 2 && (qstrcmp(argv[1], "--help") == 0 || qstrcmp(argv[1], "-h") == 0)) {
        printHelp();
        return 0;
    }
    const bool screenshots = argc == 3 && QByteArray(argv[1]) == "--screenshots";
    if (screenshots) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!hasDisplay()) {
        QTextStream(stderr) << "Mixorama is a desktop program and needs a display, but none is "
                               "available here (DISPLAY is not set).\n"
                               "Start it from a desktop session, or under a virtual display: "
                               "xvfb-run ./run.sh"
                            << Qt::endl;
        return 1;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Mixorama"));
    QApplication::setOrganizationName(QStringLiteral("Mixorama"));
    QApplication::setStyle(new ui::FocusFrameStyle);
    accessfile::installAccessReader();
    engine::removeScratchFilesOfEndedRuns();  // left by a run that was killed
    if (screenshots) {
        return app::writeScreenshots(QString::fromLocal8Bit(argv[2]));
    }
    ui::QtDialogs dialogs;
    ui::OverviewWindow window(dialogs);
    dialogs.setParent(&window);
    window.show();
    const QStringList args = app.arguments().mid(1);
    const std::optional<QString> file =
        args.isEmpty() ? app::firstStartDemo(dialogs) : std::optional(args.first());
    if (file) {
        window.loadDatabase(*file);
    }
    return app.exec();
}
