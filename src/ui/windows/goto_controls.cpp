#include "ui/windows/goto_controls.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>

#include "query/goto_lists.h"

namespace ui {

const QStringList kFindCaptions{"Find &First", "Find &Prev.", "Find &Next", "Find &Last"};
const QStringList kMoveCaptions{"Fi&rst", "Pre&vious", "Ne&xt", "L&ast"};

QPushButton* makeButton(const QString& caption, const QString& name, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

QComboBox* makeGotoList(const QString& name, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setMaxVisibleItems(20);
    return list;
}

void showGotoLists(const query::GotoLists& lists, QComboBox& gotoList, QComboBox& comparisons) {
    comparisons.clear();
    comparisons.addItems(lists.comparisons);
    comparisons.setCurrentText(lists.comparisonPreset);
    gotoList.clear();
    gotoList.addItems(lists.entries);
    gotoList.setToolTip(lists.tooltip);
    gotoList.setCurrentIndex(-1);
    gotoList.setEditText(QString());
}

bool isEnterPress(const QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace ui
