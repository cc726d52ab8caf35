#pragma once

#include <QMainWindow>
#include <QPointer>
#include <optional>

#include "assembly/compilation_editor.h"
#include "shell/database_commands.h"
#include "shell/print_command.h"
#include "shell/session.h"
#include "store/data_control.h"
#include "ui/windows/window_registry.h"

class QLabel;

namespace platform {
class Dialogs;
}

namespace ui {

class DataGrid;
class FindPanel;
class MainToolBar;
class PanelStatusBar;
class HelpWindow;
class ReportPreviewWindow;

// The main window: the intro picture while no database is open, else the list of all
// compilations with its goto, find and move controls. Its events call the logic of the shell.
// It owns the session that every window shares, and the registry of the windows loaded after it;
// its list follows the session's announcements.
class OverviewWindow : public QMainWindow, private shell::CommandFeedback {
    Q_OBJECT
  public:
    OverviewWindow(platform::Dialogs& dialogs, QWidget* parent = nullptr);
    ~OverviewWindow() override;

    shell::Session& session() { return session_; }
    shell::AppState& state() { return session_.state(); }
    WindowRegistry& windowRegistry() { return windows_; }
    MainToolBar* toolBar() const { return toolBar_; }
    PanelStatusBar* statusBarPanels() const { return statusBar_; }
    DataGrid* grid() const { return grid_; }
    store::DataControl* compilations() { return &compilations_; }

    // Checks, opens and shows a compilation database, as after New or Open; an Access
    // compilation database is offered for conversion first, and its copy opened.
    bool loadDatabase(const QString& chosen);
    void runTool(const QString& id);  // the toolbar's dispatch
    // The window's closing without its question (after Yes, or when the program ends).
    void unloadAll();
    // The compilation editor closed: the list's goto field is its first column's again, and a
    // compilation the editor added becomes the current row.
    void showEditorResult(std::optional<qint64> addedId);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void buildControls();
    QWidget* buildListPage();
    QWidget* buildSidePanel();
    void showDatabaseState(bool isOpen);
    void showLoadedDatabase();
    void showFollowedRows();
    void abandonDatabase();
    void showClosedState();
    void setToolbarState();
    void refillGotoList();
    void showListCount();
    void showPosition();
    void onHeaderClicked(int column);
    void onGridDoubleClicked();
    void newDatabase();
    void openDatabase();
    void closeDatabase();
    void compactDatabase();
    void deleteCompilation();
    void showCompilationGone();
    void showListWithout(qint64 deletedId);
    void openEditor(assembly::EditorMode mode);
    void showHelp();
    void print();
    std::optional<qint64> currentId();  // the list's current compilation
    std::optional<shell::CurrentCompilation> currentCompilation();
    ReportPreviewWindow* showPreview(reports::ListReport kind, qint64 compilationId);
    double colourCount() const;

    // CommandFeedback
    void setBusy(bool busy) override;
    void setStatusText(const QString& text) override;
    void processPendingEvents() override;

    platform::Dialogs& dialogs_;
    shell::Session session_;
    WindowRegistry windows_;
    store::DataControl compilations_;
    MainToolBar* toolBar_ = nullptr;
    PanelStatusBar* statusBar_ = nullptr;
    QWidget* introPage_ = nullptr;
    QWidget* listPage_ = nullptr;
    DataGrid* grid_ = nullptr;
    FindPanel* findPanel_ = nullptr;
    QLabel* position_ = nullptr;
    QPointer<HelpWindow> help_;
    bool unloaded_ = false;
};

}  // namespace ui
