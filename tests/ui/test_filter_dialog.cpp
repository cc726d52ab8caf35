#include <QComboBox>
#include <QHeaderView>
#include <QLCDNumber>
#include <QLabel>
#include <algorithm>

#include "picker_fixture.h"
#include "ui/windows/filter_dialog.h"

namespace {

// The picker over the five album tracks: "Help!" (The Beatles, 140 s), "Mrs. Robinson" (Simon &
// Garfunkel, 244 s), "Kodachrome" (Simon, 212 s), "Fits Exactly" and "One Second Too Long"
// (O'Neil, 583 and 584 s). The filter dialog is opened through the picker's button and driven
// by keyboard and mouse while it runs modally.
class FilterDialogTest : public PickerWindowTest {
  protected:
    FilterDialogTest() { performerKeys = true; }

    // Clicks "Filter", runs steps on the dialog, then closes it with Escape unless the steps
    // closed it.
    void withFilter(const std::function<void(ui::FilterDialog&)>& steps) {
        bool shown = false;
        auto attempts = std::make_shared<int>(0);
        auto run = std::make_shared<std::function<void()>>();
        *run = [&shown, steps, attempts, run] {
            auto* dialog = qobject_cast<ui::FilterDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                if (++*attempts < 50) {
                    QTimer::singleShot(10, *run);
                }
                return;
            }
            shown = true;
            steps(*dialog);
            if (dialog->isVisible()) {
                QTest::keyClick(dialog, Qt::Key_Escape);
            }
            *run = nullptr;  // ends the cycle of the function holding itself
        };
        QTimer::singleShot(0, *run);
        QTest::mouseClick(pickerButton("btnFilter"), Qt::LeftButton);
        ASSERT_TRUE(shown) << "the filter dialog did not open";
    }

    static void type(ui::FilterDialog& dialog, const QString& name, const QString& keys) {
        auto* widget = dialog.findChild<QWidget*>(name);
        ASSERT_NE(widget, nullptr) << name.toStdString();
        widget->setFocus();
        QTest::keyClicks(widget, keys);
    }

    static void typeRow(ui::FilterDialog& dialog, int index, const QString& variable,
                        const QString& comparison, const QString& text) {
        const QString number = QString::number(index);
        type(dialog, "tdbcFilterVar" + number, variable);
        type(dialog, "tdbcFilterComp" + number, comparison);
        type(dialog, "txtFilter" + number, text);
    }

    static void click(ui::FilterDialog& dialog, const QString& button) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }

    static void chooseFromList(QComboBox* list, const QString& caption) {
        list->showPopup();
        QAbstractItemView* view = list->view();
        const QModelIndex item = view->model()->index(list->findText(caption), 0);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(item).center());
    }

    static QString textOf(ui::FilterDialog& dialog, const QString& name) {
        if (auto* list = dialog.findChild<QComboBox*>(name)) {
            return list->currentText();
        }
        return dialog.findChild<QLineEdit*>(name)->text();
    }

    static qint64 shownCount(ui::FilterDialog& dialog) {
        auto* display = dialog.findChild<QLCDNumber*>("digNumberPassed");
        const qint64 count = qint64(display->value());
        EXPECT_GE(display->digitCount(), QString::number(count).size()) << "not shown whole";
        return count;
    }

    // The titles in the picker's source grid, sorted.
    QStringList sourceTitles() const {
        const QAbstractItemModel* model = picker()->sourceGrid()->model();
        QStringList titles;
        for (int row = 0; row < model->rowCount(); ++row) {
            titles << model->index(row, 1).data().toString();
        }
        titles.sort();
        return titles;
    }

    QStringList gotoEntries() const {
        auto* list = picker()->findChild<QComboBox*>("cmbGotoSourceSong");
        QStringList entries;
        for (int i = 0; i < list->count(); ++i) {
            entries << list->itemText(i);
        }
        return entries;
    }

    QString pickerCount() const { return picker()->findChild<QLabel*>("digNumberPassed")->text(); }

    QString& filterClause() { return window->state().filterClause; }

    // "Simon" and "Simon & Garfunkel" pass; the time is typed short.
    static void applySimonsOver330(ui::FilterDialog& dialog) {
        typeRow(dialog, 0, "Track Performer", "Starts", "Simon");
        type(dialog, "cmbConcat", "A");
        typeRow(dialog, 1, "Time", ">=", "000330");
        click(dialog, "btnApply");
    }

    static const QStringList kSimonTitles;
};

