#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QScrollBar>

#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "shell/session.h"
#include "store/compilation_queries.h"
#include "support/databases.h"
#include "support/temp_dir.h"
#include "ui/controls/data_grid.h"

namespace {

// A grid of the compilation list over 300 compilations "Comp 001" ... "Comp 300" (ids 1 ...
// 300), following the session, scrolled to the middle with "Comp 151" current.
class GridFollowing : public ::testing::Test {
  protected:
    void SetUp() override {
        const QString path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(
            path,
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
            "INSERT INTO Compilation (Name, SumTrack, SumTime, Format, C_Length) "
            "SELECT printf('Comp %03d', i), 0, 0, 'MD', 74 FROM n;");
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
        control.recordset().setAbsolutePosition(150);
        control.notifyCurrentChanged();
        grid.scrollTo(grid.model()->index(140, 0), QAbstractItemView::PositionAtTop);
        QCoreApplication::processEvents();
        ASSERT_EQ(topText(), "Comp 141");
    }
    void TearDown() override { session.close(); }

    QString text(int row) { return grid.model()->index(row, 0).data().toString(); }
    QString topText() { return text(grid.rowAt(0)); }
    QString currentText() { return text(grid.currentIndex().row()); }
    QList<int> selectedRows() {
        QList<int> rows;
        for (const QModelIndex& index : grid.selectionModel()->selectedRows()) {
            rows << index.row();
        }
        return rows;
    }
    // Changes the database past the list, then announces it.
    void rename(qint64 id, const QString& name) {
        session.database().execute(
            QStringLiteral("UPDATE Compilation SET Name = '%1' WHERE CompilationID_P = %2")
                .arg(name)
                .arg(id));
        session.announceCompilationChanged(id);
    }
    // The grid, the record set and the selection agree on the current row.
    void expectCurrent(const QString& name) {
        EXPECT_EQ(currentText(), name);
        EXPECT_EQ(control.recordset().value("C_Name").toString(), name);
        EXPECT_EQ(selectedRows(), QList<int>{grid.currentIndex().row()});
    }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    shell::Session session;
    store::DataControl control;
    ui::DataGrid grid;
    QAbstractItemModelTester tester{&grid.recordsetModel(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(GridFollowing, ARowRenamedAboveTheViewMovesWithoutMovingTheView) {
    // Indexes kept by views and delegates move with their rows, up to the moved row's new place.
    const QPersistentModelIndex comp200 = grid.model()->index(199, 0);
    const QPersistentModelIndex comp201 = grid.model()->index(200, 0);
    rename(5, "Comp 200a");  // from row 4 to below "Comp 200"
    EXPECT_EQ(comp200.data().toString(), "Comp 200");
    EXPECT_EQ(comp201.data().toString(), "Comp 201");
    EXPECT_EQ(text(4), "Comp 006");
    EXPECT_EQ(text(199), "Comp 200a");
    EXPECT_EQ(grid.model()->rowCount(), 300);
    EXPECT_EQ(topText(), "Comp 141");
    expectCurrent("Comp 151");
    EXPECT_EQ(grid.currentIndex().row(), 149);
}

TEST_F(GridFollowing, TheCurrentRowRenamedStaysCurrentWhereverItGoes) {
    const int scroll = grid.verticalScrollBar()->value();
    rename(151, "Comp 151 (live)");  // keeps its place
    EXPECT_EQ(grid.verticalScrollBar()->value(), scroll);
    expectCurrent("Comp 151 (live)");
    EXPECT_EQ(grid.currentIndex().row(), 150);

    rename(151, "Aaa");  // to the first row, far above the view
    expectCurrent("Aaa");
    EXPECT_EQ(grid.currentIndex().row(), 0);
    EXPECT_EQ(topText(), "Comp 141");
}

TEST_F(GridFollowing, RowsAddedAndDeletedAboveAndBelowKeepTheView) {
    session.database().execute(
        "INSERT INTO Compilation (Name, Format, C_Length) VALUES ('Comp 000', 'MD', 74)");
    session.announceCompilationAdded(301);
    EXPECT_EQ(text(0), "Comp 000");
    EXPECT_EQ(topText(), "Comp 141");
    expectCurrent("Comp 151");

    for (int id : {2, 290}) {
        session.database().execute(
            QStringLiteral("DELETE FROM Compilation WHERE CompilationID_P = %1").arg(id));
        session.announceCompilationDeleted(id);
    }
    EXPECT_EQ(grid.model()->rowCount(), 299);
    EXPECT_EQ(text(2), "Comp 003");
    EXPECT_EQ(topText(), "Comp 141");
    expectCurrent("Comp 151");
}

TEST_F(GridFollowing, MoreChangedThanAnnouncedStillKeepsTheCurrentRow) {
    session.database().execute("DELETE FROM Compilation WHERE CompilationID_P IN (2, 3, 290)");
    session.announceCompilationDeleted(2);
    EXPECT_EQ(grid.model()->rowCount(), 297);
    EXPECT_EQ(text(1), "Comp 004");
    expectCurrent("Comp 151");
}

TEST_F(GridFollowing, TheCurrentRowDeletedElsewhereGivesWayToTheNextOne) {
    session.database().execute("DELETE FROM Compilation WHERE CompilationID_P = 151");
    session.announceCompilationDeleted(151);
    expectCurrent("Comp 152");
    EXPECT_EQ(topText(), "Comp 141");
}

TEST_F(GridFollowing, ANewRecordSourceStartsOver) {
    control.setRecordSource("SELECT Name AS C_Name FROM Compilation WHERE Name LIKE 'Comp 2*'");
    control.refresh();
    EXPECT_EQ(grid.model()->rowCount(), 100);
    expectCurrent("Comp 200");
    EXPECT_EQ(topText(), "Comp 200");
}

TEST_F(GridFollowing, CellsOfADatabaseGoneUnderTheGridShowEmpty) {
    // Closed without telling the data control: reading fails inside the model.
    engine::Workspace::defaultWorkspace().close();
    EXPECT_EQ(text(250), "");
    EXPECT_TRUE(grid.model()->index(250, 3).data(Qt::TextAlignmentRole).isValid());
    grid.scrollToBottom();
    grid.viewport()->repaint();  // paints empty cells
    EXPECT_EQ(text(299), "");
}

}  // namespace
