#include "ui/windows/rearrange_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "shell/navigation.h"
#include "shell/session.h"
#include "store/compilation_queries.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/row_drag.h"
#include "ui/windows/screen_colours.h"
#include "ui/windows/sort_dialog.h"
#include "ui/windows/window_registry.h"

namespace ui {

RearrangeWindow::RearrangeWindow(shell::Session& session, WindowRegistry& registry,
                                 platform::Dialogs& dialogs, qint64 compilationId, QWidget* picker)
    : QWidget(picker, Qt::Window),
      session_(session),
      dialogs_(dialogs),
      compilationId_(compilationId),
      picker_(picker),
      tracks_(this) {
    setObjectName(QStringLiteral("frmReArrange"));
    setWindowTitle(QStringLiteral("Rearrange Tracks"));
    setAttribute(Qt::WA_DeleteOnClose);
    tracks_.setObjectName(QStringLiteral("datTrack01"));
    shell::followTracks(tracks_, session_, [this] { return compilationId_; });
    buildControls();
    orderFocusByLayout(*this);
    resize(1000, 420);
    registry.add(this);
    load();
}

void RearrangeWindow::buildControls() {
    auto* layout = new QVBoxLayout(this);
    grid_ = new DataGrid(this);
    grid_->setObjectName(QStringLiteral("grd6TrackReArrange"));
    grid_->setAccessibleName(QStringLiteral("Tracks on the compilation"));
    grid_->setColumns(store::gridColumns(store::GridKind::Rearrange));
    grid_->setDataControl(&tracks_);
    layout->addWidget(grid_);
    drag_ = new RowDrag(grid_);
    connect(drag_, &RowDrag::started, this, &RearrangeWindow::startDrag);
    connect(drag_, &RowDrag::dropped, this, &RearrangeWindow::drop);
    connect(grid_, &DataGrid::clicked, this, [this] { toggleSplitState(*grid_); });
    connect(grid_, &DataGrid::doubleClicked, this, &RearrangeWindow::openSort);
    addMoveKeys();
}

void RearrangeWindow::addMoveKeys() {
    grid_->setToolTip(
        QStringLiteral("Drag a track, or press Ctrl+Up or Ctrl+Down, to move it; double-click to "
                       "number the tracks by an order"));
    // Seen before the grid, whose own Ctrl+arrows move the current cell only.
    grid_->installEventFilter(this);
}

bool RearrangeWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == grid_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool up = key->key() == Qt::Key_Up;
        if ((up || key->key() == Qt::Key_Down) && key->modifiers() == Qt::ControlModifier) {
            moveCurrentTrack(up ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// In the picker's place, which stays hidden while this window is open.
void RearrangeWindow::load() {
    if (picker_ != nullptr) {
        setGeometry(shell::alignedWith(geometry(), picker_->geometry()));
    }
    try {
        bindTracks();
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
    setGridLayout(*grid_, store::GridKind::Rearrange, screenColourCount(*this));
    if (picker_ != nullptr) {
        picker_->hide();
    }
}

bool RearrangeWindow::dragging() const {
    return drag_->dragging();
}

void RearrangeWindow::bindTracks() {
    tracks_.setDatabase(session_.database());
    tracks_.setDatabaseName(session_.state().databasePath);
    tracks_.setRecordSource(
        store::standardStatement(QStringLiteral("compilationtrack"), compilationId_));
    tracks_.refresh();
}

int RearrangeWindow::trackNoAt(int row) const {
    return grid_->model()->index(row, 0).data().toInt();
}

void RearrangeWindow::startDrag(int row) {
    draggedTrackNo_ = trackNoAt(row);
}

// The grid as the drop sees it: the current row is the last row the drag showed.
assembly::DropGrid RearrangeWindow::dropGrid() const {
    const int top = std::max(grid_->rowAt(0), 0);
    const int rowHeight = std::max(grid_->rowHeight(top), 1);
    assembly::DropGrid state;
    state.currentVisibleRow = grid_->currentIndex().row() - top;
    state.visibleRows = grid_->viewport()->height() / rowHeight;
    state.topTrackNo = trackNoAt(top);
    state.trackCount = grid_->model()->rowCount();
    return state;
}

void RearrangeWindow::drop() {
    try {
        assembly::moveTrack(session_.database(), compilationId_, draggedTrackNo_,
                            assembly::dropTargetNo(dropGrid()));
        session_.announceTracksChanged(compilationId_);
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
}

// The current track changes places with its neighbour, and stays current so that the next
// press moves it on. Nothing happens at either end of the list.
void RearrangeWindow::moveCurrentTrack(int by) {
    const int row = grid_->currentIndex().row();
    const int target = row + by;
    if (row < 0 || target < 0 || target >= grid_->model()->rowCount()) {
        return;
    }
    const int column = grid_->currentIndex().column();
    try {
        assembly::moveTrack(session_.database(), compilationId_, trackNoAt(row), trackNoAt(target));
        session_.announceTracksChanged(compilationId_);
        grid_->setCurrentIndex(grid_->model()->index(target, column));
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
}

void RearrangeWindow::openSort() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    SortDialog dialog(
        query::SortCaller::Compilation, [this](const QString& text) { renumber(text); }, dialogs_,
        this);
    QApplication::restoreOverrideCursor();
    dialog.exec();
    toggleSplitState(*grid_);
}

// One transaction: a failure leaves the old numbers, and the sort dialog shows why.
void RearrangeWindow::renumber(const QString& orderText) {
    assembly::renumberBySort(session_.database(), compilationId_, orderText);
    session_.announceTracksChanged(compilationId_);
}

void RearrangeWindow::closeEvent(QCloseEvent* event) {
    if (picker_ != nullptr) {
        picker_->show();
    }
    event->accept();
}

}  // namespace ui
