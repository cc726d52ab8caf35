#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "engine/workspace.h"
#include "store/compilation_queries.h"
#include "store/data_control.h"
#include "support/databases.h"
#include "support/temp_dir.h"
#include "ui/controls/data_grid.h"

namespace {

// A grid of the compilation list over 200 compilations "Comp 0001" ... "Comp 0200".
class DataGridTest : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(
            path,
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
            "INSERT INTO Compilation (Name, SumTrack, SumTime, Format, C_Length) "
            "SELECT printf('Comp %04d', i), i % 20, i * 7, 'MD', 74 FROM n;");
        control.setDatabase(engine::Workspace::defaultWorkspace().openDatabase(path));
        control.setRecordSource(store::standardStatement("compilation"));
        control.refresh();
        grid.setColumns(store::gridColumns(store::GridKind::Overview));
        grid.setDataControl(&control);
        grid.resize(600, 300);
        grid.show();
        QCoreApplication::processEvents();
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    engine::Recordset& rows() { return control.recordset(); }
    QPoint cellCentre(int row, int column = 0) {
        return grid.visualRect(grid.model()->index(row, column)).center();
    }
    QList<int> selectedRows() {
        QList<int> out;
        for (const QModelIndex& index : grid.selectionModel()->selectedRows()) {
            out << index.row();
        }
        return out;
    }

    testsupport::TempDir dir;
    QString path;
    store::DataControl control;
    ui::DataGrid grid;
};

TEST_F(DataGridTest, DescribesItsColumns) {
    EXPECT_EQ(grid.columnCount(), 9);
    EXPECT_EQ(grid.columnCaption(3), "Total Time");
    EXPECT_EQ(grid.columnDataField(3), "c_sumtime");
    EXPECT_EQ(grid.columnDataField(9), "");
}

TEST_F(DataGridTest, ClickingARowMovesTheRecordset) {
    EXPECT_EQ(selectedRows(), QList<int>{0});
    QSignalSpy moved(&control, &store::DataControl::currentChanged);
    QSignalSpy rowChanged(&grid, &ui::DataGrid::rowChanged);
    QSignalSpy clicked(&grid, &ui::DataGrid::clicked);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(3, 1));
    EXPECT_EQ(rows().absolutePosition(), 3);
    EXPECT_EQ(rows().value("C_Name").toString(), "Comp 0004");
    EXPECT_EQ(moved.count(), 1);
    EXPECT_EQ(rowChanged.count(), 1);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(selectedRows(), QList<int>{3});

    // Keys move the record set too.
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(rows().absolutePosition(), 4);
}

TEST_F(DataGridTest, MovingTheRecordsetSelectsAndShowsTheRow) {
    QSignalSpy rowChanged(&grid, &ui::DataGrid::rowChanged);
    rows().setAbsolutePosition(150);
    control.notifyCurrentChanged();
    EXPECT_EQ(selectedRows(), QList<int>{150});
    EXPECT_EQ(grid.currentIndex().row(), 150);
    EXPECT_TRUE(grid.viewport()->rect().contains(cellCentre(150)));
    EXPECT_EQ(rowChanged.count(), 1);
    EXPECT_EQ(rows().absolutePosition(), 150);

    rows().moveLast();
    rows().moveNext();  // past the end: no current row, nothing selected
    control.notifyCurrentChanged();
    EXPECT_TRUE(selectedRows().isEmpty());
}

TEST_F(DataGridTest, HeaderClickEmitsTheColumn) {
    QSignalSpy headerClicked(&grid, &ui::DataGrid::headerClicked);
    QHeaderView* header = grid.horizontalHeader();
    const int x = header->sectionViewportPosition(2) + header->sectionSize(2) / 2;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
    ASSERT_EQ(headerClicked.count(), 1);
    EXPECT_EQ(headerClicked.at(0).at(0).toInt(), 2);
    EXPECT_EQ(rows().absolutePosition(), 0);
}

TEST_F(DataGridTest, DoubleClickAndEnterEmitDoubleClicked) {
    QSignalSpy doubleClicked(&grid, &ui::DataGrid::doubleClicked);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(2));
    EXPECT_EQ(doubleClicked.count(), 1);
    EXPECT_EQ(rows().absolutePosition(), 2);
    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::keyClick(&grid, Qt::Key_Enter);
    EXPECT_EQ(doubleClicked.count(), 3);

    // Also on an empty grid: the window decides what an empty list means.
    testsupport::execRaw(path, "DELETE FROM Compilation");
    control.refresh();
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_EQ(doubleClicked.count(), 4);
}

