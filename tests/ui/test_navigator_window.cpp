// The navigator: the performer tree over the picker's source, read as it is expanded, and its
// nodes moving the source grid.
#include <QTreeView>

#include "support/album_schema.h"
#include "ui/windows/navigator_window.h"
#include "window_fixture.h"

namespace {

// TempSource orders the tracks by sort form, album and position: "" Silence, Abba (Waterloo,
// SOS), Beatles (Anthology 1: Yesterday, Eleanor Rigby; Help: Help!, Yesterday), O'Neil, and
// Zappa's track without a title.
class NavigatorWindowTest : public PickerTest {
  protected:
    void writeAlbums(const QString& albumsPath) override {
        testsupport::createAlbumTables(albumsPath, true);
        testsupport::execRaw(albumsPath, R"sql(
            INSERT INTO Artist VALUES (1, 'The Beatles'), (2, 'Abba'), (3, 'O''Neil'),
                                      (4, 'Nobody'), (5, 'Frank Zappa');
            INSERT INTO Album VALUES (1, 'Help', 'Beatles, The', NULL), (2, 'Anthology 1',
                'Beatles, The', NULL), (3, 'Waterloo', 'Abba', NULL), (4, 'Fits', 'O''Neil',
                NULL), (5, 'Quiet', '', NULL), (6, 'Hot Rats', 'Zappa, Frank', NULL);
            INSERT INTO ArtistAlbumLink VALUES (1, 1), (1, 2), (2, 3), (3, 4), (4, 5), (5, 6);
            INSERT INTO Track VALUES
                (1, 1, 'Beatles, The', 'Help!', 1, 1, 140, NULL, 0, '1965', NULL),
                (2, 1, 'Beatles, The', 'Yesterday', 1, 2, 125, NULL, 0, '1965', NULL),
                (3, 2, 'Beatles, The', 'Yesterday', 1, 1, 160, NULL, 0, '1965', NULL),
                (4, 2, 'Beatles, The', 'Eleanor Rigby', 1, 2, 130, NULL, 0, '1966', NULL),
                (5, 3, 'Abba', 'Waterloo', 1, 1, 170, NULL, 0, '1974', NULL),
                (6, 3, 'Abba', 'SOS', 1, 2, 200, NULL, 0, '1975', NULL),
                (7, 4, 'O''Neil', 'Don''t Stop', 1, 1, 583, NULL, 0, '1999', NULL),
                (8, 5, '', 'Silence', 1, 1, 90, NULL, 0, '2000', NULL),
                (9, 6, 'Zappa, Frank', NULL, 1, 1, 300, NULL, 0, '1969', NULL);
            INSERT INTO ArtistTrackLink VALUES (1, 1), (1, 2), (1, 3), (1, 4), (2, 5), (2, 6),
                                               (3, 7), (4, 8), (5, 9);
        )sql");
    }
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
    // "Title / Album" of the picker's current source row.
    QString sourceRow() const {
        engine::Recordset& rows = picker_->sourceRows().recordset();
        return rows.value("TitleTrack").toString() + " / " + rows.value("TitleAlbum").toString();
    }
    int gridRow() const { return picker_->sourceGrid()->currentIndex().row(); }
};

TEST_F(NavigatorWindowTest, OpensOnceAndReadsAPerformersTracksWhenExpanded) {
    ui::NavigatorWindow* navigator = openNavigator();
    ASSERT_TRUE(navigator != nullptr && navigator->isVisible());
    EXPECT_EQ(openNavigator(), navigator);
    EXPECT_EQ(texts(), QStringList({"Abba", "Beatles, The", "O'Neil", "Zappa, Frank"}));
    clickExpander(node("Beatles, The"));
    EXPECT_EQ(texts(node("Beatles, The")),
              QStringList({"Eleanor Rigby   [Anthology 1]", "Help!   [Help]",
                           "Yesterday   [Anthology 1]", "Yesterday   [Help]"}));
    EXPECT_TRUE(model()->canFetchMore(node("Abba")));
    clickButton(picker_, "btnCollExp");
    EXPECT_FALSE(tree()->isExpanded(node("Beatles, The")));
}

TEST_F(NavigatorWindowTest, ANodeClickedOrChosenByKeysMovesTheSourceGridToItsRow) {
    openNavigator();
    clickNode(node("Abba"));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(text("txtPerformer"), "O'Neil");
    selectSource("SOS");
    tree()->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(sourceRow(), "Don't Stop / Fits");

    clickNode(node("Beatles, The"));
    EXPECT_EQ(sourceRow(), "Yesterday / Anthology 1");
    clickExpander(node("Beatles, The"));
    clickNode(node("Yesterday   [Help]", node("Beatles, The")));
    EXPECT_EQ(gridRow(), 6);
    selectSource("SOS");  // away, then the same node again: the source follows once more
    clickNode(node("Yesterday   [Help]", node("Beatles, The")));
    EXPECT_EQ(gridRow(), 6);

    clickExpander(node("Zappa, Frank"));  // a track without a title
    clickNode(node("   [Hot Rats]", node("Zappa, Frank")));
    EXPECT_EQ(sourceRow(), " / Hot Rats");
    EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
}

}  // namespace
