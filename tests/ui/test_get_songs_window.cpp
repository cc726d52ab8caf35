// The track picker: adding and removing tracks, the counters, the lookup and the find panel.
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>

#include "assembly/track_picker.h"
#include "query/time_text.h"
#include "ui/windows/track_lookup_window.h"
#include "window_fixture.h"

namespace {

QColor fromBgr(quint32 value) {
    return QColor(int(value & 0xff), int((value >> 8) & 0xff), int((value >> 16) & 0xff));
}

class PickerWindow : public PickerTest {
  protected:
    QColor timeColour() const {
        return testsupport::control<QLineEdit>(picker(), "txtTimeCount")
            ->palette()
            .color(QPalette::Text);
    }
};

TEST_F(PickerWindow, DoubleClickAndEnterAddTracksAndEveryListFollows) {
    openPicker(2);
    doubleClickSource("Kodachrome");
    selectSource("Help!");
    QTest::keyClick(picker()->sourceGrid(), Qt::Key_Return);
    EXPECT_EQ(tracksOf(2), "1:Kodachrome 2:Help!");
    EXPECT_EQ(sumsOf(2), "2/352");
    EXPECT_EQ(text("txtTrackCount"), "2");
    EXPECT_EQ(text("txtTimeCount"), query::formatTime(352));
    EXPECT_EQ(timeColour(), fromBgr(assembly::kTimeFitsColour));
    EXPECT_EQ(columnTexts(picker()->targetGrid(), 2), QStringList({"Kodachrome", "Help!"}));
}

TEST_F(PickerWindow, ARecordedTrackIsAddedOnlyAfterTheLookupsOk) {
    openPicker(2);
    for (const auto& [answer, added] :
         {std::pair{"btnCancel", ""}, std::pair{"btnOK", "1:Mrs. Robinson"}}) {
        int rows = 0;
        testsupport::ModalAnswer lookup =
            testsupport::answerModal<ui::TrackLookupWindow>([&](ui::TrackLookupWindow& shown) {
                rows = shown.grid()->model()->rowCount();
                clickButton(&shown, answer);
            });
        doubleClickSource("Mrs. Robinson");
        ASSERT_TRUE(lookup.shown()) << answer;
        EXPECT_EQ(rows, 1);  // Beat Club holds it
        EXPECT_EQ(tracksOf(2), added);
    }
}

// 74 minutes hold 4383 seconds on 20 tracks: 4440 less 19 gaps of 3 seconds.
TEST_F(PickerWindow, TheTimeTurnsRedPastTheMedium) {
    openPicker(4);
    doubleClickSource("Fits Exactly");
    EXPECT_EQ(sumsOf(4), "20/4383");
    EXPECT_EQ(timeColour(), fromBgr(assembly::kTimeFitsColour));
    dialogs.answerMessage(platform::MessageAnswer::Ok);
    testsupport::clickRow(picker()->targetGrid(), 19);
    QTest::keyClick(picker()->targetGrid(), Qt::Key_Delete);
    EXPECT_EQ(sumsOf(4), "19/3800");
    doubleClickSource("One Second Too Long");
    EXPECT_EQ(sumsOf(4), "20/4384");
    EXPECT_EQ(text("txtTimeCount"), query::formatTime(4384));
    EXPECT_EQ(timeColour(), fromBgr(assembly::kTimeExceedsColour));
}

TEST_F(PickerWindow, RemovingTrackThreeOfFiveAfterTheQuestionRenumbersTheRest) {
    openPicker(3);
    dialogs.answerMessage(platform::MessageAnswer::Cancel);
    testsupport::doubleClickRow(picker()->targetGrid(), 2);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].buttons, platform::MessageButtons::OkCancel);
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");

    dialogs.answerMessage(platform::MessageAnswer::Ok);
    testsupport::doubleClickRow(picker()->targetGrid(), 2);
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Four 4:Five");
    EXPECT_EQ(text("txtTrackCount"), "4");
    EXPECT_EQ(text("txtTimeCount"), query::formatTime(1200));
    EXPECT_EQ(columnTexts(picker()->targetGrid(), 2), QStringList({"One", "Two", "Four", "Five"}));
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(PickerWindow, AHeaderClickAndTheFindPanelFindInTheSource) {
    openPicker(2);
    ui::DataGrid* source = picker()->sourceGrid();
    QTest::mouseClick(source->horizontalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(source->columnViewportPosition(1) + 5, 5));
    EXPECT_EQ(testsupport::control<QLabel>(picker(), "lblGotoSourceSong")->text(),
              "Fin&d " + source->columnCaption(1) + ":");
    auto* gotoList = testsupport::control<QComboBox>(picker(), "cmbGotoSourceSong");
    EXPECT_EQ(gotoList->count(), 5);
    auto* comparisons = testsupport::control<QComboBox>(picker(), "cmbComparisonSourceSong");
    comparisons->setCurrentText("Contains");
    gotoList->setEditText("second");
    QTest::keyClick(gotoList, Qt::Key_Return);
    EXPECT_EQ(source->currentIndex().row(), 4);
    EXPECT_EQ(testsupport::control<QLabel>(picker(), "digNumberPassed")->text(),
              assembly::sourcePositionText(4, 5));
    gotoList->setEditText("Mrs");
    comparisons->setCurrentText("Starts");
    clickButton(picker(), "btnFindS2");  // back from the last row
    EXPECT_EQ(source->currentIndex().row(), 1);
}

// Beside the time, the medium as it is recorded: the MD mode chosen is kept for this database
// and compilation only, and leads the lines; a cassette's sides are evened in one step, which
// every list follows; a format with only the capacity rule shows no medium at all.
TEST_F(PickerWindow, TheMediumAsRecordedFollowsTheModeChosenAndTheSidesEvened) {
    const auto fit = [&] { return testsupport::control<QLabel>(picker(), "lblMediumFit")->text(); };
    openPicker(3);  // "Five": MD, 60 min, 1,500 s
    EXPECT_TRUE(fit().startsWith("MD SP: " + query::formatTime(2100) + " left\n"))
        << fit().toStdString();
    testsupport::chooseFromList(testsupport::control<QComboBox>(picker(), "cmbMdMode"), "LP2");
    EXPECT_TRUE(fit().startsWith("Recorded in LP2: " + query::formatTime(5700) + " left\n"));
    picker()->close();
    openPicker(3);
    EXPECT_EQ(testsupport::control<QComboBox>(picker(), "cmbMdMode")->currentText(), "LP2");
    picker()->close();
    openPicker(4);
    EXPECT_EQ(testsupport::control<QComboBox>(picker(), "cmbMdMode")->currentIndex(), -1);
    picker()->close();
    testsupport::execRaw(path,
                         "UPDATE Compilation SET Format = 'Cassette', C_Length = 30 "
                         "WHERE CompilationID_P = 3");  // 900 s a side
    openPicker(3);
    EXPECT_TRUE(fit().contains("Track 4 crosses the end of side A")) << fit().toStdString();
    clickButton(picker(), "btnBalance");
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Four 4:Three 5:Five");
    EXPECT_EQ(columnTexts(picker()->targetGrid(), 2).value(2), "Four");
    EXPECT_TRUE(fit().contains("Most even: turn after track 3 (side A " + query::formatTime(700) +
                               ", side B " + query::formatTime(800) + ")"))
        << fit().toStdString();
    picker()->close();
    openPicker(1);  // a CD-R: an audio CD
    EXPECT_TRUE(fit().startsWith("Audio CD: "));
    EXPECT_FALSE(testsupport::control<QWidget>(picker(), "btnBalance")->isVisibleTo(picker()));
}

}  // namespace
