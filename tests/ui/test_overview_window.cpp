#include <QFile>
#include <QHeaderView>
#include <QTest>

#include "access/access_reader.h"
#include "albumgen/albumgen.h"
#include "overview_fixture.h"
#include "shell/database_files.h"
#include "store/album_source.h"
#include "ui/windows/help_window.h"

namespace {

const char* kFour =
    "('Beatles Best', 'Box 1', 12, 2947, 'MD', 74, '1997-01-21'), "
    "('abba hits', NULL, 3, 180, 'CD-R', 80, '1999-12-31'), "
    "('Ärzte Live', 'Box 2', 0, 0, 'MD', 74, '2000-01-01'), "
    "('Zappa', 'Box 1', 20, 4500, 'Cassette', 90, NULL)";

using OverviewStart = OverviewFixture;

TEST_F(OverviewStart, ShowsTheIntroAndOnlyTheFileTools) {
    EXPECT_EQ(window->windowTitle(), "Mixorama");
    EXPECT_TRUE(window->statusBarPanels()->simpleMode());
    EXPECT_EQ(window->statusBarPanels()->simpleText(),
              "Choose 'New' to create or 'Open' to open a database");
    for (const char* name : {"grd6Compilation", "cmbGotoCompilation", "cmbComparisonCompilation",
                             "lblGotoCompilation", "digActualGridPos", "btnFindC1", "btnMoveC4"}) {
        EXPECT_FALSE(child<QWidget>(name)->isVisibleTo(window.get())) << name;
    }
    EXPECT_TRUE(child<QWidget>("imgIntro")->isVisibleTo(window.get()));
    EXPECT_EQ(child<QLabel>("lblAppName_Bottom")->text(), "Version 1.0");
    for (const char* id : {"ID_CloseFile", "ID_Print", "ID_PrintWhat", "ID_EditCompilation",
                           "ID_NewCompilation", "ID_DeleteCompilation"}) {
        EXPECT_FALSE(toolEnabled(id)) << id;
    }
    for (const char* id : {"ID_OpenFile", "ID_NewFile", "ID_CompactDB", "ID_Help", "ID_Exit"}) {
        EXPECT_TRUE(toolEnabled(id)) << id;
    }
}

using OverviewFiles = OverviewFixture;

TEST_F(OverviewFiles, OpenShowsTheCompilationsAndClosesAgain) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    EXPECT_EQ(window->windowTitle(), "Overview");
    EXPECT_TRUE(window->grid()->isVisibleTo(window.get()));
    EXPECT_EQ(window->grid()->model()->rowCount(), 4);
    EXPECT_EQ(window->statusBarPanels()->panelText(1), "Database " + dir.file("four.mdb"));
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 4    List 4");
    EXPECT_EQ(gotoLabel(), "Find Compilation Title:");
    EXPECT_EQ(gotoList()->count(), 4);
    EXPECT_EQ(position(), "1  4");
    EXPECT_EQ(window->toolBar()->reportTypeList()->currentText(), "SEL - Recording Protocol");
    EXPECT_TRUE(toolEnabled("ID_DeleteCompilation"));
    EXPECT_FALSE(toolEnabled("ID_OpenFile"));
    // The play time column reads hh:mm:ss.
    const QModelIndex time = window->grid()->model()->index(2, 3);  // Beatles Best
    EXPECT_EQ(time.data().toString(), "00:49:07");

    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_EQ(window->windowTitle(), "Mixorama");
    EXPECT_FALSE(window->grid()->isVisibleTo(window.get()));
    EXPECT_TRUE(toolEnabled("ID_OpenFile"));
    EXPECT_FALSE(window->state().database.isOpen());
}

TEST_F(OverviewFiles, AnEmptyDatabaseOpensWithZeroCounts) {
    openThroughToolbar(makeDatabase("empty.mdb"));
    EXPECT_EQ(window->windowTitle(), "Overview");
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 0    List 0");
    EXPECT_FALSE(toolEnabled("ID_EditCompilation"));
    EXPECT_FALSE(button("btnFindC1")->isEnabled());
    EXPECT_FALSE(gotoList()->isEnabled());
    EXPECT_TRUE(toolEnabled("ID_NewCompilation"));
}

