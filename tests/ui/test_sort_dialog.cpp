// The sort dialog over the track picker's source: its lists are the source's keys, Apply orders
// the source by what the sort's logic composes.
#include <QLabel>

#include "query/sort_clause.h"
#include "ui/windows/sort_dialog.h"
#include "window_fixture.h"

namespace {

using query::SortCaller;
using testsupport::chooseFromList;
using testsupport::control;

class SortSource : public PickerTest {
  protected:
    void SetUp() override {
        PickerTest::SetUp();
        openPicker(3);
        builtOrder = sourceTitles();
    }
    // Presses the picker's Sort and works the dialog while it is open.
    void sortWith(std::function<void(ui::SortDialog&)> use) {
        testsupport::ModalAnswer answer = testsupport::answerModal<ui::SortDialog>(use);
        clickButton(picker(), "btnSort");
        EXPECT_TRUE(answer.shown());
    }
    static void chooseLevel(ui::SortDialog& dialog, int level, const QString& key,
                            const QString& order) {
        chooseFromList(control<QComboBox>(&dialog, QStringLiteral("tdbcSortVar%1").arg(level)),
                       key);
        chooseFromList(control<QComboBox>(&dialog, QStringLiteral("tdbcSortOrd%1").arg(level)),
                       order);
    }
    QString sortClause() const { return window->state().sortClause; }

    QStringList builtOrder;  // the source as TempSource was built
};

TEST_F(SortSource, ApplyOrdersTheSourceAndTheDialogStaysOpen) {
    bool openAfterApply = false;
    sortWith([&](ui::SortDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), query::sortDialogCaption(SortCaller::Source));
        chooseLevel(dialog, 2, "Time", "Descending");
        chooseLevel(dialog, 0, "Track Title", "Ascending");
        clickButton(&dialog, "btnApply");
        openAfterApply = dialog.isVisible();
    });
    EXPECT_TRUE(openAfterApply);
    const query::SortLevels levels{
        *query::sortLevelFromCaptions(SortCaller::Source, "Track Title", "Ascending"),
        {},
        *query::sortLevelFromCaptions(SortCaller::Source, "Time", "Descending")};
    EXPECT_EQ(sortClause(),
              query::sourceSortClause(query::composeSortClause(levels, SortCaller::Source)));
    EXPECT_EQ(sourceTitles(), QStringList({"Fits Exactly", "Help!", "Kodachrome", "Mrs. Robinson",
                                           "One Second Too Long"}));
}

TEST_F(SortSource, NoKeyRestoresTheBuiltOrderAndClearAppliesNothing) {
    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 0, "Time", "Descending");
        clickButton(&dialog, "btnApply");
        ASSERT_NE(sourceTitles(), builtOrder);
        clickButton(&dialog, "btnClear");
        EXPECT_EQ(control<QComboBox>(&dialog, "tdbcSortVar0")->currentIndex(), -1);
        EXPECT_NE(sourceTitles(), builtOrder);
    });
    sortWith([&](ui::SortDialog& dialog) {
        EXPECT_EQ(control<QComboBox>(&dialog, "tdbcSortVar0")->currentIndex(), -1);
        clickButton(&dialog, "btnApply");
    });
    EXPECT_EQ(sortClause(), query::sourceSortClause(query::defaultSortOrder(SortCaller::Source)));
    EXPECT_EQ(sourceTitles(), builtOrder);
}

}  // namespace