const QStringList FilterDialogTest::kSimonTitles = {"Kodachrome", "Mrs. Robinson"};

TEST_F(FilterDialogTest, TwoConditionsNarrowTheSourceAndTheGotoListFollowsOnClosing) {
    openPicker(2);
    // The goto column is the title; closing the filter makes it the performer again.
    QTest::mouseClick(picker()->sourceGrid()->horizontalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(picker()->sourceGrid()->columnViewportPosition(1) + 5, 5));
    withFilter([&](ui::FilterDialog& dialog) {
        applySimonsOver330(dialog);
        EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
        EXPECT_EQ(textOf(dialog, "txtFilter1"), "00:03:30");
        EXPECT_EQ(filterClause(), "WHERE ArtistSort LIKE 'Simon**' And Length >= 210");
        EXPECT_EQ(sourceTitles(), kSimonTitles);
        EXPECT_EQ(shownCount(dialog), 2);
        EXPECT_EQ(pickerCount(), "1 2");
        EXPECT_EQ(gotoEntries().size(), 5);  // not refilled while the dialog is open
    });
    EXPECT_EQ(gotoEntries(), QStringList({"Simon", "Simon & Garfunkel"}));
    EXPECT_EQ(picker()->findChild<QLabel*>("lblGotoSourceSong")->text(), "Find Track Performer:");
    EXPECT_EQ(sourceTitles(), kSimonTitles);
}

TEST_F(FilterDialogTest, ValidationMessagesKeepTheFilterInForce) {
    openPicker(2);
    withFilter([&](ui::FilterDialog& dialog) {
        applySimonsOver330(dialog);
        click(dialog, "btnClear");
        typeRow(dialog, 0, "Item #", "=", "40000");
        click(dialog, "btnApply");
        ASSERT_EQ(dialogs.messages().size(), 1u);
        const platform::MessageRequest& shown = dialogs.messages().back();
        EXPECT_EQ(shown.text, "First filter text must be a number (integer).");
        EXPECT_EQ(shown.title, "Mixorama");
        EXPECT_EQ(shown.icon, platform::MessageIcon::Exclamation);
        EXPECT_EQ(textOf(dialog, "txtFilter0"), "");  // the failed text is emptied
        EXPECT_EQ(filterClause(), "WHERE ArtistSort LIKE 'Simon**' And Length >= 210");
        EXPECT_EQ(sourceTitles(), kSimonTitles);
        EXPECT_EQ(shownCount(dialog), 2);

        // A second row needs the first and a concatenation.
        click(dialog, "btnClear");
        typeRow(dialog, 1, "Live", "=", "Nein");
        click(dialog, "btnApply");
        EXPECT_EQ(dialogs.lastMessageText(), "First filter definition is empty.");
        typeRow(dialog, 0, "Recorded", "=", "1999");
        click(dialog, "btnApply");
        EXPECT_EQ(dialogs.lastMessageText(),
                  "First and second filter definitions are not properly concatenated.");
        EXPECT_EQ(textOf(dialog, "txtFilter1"), "Nein");  // not checked before the message
        EXPECT_EQ(filterClause(), "WHERE ArtistSort LIKE 'Simon**' And Length >= 210");
    });
}

TEST_F(FilterDialogTest, ATimeTypedShortIsRewrittenAndOrdersTheLengths) {
    openPicker(2);
    withFilter([&](ui::FilterDialog& dialog) {
        typeRow(dialog, 0, "Time", "<", "014907");
        type(dialog, "cmbConcat", "O");
        typeRow(dialog, 1, "Time", "<", "000300");  // 180 seconds: only "Help!"
        click(dialog, "btnApply");
        EXPECT_EQ(textOf(dialog, "txtFilter0"), "01:49:07");
        EXPECT_EQ(textOf(dialog, "txtFilter1"), "00:03:00");
        EXPECT_EQ(filterClause(), "WHERE Length < 6547 Or Length < 180");
        EXPECT_EQ(shownCount(dialog), 5);

        click(dialog, "btnClear");
        typeRow(dialog, 0, "Time", ">", "00:09:43");
        click(dialog, "btnApply");
        EXPECT_EQ(sourceTitles(), QStringList({"One Second Too Long"}));
        EXPECT_EQ(shownCount(dialog), 1);
    });
}