TEST_F(OverviewFiles, NewRefusesAnExistingFileAndCreatesAFreshOne) {
    const QString existing = makeDatabase("taken.mdb", kFour);
    const QByteArray before = [&] {
        QFile f(existing);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }();
    dialogs.answerFile(existing);
    window->toolBar()->clickTool("ID_NewFile");
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, "Database already exists.");
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_EQ(window->windowTitle(), "Mixorama");
    EXPECT_EQ(window->statusBarPanels()->simpleText(),
              "Choose 'New' to create or 'Open' to open a database");
    QFile after(existing);
    after.open(QIODevice::ReadOnly);
    EXPECT_EQ(after.readAll(), before);

    dialogs.answerFile(dir.file("fresh.mdb"));
    window->toolBar()->clickTool("ID_NewFile");
    EXPECT_EQ(window->windowTitle(), "Overview");
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 0    List 0");
    EXPECT_EQ(dialogs.fileRequests().back().title, "New Database");
}

TEST_F(OverviewFiles, AnAlbumDatabaseIsRefusedWithTheStructureMessage) {
    accessfile::installAccessReader();
    const QString albums = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(albums, albumgen::Options{5, 3, true});
    openThroughToolbar(albums);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, shell::kNotACompilationDatabase);
    EXPECT_EQ(window->windowTitle(), "Mixorama");
    EXPECT_TRUE(toolEnabled("ID_OpenFile"));
}

TEST_F(OverviewFiles, CompactWorksOnAClosedFileThroughItsTemporaryFile) {
    const QString path = makeDatabase("coll.mdb", kFour);
    QFile stale(dir.file("coll.$$$"));
    stale.open(QIODevice::WriteOnly);
    stale.write("left over");
    stale.close();
    dialogs.answerFile(path);
    window->toolBar()->clickTool("ID_CompactDB");
    ASSERT_EQ(dialogs.messages().size(), 1u);
    // The sample's sums disagree with its tracks: the message lists the repairs after its line.
    EXPECT_TRUE(
        dialogs.messages()[0].text.startsWith("Database successfully repaired and compacted."));
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Information);
    EXPECT_FALSE(QFile::exists(dir.file("coll.$$$")));
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM Compilation"), "4");
    EXPECT_EQ(window->statusBarPanels()->simpleText(),
              "Choose 'New' to create or 'Open' to open a database");
}

using OverviewLists = OverviewFixture;

TEST_F(OverviewLists, HeaderClickListsTheColumnAndRenamesTheFind) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    window->grid()->horizontalHeader()->sectionClicked(1);  // "Storage"
    EXPECT_EQ(gotoLabel(), "Find Storage:");
    QStringList entries;
    for (int i = 0; i < gotoList()->count(); ++i)
        entries << gotoList()->itemText(i);
    EXPECT_EQ(entries, QStringList({"Box 1", "Box 2"}));
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 4    List 2");
    EXPECT_EQ(comparisons()->currentText(), "Starts");
}

TEST_F(OverviewLists, FindButtonsMoveOnTextNumberTimeAndDateColumns) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    find("Starts", "b", 1);  // text: first title starting with "b"
    EXPECT_EQ(currentName(), "Beatles Best");

    window->grid()->horizontalHeader()->sectionClicked(2);  // "Track #", a number
    find(">", "5", 1);
    EXPECT_EQ(currentName(), "Beatles Best");
    find(">", "5", 3);
    EXPECT_EQ(currentName(), "Zappa");
    find(">", "5", 2);
    EXPECT_EQ(currentName(), "Beatles Best");

    window->grid()->horizontalHeader()->sectionClicked(3);  // "Total Time"
    find("<", "000400", 4);                                 // last with 0 < time < 4 minutes
    EXPECT_EQ(currentName(), "abba hits");
    EXPECT_EQ(gotoList()->currentText(), "00:04:00");

    window->grid()->horizontalHeader()->sectionClicked(6);  // "Rec. Date"
    find(">=", "1.1.2000", 1);
    EXPECT_EQ(currentName(), "Ärzte Live");
    EXPECT_EQ(position(), "2  4");

    find("=", "not a date", 1);
    EXPECT_EQ(dialogs.lastMessageText(), "Value must be a valid date (e.g. 21.01.97).");
    EXPECT_EQ(currentName(), "Ärzte Live");
}

