// mixorama [FILE]: the desktop program; FILE opens at start as if chosen with Open.
// mixorama --screenshots DIR: writes pictures of the windows into DIR and exits.
#include <QApplication>
#include <QTextStream>
#include <cstdio>

#include "access/access_reader.h"
#include "engine/scratch_files.h"
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

}  // namespace

int main(int argc, char* argv[]) {
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
    if (!args.isEmpty()) {
        window.loadDatabase(args.first());
    }
    return app.exec();
}