TEST_F(FilterDialogTest, ChoosingAVariableOffersItsComparisonsAndHint) {
    openPicker(2);
    withFilter([&](ui::FilterDialog& dialog) {
        auto* comparisons = dialog.findChild<QComboBox*>("tdbcFilterComp1");
        type(dialog, "tdbcFilterVar1", "Live");
        ASSERT_EQ(comparisons->count(), 1);
        EXPECT_EQ(comparisons->itemText(0), "=");
        EXPECT_EQ(comparisons->currentText(), "");
        type(dialog, "tdbcFilterComp1", "=");
        // Choosing another variable from the list empties the comparison.
        auto* variables = dialog.findChild<QComboBox*>("tdbcFilterVar1");
        chooseFromList(variables, "Rating");
        EXPECT_EQ(variables->currentText(), "Rating");
        EXPECT_EQ(comparisons->currentText(), "");
        EXPECT_EQ(comparisons->findText("="), -1);
        EXPECT_NE(comparisons->findText("Starts"), -1);
        EXPECT_EQ(dialog.findChild<QLineEdit*>("txtFilter1")->toolTip(), "");

        variables->clearEditText();
        type(dialog, "tdbcFilterVar1", "Time");
        EXPECT_EQ(dialog.findChild<QLineEdit*>("txtFilter1")->toolTip(), window->state().inputHint);
        EXPECT_FALSE(window->state().inputHint.isEmpty());
        EXPECT_EQ(comparisons->findText("Starts"), -1);
        EXPECT_NE(comparisons->findText(">="), -1);
    });
}

TEST_F(FilterDialogTest, TheFirstKeyIntoAnEmptyListIsACapital) {
    openPicker(2);
    withFilter([&](ui::FilterDialog& dialog) {
        type(dialog, "tdbcFilterVar0", "album title");
        EXPECT_EQ(textOf(dialog, "tdbcFilterVar0"), "Album title");
        type(dialog, "tdbcFilterComp0", "is null");
        EXPECT_EQ(textOf(dialog, "tdbcFilterComp0"), "Is null");
        type(dialog, "txtFilter0", "x");  // an ordinary text box: left alone
        EXPECT_EQ(textOf(dialog, "txtFilter0"), "x");
        click(dialog, "btnApply");
        EXPECT_EQ(filterClause(), "WHERE TitleAlbum Is Null");
        EXPECT_EQ(dialogs.lastMessageText(), "No track meets the criteria");
    });
}

TEST_F(FilterDialogTest, ClearEmptiesTheRowsButKeepsTheFilter) {
    openPicker(2);
    withFilter([&](ui::FilterDialog& dialog) {
        applySimonsOver330(dialog);
        click(dialog, "btnClear");
        for (const char* name : {"tdbcFilterVar0", "tdbcFilterComp0", "txtFilter0",
                                 "tdbcFilterVar1", "tdbcFilterComp1", "txtFilter1", "cmbConcat"}) {
            EXPECT_EQ(textOf(dialog, name), "") << name;
        }
        EXPECT_EQ(dialog.findChild<QComboBox*>("tdbcFilterComp1")->count(), 0);
        auto* concat = dialog.findChild<QComboBox*>("cmbConcat");
        ASSERT_EQ(concat->count(), 2);
        EXPECT_EQ(concat->itemText(0), "And");
        EXPECT_EQ(concat->itemText(1), "Or");
        EXPECT_EQ(filterClause(), "WHERE ArtistSort LIKE 'Simon**' And Length >= 210");
        EXPECT_EQ(sourceTitles(), kSimonTitles);
        EXPECT_EQ(shownCount(dialog), 2);

        // Apply with empty rows lifts the filter.
        click(dialog, "btnApply");
        EXPECT_EQ(filterClause(), "");
        EXPECT_EQ(sourceTitles().size(), 5);
        EXPECT_EQ(shownCount(dialog), 5);
        EXPECT_EQ(pickerCount(), "1 5");
    });
}

TEST_F(FilterDialogTest, AReopenedDialogIsEmptyWhileTheSourceStaysFiltered) {
    openPicker(2);
    withFilter(applySimonsOver330);
    withFilter([&](ui::FilterDialog& dialog) {
        for (const char* name : {"tdbcFilterVar0", "tdbcFilterComp0", "txtFilter0",
                                 "tdbcFilterVar1", "tdbcFilterComp1", "txtFilter1", "cmbConcat"}) {
            EXPECT_EQ(textOf(dialog, name), "") << name;
        }
        EXPECT_EQ(shownCount(dialog), 2);
        EXPECT_EQ(sourceTitles(), kSimonTitles);
    });
    EXPECT_EQ(filterClause(), "WHERE ArtistSort LIKE 'Simon**' And Length >= 210");
    EXPECT_EQ(pickerCount(), "1 2");
}

