#include "ui/controls/row_drag.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>

namespace ui {

RowDrag::RowDrag(QTableView* view) : QObject(view), view_(view), viewport_(view->viewport()) {
    viewport_->installEventFilter(this);
}

bool RowDrag::eventFilter(QObject* watched, QEvent* event) {
    if (watched != viewport_) {
        return false;
    }
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            return press(static_cast<const QMouseEvent&>(*event));
        case QEvent::MouseMove:
            return move(static_cast<const QMouseEvent&>(*event));
        case QEvent::MouseButtonRelease:
            return release();
        default:
            return false;
    }
}

// The view selects the pressed row itself; the drag only notes where it began.
bool RowDrag::press(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) {
        pressedRow_ = view_->rowAt(event.position().toPoint().y());
        pressedAt_ = event.position().toPoint();
    }
    return false;
}

// While the button is held on a row the moves are the drag's, so the view does not also
// extend a selection with them.
bool RowDrag::move(const QMouseEvent& event) {
    if (pressedRow_ < 0 || !(event.buttons() & Qt::LeftButton)) {
        return false;
    }
    const QPoint at = event.position().toPoint();
    if (!dragging_) {
        if ((at - pressedAt_).manhattanLength() < QApplication::startDragDistance()) {
            return true;
        }
        dragging_ = true;
        QApplication::setOverrideCursor(Qt::DragMoveCursor);
        markDropRow();
        emit started(pressedRow_);
    }
    showDropRow(at.y());
    return true;
}

// Above or below the rows the list scrolls by one row towards the mouse, and the row that came
// into view whole becomes current; over a row, that row does. Outside every row (below the
// last) the current row stays.
void RowDrag::showDropRow(int y) {
    QScrollBar* scroll = view_->verticalScrollBar();
    const int oneRow =
        view_->verticalScrollMode() == QAbstractItemView::ScrollPerItem ? 1 : view_->rowHeight(0);
    const int height = view_->viewport()->height();
    int row = view_->rowAt(y);
    if (y < 0 && scroll->value() > scroll->minimum()) {
        scroll->setValue(scroll->value() - oneRow);
        row = view_->rowAt(0);
    } else if (y >= height && scroll->value() < scroll->maximum()) {
        scroll->setValue(scroll->value() + oneRow);
        row = view_->rowAt(height - 1);
        if (view_->rowViewportPosition(row) + view_->rowHeight(row) > height) {
            --row;  // cut off at the bottom
        }
    }
    if (row >= 0 && row != view_->currentIndex().row()) {
        view_->setCurrentIndex(
            view_->model()->index(row, std::max(view_->currentIndex().column(), 0)));
    }
}

bool RowDrag::release() {
    const bool wasDragging = dragging_;
    end();
    if (wasDragging) {
        emit dropped();
    }
    return wasDragging;  // a plain click stays the view's
}

// The drop row stands out in the desktop's selection colours, whatever the view's own are.
void RowDrag::markDropRow() {
    restingPalette_ = view_->palette();
    QPalette dragging = restingPalette_;
    const QPalette desktop = QApplication::palette();
    for (auto group : {QPalette::Active, QPalette::Inactive}) {
        dragging.setColor(group, QPalette::Highlight, desktop.color(group, QPalette::Highlight));
        dragging.setColor(group, QPalette::HighlightedText,
                          desktop.color(group, QPalette::HighlightedText));
    }
    view_->setPalette(dragging);
}

void RowDrag::end() {
    if (dragging_) {
        QApplication::restoreOverrideCursor();
        view_->setPalette(restingPalette_);
    }
    dragging_ = false;
    pressedRow_ = -1;
}

}  // namespace ui
