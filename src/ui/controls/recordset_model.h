#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QPointer>
#include <QVector>
#include <vector>

#include "store/data_control.h"
#include "store/grid_layouts.h"

namespace ui {

// The rows of a data control's record set as a table with fixed columns. Rows are read one at a
// time by position, only when a view asks for them, so a grid over 100,000 rows reads the few
// it shows. A new record source resets the model; a reread of the same source (a row added,
// changed or deleted elsewhere) inserts, removes, moves or updates only the rows it touched, so
// views keep their scroll position, current row and selection. A value the engine cannot read
// shows as an empty cell.
class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit RecordsetModel(QObject* parent = nullptr);

    void setDataControl(store::DataControl* control);
    store::DataControl* dataControl() const { return control_; }
    void setColumns(const std::vector<store::GridColumnSpec>& columns);
    const std::vector<store::GridColumnSpec>& columns() const { return columns_; }

    void setColumnAlignment(int column, store::ColumnAlignment alignment);
    void setColumnForeground(int column, const QColor& colour);
    // Row backgrounds: even rows get base, odd rows alternate; invalid colours leave the view's.
    void setRowColours(const QColor& base, const QColor& alternate);
    QColor baseColour() const { return base_; }
    QColor alternateColour() const { return alternate_; }

    // Rows read from the record set since the model was created (for tests and benchmarks).
    qint64 rowsRead() const { return rowsRead_; }
    // True while a reread replaces the rows: the view's current row moves with the rows then,
    // not because someone chose another.
    bool rereading() const { return rereading_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    enum class Pending { None, Insert, Remove, Move };

    void reload();
    void beginReread(const store::RowChange& change);
    void endReread();
    void forgetCachedRow() const;
    void bindFields();
    const QVector<QVariant>* rowValues(int row) const;
    QVariant cellValue(const QModelIndex& index) const;
    QString displayText(int column, const QVariant& value) const;
    QVariant alignment(int column, const QVariant& value) const;

    QPointer<store::DataControl> control_;
    std::vector<store::GridColumnSpec> columns_;
    std::vector<int> fieldIndexes_;  // record set field of each column, -1 when missing
    std::vector<QColor> foregrounds_;
    QColor base_;
    QColor alternate_;
    int rows_ = 0;
    bool rereading_ = false;
    Pending pending_ = Pending::None;
    int changedRow_ = -1;  // the one row a reread changed (its new position), -1 for none
    bool allRowsChanged_ = false;
    // The row read last: a view asks for every cell of a row in turn.
    mutable int cachedRow_ = -1;
    mutable QVector<QVariant> cachedValues_;
    mutable qint64 rowsRead_ = 0;
};

}  // namespace ui
