#include <QSignalSpy>

#include "picker_fixture.h"
#include "ui/windows/compilation_browser_window.h"
#include "ui/windows/edit_compilation_window.h"

namespace {

class BrowserWindow : public PickerWindowTest {
  protected:
    // Double click on the main list's row of that compilation (rows by name: Beat Club, Five,
    // Full, Road Trip).
    ui::CompilationBrowserWindow* openBrowser(int listRow) {
        doubleClickRow(window->grid(), listRow);
        auto* browser = window->findChild<ui::CompilationBrowserWindow*>();
        EXPECT_NE(browser, nullptr);
        return browser;
    }
    static QString field(QWidget* browser, const QString& name) {
        return browser->findChild<QLineEdit*>(name)->text();
    }
    static QPushButton* browserButton(QWidget* browser, const QString& name) {
        return browser->findChild<QPushButton*>(name);
    }
};

TEST_F(BrowserWindow, OpensOnTheMainListsCompilation) {
    ui::CompilationBrowserWindow* browser = openBrowser(1);
    ASSERT_NE(browser, nullptr);
    EXPECT_EQ(browser->windowTitle(), "Compilation Details");
    EXPECT_EQ(field(browser, "txtCompilationName"), "Five");
    EXPECT_EQ(field(browser, "txtTrack"), "5");
    EXPECT_EQ(field(browser, "txtLength"), "60");
    EXPECT_EQ(field(browser, "txtTime"), "00:25:00");
    EXPECT_EQ(browser->trackGrid()->model()->rowCount(), 5);
    EXPECT_EQ(browser->trackGrid()->model()->index(4, 3).data().toString(), "00:08:20");
    EXPECT_EQ(browser->findChild<QLabel*>("lblGotoCompilation")->text(), "Find Compilation Title:");
    auto* status = browser->findChild<ui::PanelStatusBar*>("stbOverview");
    EXPECT_EQ(status->panelText(1), window->statusBarPanels()->panelText(1));
    EXPECT_EQ(status->panelText(2), "C 4    List 4");

    // Moving here leaves the main list where it was; the tracks follow the compilation.
    browserButton(browser, "btnMoveC4")->click();
    browserButton(browser, "btnMoveC3")->click();
    EXPECT_EQ(field(browser, "txtCompilationName"), "Road Trip");
    EXPECT_EQ(browser->trackGrid()->model()->rowCount(), 0);
    EXPECT_EQ(currentName(), "Five");
    browserButton(browser, "btnMoveC1")->click();
    EXPECT_EQ(field(browser, "txtCompilationName"), "Beat Club");
    EXPECT_EQ(browser->trackGrid()->model()->index(0, 2).data().toString(), "Mrs. Robinson");

    auto* gotoList = browser->findChild<QComboBox*>("cmbGotoCompilation");
    gotoList->setEditText("Fu");
    QTest::keyClick(gotoList, Qt::Key_Return);
    EXPECT_EQ(field(browser, "txtCompilationName"), "Full");
    EXPECT_EQ(browser->trackGrid()->model()->rowCount(), 19);
}

TEST_F(BrowserWindow, TheLookupFromTheBrowserOnlyShows) {
    ui::CompilationBrowserWindow* browser = openBrowser(0);
    ASSERT_NE(browser, nullptr);
    bool okEnabled = true;
    int rows = 0;
    answerLookupWith("btnCancel", [&](ui::TrackLookupWindow& lookup) {
        okEnabled = lookup.findChild<QPushButton*>("btnOK")->isEnabled();
        rows = lookup.grid()->model()->rowCount();
    });
    doubleClickRow(browser->trackGrid(), 0);
    ASSERT_TRUE(lookupShown());
    EXPECT_FALSE(okEnabled);
    EXPECT_EQ(rows, 1);
    EXPECT_TRUE(dialogs.messages().empty());

    browserButton(browser, "btnMoveC4")->click();  // Road Trip, no tracks
    browser->trackGrid()->doubleClicked();
    EXPECT_EQ(dialogs.lastMessageText(), "No track available.");
    EXPECT_EQ(dialogs.messages().back().icon, platform::MessageIcon::Exclamation);
}

TEST_F(BrowserWindow, EditAndADoubleClickOnTheNameOpenTheEditorOnItsCompilation) {
    ui::CompilationBrowserWindow* browser = openBrowser(2);
    ASSERT_NE(browser, nullptr);
    QSignalSpy edits(browser, &ui::CompilationBrowserWindow::editRequested);
    browserButton(browser, "btnEdit")->click();
    EXPECT_EQ(browser->compilationId(), 4);
    QPointer<ui::EditCompilationWindow> editor = browser->findChild<ui::EditCompilationWindow*>();
    ASSERT_FALSE(editor.isNull());
    EXPECT_EQ(editor->mode(), assembly::EditorMode::Edit);
    EXPECT_EQ(editor->findChild<QLineEdit*>("txtCompilationName")->text(), "Full");
    EXPECT_FALSE(browser->isVisible()) << "the editor hides its opener";
    editor->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(editor.isNull());
    EXPECT_TRUE(browser->isVisible());

    QTest::mouseDClick(browser->findChild<QLineEdit*>("txtCompilationName"), Qt::LeftButton);
    EXPECT_EQ(edits.count(), 2);
    EXPECT_NE(browser->findChild<ui::EditCompilationWindow*>(), nullptr);
}

TEST_F(BrowserWindow, ATrackAddedInThePickerShowsInTheBrowser) {
    ui::CompilationBrowserWindow* browser = openBrowser(3);
    ASSERT_NE(browser, nullptr);
    openPicker(2);
    doubleClickSource("Help!");
    EXPECT_EQ(browser->trackGrid()->model()->rowCount(), 1);
    EXPECT_EQ(browser->trackGrid()->model()->index(0, 2).data().toString(), "Help!");
    EXPECT_EQ(field(browser, "txtTrack"), "1");
    EXPECT_EQ(field(browser, "txtTime"), "00:02:20");
    EXPECT_EQ(window->grid()->model()->index(3, 2).data().toString(), "1");
}

TEST_F(BrowserWindow, ClosingTheDatabaseClosesTheWindows) {
    QPointer<ui::CompilationBrowserWindow> browser = openBrowser(1);
    openPicker(3);
    ASSERT_FALSE(browser.isNull());
    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_TRUE(browser.isNull());
    EXPECT_TRUE(picker_.isNull());
    EXPECT_TRUE(editor.isVisible());  // shown again as the picker closed
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_FALSE(window->session().isOpen());
    EXPECT_FALSE(processHoldsFile(path));
}

}  // namespace