// The filter and the sort apply to every new TempSource of the run, with the count of the
// tracks that pass; a connect of another album database drops them.
TEST_F(FilterDialogTest, FilterAndSortOutliveThePickerUntilAnotherAlbumIsConnected) {
    const auto reopenPicker = [&] {
        picker()->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        openPicker(2);
    };
    const auto connectAlbums = [&](const QString& albums) {
        store::EditorConnection connection;
        dialogs.answerFile(albums);
        store::connectAlbumDatabase(window->state().database, dialogs, window->state().album,
                                    connection);
        ASSERT_TRUE(connection.albumConnected);
    };
    const auto firstTitle = [&] {
        return picker()->sourceGrid()->model()->index(0, 1).data().toString();
    };
    openPicker(2);
    withFilter(applySimonsOver330);
    window->state().sortClause = "ORDER BY Length DESC";
    for (int opening = 0; opening < 2; ++opening) {
        reopenPicker();
        EXPECT_EQ(sourceTitles(), kSimonTitles);
        EXPECT_EQ(firstTitle(), "Mrs. Robinson");
        EXPECT_EQ(pickerCount(), "1 2");
        EXPECT_EQ(gotoEntries(), QStringList({"Simon", "Simon & Garfunkel"}));
        withFilter([&](ui::FilterDialog& dialog) { EXPECT_EQ(shownCount(dialog), 2); });
        connectAlbums(dir.file("albums.mdb"));  // the same collection again
    }

    const QString others = dir.file("others.mdb");
    writeAlbumFile(others, {{"Simon", "Boxer", 300}, {"Adams", "Morning", 100}}, true);
    connectAlbums(others);
    reopenPicker();
    EXPECT_EQ(filterClause(), "");
    EXPECT_EQ(window->state().sortClause, "");
    EXPECT_EQ(sourceTitles(), QStringList({"Boxer", "Morning"}));
    EXPECT_EQ(firstTitle(), "Morning");  // by performer, as TempSource is built
    EXPECT_EQ(pickerCount(), "1 2");
}

TEST_F(FilterDialogTest, NoPassingTrackLeavesAnEmptySourceAndZero) {
    openPicker(2);
    withFilter([&](ui::FilterDialog& dialog) {
        typeRow(dialog, 0, "Track Performer", "Contains", "O'Neil");
        click(dialog, "btnApply");
        EXPECT_EQ(sourceTitles(), QStringList({"Fits Exactly", "One Second Too Long"}));
        typeRow(dialog, 1, "Track Title", "Contains", "zz");
        type(dialog, "cmbConcat", "A");
        click(dialog, "btnApply");
        ASSERT_EQ(dialogs.messages().size(), 1u);
        EXPECT_EQ(dialogs.messages().back().text, "No track meets the criteria");
        EXPECT_EQ(dialogs.messages().back().icon, platform::MessageIcon::Exclamation);
        EXPECT_EQ(filterClause(), "WHERE ArtistSort LIKE '*O''Neil*' And TitleTrack LIKE '*zz*'");
        EXPECT_EQ(sourceTitles(), QStringList());
        EXPECT_EQ(shownCount(dialog), 0);
        EXPECT_EQ(pickerCount(), "0 0");
        EXPECT_EQ(window->state().album.passedCount, 0);
    });
    EXPECT_EQ(gotoEntries(), QStringList());
}

TEST_F(FilterDialogTest, OpensOverThePickerWithItsColourAndAWholeLargeCount) {
    openPicker(2);
    for (const qint64 count : {qint64(137000), qint64(2000000), qint64(12345678901)}) {
        window->state().album.passedCount = count;
        withFilter([&](ui::FilterDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Filter Source");
            EXPECT_TRUE(dialog.isModal());
            EXPECT_EQ(dialog.parentWidget(), picker());
            EXPECT_EQ(shownCount(dialog), count);
            auto* display = dialog.findChild<QLCDNumber*>("digNumberPassed");
            EXPECT_EQ(display->palette().color(QPalette::WindowText), QColor(64, 64, 64));
            EXPECT_NEAR(dialog.geometry().center().x(), picker()->geometry().center().x(), 1);
            EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        });
    }
}

}  // namespace
