#include <QCloseEvent>
#include <QPointer>
#include <QScrollBar>

#include "overview_fixture.h"
#include "shell/session.h"
#include "store/compilation_queries.h"
#include "ui/windows/window_registry.h"

namespace {

// A window of the kind the main window's children are: it registers when loaded and shows the
// compilations through a grid that follows the session. When asked to close it notes whether
// it could still read its rows then.
class ReadingWindow : public QWidget {
  public:
    ReadingWindow(ui::OverviewWindow& main, const QString& name, QStringList& log)
        : QWidget(&main, Qt::Window), name_(name), log_(log) {
        setAttribute(Qt::WA_DeleteOnClose);
        rows_.setDatabase(main.session().database());
        rows_.setRecordSource(store::standardStatement("compilation"));
        rows_.refresh();
        shell::followCompilations(rows_, main.session());
        grid_ = new ui::DataGrid(this);
        grid_->setColumns(store::gridColumns(store::GridKind::Overview));
        grid_->setDataControl(&rows_);
        main.windowRegistry().add(this);
        show();
    }
    bool refuseClosing = false;
    ui::DataGrid* grid() const { return grid_; }

  protected:
    void closeEvent(QCloseEvent* event) override {
        if (!rows_.hasRecordset()) {
            log_ << name_ + " without rows";
        } else {
            rows_.recordset().moveLast();
            log_ << name_ + " read " + rows_.recordset().value("C_Name").toString();
        }
        event->setAccepted(!refuseClosing);
    }

  private:
    QString name_;
    QStringList& log_;
    store::DataControl rows_;
    ui::DataGrid* grid_;
};

class WindowSession : public OverviewFixture {
  protected:
    void SetUp() override {
        OverviewFixture::SetUp();
        const QString path = makeDatabase("coll.mdb");
        testsupport::execRaw(
            path,
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
            "INSERT INTO Compilation (Name, SumTrack, SumTime, Format, C_Length) "
            "SELECT printf('Comp %03d', i), 0, 0, 'MD', 74 FROM n;");
        openThroughToolbar(path);
        window->show();
    }
    ReadingWindow* load(const QString& name) { return new ReadingWindow(*window, name, log); }

    QStringList log;
};

TEST_F(WindowSession, ARenameElsewhereShowsInTheListInPlace) {
    ui::DataGrid* grid = window->grid();
    window->compilations()->recordset().setAbsolutePosition(150);
    window->compilations()->notifyCurrentChanged();
    grid->scrollTo(grid->model()->index(140, 0), QAbstractItemView::PositionAtTop);
    const int scroll = grid->verticalScrollBar()->value();

    // Another window renames "Comp 120" through a record set of its own.
    engine::Recordset other = window->session().database().openRecordset(
        "SELECT * FROM Compilation WHERE Name = "
        "'Comp 120'");
    const qint64 id = other.value("CompilationID_P").toLongLong();
    other.edit();
    other.setValue("Name", "Comp 120 (remastered)");
    other.update();
    window->session().announceCompilationChanged(id);

    EXPECT_EQ(grid->model()->index(119, 0).data().toString(), "Comp 120 (remastered)");
    EXPECT_EQ(grid->verticalScrollBar()->value(), scroll);
    EXPECT_EQ(grid->currentIndex().row(), 150);
    EXPECT_EQ(currentName(), "Comp 151");
    EXPECT_EQ(position(), "151  300");
    EXPECT_NE(gotoList()->findText("Comp 120 (remastered)"), -1);
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(WindowSession, DeleteAnnouncesToTheOtherWindows) {
    ReadingWindow* other = load("browser");
    window->compilations()->recordset().setAbsolutePosition(4);
    dialogs.answerMessage(platform::MessageAnswer::Ok);
    window->toolBar()->clickTool("ID_DeleteCompilation");
    EXPECT_EQ(other->grid()->model()->rowCount(), 299);
    EXPECT_EQ(other->grid()->model()->index(4, 0).data().toString(), "Comp 006");
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 299    List 299");
}

TEST_F(WindowSession, ClosingTheDatabaseClosesTheWindowsLastToFirst) {
    QPointer<ReadingWindow> first = load("first");
    QPointer<ReadingWindow> second = load("second");
    QPointer<ReadingWindow> third = load("third");
    third->hide();  // hidden while a window it opened is shown: still loaded
    QPointer<ReadingWindow> fourth = load("fourth");
    EXPECT_EQ(window->windowRegistry().windows().size(), 4);

    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_EQ(log, QStringList({"fourth read Comp 300", "third read Comp 300",
                                "second read Comp 300", "first read Comp 300"}));
    for (const auto& closed : {first, second, third, fourth}) {
        EXPECT_TRUE(closed.isNull());
    }
    EXPECT_TRUE(window->windowRegistry().windows().isEmpty());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_FALSE(window->session().isOpen());
    EXPECT_EQ(window->windowTitle(), "Mixorama");
}

TEST_F(WindowSession, AWindowThatStaysOpenLosesItsRowsWithTheDatabase) {
    ReadingWindow* stubborn = load("stubborn");
    stubborn->refuseClosing = true;
    QPointer<ReadingWindow> later = load("later");
    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_TRUE(later.isNull());
    EXPECT_EQ(window->windowRegistry().windows(), QList<QWidget*>{stubborn});
    EXPECT_EQ(stubborn->grid()->model()->rowCount(), 0);
    stubborn->grid()->viewport()->repaint();
    EXPECT_TRUE(dialogs.messages().empty());
    stubborn->refuseClosing = false;
}

TEST_F(WindowSession, TheProgramsEndClosesTheWindowsBeforeTheDatabase) {
    load("first");
    load("second");
    window->unloadAll();
    EXPECT_EQ(log, QStringList({"second read Comp 300", "first read Comp 300"}));
    EXPECT_FALSE(window->session().isOpen());
}

}  // namespace
