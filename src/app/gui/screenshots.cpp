#include "gui/screenshots.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTextStream>

#include <QHeaderView>
#include "demo/demo_collection.h"
#include "platform/scripted_dialogs.h"
#include "ui/controls/data_grid.h"
#include "ui/windows/help_window.h"
#include "ui/windows/overview_window.h"

namespace app {

namespace {

bool save(QWidget* widget, const QString& folder, const QString& name) {
    widget->show();
    QApplication::processEvents();
    const bool saved = widget->grab().save(QDir(folder).filePath(name + QStringLiteral(".png")));
    QTextStream(stdout) << (saved ? "wrote " : "could not write ") << name << ".png" << Qt::endl;
    return saved;
}

bool messageBox(const QString& folder) {
    QMessageBox box(QMessageBox::Question, QStringLiteral("Mixorama"),
                    QStringLiteral("Do you really want to exit the application?"),
                    QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return save(&box, folder, QStringLiteral("message-box"));
}

}  // namespace

int writeScreenshots(const QString& folder) {
    QDir().mkpath(folder);
    QTemporaryDir work;
    const QString compilations = work.filePath(QStringLiteral("demo.mdb"));
    demo::writeDemo(compilations, work.filePath(QStringLiteral("albums.mdb")));

    platform::ScriptedDialogs dialogs;
    bool ok = true;
    {
        ui::OverviewWindow window(dialogs);
        ok &= save(&window, folder, QStringLiteral("overview-no-database"));
        ok &= window.loadDatabase(compilations);
        ok &= save(&window, folder, QStringLiteral("overview-database-open"));
        window.grid()->horizontalHeader()->sectionClicked(1);
        ok &= save(&window, folder, QStringLiteral("overview-find-storage"));
        ui::HelpWindow help;
        help.showContents();
        ok &= save(&help, folder, QStringLiteral("help"));
        window.unloadAll();
    }
    ok &= messageBox(folder);
    return ok ? 0 : 1;
}

}  // namespace app
