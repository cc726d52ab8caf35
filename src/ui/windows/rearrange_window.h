#pragma once

#include <QPointer>
#include <QWidget>

#include "assembly/track_order.h"
#include "store/data_control.h"

namespace platform {
class Dialogs;
}
namespace shell {
class Session;
}

namespace ui {

class DataGrid;
class RowDrag;
class WindowRegistry;

// frmReArrange, "Rearrange Tracks": the tracks of one compilation in their running order. A
// track dragged onto another row takes that row's number and the tracks between move by one; a
// double click opens the sort dialog, which renumbers all tracks by an order. Each step is
// written at once and announced, so the picker's target grid follows. The picker that opens it
// is hidden while it is open and shown again when it closes. Ctrl+Up and Ctrl+Down move the
// current track one place, as a drop on the neighbouring row does.
class RearrangeWindow : public QWidget {
    Q_OBJECT
  public:
    RearrangeWindow(shell::Session& session, WindowRegistry& registry, platform::Dialogs& dialogs,
                    qint64 compilationId, QWidget* picker);

    DataGrid* grid() const { return grid_; }
    bool dragging() const;

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildControls();
    void load();
    void bindTracks();
    void startDrag(int row);
    assembly::DropGrid dropGrid() const;
    int trackNoAt(int row) const;
    void drop();
    void addMoveKeys();
    void moveCurrentTrack(int by);
    void openSort();
    void renumber(const QString& orderText);

    shell::Session& session_;
    platform::Dialogs& dialogs_;
    const qint64 compilationId_;
    QPointer<QWidget> picker_;
    store::DataControl tracks_;  // datTrack01
    DataGrid* grid_ = nullptr;
    RowDrag* drag_ = nullptr;
    int draggedTrackNo_ = 0;
};

}  // namespace ui