TEST_F(OverviewLists, EnterInTheGotoListFindsTheFirstMatch) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    button("btnMoveC4")->click();
    gotoList()->setEditText("Be");
    QTest::keyClick(gotoList(), Qt::Key_Return);
    EXPECT_EQ(currentName(), "Beatles Best");
}

TEST_F(OverviewLists, MoveButtonsStopAtBothEnds) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    button("btnMoveC2")->click();  // previous on the first
    EXPECT_EQ(currentName(), "abba hits");
    button("btnMoveC3")->click();
    EXPECT_EQ(position(), "2  4");
    button("btnMoveC4")->click();
    button("btnMoveC3")->click();  // next on the last
    EXPECT_EQ(currentName(), "Zappa");
    EXPECT_EQ(position(), "4  4");
    button("btnMoveC1")->click();
    EXPECT_EQ(currentName(), "abba hits");
}

using OverviewDelete = OverviewFixture;

TEST_F(OverviewDelete, CancelKeepsTheCompilation) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    dialogs.answerMessage(platform::MessageAnswer::Cancel);
    window->toolBar()->clickTool("ID_DeleteCompilation");
    EXPECT_EQ(dialogs.messages().back().text, "Delete compilation. Are you sure?");
    EXPECT_EQ(dialogs.messages().back().buttons, platform::MessageButtons::OkCancel);
    EXPECT_EQ(window->grid()->model()->rowCount(), 4);
    EXPECT_TRUE(toolEnabled("ID_DeleteCompilation"));
}

TEST_F(OverviewDelete, DeletingTheLastCompilationDisablesEverything) {
    const QString path = makeDatabase("one.mdb", "('Only One', 'Box 1', 0, 0, 'MD', 74, NULL)");
    testsupport::execRaw(path,
                         "INSERT INTO CompilationTrack (CompilationID_F1, TrackNo) VALUES (1, 1)");
    openThroughToolbar(path);
    dialogs.answerMessage(platform::MessageAnswer::Ok);
    window->toolBar()->clickTool("ID_DeleteCompilation");
    EXPECT_EQ(window->grid()->model()->rowCount(), 0);
    for (const char* id :
         {"ID_EditCompilation", "ID_DeleteCompilation", "ID_Print", "ID_PrintWhat"}) {
        EXPECT_FALSE(toolEnabled(id)) << id;
    }
    for (int i = 1; i <= 4; ++i) {
        EXPECT_FALSE(button(QStringLiteral("btnFindC%1").arg(i))->isEnabled());
        EXPECT_FALSE(button(QStringLiteral("btnMoveC%1").arg(i))->isEnabled());
    }
    EXPECT_FALSE(gotoList()->isEnabled());
    EXPECT_FALSE(comparisons()->isEnabled());
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM CompilationTrack"), "0");

    window->grid()->doubleClicked();
    EXPECT_EQ(dialogs.lastMessageText(), "No compilation available.");
}

using OverviewClose = OverviewFixture;

TEST_F(OverviewClose, TheClosingQuestionCanBeDeclined) {
    openThroughToolbar(makeDatabase("four.mdb", kFour));
    window->show();
    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(window->close());
    const platform::MessageRequest& question = dialogs.messages().back();
    EXPECT_EQ(question.text, "Do you really want to exit the application?");
    EXPECT_EQ(question.defaultAnswer, platform::MessageAnswer::No);
    EXPECT_EQ(question.icon, platform::MessageIcon::Question);
    EXPECT_TRUE(window->state().database.isOpen());

    dialogs.answerMessage(platform::MessageAnswer::Yes);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->state().database.isOpen());
}

TEST_F(OverviewClose, HelpOpensItsContentsBesideTheWindow) {
    window->toolBar()->clickTool("ID_Help");
    auto* help = window->findChild<ui::HelpWindow*>("helpWindow");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->currentPage(), "index.html");
    window->unloadAll();
    EXPECT_FALSE(help->isVisible());
}

TEST_F(OverviewClose, AnUnknownToolSaysSo) {
    window->runTool("ID_Nonsense");
    EXPECT_EQ(dialogs.lastMessageText(), "Ooops! Unexpected Error from ToolBarsMain");
}

}  // namespace
