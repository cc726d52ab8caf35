// The rearrange window: dragging a track renumbers the compilation, and so does its sort dialog;
// the picker's sort dialog orders the source by what the sort's logic composes.

#include "query/sort_clause.h"
#include "ui/windows/rearrange_window.h"
#include "ui/windows/sort_dialog.h"
#include "window_fixture.h"

namespace {

using query::SortCaller;
using testsupport::chooseFromList;
using testsupport::control;

class Rearrange : public PickerTest {
  protected:
    // Opens the picker on the compilation and the rearrange window through its button.
    void open(qint64 compilationId) {
        openPicker(compilationId);
        clickButton(picker(), "btnReArrange");
        rearrange = picker()->findChild<ui::RearrangeWindow*>("frmReArrange");
        ASSERT_NE(rearrange, nullptr);
    }
    ui::DataGrid* grid() const { return rearrange->grid(); }
    static void chooseLevel(ui::SortDialog& dialog, int level, const QString& key,
                            const QString& order) {
        chooseFromList(control<QComboBox>(&dialog, QStringLiteral("tdbcSortVar%1").arg(level)),
                       key);
        chooseFromList(control<QComboBox>(&dialog, QStringLiteral("tdbcSortOrd%1").arg(level)),
                       order);
    }
    QPoint rowCentre(int row) const {
        return grid()->visualRect(grid()->model()->index(row, 2)).center();
    }
    // Presses on a row, moves over each row in turn and releases over the last.
    void drag(int fromRow, std::initializer_list<int> overRows) {
        QWidget* rows = grid()->viewport();
        QTest::mousePress(rows, Qt::LeftButton, {}, rowCentre(fromRow));
        for (int row : overRows) {
            QTest::mouseMove(rows, rowCentre(row));
        }
        QTest::mouseRelease(rows, Qt::LeftButton, {}, rowCentre(*(overRows.end() - 1)));
    }
    // "TrackNo:Title" of the rows a grid shows, in order.
    static QString shown(const QAbstractItemView* view) {
        const QStringList numbers = columnTexts(view, 0);
        const QStringList titles = columnTexts(view, 2);
        QStringList rows;
        for (int row = 0; row < numbers.size(); ++row) {
            rows << numbers[row] + ":" + titles[row];
        }
        return rows.join(' ');
    }

    QPointer<ui::RearrangeWindow> rearrange;
};

TEST_F(Rearrange, ADroppedTrackTakesTheNumberOfItsDropRowInPlaceOfThePicker) {
    open(3);
    EXPECT_TRUE(rearrange->isVisible());
    EXPECT_FALSE(picker()->isVisible());
    EXPECT_EQ(shown(grid()), "1:One 2:Two 3:Three 4:Four 5:Five");
    drag(1, {1});  // on its own row: nothing
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");
    drag(1, {2, 3});
    EXPECT_EQ(tracksOf(3), "1:One 2:Three 3:Four 4:Two 5:Five");
    EXPECT_EQ(shown(grid()), "1:One 2:Three 3:Four 4:Two 5:Five");
    EXPECT_EQ(grid()->currentIndex().row(), 3);  // the dragged track, where it was dropped
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);

    rearrange->close();
    EXPECT_TRUE(picker()->isVisible());
    EXPECT_EQ(shown(picker()->targetGrid()), "1:One 2:Three 3:Four 4:Two 5:Five");
    EXPECT_TRUE(dialogs.messages().empty());
}

// Ctrl+Down and Ctrl+Up move the current track as a drop on the neighbouring row does, and it
// stays current; nothing moves past either end. Escape returns to the picker.
TEST_F(Rearrange, CtrlArrowsMoveTheCurrentTrackAndEscapeReturnsToThePicker) {
    open(3);
    grid()->setCurrentIndex(grid()->model()->index(1, 2));
    for (const auto& [key, presses, order] :
         {std::tuple{Qt::Key_Down, 2, "1:One 2:Three 3:Four 4:Two 5:Five"},
          std::tuple{Qt::Key_Up, 4, "1:Two 2:One 3:Three 4:Four 5:Five"}}) {
        for (int i = 0; i < presses; ++i) {
            testsupport::pressInWindow(grid(), key, Qt::ControlModifier);
        }
        EXPECT_EQ(tracksOf(3), order);
        EXPECT_EQ(shown(grid()), order);
        EXPECT_EQ(columnTexts(grid(), 2).value(grid()->currentIndex().row()), "Two");
    }
    testsupport::pressInWindow(grid(), Qt::Key_Escape);
    EXPECT_TRUE(picker()->isVisible());
    EXPECT_EQ(shown(picker()->targetGrid()), "1:Two 2:One 3:Three 4:Four 5:Five");
}

