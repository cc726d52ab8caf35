#pragma once

#include <QPointer>
#include <QWidget>

#include "assembly/compilation_record.h"
#include "store/data_control.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace platform {
class Dialogs;
}
namespace shell {
class Session;
}

namespace ui {

class DataGrid;
class FindPanel;
class WindowRegistry;

// frmGetSongs, "Get Tracks": the album tracks (TempSource, built afresh at every opening) beside
// the tracks of one compilation. A double click or Enter on a source row adds it at the end of
// the compilation, asking first through the track lookup when the track is already recorded;
// a double click or Delete on a target row removes it after a question. The track count and the
// total time follow the database, the time red when it no longer fits on the medium. The window
// that opened it (the editor) is hidden while it is open and shown again when it closes. Beside
// them, how the tracks fit the medium as it is really recorded: an MD in the mode the user
// chose, a cassette's sides (evened on request), an audio CD.
class GetSongsWindow : public QWidget {
    Q_OBJECT
  public:
    GetSongsWindow(shell::Session& session, WindowRegistry& registry, platform::Dialogs& dialogs,
                   qint64 compilationId, QWidget* owner);

    qint64 compilationId() const { return compilationId_; }
    // False when TempSource could not be built (the reason was shown): the window must not be
    // shown, as its grids and lists would read rows of an earlier build.
    bool sourceBuilt() const { return sourceBuilt_; }
    DataGrid* sourceGrid() const { return source_; }
    DataGrid* targetGrid() const { return target_; }

    // The source as the filter, sort and navigator windows see it. requerySource rebuilds the
    // source's record source from the session's filter and sort clauses and shows its first row.
    store::DataControl& sourceRows() { return sourceRows_; }
    void requerySource();
    // Column 0 becomes the goto column again and the goto list is refilled, so that it follows
    // a new filter.
    void resetSourceGotoList();
    // Moves the source to the first row meeting an engine criterion; false when none does (the
    // current row stays).
    bool moveSourceTo(const QString& criterion);
    // The navigator window, if open; the filter and rearrange windows close it first so that it
    // never shows a tree of an outdated source.
    void closeNavigator();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildControls();
    QWidget* buildCounters();
    QWidget* buildSidePanel();
    QWidget* buildMediumPanel(QWidget* parent);
    void showMediumFit();
    void chooseMdMode(int entry);
    void balanceSides();
    void load();
    bool buildSource();
    void bindSource();
    void bindTarget();
    void readCompilation();
    void setColor();
    void activateRearrange();
    void useGotoColumn(int column);
    void showSourcePosition();
    void addTrack();
    void removeTrack();
    bool confirmRecorded(const QString& performer, const QString& title);
    void openFilter();
    void openSort();
    void openNavigator();
    void openRearrange();
    void followCompilation(qint64 id);

    shell::Session& session_;
    WindowRegistry& registry_;
    platform::Dialogs& dialogs_;
    const qint64 compilationId_;
    QPointer<QWidget> owner_;
    store::DataControl sourceRows_;      // datSource
    store::DataControl targetRows_;      // datCompilation01
    assembly::CompilationRecord shown_;  // as the counters show it
    bool sourceBuilt_ = false;
    DataGrid* source_ = nullptr;
    DataGrid* target_ = nullptr;
    QLineEdit* name_ = nullptr;
    QLineEdit* trackCount_ = nullptr;
    QLineEdit* timeCount_ = nullptr;
    QLabel* overTime_ = nullptr;  // how far the time is over the medium's, in words
    QLabel* position_ = nullptr;
    FindPanel* findPanel_ = nullptr;
    QPushButton* rearrange_ = nullptr;
    QWidget* medium_ = nullptr;
    QWidget* mdModeRow_ = nullptr;
    QComboBox* mdMode_ = nullptr;
    QPushButton* balance_ = nullptr;
    QLabel* mediumFit_ = nullptr;
    QPointer<QWidget> navigator_;
};

}  // namespace ui
