#pragma once

#include <QString>
#include <QTableView>
#include <vector>

#include "store/grid_layouts.h"
#include "ui/controls/recordset_model.h"

namespace store {
class DataControl;
}

namespace ui {

// A grid bound to a data control: one row per record, fixed columns, whole-row selection. The
// selected row follows the record set's current row, and selecting a row moves the record set
// there and tells the data control's other bound controls. When the data control rereads its
// rows (a row changed elsewhere), the rows above the view's top stay where they were on the
// screen and the current row is selected again without scrolling.
class DataGrid : public QTableView {
    Q_OBJECT
  public:
    explicit DataGrid(QWidget* parent = nullptr);

    void setDataControl(store::DataControl* control);
    store::DataControl* dataControl() const { return model_->dataControl(); }
    void setColumns(const std::vector<store::GridColumnSpec>& columns);
    int columnCount() const { return model_->columnCount(); }
    QString columnDataField(int column) const;
    QString columnCaption(int column) const;
    RecordsetModel& recordsetModel() const { return *model_; }

  signals:
    void headerClicked(int column);
    void rowChanged();  // the current row changed, by the user or by the record set
    void clicked();
    void doubleClicked();  // also the Enter key

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void followRecordset();
    void noteTopRow(const store::RowChange& change);
    void keepTopRow(const store::RowChange& change);
    void moveRecordset(const QModelIndex& current);
    void fitColumnsToCaptions();
    void fitColumnsToContents();  // by the first rows only

    RecordsetModel* model_;
    bool following_ = false;   // the grid is selecting the record set's row itself
    int topRow_ = -1;          // the first row shown when a reread began
    bool keepScroll_ = false;  // the next following of the record set must not scroll
};

// Gives a grid the look of its kind (store::gridLayout); settings the grid cannot take, such as
// a column it lacks, are skipped.
void setGridLayout(DataGrid& grid, store::GridKind kind, double colourCount);

// Called by the grids' click handlers: flips an application-wide flag. Every call switches the
// grid lines on; every second call (the flag turning false) also scrolls the grid back to its
// first column.
void toggleSplitState(DataGrid& grid);
bool splitState();  // the flag

}  // namespace ui
