// The filter dialog over the track picker: Apply reaches the filter's logic, the source and the
// counts show its answer, and the filter outlives the picker.
#include <QLCDNumber>
#include <QLabel>

#include "assembly/track_picker.h"
#include "query/filter_clause.h"
#include "ui/windows/filter_dialog.h"
#include "window_fixture.h"

namespace {

using ui::FilterDialog;

class FilterDialogTest : public PickerTest {
  protected:
    FilterDialogTest() { performerKeys = true; }

    // Clicks "Filter" and works the dialog while it is open.
    void withFilter(const std::function<void(FilterDialog&)>& steps) {
        testsupport::ModalAnswer answer = testsupport::answerModal<FilterDialog>(steps);
        clickButton(picker(), "btnFilter");
        ASSERT_TRUE(answer.shown()) << "the filter dialog did not open";
    }
    static void type(FilterDialog& dialog, const QString& name, const QString& keys) {
        QWidget* widget = testsupport::control(&dialog, name);
        widget->setFocus();
        QTest::keyClicks(widget, keys);
    }
    static void typeRow(FilterDialog& dialog, int index, const query::FilterRow& row) {
        type(dialog, QStringLiteral("tdbcFilterVar%1").arg(index), row.variable);
        type(dialog, QStringLiteral("tdbcFilterComp%1").arg(index), row.comparison);
        type(dialog, QStringLiteral("txtFilter%1").arg(index), row.text);
    }
    static qint64 shownCount(FilterDialog& dialog) {
        auto* display = testsupport::control<QLCDNumber>(&dialog, "digNumberPassed");
        EXPECT_GE(display->digitCount(), QString::number(qint64(display->value())).size());
        return qint64(display->value());
    }
    // "Simon" and "Simon & Garfunkel" pass; the time is typed short.
    static void applySimons(FilterDialog& dialog) {
        typeRow(dialog, 0, kSimons[0]);
        type(dialog, "cmbConcat", "A");
        typeRow(dialog, 1, kSimons[1]);
        clickButton(&dialog, "btnApply");
    }
    QStringList gotoEntries() const {
        auto* list = testsupport::control<QComboBox>(picker(), "cmbGotoSourceSong");
        QStringList entries;
        for (int i = 0; i < list->count(); ++i) {
            entries << list->itemText(i);
        }
        return entries;
    }
    QString pickerCount() const {
        return testsupport::control<QLabel>(picker(), "digNumberPassed")->text();
    }

    static inline const std::array<query::FilterRow, 2> kSimons{
        {{"Track Performer", "Starts", "Simon"}, {"Time", ">=", "000330"}}};
    const query::FilterOutcome simonsFilter = query::buildFilterClause(kSimons, "And");
};

TEST_F(FilterDialogTest, ApplyNarrowsTheSourceAndClosingRefillsTheGotoList) {
    openPicker(2);
    window->state().album.passedCount = 12345678901;  // shown whole
    withFilter([&](FilterDialog& dialog) {
        EXPECT_EQ(shownCount(dialog), 12345678901);
        applySimons(dialog);
        EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
        EXPECT_EQ(window->state().filterClause, simonsFilter.clause);
        EXPECT_EQ(testsupport::control<QLineEdit>(&dialog, "txtFilter1")->text(),
                  simonsFilter.texts[1]);
        EXPECT_EQ(sourceTitles(), QStringList({"Kodachrome", "Mrs. Robinson"}));
        EXPECT_EQ(shownCount(dialog), 2);
        EXPECT_EQ(pickerCount(), assembly::sourcePositionText(0, 2));
        EXPECT_EQ(gotoEntries().size(), 4);  // not refilled while the dialog is open
    });
    EXPECT_EQ(gotoEntries(), QStringList({"Simon", "Simon & Garfunkel"}));
}

// The filter and the sort apply to every new TempSource of the run; a connect of another album
// database drops them.
TEST_F(FilterDialogTest, FilterAndSortOutliveThePickerUntilAnotherAlbumIsConnected) {
    const auto reopenPicker = [&] {
        picker()->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        openPicker(2);
    };
    openPicker(2);
    withFilter(applySimons);
    window->state().sortClause = "ORDER BY Length DESC";
    for (int opening = 0; opening < 2; ++opening) {
        reopenPicker();
        EXPECT_EQ(sourceTitles(), QStringList({"Mrs. Robinson", "Kodachrome"}));
        EXPECT_EQ(pickerCount(), assembly::sourcePositionText(0, 2));
        EXPECT_EQ(gotoEntries(), QStringList({"Simon", "Simon & Garfunkel"}));
        connectAlbums(dir.file("albums.mdb"));  // the same collection again
    }
    const QString others = dir.file("others.mdb");
    testsupport::writeAlbumFile(others, {{"Simon", "Boxer", 300}, {"Adams", "Morning", 100}}, true);
    connectAlbums(others);
    reopenPicker();
    EXPECT_EQ(window->state().filterClause, "");
    EXPECT_EQ(window->state().sortClause, "");
    EXPECT_EQ(sourceTitles(), QStringList({"Morning", "Boxer"}));  // by performer, as built
}

}  // namespace
