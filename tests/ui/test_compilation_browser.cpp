// The compilation browser: one compilation's values and tracks with its own find panel.

#include "query/time_text.h"
#include "ui/windows/compilation_browser_window.h"
#include "ui/windows/edit_compilation_window.h"
#include "ui/windows/track_lookup_window.h"
#include "window_fixture.h"

namespace {

class BrowserWindow : public PickerTest {
  protected:
    // A double click on the main list's row of the compilation.
    void openBrowser(const QString& name) {
        testsupport::doubleClickRow(window->grid(), testsupport::rowWith(window->grid(), 0, name));
        browser = window->findChild<ui::CompilationBrowserWindow*>();
        ASSERT_NE(browser, nullptr);
    }
    QString field(const QString& name) const {
        return testsupport::control<QLineEdit>(browser, name)->text();
    }
    QStringList trackTitles() const { return columnTexts(browser->trackGrid(), 2); }

    QPointer<ui::CompilationBrowserWindow> browser;
};

TEST_F(BrowserWindow, ShowsTheMainListsCompilationAndMovesOnItsOwn) {
    openBrowser("Five");
    EXPECT_EQ(field("txtCompilationName"), "Five");
    EXPECT_EQ(field("txtTime"), query::formatTime(1500));
    EXPECT_EQ(trackTitles(), QStringList({"One", "Two", "Three", "Four", "Five"}));

    clickButton(browser, "btnMoveC4");
    EXPECT_EQ(field("txtCompilationName"), "Road Trip");
    EXPECT_EQ(trackTitles(), QStringList());
    EXPECT_EQ(currentName(), "Five");  // the main list stays
    testsupport::control<QComboBox>(browser, "cmbGotoCompilation")->setEditText("B");
    clickButton(browser, "btnFindC1");
    EXPECT_EQ(field("txtCompilationName"), "Beat Club");
}

TEST_F(BrowserWindow, ItsLookupOnlyShowsAndEditOpensTheEditor) {
    openBrowser("Beat Club");
    bool okEnabled = true;
    testsupport::ModalAnswer lookup =
        testsupport::answerModal<ui::TrackLookupWindow>([&](ui::TrackLookupWindow& shown) {
            okEnabled = testsupport::control(&shown, "btnOK")->isEnabled();
        });
    testsupport::doubleClickRow(browser->trackGrid(), 0);
    ASSERT_TRUE(lookup.shown());
    EXPECT_FALSE(okEnabled);

    clickButton(browser, "btnEdit");
    auto* editor = browser->findChild<ui::EditCompilationWindow*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->mode(), assembly::EditorMode::Edit);
    EXPECT_EQ(testsupport::control<QLineEdit>(editor, "txtCompilationName")->text(), "Beat Club");
}

TEST_F(BrowserWindow, FollowsThePickerAndClosesWithTheDatabase) {
    openBrowser("Road Trip");
    openPicker(2);
    doubleClickSource("Help!");
    EXPECT_EQ(trackTitles(), QStringList({"Help!"}));
    EXPECT_EQ(field("txtTrack"), "1");
    clickTool("ID_CloseFile");
    EXPECT_TRUE(browser.isNull());
    EXPECT_TRUE(picker_.isNull());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_FALSE(processHoldsFile(path));
}

}  // namespace
