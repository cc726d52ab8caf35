#include <QComboBox>
#include <QHeaderView>
#include <QLabel>

#include "picker_fixture.h"
#include "support/compilation_invariants.h"

namespace {

const QColor kGreen(0, 192, 0);
const QColor kRed(255, 0, 0);

using PickerWindow = PickerWindowTest;

TEST_F(PickerWindow, LoadsTheCompilationAndBothGrids) {
    openPicker(3);
    EXPECT_EQ(picker()->windowTitle(), "Get Tracks");
    EXPECT_EQ(text("txtCompilationName"), "Five");
    EXPECT_EQ(text("txtTrackCount"), "5");
    EXPECT_EQ(text("txtTimeCount"), "00:25:00");
    EXPECT_EQ(picker()->sourceGrid()->model()->rowCount(), 5);
    EXPECT_EQ(picker()->targetGrid()->model()->index(2, 2).data().toString(), "Three");
    EXPECT_EQ(picker()->targetGrid()->model()->index(2, 3).data().toString(), "00:05:00");
    EXPECT_EQ(picker()->findChild<QLabel*>("lblGotoSourceSong")->text(), "Find Track Performer:");
    EXPECT_EQ(window->state().sourceGotoField, "ArtistSort");
    EXPECT_EQ(picker()->findChild<QLabel*>("digNumberPassed")->text(), "1 5");
    EXPECT_TRUE(pickerButton("btnReArrange")->isEnabled());
    EXPECT_FALSE(editor.isVisible());
    EXPECT_TRUE(dialogs.messages().empty());

    picker()->close();
    EXPECT_TRUE(editor.isVisible());
}

TEST_F(PickerWindow, DoubleClickAndEnterAddTracksAtTheEnd) {
    openPicker(2);
    EXPECT_FALSE(pickerButton("btnReArrange")->isEnabled());
    doubleClickSource("Kodachrome");
    EXPECT_EQ(tracksOf(2), "1:Kodachrome");
    EXPECT_EQ(sumsOf(2), "1/212");
    EXPECT_EQ(text("txtTrackCount"), "1");
    EXPECT_EQ(text("txtTimeCount"), "00:03:32");
    EXPECT_EQ(timeColour(), kGreen);
    EXPECT_FALSE(pickerButton("btnReArrange")->isEnabled());

    selectSource("Help!");
    QTest::keyClick(picker()->sourceGrid(), Qt::Key_Return);
    EXPECT_EQ(tracksOf(2), "1:Kodachrome 2:Help!");
    EXPECT_EQ(sumsOf(2), "2/352");
    EXPECT_EQ(text("txtTimeCount"), "00:05:52");
    EXPECT_TRUE(pickerButton("btnReArrange")->isEnabled());
    EXPECT_EQ(picker()->targetGrid()->model()->rowCount(), 2);
    EXPECT_EQ(picker()->targetGrid()->model()->index(1, 1).data().toString(), "The Beatles");
    // The main list's row of the compilation (the last by name) follows.
    EXPECT_EQ(window->grid()->model()->index(3, 2).data().toString(), "2");
    EXPECT_EQ(window->grid()->model()->index(3, 3).data().toString(), "00:05:52");
    EXPECT_FALSE(lookupShown());
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(PickerWindow, ARecordedTrackAsksThroughTheLookup) {
    openPicker(2);
    QStringList seen;
    answerLookupWith("btnCancel", [&](ui::TrackLookupWindow& lookup) {
        seen << lookup.windowTitle() << lookup.findChild<QLineEdit*>("txtPerformerName")->text()
             << lookup.findChild<QLineEdit*>("txtSongName")->text()
             << lookup.grid()->model()->index(0, 0).data().toString()
             << lookup.grid()->model()->index(0, 1).data().toString()
             << QString::number(lookup.grid()->model()->rowCount())
             << (lookup.findChild<QPushButton*>("btnOK")->isEnabled() ? "OK on" : "OK off")
             << lookup.findChild<QPushButton*>("btnCancel")->text();
    });
    doubleClickSource("Mrs. Robinson");
    ASSERT_TRUE(lookupShown());
    EXPECT_EQ(seen, QStringList({"Track Already Recorded!", "Simon & Garfunkel", "Mrs. Robinson",
                                 "Beat Club", "1", "1", "OK on", "&Cancel Copy"}));
    EXPECT_EQ(tracksOf(2), "");
    EXPECT_EQ(sumsOf(2), "0/0");
    EXPECT_EQ(text("txtTrackCount"), "0");

    // Closing the lookup is Cancel too.
    answerLookupWith("");
    doubleClickSource("Mrs. Robinson");
    ASSERT_TRUE(lookupShown());
    EXPECT_EQ(tracksOf(2), "");

    answerLookupWith("btnOK");
    doubleClickSource("Mrs. Robinson");
    ASSERT_TRUE(lookupShown());
    EXPECT_EQ(tracksOf(2), "1:Mrs. Robinson");
    EXPECT_EQ(sumsOf(2), "1/244");
    EXPECT_EQ(text("txtTimeCount"), "00:04:04");
}

// 74 minutes hold 4383 seconds on 20 tracks: 4440 less 19 gaps of 3 seconds.
TEST_F(PickerWindow, TheTimeTurnsRedPastTheMedium) {
    openPicker(4);
    EXPECT_EQ(text("txtTimeCount"), "01:03:20");
    EXPECT_EQ(timeColour(), kGreen);
    doubleClickSource("Fits Exactly");
    EXPECT_EQ(sumsOf(4), "20/4383");
    EXPECT_EQ(text("txtTimeCount"), "01:13:03");
    EXPECT_EQ(timeColour(), kGreen);

    dialogs.answerMessage(platform::MessageAnswer::Ok);
    selectTarget(19);
    QTest::keyClick(picker()->targetGrid(), Qt::Key_Delete);
    EXPECT_EQ(sumsOf(4), "19/3800");
    doubleClickSource("One Second Too Long");
    EXPECT_EQ(sumsOf(4), "20/4384");
    EXPECT_EQ(text("txtTimeCount"), "01:13:04");
    EXPECT_EQ(timeColour(), kRed);
}

TEST_F(PickerWindow, RemovingTrackThreeOfFiveRenumbersTheRest) {
    openPicker(3);
    dialogs.answerMessage(platform::MessageAnswer::Cancel);
    doubleClickRow(picker()->targetGrid(), 2);
    ASSERT_FALSE(dialogs.messages().empty());
    EXPECT_EQ(dialogs.messages().back().text, "Delete track. Are you sure?");
    EXPECT_EQ(dialogs.messages().back().buttons, platform::MessageButtons::OkCancel);
    EXPECT_EQ(dialogs.messages().back().icon, platform::MessageIcon::Question);
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");

    dialogs.answerMessage(platform::MessageAnswer::Ok);
    doubleClickRow(picker()->targetGrid(), 2);
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Four 4:Five");
    EXPECT_EQ(sumsOf(3), "4/1200");
    EXPECT_EQ(text("txtTrackCount"), "4");
    EXPECT_EQ(text("txtTimeCount"), "00:20:00");
    EXPECT_EQ(picker()->targetGrid()->model()->rowCount(), 4);
    EXPECT_EQ(picker()->targetGrid()->model()->index(2, 0).data().toString(), "3");
    EXPECT_EQ(picker()->targetGrid()->model()->index(2, 2).data().toString(), "Four");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(PickerWindow, HeaderClickAndEnterInTheGotoListFind) {
    openPicker(2);
    QTest::mouseClick(picker()->sourceGrid()->horizontalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(picker()->sourceGrid()->columnViewportPosition(1) + 5, 5));
    EXPECT_EQ(picker()->findChild<QLabel*>("lblGotoSourceSong")->text(), "Find Track Title:");
    auto* gotoList = picker()->findChild<QComboBox*>("cmbGotoSourceSong");
    EXPECT_EQ(gotoList->count(), 5);
    EXPECT_EQ(gotoList->itemText(0), "Fits Exactly");
    auto* comparisons = picker()->findChild<QComboBox*>("cmbComparisonSourceSong");
    comparisons->setCurrentText("Contains");
    gotoList->setEditText("second");
    QTest::keyClick(gotoList, Qt::Key_Return);
    EXPECT_EQ(picker()->sourceGrid()->currentIndex().row(), 4);
    EXPECT_EQ(picker()->findChild<QLabel*>("digNumberPassed")->text(), "5 5");

    gotoList->setEditText("Mrs");
    comparisons->setCurrentText("Starts");
    pickerButton("btnFindS2")->click();  // back from the last row
    EXPECT_EQ(picker()->sourceGrid()->currentIndex().row(), 1);
}

}  // namespace
