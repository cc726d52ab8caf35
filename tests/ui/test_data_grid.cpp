// The grid and its model over a data control: reading, moving, signals, following the session.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "query/date_text.h"
#include "query/time_text.h"
#include "shell/session.h"
#include "store/compilation_queries.h"
#include "support/databases.h"
#include "support/temp_dir.h"
#include "support/window_driver.h"
#include "ui/controls/data_grid.h"

namespace {

// The compilation list's grid over "Comp 001" to "Comp 300" (ids 1 to 300, SumTime 7 s per
// number, every third without a recording date) following the session, scrolled to "Comp
// 141" with "Comp 151" current.
class DataGridTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const QString path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(
            path,
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
            "INSERT INTO Compilation (Name, SumTrack, SumTime, Format, C_Length, RecDate) "
            "SELECT printf('Comp %03d', i), i % 20, i * 7, 'MD', 74, "
            "       CASE WHEN i % 3 = 0 THEN NULL ELSE '1997-01-21' END FROM n;");
        ASSERT_EQ(session.open(path, dialogs), shell::OpenOutcome::Opened);
        control.setDatabase(session.database());
        control.setRecordSource(store::standardStatement("compilation"));
        control.refresh();
        shell::followCompilations(control, session);
        grid.setColumns(store::gridColumns(store::GridKind::Overview));
        grid.setDataControl(&control);
        grid.resize(600, 300);
        grid.show();
        QCoreApplication::processEvents();
        moveTo(150);
        grid.scrollTo(grid.model()->index(140, 0), QAbstractItemView::PositionAtTop);
        ASSERT_EQ(topText(), "Comp 141");
    }
    void TearDown() override { session.close(); }

    void moveTo(int row) {
        control.recordset().setAbsolutePosition(row);
        control.notifyCurrentChanged();
    }
    QString text(int row, int column = 0) {
        return grid.model()->index(row, column).data().toString();
    }
    QString topText() { return text(grid.rowAt(0)); }
    // Changes the database past the grid, then announces it.
    void change(const QString& sql, qint64 id) {
        session.database().execute(sql);
        session.announceCompilationChanged(id);
    }
    // The grid, the record set and the selection agree on the current row.
    void expectCurrent(const QString& name) {
        EXPECT_EQ(text(grid.currentIndex().row()), name);
        EXPECT_EQ(control.recordset().value("C_Name").toString(), name);
        const QModelIndexList selected = grid.selectionModel()->selectedRows();
        ASSERT_EQ(selected.size(), 1);
        EXPECT_EQ(selected[0].row(), grid.currentIndex().row());
    }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    shell::Session session;
    store::DataControl control;
    ui::DataGrid grid;
    QAbstractItemModelTester tester{&grid.recordsetModel(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(DataGridTest, ClicksAndKeysMoveTheRecordsetAndItsMovesSelectTheRow) {
    QSignalSpy rowChanged(&grid, &ui::DataGrid::rowChanged);
    QSignalSpy headerClicked(&grid, &ui::DataGrid::headerClicked);
    QSignalSpy doubleClicked(&grid, &ui::DataGrid::doubleClicked);
    testsupport::doubleClickRow(&grid, 143);
    expectCurrent("Comp 144");
    QTest::keyClick(&grid, Qt::Key_Down);
    expectCurrent("Comp 145");
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(doubleClicked.count(), 2);
    QHeaderView* header = grid.horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(2) + 5, header->height() / 2));
    EXPECT_EQ(headerClicked.value(0).value(0).toInt(), 2);

    moveTo(5);
    expectCurrent("Comp 006");
    EXPECT_EQ(rowChanged.count(), 3);
    EXPECT_TRUE(grid.viewport()->rect().contains(grid.visualRect(grid.model()->index(5, 0))));
    control.recordset().moveLast();
    control.recordset().moveNext();  // past the end: nothing selected
    control.notifyCurrentChanged();
    EXPECT_TRUE(grid.selectionModel()->selectedRows().isEmpty());
}

TEST_F(DataGridTest, AnnouncedChangesMoveOnlyTheirRowsAndKeepViewAndCurrentRow) {
    const QPersistentModelIndex comp200 = grid.model()->index(199, 0);
    change("UPDATE Compilation SET Name = 'Comp 200a' WHERE CompilationID_P = 5", 5);
    EXPECT_EQ(comp200.data().toString(), "Comp 200");  // indexes move with their rows
    EXPECT_EQ(text(4), "Comp 006");
    EXPECT_EQ(text(199), "Comp 200a");
    EXPECT_EQ(topText(), "Comp 141");
    expectCurrent("Comp 151");

    const int scroll = grid.verticalScrollBar()->value();
    change("UPDATE Compilation SET Name = 'Comp 151 (live)' WHERE CompilationID_P = 151", 151);
    EXPECT_EQ(grid.verticalScrollBar()->value(), scroll);
    expectCurrent("Comp 151 (live)");
    change("UPDATE Compilation SET Name = 'Aaa' WHERE CompilationID_P = 151", 151);
    expectCurrent("Aaa");
    EXPECT_EQ(grid.currentIndex().row(), 0);
    EXPECT_EQ(topText(), "Comp 141");

    session.database().execute(
        "INSERT INTO Compilation (Name, Format, C_Length) "
        "VALUES ('Comp 000', 'MD', 74)");
    session.announceCompilationAdded(301);
    session.database().execute("DELETE FROM Compilation WHERE CompilationID_P IN (2, 3, 290)");
    session.announceCompilationDeleted(2);  // more changed than announced
    EXPECT_EQ(grid.model()->rowCount(), 298);
    EXPECT_EQ(text(1), "Comp 000");
    expectCurrent("Aaa");

    moveTo(150);
    const qint64 id = control.recordset().value("CompilationID_P").toLongLong();
    const QString next = text(151);
    session.database().execute(
        QString("DELETE FROM Compilation WHERE CompilationID_P = %1").arg(id));
    session.announceCompilationDeleted(id);
    expectCurrent(next);  // the current row gone: the next one
}

}  // namespace
