// The main list's grid over the session's rows: clicks, keys and signals, following the
// session's announcements; and the windows sharing the session closing with the database.
#include <QAbstractItemModelTester>
#include <QCloseEvent>
#include <QSignalSpy>

#include "shell/session.h"
#include "store/compilation_queries.h"
#include "ui/controls/focus_frame_style.h"
#include "ui/windows/window_registry.h"
#include "window_fixture.h"

namespace {

// A window of the kind the main window's children are: it registers when loaded and reads
// the compilations. Asked to close, it notes whether it could still read them then.
class ReadingWindow : public QWidget {
  public:
    ReadingWindow(ui::OverviewWindow& main, const QString& name, QStringList& log)
        : QWidget(&main, Qt::Window), name_(name), log_(log) {
        setAttribute(Qt::WA_DeleteOnClose);
        rows_.setDatabase(main.session().database());
        rows_.setRecordSource(store::standardStatement("compilation"));
        rows_.refresh();
        shell::followCompilations(rows_, main.session());
        main.windowRegistry().add(this);
        show();
    }

  protected:
    void closeEvent(QCloseEvent* event) override {
        log_ << name_ + (rows_.hasRecordset() && rows_.recordset().recordCount() == 300
                             ? " read its rows"
                             : " without rows");
        event->accept();
    }

  private:
    QString name_;
    QStringList& log_;
    store::DataControl rows_;
};

// "Comp 001" to "Comp 300" (ids 1 to 300), the main list scrolled to "Comp 141" with "Comp
// 151" current.
class DataGridTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        const QString path = makeDatabase("coll.mdb");
        testsupport::execRaw(
            path,
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
            "INSERT INTO Compilation (Name, Format, C_Length) "
            "SELECT printf('Comp %03d', i), 'MD', 74 FROM n;");
        openThroughToolbar(path);
        window->show();
        grid = window->grid();
        tester = std::make_unique<QAbstractItemModelTester>(
            &grid->recordsetModel(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        moveTo(150);
        grid->scrollTo(grid->model()->index(140, 0), QAbstractItemView::PositionAtTop);
        ASSERT_EQ(topText(), "Comp 141");
    }
    store::DataControl& control() const { return *window->compilations(); }
    shell::Session& session() const { return window->session(); }
    void moveTo(int row) const {
        control().recordset().setAbsolutePosition(row);
        control().notifyCurrentChanged();
    }
    QString text(int row) const { return grid->model()->index(row, 0).data().toString(); }
    QString topText() const { return text(grid->rowAt(0)); }
    // Changes the database past the grid, then announces it.
    void change(const QString& sql, qint64 id) const {
        session().database().execute(sql);
        session().announceCompilationChanged(id);
    }
    // The grid, the record set and the selection agree on the current row.
    void expectCurrent(const QString& name) const {
        EXPECT_EQ(text(grid->currentIndex().row()), name);
        EXPECT_EQ(control().recordset().value("C_Name").toString(), name);
        const QModelIndexList selected = grid->selectionModel()->selectedRows();
        ASSERT_EQ(selected.size(), 1);
        EXPECT_EQ(selected[0].row(), grid->currentIndex().row());
    }

    ui::DataGrid* grid = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

TEST_F(DataGridTest, ClicksAndKeysMoveTheRecordsetAndItsMovesSelectTheRow) {
    QSignalSpy rowChanged(grid, &ui::DataGrid::rowChanged);
    QSignalSpy doubleClicked(grid, &ui::DataGrid::doubleClicked);
    testsupport::doubleClickRow(grid, 143);
    expectCurrent("Comp 144");
    QTest::keyClick(grid, Qt::Key_Down);
    expectCurrent("Comp 145");
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(doubleClicked.count(), 2);

    moveTo(5);
    expectCurrent("Comp 006");
    EXPECT_EQ(rowChanged.count(), 3);
    EXPECT_TRUE(grid->viewport()->rect().contains(grid->visualRect(grid->model()->index(5, 0))));
    control().recordset().moveLast();
    control().recordset().moveNext();  // past the end: nothing selected
    control().notifyCurrentChanged();
    EXPECT_TRUE(grid->selectionModel()->selectedRows().isEmpty());
}

// Whichever colours the grid has, the focused cell is framed in the text colour.
TEST_F(DataGridTest, TheProgramsStyleFramesTheFocusedCellInTheTextColour) {
    ui::FocusFrameStyle style;
    grid->setStyle(&style);
    for (const double colours : {16.0, 65536.0}) {
        ui::setGridLayout(*grid, store::GridKind::Overview, colours);
        testsupport::pressInWindow(grid, Qt::Key_Down);
        const QRect cell = grid->visualRect(grid->currentIndex());
        const QImage shot = grid->viewport()->grab().toImage();
        const QColor text = grid->palette().color(QPalette::Text);
        EXPECT_EQ(shot.pixelColor(cell.left() + 1, cell.center().y()), text) << colours;
        EXPECT_EQ(shot.pixelColor(cell.center().x(), cell.bottom() - 1), text) << colours;
    }
}

// The session's list moves the changed rows (its own tests tell how); the grid keeps its view,
// its indexes and the selection on the current row.
TEST_F(DataGridTest, AnnouncedChangesKeepTheViewAndTheCurrentRowSelected) {
    const QPersistentModelIndex comp200 = grid->model()->index(199, 0);
    change("UPDATE Compilation SET Name = 'Comp 200a' WHERE CompilationID_P = 5", 5);
    EXPECT_EQ(comp200.data().toString(), "Comp 200");  // indexes move with their rows
    EXPECT_EQ(text(199), "Comp 200a");
    change("UPDATE Compilation SET Name = 'Aaa' WHERE CompilationID_P = 151", 151);
    expectCurrent("Aaa");
    EXPECT_EQ(topText(), "Comp 141");

    moveTo(150);
    const qint64 id = control().recordset().value("CompilationID_P").toLongLong();
    const QString next = text(151);
    session().database().execute(
        QString("DELETE FROM Compilation WHERE CompilationID_P = %1").arg(id));
    session().announceCompilationDeleted(id);
    expectCurrent(next);  // the current row gone: the next one
}

TEST_F(DataGridTest, ClosingTheDatabaseClosesTheWindowsLastToFirstWhileItIsOpen) {
    QStringList log;
    QPointer<ReadingWindow> first = new ReadingWindow(*window, "first", log);
    QPointer<ReadingWindow> second = new ReadingWindow(*window, "second", log);
    second->hide();  // hidden while a window it opened is shown: still loaded
    QPointer<ReadingWindow> third = new ReadingWindow(*window, "third", log);
    clickTool("ID_CloseFile");
    EXPECT_EQ(log,
              QStringList({"third read its rows", "second read its rows", "first read its rows"}));
    EXPECT_TRUE(first.isNull() && second.isNull() && third.isNull());
    EXPECT_TRUE(window->windowRegistry().windows().isEmpty());
    EXPECT_FALSE(window->session().isOpen());
}

}  // namespace
