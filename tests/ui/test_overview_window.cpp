// The main window: its file tools, its list with the find panel, Delete and closing.
#include <QLabel>

#include "assembly/compilation_record.h"
#include "shell/database_commands.h"
#include "shell/navigation.h"
#include "shell/toolbar_tools.h"
#include "ui/windows/help_window.h"
#include "window_fixture.h"

namespace {

// In the list's order: "Abba Hits" (Box 2), "Beatles Best" (Box 1, two tracks), "Blur" (Box 1)
// and "Zappa" (no box).
class Overview : public WindowTest {
  protected:
    void openFour() {
        path =
            makeDatabase("four.mdb", {{.name = "Zappa"},
                                      {.name = "Blur", .box = "Box 1"},
                                      {.name = "Beatles Best", .box = "Box 1", .tracks = {{}, {}}},
                                      {.name = "Abba Hits", .box = "Box 2"}});
        openThroughToolbar(path);
        window->show();
    }
    QComboBox* gotoList() const { return child<QComboBox>("cmbGotoCompilation"); }
    QString position() const { return child<QLabel>("digActualGridPos")->text(); }
    QString listCount() const { return window->statusBarPanels()->panelText(2); }
    // The list or the intro, the hint when closed, and the tools for an open or closed file.
    void expectOpen(bool open) const {
        EXPECT_EQ(window->windowTitle(), open ? "Overview" : "Mixorama");
        EXPECT_EQ(child("imgIntro")->isVisibleTo(window.get()), !open);
        EXPECT_EQ(child("btnMoveC4")->isVisibleTo(window.get()), open);
        EXPECT_EQ(window->state().database.isOpen(), open);
        EXPECT_TRUE(open || window->statusBarPanels()->simpleText() == shell::kStatusHint);
        for (const bool forOpen : {true, false}) {
            for (const QString& id :
                 forOpen ? shell::toolsForOpenDatabase() : shell::toolsForClosedDatabase()) {
                EXPECT_EQ(toolEnabled(id), open == forOpen) << id.toStdString();
            }
        }
    }

    QString path;
};

TEST_F(Overview, OpenShowsTheListBesideItsFindPanelAndCloseTheIntroAgain) {
    expectOpen(false);
    openFour();
    expectOpen(true);
    EXPECT_EQ(columnTexts(window->grid(), 0),
              QStringList({"Abba Hits", "Beatles Best", "Blur", "Zappa"}));
    EXPECT_EQ(listCount(), shell::listCountText(4, 4));
    EXPECT_EQ(gotoList()->count(), 4);
    EXPECT_EQ(position(), shell::positionText(window->compilations()->recordset()));
    clickTool("ID_CloseFile");
    expectOpen(false);
}

// Each find button moves to its match of the typed value from the current row.
TEST_F(Overview, TheFindButtonsAndEnterFindTheirMatch) {
    openFour();
    const struct {
        const char* button;
        const char* found;
    } steps[] = {{"btnFindC1", "Beatles Best"},
                 {"btnFindC3", "Blur"},
                 {"btnFindC2", "Beatles Best"},
                 {"btnFindC4", "Blur"}};
    child<QComboBox>("cmbComparisonCompilation")->setCurrentText("Starts");
    for (const auto& step : steps) {
        SCOPED_TRACE(step.button);
        gotoList()->setEditText("B");
        clickButton(window.get(), step.button);
        EXPECT_EQ(currentName(), step.found);
    }
    clickButton(window.get(), "btnMoveC4");
    EXPECT_EQ(currentName(), "Zappa");
    gotoList()->setEditText("Ab");
    QTest::keyClick(gotoList(), Qt::Key_Return);
    EXPECT_EQ(currentName(), "Abba Hits");
    EXPECT_EQ(window->grid()->currentIndex().row(), 0);
    EXPECT_EQ(position(), shell::positionText(window->compilations()->recordset()));
}

TEST_F(Overview, DeleteAsksThenRemovesTheCurrentCompilationWithItsTracks) {
    openFour();
    clickButton(window.get(), "btnMoveC3");
    ASSERT_EQ(currentName(), "Beatles Best");
    dialogs.answerMessage(platform::MessageAnswer::Cancel);
    clickTool("ID_DeleteCompilation");
    EXPECT_EQ(dialogs.lastMessageText(), assembly::kDeleteCompilationQuestion);
    EXPECT_EQ(window->grid()->model()->rowCount(), 4);

    dialogs.answerMessage(platform::MessageAnswer::Ok);
    clickTool("ID_DeleteCompilation");
    EXPECT_EQ(columnTexts(window->grid(), 0), QStringList({"Abba Hits", "Blur", "Zappa"}));
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "0");
    EXPECT_EQ(listCount(), shell::listCountText(3, 3));
}

TEST_F(Overview, ClosingAsksAndClosesTheHelpWithTheDatabase) {
    openFour();
    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.messages().back().defaultAnswer, platform::MessageAnswer::No);
    EXPECT_TRUE(window->state().database.isOpen());

    clickTool("ID_Help");
    auto* help = window->findChild<ui::HelpWindow*>("helpWindow");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());

    dialogs.answerMessage(platform::MessageAnswer::Yes);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->state().database.isOpen());
    EXPECT_FALSE(help->isVisible());
}

}  // namespace
