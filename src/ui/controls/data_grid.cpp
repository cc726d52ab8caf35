#include "ui/controls/data_grid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include "store/data_control.h"

namespace ui {

namespace {

const int kMinimumColumnWidth = 60;
const int kMaximumColumnWidth = 280;
const int kRowsMeasured = 40;
const int kTwipsPerPixel = 15;
const int kDefaultRowTwips = 250;

}  // namespace

DataGrid::DataGrid(QWidget* parent) : QTableView(parent), model_(new RecordsetModel(this)) {
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    // Arrows, Page Up/Down, Home and End move inside the grid; Tab goes on to the next control.
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    // Fixed, uniform rows: the view then never measures rows, however many there are.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(kDefaultRowTwips / kTwipsPerPixel);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    // Column widths look at the first rows only, never at all of them.
    horizontalHeader()->setResizeContentsPrecision(kRowsMeasured);

    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &DataGrid::headerClicked);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &DataGrid::moveRecordset);
    connect(model_, &QAbstractItemModel::modelReset, this, &DataGrid::followRecordset);
    connect(model_, &QAbstractItemModel::modelReset, this, &DataGrid::fitColumnsToContents);
    connect(this, &QAbstractItemView::clicked, this, [this] { emit clicked(); });
}

void DataGrid::setDataControl(store::DataControl* control) {
    if (auto* old = model_->dataControl()) {
        disconnect(old, nullptr, this, nullptr);
    }
    // The grid looks at its rows before the model changes them and after it has.
    if (control) {
        connect(control, &store::DataControl::rowsAboutToBeReread, this, &DataGrid::noteTopRow);
    }
    model_->setDataControl(control);
    if (control) {
        connect(control, &store::DataControl::rowsReread, this, &DataGrid::keepTopRow);
        connect(control, &store::DataControl::currentChanged, this, &DataGrid::followRecordset);
    }
    followRecordset();
}

void DataGrid::setColumns(const std::vector<store::GridColumnSpec>& columns) {
    model_->setColumns(columns);
    fitColumnsToCaptions();
}

QString DataGrid::columnDataField(int column) const {
    return column >= 0 && column < columnCount() ? model_->columns()[column].dataField : QString();
}

QString DataGrid::columnCaption(int column) const {
    return column >= 0 && column < columnCount() ? model_->columns()[column].caption : QString();
}

// Measured from the captions only: measuring cell contents would read every row.
void DataGrid::fitColumnsToCaptions() {
    for (int i = 0; i < columnCount(); ++i) {
        setColumnWidth(i, std::max(horizontalHeader()->sectionSizeHint(i), kMinimumColumnWidth));
    }
}

void DataGrid::fitColumnsToContents() {
    if (model_->rowCount() == 0) {
        return;
    }
    for (int i = 0; i < columnCount(); ++i) {
        const int wanted = std::max(sizeHintForColumn(i), horizontalHeader()->sectionSizeHint(i));
        setColumnWidth(i, std::clamp(wanted, kMinimumColumnWidth, kMaximumColumnWidth));
    }
}

void DataGrid::followRecordset() {
    store::DataControl* control = model_->dataControl();
    const int row =
        (control && control->hasRecordset()) ? control->recordset().absolutePosition() : -1;
    const QModelIndex current = currentIndex();
    following_ = true;
    if (row >= 0 && row < model_->rowCount() && columnCount() > 0) {
        const QModelIndex target = model_->index(row, std::max(current.column(), 0));
        selectionModel()->setCurrentIndex(
            target, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        if (!keepScroll_) {
            scrollTo(target);
        }
    } else {
        // No current record (or none shown): no row is selected.
        selectionModel()->clear();
    }
    following_ = false;
    keepScroll_ = false;
}

void DataGrid::noteTopRow(const store::RowChange& change) {
    topRow_ = rowAt(0);
    // The changed row itself may go anywhere; the row below it holds the place.
    if (topRow_ >= 0 && topRow_ == change.before) {
        ++topRow_;
    }
}

// Scrolls by as many rows as came or went above the top row, so that it stays on the screen
// where it was.
void DataGrid::keepTopRow(const store::RowChange& change) {
    keepScroll_ = true;
    if (topRow_ < 0 || !change.oneRow) {
        return;
    }
    int newTop = topRow_;
    if (change.before >= 0 && change.before < topRow_) {
        --newTop;
    }
    if (change.after >= 0 && change.after <= newTop) {
        ++newTop;
    }
    const int step = verticalScrollMode() == ScrollPerItem ? 1 : rowHeight(0);
    updateGeometries();
    verticalScrollBar()->setValue(verticalScrollBar()->value() + (newTop - topRow_) * step);
}

void DataGrid::moveRecordset(const QModelIndex& current) {
    // While a reread replaces the rows the view's current row moves with them; the record set
    // keeps its own current row then.
    if (!following_ && !model_->rereading() && current.isValid()) {
        store::DataControl* control = model_->dataControl();
        if (control && control->hasRecordset() &&
            current.row() < control->recordset().recordCount() &&
            current.row() != control->recordset().absolutePosition()) {
            control->recordset().setAbsolutePosition(current.row());
            control->notifyCurrentChanged();
        }
    }
    emit rowChanged();
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit doubleClicked();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

// Any double click in the rows' area counts, also on an empty grid: the windows tell the user
// when there is no row to open.
void DataGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    emit doubleClicked();
}

}  // namespace ui