TEST_F(DataGridTest, RefreshThatRemovesRowsKeepsAValidSelection) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(8));
    testsupport::execRaw(path, "DELETE FROM Compilation WHERE Name > 'Comp 0005'");
    control.refresh();
    EXPECT_EQ(grid.model()->rowCount(), 5);
    EXPECT_EQ(selectedRows(), QList<int>{rows().absolutePosition()});

    // Deleting the current last row leaves no current row: nothing is selected.
    rows().moveLast();
    control.notifyCurrentChanged();
    rows().remove();
    control.notifyRowsChanged();
    EXPECT_EQ(grid.model()->rowCount(), 4);
    EXPECT_TRUE(selectedRows().isEmpty());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCentre(3));
    EXPECT_EQ(rows().absolutePosition(), 3);
}

TEST_F(DataGridTest, LayoutColoursFollowTheColourDepth) {
    const QPalette system = QApplication::palette(&grid);
    ui::setGridLayout(grid, store::GridKind::Overview, 65536);
    EXPECT_TRUE(grid.alternatingRowColors());
    EXPECT_EQ(grid.palette().color(QPalette::Base), QColor(Qt::white));
    EXPECT_EQ(grid.palette().color(QPalette::AlternateBase), QColor(224, 224, 224));
    EXPECT_EQ(grid.palette().color(QPalette::Highlight), system.color(QPalette::ToolTipBase));
    EXPECT_EQ(grid.palette().color(QPalette::HighlightedText), system.color(QPalette::ButtonText));
    EXPECT_EQ(grid.model()->index(1, 0).data(Qt::BackgroundRole).value<QColor>(),
              QColor(224, 224, 224));
    EXPECT_EQ(grid.frameShadow(), QFrame::Sunken);
    EXPECT_EQ(grid.verticalHeader()->defaultSectionSize(), 20);

    ui::setGridLayout(grid, store::GridKind::Overview, 256);
    EXPECT_EQ(grid.palette().color(QPalette::AlternateBase), QColor(Qt::white));
    EXPECT_EQ(grid.palette().color(QPalette::Highlight), system.color(QPalette::Highlight));
}

TEST_F(DataGridTest, LayoutSkipsColumnsTheGridLacks) {
    // The browser's grid has eight columns; the layout also names a ninth.
    grid.setColumns(store::gridColumns(store::GridKind::Compilation));
    ui::setGridLayout(grid, store::GridKind::Compilation, 256);
    EXPECT_EQ(grid.columnCount(), 8);
    EXPECT_EQ(grid.frameShadow(), QFrame::Plain);

    // Red track numbers for rearranging, skipped quietly by a grid without columns.
    grid.setColumns(store::gridColumns(store::GridKind::Rearrange));
    ui::setGridLayout(grid, store::GridKind::Rearrange, 256);
    EXPECT_EQ(grid.model()->index(0, 0).data(Qt::ForegroundRole).value<QColor>(),
              QColor(255, 0, 0));
    EXPECT_FALSE(grid.model()->index(0, 1).data(Qt::ForegroundRole).isValid());
    grid.setColumns({});
    ui::setGridLayout(grid, store::GridKind::Rearrange, 256);
    EXPECT_EQ(grid.columnCount(), 0);
}

TEST_F(DataGridTest, SplitStateFlipsAndEverySecondCallScrollsBackLeft) {
    grid.resize(200, 300);
    QCoreApplication::processEvents();
    QScrollBar* bar = grid.horizontalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    if (ui::splitState()) {
        ui::toggleSplitState(grid);  // start from a cleared flag
    }
    grid.setShowGrid(false);
    bar->setValue(bar->maximum());
    ui::toggleSplitState(grid);
    EXPECT_TRUE(ui::splitState());
    EXPECT_TRUE(grid.showGrid());
    EXPECT_EQ(bar->value(), bar->maximum());
    ui::toggleSplitState(grid);
    EXPECT_FALSE(ui::splitState());
    EXPECT_EQ(bar->value(), 0);
}

}  // namespace
