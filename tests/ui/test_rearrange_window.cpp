#include <QComboBox>
#include <QScrollBar>

#include "picker_fixture.h"
#include "sort_dialog_driver.h"
#include "support/compilation_invariants.h"
#include "ui/windows/rearrange_window.h"
#include "ui/windows/sort_dialog.h"

namespace {

class Rearrange : public PickerWindowTest {
  protected:
    // Opens the picker on the compilation and the rearrange window through its button.
    ui::RearrangeWindow* open(qint64 compilationId) {
        openPicker(compilationId);
        QTest::mouseClick(pickerButton("btnReArrange"), Qt::LeftButton);
        rearrange = picker()->findChild<ui::RearrangeWindow*>("frmReArrange");
        EXPECT_NE(rearrange, nullptr);
        return rearrange;
    }

    ui::DataGrid* grid() const { return rearrange->grid(); }
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
        QTest::mouseRelease(rows, Qt::LeftButton, {},
                            rowCentre(std::data(overRows)[overRows.size() - 1]));
    }

    // "TrackNo:Title" of the rows a grid shows, in order.
    static QString shown(const QAbstractItemView* view) {
        QStringList rows;
        const QAbstractItemModel* model = view->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            rows << model->index(row, 0).data().toString() + ":" +
                        model->index(row, 2).data().toString();
        }
        return rows.join(' ');
    }

    // Compilation 5 "Thirty": tracks "T1" to "T30".
    void addThirtyTracks() {
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length, SumTrack, SumTime)
            VALUES (5, 'Thirty', 'CD-R', 80, 30, 3000);
            WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30)
            INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name,
                                          Track_Title, Length)
            SELECT 5, i, 'P', 'T' || i, 100 FROM n;
        )sql");
    }

    QPointer<ui::RearrangeWindow> rearrange;
};

TEST_F(Rearrange, ShowsTheTracksInPlaceOfThePicker) {
    open(3);
    ASSERT_NE(rearrange, nullptr);
    EXPECT_EQ(rearrange->windowTitle(), "Rearrange Tracks");
    EXPECT_TRUE(rearrange->isVisible());
    EXPECT_FALSE(picker()->isVisible());
    EXPECT_EQ(rearrange->geometry().topLeft(), picker()->geometry().topLeft());
    EXPECT_EQ(grid()->objectName(), "grd6TrackReArrange");
    EXPECT_EQ(shown(grid()), "1:One 2:Two 3:Three 4:Four 5:Five");
    EXPECT_EQ(grid()->model()->index(4, 3).data().toString(), "00:08:20");
    EXPECT_EQ(grid()->model()->index(0, 0).data(Qt::ForegroundRole).value<QColor>(),
              QColor(255, 0, 0));

    rearrange->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(rearrange.isNull());
    EXPECT_TRUE(picker()->isVisible());
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(Rearrange, WhileDraggingTheRowUnderTheMouseIsTheDropRow) {
    open(3);
    const QColor resting = grid()->palette().color(QPalette::Highlight);
    QWidget* rows = grid()->viewport();
    QTest::mousePress(rows, Qt::LeftButton, {}, rowCentre(1));
    QTest::mouseMove(rows, rowCentre(1) + QPoint(3, 0));  // within the drag distance
    EXPECT_FALSE(rearrange->dragging());
    QTest::mouseMove(rows, rowCentre(2));
    QTest::mouseMove(rows, rowCentre(3));
    EXPECT_TRUE(rearrange->dragging());
    EXPECT_EQ(grid()->currentIndex().row(), 3);
    EXPECT_TRUE(grid()->selectionModel()->isRowSelected(3, {}));
    EXPECT_NE(grid()->palette().color(QPalette::Highlight), resting);
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");  // nothing written yet
    QTest::mouseRelease(rows, Qt::LeftButton, {}, rowCentre(3));
    EXPECT_FALSE(rearrange->dragging());
    EXPECT_EQ(grid()->palette().color(QPalette::Highlight), resting);
}

TEST_F(Rearrange, ADroppedTrackTakesTheNumberOfItsDropRow) {
    open(3);
    drag(1, {2, 3});
    EXPECT_EQ(tracksOf(3), "1:One 2:Three 3:Four 4:Two 5:Five");
    EXPECT_EQ(shown(grid()), "1:One 2:Three 3:Four 4:Two 5:Five");
    EXPECT_EQ(grid()->currentIndex().row(), 3);  // the dragged track, where it was dropped

    drag(4, {3, 2, 1, 0});
    EXPECT_EQ(tracksOf(3), "1:Five 2:One 3:Three 4:Four 5:Two");
    EXPECT_EQ(shown(grid()), "1:Five 2:One 3:Three 4:Four 5:Two");
    EXPECT_EQ(sumsOf(3), "5/1500");
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);

    rearrange->close();
    EXPECT_EQ(shown(picker()->targetGrid()), "1:Five 2:One 3:Three 4:Four 5:Two");
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(Rearrange, DroppingOnItsOwnRowOrClickingChangesNothing) {
    open(3);
    drag(1, {2, 1});
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, rowCentre(3));
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");
    EXPECT_EQ(grid()->currentIndex().row(), 3);
}

