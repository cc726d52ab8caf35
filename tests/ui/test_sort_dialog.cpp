#include <QComboBox>
#include <QLabel>

#include "picker_fixture.h"
#include "sort_dialog_driver.h"
#include "ui/windows/sort_dialog.h"

namespace {

const char* const kDefaultSourceClause =
    "ORDER BY ArtistSort, AlbumArtistSort, TitleAlbum, Item, Index ";

class SortSource : public PickerWindowTest {
  protected:
    void SetUp() override {
        PickerWindowTest::SetUp();
        openPicker(3);
        builtOrder = sourceTitles();
    }

    // Presses the picker's Sort and works the dialog while it is open.
    void sortWith(std::function<void(ui::SortDialog&)> use) {
        SortDialogScript script(std::move(use));
        QTest::mouseClick(pickerButton("btnSort"), Qt::LeftButton);
        EXPECT_TRUE(script.shown());
    }

    QStringList sourceTitles() const {
        QStringList titles;
        const QAbstractItemModel* model = picker()->sourceGrid()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            titles << model->index(row, 1).data().toString();
        }
        return titles;
    }

    QString sortClause() const { return window->state().sortClause; }

    QStringList builtOrder;  // the source as TempSource was built
};

QComboBox* list(ui::SortDialog& dialog, const QString& name) {
    return dialog.findChild<QComboBox*>(name);
}

void chooseLevel(ui::SortDialog& dialog, int level, const QString& key, const QString& order) {
    chooseFromList(list(dialog, QStringLiteral("tdbcSortVar%1").arg(level)), key);
    if (!order.isEmpty()) {
        chooseFromList(list(dialog, QStringLiteral("tdbcSortOrd%1").arg(level)), order);
    }
}

TEST_F(SortSource, OpensEmptyWithTheSourceKeys) {
    QStringList seen;
    sortWith([&](ui::SortDialog& dialog) {
        seen << dialog.windowTitle() << dialog.findChild<QPushButton*>("btnApply")->text()
             << dialog.findChild<QPushButton*>("btnClear")->text();
        EXPECT_TRUE(dialog.isModal());
        EXPECT_NE(dialog.findChild<QLabel*>("lblSort"), nullptr);
        for (int level = 0; level < 3; ++level) {
            QComboBox* keys = list(dialog, QStringLiteral("tdbcSortVar%1").arg(level));
            QComboBox* orders = list(dialog, QStringLiteral("tdbcSortOrd%1").arg(level));
            ASSERT_NE(keys, nullptr);
            ASSERT_NE(orders, nullptr);
            EXPECT_EQ(keys->count(), 11);
            EXPECT_EQ(keys->currentIndex(), -1);
            EXPECT_EQ(orders->count(), 2);
            EXPECT_EQ(orders->currentIndex(), -1);
        }
        QComboBox* keys = list(dialog, "tdbcSortVar0");
        EXPECT_EQ(keys->itemText(0), "Track Performer");
        EXPECT_EQ(keys->itemText(3), "Time");
        EXPECT_EQ(keys->itemText(10), "Index");
        EXPECT_EQ(list(dialog, "tdbcSortOrd2")->itemText(1), "Descending");
        // Centred over the picker, a little above the middle.
        EXPECT_NEAR(dialog.geometry().center().x(), picker()->geometry().center().x(), 1);
    });
    EXPECT_EQ(seen, QStringList({"Sort Source", "&Apply Sort", "&Clear Fields"}));
    EXPECT_EQ(sortClause(), "");
    EXPECT_EQ(sourceTitles(), builtOrder);
}

TEST_F(SortSource, ALevelAloneOrdersTheSourceAndTheDialogStaysOpen) {
    bool openAfterApply = false;
    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 2, "Time", "Descending");
        clickButton(&dialog, "btnApply");
        openAfterApply = dialog.isVisible();
        EXPECT_EQ(dialog.sortOrderText(), "Length DESC");
    });
    EXPECT_TRUE(openAfterApply);
    EXPECT_EQ(sortClause(), "ORDER BY Length DESC");
    EXPECT_EQ(sourceTitles(), QStringList({"One Second Too Long", "Fits Exactly", "Mrs. Robinson",
                                           "Kodachrome", "Help!"}));
    EXPECT_EQ(picker()->findChild<QLabel*>("digNumberPassed")->text(), "1 5");
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(SortSource, LevelsCombineInLevelOrderAndAKeyWithoutOrderAscends) {
    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 2, "Recorded", "Descending");
        chooseLevel(dialog, 0, "Track Title", "Ascending");
        clickButton(&dialog, "btnApply");
    });
    EXPECT_EQ(sortClause(), "ORDER BY TitleTrack ASC, MyRecorded DESC");
    EXPECT_EQ(sourceTitles(), QStringList({"Fits Exactly", "Help!", "Kodachrome", "Mrs. Robinson",
                                           "One Second Too Long"}));

    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 1, "Time", "");
        clickButton(&dialog, "btnApply");
    });
    EXPECT_EQ(sortClause(), "ORDER BY Length");
    EXPECT_EQ(sourceTitles().first(), "Help!");
    EXPECT_EQ(sourceTitles().last(), "One Second Too Long");
}

TEST_F(SortSource, NoKeyRestoresTheBuiltOrder) {
    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 0, "Time", "Descending");
        clickButton(&dialog, "btnApply");
        ASSERT_NE(sourceTitles(), builtOrder);
    });
    // A reopened dialog starts empty while the source keeps its order.
    sortWith([&](ui::SortDialog& dialog) {
        EXPECT_EQ(list(dialog, "tdbcSortVar0")->currentIndex(), -1);
        EXPECT_EQ(sortClause(), "ORDER BY Length DESC");
        clickButton(&dialog, "btnApply");
    });
    EXPECT_EQ(sortClause(), kDefaultSourceClause);
    EXPECT_EQ(sourceTitles(), builtOrder);
}

TEST_F(SortSource, ClearEmptiesTheListsAndAppliesNothing) {
    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 0, "Time", "Descending");
        chooseLevel(dialog, 1, "Track Title", "Ascending");
        clickButton(&dialog, "btnApply");
        clickButton(&dialog, "btnClear");
        for (const char* name : {"tdbcSortVar0", "tdbcSortOrd0", "tdbcSortVar1", "tdbcSortOrd1",
                                 "tdbcSortVar2", "tdbcSortOrd2"}) {
            EXPECT_EQ(list(dialog, name)->currentIndex(), -1) << name;
            EXPECT_EQ(list(dialog, name)->currentText(), "") << name;
        }
        EXPECT_EQ(dialog.sortOrderText(), "ArtistSort, AlbumArtistSort, TitleAlbum, Item, Index ");
        EXPECT_EQ(sortClause(), "ORDER BY Length DESC, TitleTrack ASC");
    });
    EXPECT_EQ(sortClause(), "ORDER BY Length DESC, TitleTrack ASC");
    EXPECT_EQ(sourceTitles().first(), "One Second Too Long");
}

TEST_F(SortSource, ALaterFilterKeepsTheSort) {
    sortWith([&](ui::SortDialog& dialog) {
        chooseLevel(dialog, 0, "Time", "Descending");
        clickButton(&dialog, "btnApply");
    });
    // What the filter dialog's Apply leaves for the source.
    window->state().filterClause = "WHERE Length < 300";
    picker()->requerySource();
    EXPECT_EQ(sourceTitles(), QStringList({"Mrs. Robinson", "Kodachrome", "Help!"}));
    EXPECT_EQ(sortClause(), "ORDER BY Length DESC");
}

}  // namespace
