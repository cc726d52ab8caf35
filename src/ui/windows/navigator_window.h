#pragma once

#include <QPersistentModelIndex>
#include <QWidget>

class QLineEdit;
class QPushButton;
class QTreeView;

namespace platform {
class Dialogs;
}
namespace shell {
class Session;
}

namespace ui {

class GetSongsWindow;
class PerformerTreeModel;
class WindowRegistry;

// frmNavigate, "Navigate": the track picker's source as a tree of performers and their
// title/album pairs, a performer's pairs read when it is expanded. Choosing a node (click,
// arrow keys, Enter) moves the picker's source grid to the node's first row and shows the
// performer. Modeless, owned by the picker, deleted when closed.
class NavigatorWindow : public QWidget {
    Q_OBJECT
  public:
    NavigatorWindow(shell::Session& session, WindowRegistry& registry, platform::Dialogs& dialogs,
                    GetSongsWindow& picker);

    QTreeView* tree() const { return tree_; }
    PerformerTreeModel* model() const { return model_; }

  private:
    void buildControls();
    void placeBesidePicker();
    void chooseNode(const QModelIndex& node);
    void chooseClickedNode(const QModelIndex& node);
    void collapseAll();
    void showIncompleteData();

    platform::Dialogs& dialogs_;
    GetSongsWindow& picker_;
    PerformerTreeModel* model_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLineEdit* performer_ = nullptr;
    QPushButton* collapse_ = nullptr;
    // The node chosen last and the source row it moved to: a click on that node again while
    // the source stays there finds nothing new.
    QPersistentModelIndex chosen_;
    int chosenRow_ = -1;
};

}  // namespace ui
