// The main window: its file tools, its list with the find panel, Delete and closing.
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>

#include "access/access_reader.h"
#include "assembly/compilation_record.h"
#include "shell/database_commands.h"
#include "shell/navigation.h"
#include "shell/toolbar_tools.h"
#include "support/old_compilations.h"
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
    void expectToolsEnabled(const QStringList& ids, bool enabled) const {
        for (const QString& id : ids) {
            EXPECT_EQ(toolEnabled(id), enabled) << id.toStdString();
        }
    }

    QString path;
};

TEST_F(Overview, OpenShowsTheListBesideItsFindPanelAndCloseTheIntroAgain) {
    expectClosedState();
    expectToolsEnabled(shell::toolsForOpenDatabase(), false);
    expectToolsEnabled(shell::toolsForClosedDatabase(), true);
    EXPECT_FALSE(child("btnFindC1")->isVisibleTo(window.get()));

    openFour();
    EXPECT_EQ(window->windowTitle(), "Overview");
    EXPECT_EQ(columnTexts(window->grid(), 0),
              QStringList({"Abba Hits", "Beatles Best", "Blur", "Zappa"}));
    EXPECT_EQ(window->statusBarPanels()->panelText(1), "Database " + path);
    EXPECT_EQ(listCount(), shell::listCountText(4, 4));
    EXPECT_EQ(child<QLabel>("lblGotoCompilation")->text(), "Find Compilation Title:");
    EXPECT_EQ(gotoList()->count(), 4);
    EXPECT_EQ(position(), shell::positionText(window->compilations()->recordset()));
    EXPECT_TRUE(child("btnMoveC4")->isVisibleTo(window.get()));
    expectToolsEnabled(shell::toolsForOpenDatabase(), true);
    expectToolsEnabled(shell::toolsForClosedDatabase(), false);

    clickTool("ID_CloseFile");
    expectClosedState();
}

TEST_F(Overview, AHeaderClickListsItsColumnInTheFindPanel) {
    openFour();
    window->grid()->horizontalHeader()->sectionClicked(1);
    EXPECT_EQ(child<QLabel>("lblGotoCompilation")->text(),
              "Find " + window->grid()->columnCaption(1) + ":");
    EXPECT_EQ(gotoList()->count(), 2);  // the two boxes
    EXPECT_EQ(listCount(), shell::listCountText(4, 2));
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
    for (int i = 0; i < 3; ++i) {
        clickTool("ID_DeleteCompilation");
    }
    expectToolsEnabled(shell::toolsForRows(), false);
    EXPECT_FALSE(child("btnMoveC1")->isEnabled());
    window->grid()->doubleClicked();
    EXPECT_EQ(dialogs.lastMessageText(), "No compilation available.");
}

TEST_F(Overview, ClosingAsksAndTheHelpAndUnknownToolsAnswer) {
    openFour();
    window->show();
    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.messages().back().defaultAnswer, platform::MessageAnswer::No);
    EXPECT_TRUE(window->state().database.isOpen());

    clickTool("ID_Help");
    auto* help = window->findChild<ui::HelpWindow*>("helpWindow");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    window->runTool("ID_Nonsense");
    EXPECT_EQ(dialogs.lastMessageText(), shell::kUnexpectedToolError);

    dialogs.answerMessage(platform::MessageAnswer::Yes);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->state().database.isOpen());
    EXPECT_FALSE(help->isVisible());
}

}  // namespace