TEST_F(Rearrange, AScrolledListCountsFromItsTopRow) {
    addThirtyTracks();
    open(5);
    // Ten rows shown at once.
    const int tenRows = 10 * grid()->rowHeight(0);
    rearrange->resize(rearrange->width(),
                      rearrange->height() + tenRows - grid()->viewport()->height());
    QApplication::processEvents();
    ASSERT_EQ(grid()->viewport()->height(), tenRows);
    grid()->scrollTo(grid()->model()->index(10, 0), QAbstractItemView::PositionAtTop);
    ASSERT_EQ(grid()->rowAt(0), 10);
    ASSERT_EQ(grid()->rowAt(tenRows - 1), 19);
    drag(10, {11, 12});
    EXPECT_EQ(tracksOf(5).section(' ', 9, 13), "10:T10 11:T12 12:T13 13:T11 14:T14");
    EXPECT_EQ(grid()->rowAt(0), 10);  // the view stays where it was
    EXPECT_EQ(testsupport::brokenCompilations(path), 0);
}

TEST_F(Rearrange, DraggingPastTheBottomScrollsTheList) {
    addThirtyTracks();
    open(5);
    QWidget* rows = grid()->viewport();
    QTest::mousePress(rows, Qt::LeftButton, {}, rowCentre(0));
    QTest::mouseMove(rows, rowCentre(1));
    const QPoint below(rowCentre(0).x(), rows->height() + 5);
    QTest::mouseMove(rows, below);
    QTest::mouseMove(rows, below);
    EXPECT_EQ(grid()->rowAt(0), 2);
    // The drop row is the lowest row shown whole.
    const int dropRow = grid()->currentIndex().row();
    const int dropRowEnd = grid()->rowViewportPosition(dropRow) + grid()->rowHeight(dropRow);
    EXPECT_LE(dropRowEnd, rows->height());
    EXPECT_GT(dropRowEnd + grid()->rowHeight(dropRow), rows->height());
    QTest::mouseRelease(rows, Qt::LeftButton, {}, below);
    EXPECT_EQ(tracksOf(5).section(' ', dropRow, dropRow), QStringLiteral("%1:T1").arg(dropRow + 1));
    EXPECT_EQ(tracksOf(5).section(' ', 0, 0), "1:T2");
}

TEST_F(Rearrange, TheSortDialogRenumbersTheTracks) {
    // Performer sort names that order the tracks otherwise than by time.
    testsupport::execRaw(path, R"sql(
        UPDATE CompilationTrack SET ArtistSort = CASE Track_Title WHEN 'One' THEN 'B'
            WHEN 'Two' THEN 'A' WHEN 'Three' THEN 'D' WHEN 'Four' THEN 'C' ELSE 'E' END
        WHERE CompilationID_F1 = 3;
    )sql");
    open(3);
    QStringList seen;
    SortDialogScript script([&](ui::SortDialog& dialog) {
        seen << dialog.windowTitle()
             << QString::number(dialog.findChild<QComboBox*>("tdbcSortVar0")->count());
        chooseFromList(dialog.findChild<QComboBox*>("tdbcSortVar0"), "Time");
        chooseFromList(dialog.findChild<QComboBox*>("tdbcSortOrd0"), "Descending");
        clickButton(&dialog, "btnApply");
        seen << tracksOf(3) << shown(grid());
        clickButton(&dialog, "btnClear");
        seen << tracksOf(3);
        clickButton(&dialog, "btnApply");
    });
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, rowCentre(0));
    ASSERT_TRUE(script.shown());
    const QString byTime = "1:Five 2:Four 3:Three 4:Two 5:One";
    EXPECT_EQ(seen, QStringList({"Sort Tracks on Compilation", "10", byTime, byTime, byTime}));
    EXPECT_EQ(tracksOf(3), "1:Two 2:One 3:Four 4:Three 5:Five");
    EXPECT_EQ(shown(grid()), "1:Two 2:One 3:Four 4:Three 5:Five");
    EXPECT_EQ(window->state().sortClause, "");  // the source's order is not touched
    rearrange->close();
    EXPECT_EQ(shown(picker()->targetGrid()), "1:Two 2:One 3:Four 4:Three 5:Five");
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(Rearrange, AFailedStepKeepsTheOldNumbersAndSaysWhy) {
    open(3);
    testsupport::execRaw(path, R"sql(
        CREATE TRIGGER frozen BEFORE UPDATE OF TrackNo ON CompilationTrack BEGIN SELECT RAISE(ABORT, 'Track numbers are frozen'); END;
    )sql");
    drag(1, {2, 3});
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_TRUE(dialogs.lastMessageText().contains("frozen"))
        << dialogs.lastMessageText().toStdString();

    SortDialogScript script([&](ui::SortDialog& dialog) {
        chooseFromList(dialog.findChild<QComboBox*>("tdbcSortVar0"), "Time");
        chooseFromList(dialog.findChild<QComboBox*>("tdbcSortOrd0"), "Descending");
        clickButton(&dialog, "btnApply");
    });
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, rowCentre(0));
    ASSERT_TRUE(script.shown());
    EXPECT_EQ(tracksOf(3), "1:One 2:Two 3:Three 4:Four 5:Five");
    EXPECT_EQ(shown(grid()), "1:One 2:Two 3:Three 4:Four 5:Five");
    EXPECT_EQ(dialogs.messages().size(), 2u);
}

TEST_F(Rearrange, ClosingTheDatabaseClosesItCleanly) {
    open(3);
    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_TRUE(rearrange.isNull());
    EXPECT_TRUE(picker_.isNull());
    EXPECT_TRUE(editor.isVisible());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_FALSE(processHoldsFile(path));
}

}  // namespace
