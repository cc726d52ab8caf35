// Windows that share the main window's session: announcements and the registry's closing.
#include <QCloseEvent>
#include <QPointer>
#include <QScrollBar>

#include "shell/session.h"
#include "store/compilation_queries.h"
#include "ui/windows/window_registry.h"
#include "window_fixture.h"

namespace {

// A window of the kind the main window's children are: it registers when loaded and shows the
// compilations through a grid that follows the session. Asked to close, it notes whether it
// could still read its rows then.
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
    ui::DataGrid* grid() const { return grid_; }

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
    ui::DataGrid* grid_;
};

// "Comp 001" to "Comp 300", the main list on "Comp 151" and scrolled to "Comp 141".
class WindowSession : public WindowTest {
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
        window->compilations()->recordset().setAbsolutePosition(150);
        window->compilations()->notifyCurrentChanged();
        window->grid()->scrollTo(window->grid()->model()->index(140, 0),
                                 QAbstractItemView::PositionAtTop);
    }
    ReadingWindow* load(const QString& name) { return new ReadingWindow(*window, name, log); }

    QStringList log;
};

TEST_F(WindowSession, DeleteAnnouncesToTheOtherWindows) {
    ReadingWindow* other = load("browser");
    window->compilations()->recordset().setAbsolutePosition(4);
    dialogs.answerMessage(platform::MessageAnswer::Ok);
    clickTool("ID_DeleteCompilation");
    EXPECT_EQ(other->grid()->model()->rowCount(), 299);
    EXPECT_EQ(other->grid()->model()->index(4, 0).data().toString(), "Comp 006");
}

TEST_F(WindowSession, ClosingTheDatabaseClosesTheWindowsLastToFirstWhileItIsOpen) {
    QPointer<ReadingWindow> first = load("first");
    QPointer<ReadingWindow> second = load("second");
    second->hide();  // hidden while a window it opened is shown: still loaded
    QPointer<ReadingWindow> third = load("third");
    clickTool("ID_CloseFile");
    EXPECT_EQ(log,
              QStringList({"third read its rows", "second read its rows", "first read its rows"}));
    EXPECT_TRUE(first.isNull() && second.isNull() && third.isNull());
    EXPECT_TRUE(window->windowRegistry().windows().isEmpty());
    EXPECT_FALSE(window->session().isOpen());

    openThroughToolbar(dir.file("coll.mdb"));
    load("fourth");
    load("fifth");
    log.clear();
    window->unloadAll();  // the program's end
    EXPECT_EQ(log, QStringList({"fifth read its rows", "fourth read its rows"}));
}

}  // namespace
