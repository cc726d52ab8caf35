#pragma once

#include <QWidget>

#include "store/data_control.h"

class QLineEdit;

namespace platform {
class Dialogs;
}

namespace ui {

class DataGrid;
class FindPanel;
class OverviewWindow;
class PanelStatusBar;

// frmCompilation, "Compilation Details": one compilation's values and tracks, with goto, find and
// move controls over all compilations, for looking only. Opened by the main window on its
// current compilation; moving here does not move the main list. A double click on a track shows
// the compilations that hold it (the lookup, OK disabled). Edit, or a double click on the name,
// asks for the editor through editRequested(). Compilations and tracks follow the database.
class CompilationBrowserWindow : public QWidget {
    Q_OBJECT
  public:
    CompilationBrowserWindow(OverviewWindow& main, platform::Dialogs& dialogs);

    // The compilation shown, -1 when there is none.
    qint64 compilationId();
    store::DataControl* compilations() { return &compilations_; }
    DataGrid* trackGrid() const { return tracks_; }

  signals:
    // Edit, or a double click on the compilation's name: the editor should open to edit
    // compilationId().
    void editRequested();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildControls();
    QWidget* buildFields();
    QWidget* buildSidePanel();
    void colourName();
    void load(qint64 chosenId);
    void showCompilation();
    void bindTracks();
    void refillGotoList();
    void showListCount();
    void showTrackLookup();
    void requestEdit();

    OverviewWindow& main_;
    platform::Dialogs& dialogs_;
    store::DataControl compilations_;  // datCompilation01
    store::DataControl trackRows_;     // datTrack01
    qint64 tracksOf_ = -1;             // the compilation datTrack01 is bound to
    QString gotoField_ = QStringLiteral("C_Name");
    int gotoCount_ = 0;
    std::vector<std::pair<QLineEdit*, QString>> boundFields_;  // box, field of the row
    QLineEdit* name_ = nullptr;
    QLineEdit* time_ = nullptr;
    DataGrid* tracks_ = nullptr;
    FindPanel* findPanel_ = nullptr;
    PanelStatusBar* statusBar_ = nullptr;
};

}  // namespace ui
