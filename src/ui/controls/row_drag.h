#pragma once

#include <QObject>
#include <QPalette>
#include <QPoint>

class QEvent;
class QMouseEvent;
class QTableView;

namespace ui {

// Lets the user drag a row of a table view onto another row with the mouse. A drag begins when
// the mouse, pressed on a row, has moved the system's drag distance; from then on the row under
// the mouse is the view's current (highlighted) row, the drop row, and the view scrolls by a
// row while the mouse is above or below it. Releasing the button drops on the current row.
//
// The drag is made of the view's own press, move and release events rather than a QDrag: a
// QDrag runs a nested event loop that the platform feeds, which test-driven mouse events and
// the offscreen platform do not, and a move inside one view needs no data exchange.
class RowDrag : public QObject {
    Q_OBJECT
  public:
    explicit RowDrag(QTableView* view);

    bool dragging() const { return dragging_; }

  signals:
    void started(int row);  // the row the drag began on
    void dropped();         // the view's current row is the drop row

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    bool release();
    void markDropRow();
    void showDropRow(int y);
    void end();

    QTableView* view_;
    // Kept apart from the view: while the view is destroyed its viewport still sends events,
    // and the view can no longer be asked for it then.
    QObject* viewport_;
    int pressedRow_ = -1;  // the row under a held left button, -1 when none
    QPoint pressedAt_;
    bool dragging_ = false;
    QPalette restingPalette_;  // the view's own, while a drag shows the drop row
};

}  // namespace ui
