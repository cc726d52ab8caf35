#include "ui/windows/goto_controls.h"

#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
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

CompilationFindControls addCompilationFindControls(QWidget* panel, QGridLayout* layout,
                                                   QObject* gotoFilter,
                                                   const std::function<void(int)>& find,
                                                   const std::function<void(int)>& move) {
    CompilationFindControls controls;
    controls.gotoLabel =
        new QLabel(QStringLiteral("Nothing assigned to cmbGotoCompilation"), panel);
    controls.gotoLabel->setObjectName(QStringLiteral("lblGotoCompilation"));
    controls.gotoLabel->setWordWrap(true);
    controls.gotoList = makeGotoList(QStringLiteral("cmbGotoCompilation"), panel);
    controls.gotoList->installEventFilter(gotoFilter);
    controls.gotoLabel->setBuddy(controls.gotoList);
    controls.comparisonList = new QComboBox(panel);
    controls.comparisonList->setObjectName(QStringLiteral("cmbComparisonCompilation"));
    layout->addWidget(controls.gotoLabel, 0, 0, 1, 2);
    layout->addWidget(controls.gotoList, 1, 0, 1, 2);
    layout->addWidget(controls.comparisonList, 2, 0, 1, 2);
    for (int i = 0; i < 4; ++i) {
        controls.findButtons[i] =
            makeButton(kFindCaptions[i], QStringLiteral("btnFindC%1").arg(i + 1), panel);
        QObject::connect(controls.findButtons[i], &QPushButton::clicked, panel,
                         [find, i] { find(i + 1); });
        layout->addWidget(controls.findButtons[i], 3 + i / 2, i % 2);
    }
    layout->setRowMinimumHeight(5, 24);
    for (int i = 0; i < 4; ++i) {
        controls.moveButtons[i] =
            makeButton(kMoveCaptions[i], QStringLiteral("btnMoveC%1").arg(i + 1), panel);
        QObject::connect(controls.moveButtons[i], &QPushButton::clicked, panel,
                         [move, i] { move(i + 1); });
        layout->addWidget(controls.moveButtons[i], 6 + i / 2, i % 2);
    }
    return controls;
}

bool isEnterPress(const QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace ui
