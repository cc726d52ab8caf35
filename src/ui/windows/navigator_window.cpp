#include "ui/windows/navigator_window.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTreeView>
#include <QVBoxLayout>

#include "assembly/performer_tree.h"
#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "shell/session.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/performer_tree_model.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/window_registry.h"

namespace ui {

NavigatorWindow::NavigatorWindow(shell::Session& session, WindowRegistry& registry,
                                 platform::Dialogs& dialogs, GetSongsWindow& picker)
    : QWidget(&picker, Qt::Window), dialogs_(dialogs), picker_(picker) {
    setObjectName(QStringLiteral("frmNavigate"));
    setWindowTitle(QStringLiteral("Navigate"));
    setAttribute(Qt::WA_DeleteOnClose);
    model_ = new PerformerTreeModel(
        session.state().database, [this] { return picker_.sourceRows().recordSource(); }, this);
    // Queued: the message and the closing wait until the view has finished its expansion.
    connect(model_, &PerformerTreeModel::incompleteData, this, &NavigatorWindow::showIncompleteData,
            Qt::QueuedConnection);
    buildControls();
    orderFocusByLayout(*this);
    registry.add(this);
    model_->loadRoot();
    placeBesidePicker();
}

void NavigatorWindow::buildControls() {
    auto* layout = new QVBoxLayout(this);
    tree_ = new QTreeView(this);
    tree_->setObjectName(QStringLiteral("SSTreeNavigate"));
    tree_->setHeaderHidden(true);
    tree_->setAccessibleName(QStringLiteral("Performers"));
    tree_->setUniformRowHeights(true);
    tree_->setModel(model_);
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { chooseNode(current); });
    connect(tree_, &QTreeView::clicked, this, &NavigatorWindow::chooseClickedNode);
    connect(tree_, &QTreeView::activated, this, &NavigatorWindow::chooseClickedNode);
    layout->addWidget(tree_, 1);

    auto* bottom = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("&Performer:"), this);
    performer_ = new QLineEdit(this);
    performer_->setObjectName(QStringLiteral("txtPerformer"));
    performer_->setReadOnly(true);
    label->setBuddy(performer_);
    collapse_ = new QPushButton(QStringLiteral("&Collaps All"), this);
    collapse_->setObjectName(QStringLiteral("btnCollExp"));
    connect(collapse_, &QPushButton::clicked, this, &NavigatorWindow::collapseAll);
    bottom->addWidget(label);
    bottom->addWidget(performer_, 1);
    bottom->addWidget(collapse_);
    layout->addLayout(bottom);
}

// To the right of the picker where the screen has room, else over the picker's right edge.
void NavigatorWindow::placeBesidePicker() {
    resize(380, std::max(picker_.height(), 400));
    const QRect picker = picker_.frameGeometry();
    QPoint topLeft(picker.right() + 1, picker.top());
    if (const QScreen* screen = picker_.screen()) {
        const QRect room = screen->availableGeometry();
        topLeft.setX(std::max(room.left(), std::min(topLeft.x(), room.right() - width())));
    }
    move(topLeft);
}

void NavigatorWindow::chooseNode(const QModelIndex& node) {
    const int level = PerformerTreeModel::level(node);
    if (level == 0) {
        return;
    }
    const QString performer = model_->performerOf(node);
    const QString criteria =
        assembly::nodeCriteria(level, node.data().toString(), level == 1 ? QString() : performer);
    try {
        picker_.moveSourceTo(criteria);
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
    performer_->setText(performer);
    chosen_ = node;
    chosenRow_ = picker_.sourceRows().hasRecordset()
                     ? picker_.sourceRows().recordset().absolutePosition()
                     : -1;
}

// The press of a click has made the node current already and moved the source; the click
// moves it again only when the source has left that row since.
void NavigatorWindow::chooseClickedNode(const QModelIndex& node) {
    const int sourceRow = picker_.sourceRows().hasRecordset()
                              ? picker_.sourceRows().recordset().absolutePosition()
                              : -1;
    if (node == chosen_ && sourceRow == chosenRow_) {
        return;
    }
    chooseNode(node);
}

void NavigatorWindow::collapseAll() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    tree_->collapseAll();
    QApplication::restoreOverrideCursor();
}

void NavigatorWindow::showIncompleteData() {
    dialogs_.exclamation(assembly::kIncompleteData);
    close();
}

}  // namespace ui
