// The navigator: the performer tree over the picker's source, read as it is expanded, and its
// nodes moving the source grid.
#include <QTreeView>

#include "ui/windows/navigator_window.h"
#include "window_fixture.h"

namespace {

// The picker's albums, each track under its own performer: O'Neil (Fits Exactly, One Second Too
// Long), Simon, Simon & Garfunkel, The Beatles, in this order in TempSource.
class NavigatorWindowTest : public PickerTest {
  protected:
    NavigatorWindowTest() { performerKeys = true; }
    ui::NavigatorWindow* openNavigator() {
        if (picker_ == nullptr) {
            openPicker(2);
        }
        clickButton(picker(), "btnNavigation");
        QApplication::processEvents();
        return picker_->findChild<ui::NavigatorWindow*>("frmNavigate");
    }
    QTreeView* tree() const { return testsupport::control<QTreeView>(picker_, "SSTreeNavigate"); }
    QAbstractItemModel* model() const { return tree()->model(); }
    QModelIndex node(const QString& text, const QModelIndex& parent = {}) const {
        for (int row = 0; row < model()->rowCount(parent); ++row) {
            if (model()->index(row, 0, parent).data().toString() == text) {
                return model()->index(row, 0, parent);
            }
        }
        ADD_FAILURE() << "no node " << text.toStdString();
        return {};
    }
    QStringList texts(const QModelIndex& parent = {}) const {
        QStringList result;
        for (int row = 0; row < model()->rowCount(parent); ++row) {
            result << model()->index(row, 0, parent).data().toString();
        }
        return result;
    }
    void clickNode(const QModelIndex& index) {
        tree()->scrollTo(index);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {},
                          tree()->visualRect(index).center());
    }
    void clickExpander(const QModelIndex& index) {
        const QRect item = tree()->visualRect(index);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {},
                          QPoint(item.left() - tree()->indentation() / 2, item.center().y()));
        QApplication::processEvents();
    }
    void key(Qt::Key key) {
        QTest::keyClick(tree(), key);
        QApplication::processEvents();
    }
    QString sourceTitle() const {
        return picker_->sourceRows().recordset().value("TitleTrack").toString();
    }
    int gridRow() const { return picker_->sourceGrid()->currentIndex().row(); }
};

TEST_F(NavigatorWindowTest, OpensOnceAndReadsAPerformersTracksWhenExpanded) {
    ui::NavigatorWindow* navigator = openNavigator();
    ASSERT_TRUE(navigator != nullptr && navigator->isVisible());
    EXPECT_EQ(openNavigator(), navigator);
    EXPECT_EQ(texts(), QStringList({"O'Neil", "Simon", "Simon & Garfunkel", "The Beatles"}));
    clickExpander(node("O'Neil"));
    EXPECT_EQ(texts(node("O'Neil")),
              QStringList({"Fits Exactly   [Collection]", "One Second Too Long   [Collection]"}));
    EXPECT_TRUE(model()->canFetchMore(node("Simon")));
    clickButton(picker_, "btnCollExp");
    EXPECT_FALSE(tree()->isExpanded(node("O'Neil")));
}

TEST_F(NavigatorWindowTest, ANodeClickedOrChosenByKeysMovesTheSourceGridToItsRow) {
    openNavigator();
    clickNode(node("O'Neil"));
    EXPECT_EQ(sourceTitle(), "Fits Exactly");
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(text("txtPerformer"), "Simon & Garfunkel");
    selectSource("Help!");
    tree()->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(sourceTitle(), "Mrs. Robinson");

    clickExpander(node("O'Neil"));
    const QModelIndex second = node("One Second Too Long   [Collection]", node("O'Neil"));
    clickNode(second);
    EXPECT_EQ(gridRow(), 1);
    selectSource("Help!");  // away, then the same node again: the source follows once more
    clickNode(second);
    EXPECT_EQ(gridRow(), 1);
    EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
}

}  // namespace