TEST_F(Rearrange, AScrolledListCountsFromItsTopRowAndScrollsPastTheBottom) {
    QList<testsupport::SampleTrack> tracks;
    for (int i = 1; i <= 30; ++i) {
        tracks.append({.title = QStringLiteral("T%1").arg(i), .seconds = 100});
    }
    testsupport::addSample(path, {.name = "Thirty", .tracks = tracks, .id = 5});
    open(5);
    const int tenRows = 10 * grid()->rowHeight(0);
    rearrange->resize(rearrange->width(),
                      rearrange->height() + tenRows - grid()->viewport()->height());
    QApplication::processEvents();
    grid()->scrollTo(grid()->model()->index(10, 0), QAbstractItemView::PositionAtTop);
    ASSERT_EQ(grid()->rowAt(0), 10);

    QWidget* rows = grid()->viewport();
    QTest::mousePress(rows, Qt::LeftButton, {}, rowCentre(10));
    QTest::mouseMove(rows, rowCentre(11));
    const QPoint below(rowCentre(10).x(), rows->height() + 5);
    QTest::mouseMove(rows, below);
    QTest::mouseMove(rows, below);
    EXPECT_EQ(grid()->rowAt(0), 12);
    const int dropRow = grid()->currentIndex().row();  // the lowest row shown whole
    EXPECT_EQ(grid()->rowAt(rows->height() - 1), dropRow);
    QTest::mouseRelease(rows, Qt::LeftButton, {}, below);
    EXPECT_EQ(tracksOf(5).section(' ', dropRow, dropRow),
              QStringLiteral("%1:T11").arg(dropRow + 1));
}

TEST_F(Rearrange, TheSortDialogRenumbersTheTracksAndAFailedStepKeepsTheOldOnes) {
    open(3);
    testsupport::ModalAnswer sort =
        testsupport::answerModal<ui::SortDialog>([&](ui::SortDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), query::sortDialogCaption(SortCaller::Compilation));
            chooseLevel(dialog, 0, "Time", "Descending");
            clickButton(&dialog, "btnApply");
        });
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, rowCentre(0));
    ASSERT_TRUE(sort.shown());
    EXPECT_EQ(tracksOf(3), "1:Five 2:Four 3:Three 4:Two 5:One");
    EXPECT_EQ(shown(grid()), "1:Five 2:Four 3:Three 4:Two 5:One");
    EXPECT_EQ(window->state().sortClause, "");  // the source's order is not touched

    testsupport::execRaw(path,
                         "CREATE TRIGGER frozen BEFORE UPDATE OF TrackNo ON "
                         "CompilationTrack BEGIN SELECT RAISE(ABORT, 'frozen'); END;");
    drag(1, {2, 3});
    EXPECT_EQ(tracksOf(3), "1:Five 2:Four 3:Three 4:Two 5:One");
    EXPECT_EQ(shown(grid()), "1:Five 2:Four 3:Three 4:Two 5:One");
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_TRUE(dialogs.lastMessageText().contains("frozen"));
}

TEST_F(Rearrange, ThePickersSortOrdersTheSourceAndStaysOpen) {
    openPicker(3);
    bool openAfterApply = false;
    testsupport::ModalAnswer sort =
        testsupport::answerModal<ui::SortDialog>([&](ui::SortDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), query::sortDialogCaption(SortCaller::Source));
            chooseLevel(dialog, 2, "Time", "Descending");
            chooseLevel(dialog, 0, "Track Title", "Ascending");
            clickButton(&dialog, "btnApply");
            openAfterApply = dialog.isVisible();
        });
    clickButton(picker(), "btnSort");
    ASSERT_TRUE(sort.shown());
    EXPECT_TRUE(openAfterApply);
    const query::SortLevels levels{
        *query::sortLevelFromCaptions(SortCaller::Source, "Track Title", "Ascending"),
        {},
        *query::sortLevelFromCaptions(SortCaller::Source, "Time", "Descending")};
    EXPECT_EQ(window->state().sortClause,
              query::sourceSortClause(query::composeSortClause(levels, SortCaller::Source)));
    EXPECT_EQ(sourceTitles(), QStringList({"Fits Exactly", "Help!", "Kodachrome", "Mrs. Robinson",
                                           "One Second Too Long"}));
}

}  // namespace
