#include "ui/controls/find_panel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "query/goto_find.h"
#include "query/goto_lists.h"
#include "shell/navigation.h"
#include "store/data_control.h"
#include "ui/controls/list_label.h"

namespace ui {

namespace {

const QStringList kFindCaptions{"Find &First", "Find &Prev.", "Find &Next", "Find &Last"};
const QStringList kMoveCaptions{"Fi&rst", "Pre&vious", "Ne&xt", "L&ast"};

bool isEnterPress(const QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

QPushButton* makeButton(const QString& caption, const QString& name, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

FindPanel::FindPanel(const QString& listName, const QString& buttonLetter, MoveButtons moveButtons,
                     QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const QString gotoName = QStringLiteral("cmbGoto") + listName;
    label_ = new QLabel(QStringLiteral("Nothing assigned to ") + gotoName, this);
    label_->setObjectName(QStringLiteral("lblGoto") + listName);
    label_->setWordWrap(true);
    // An editable list that only takes what the user types (it adds no entries).
    gotoList_ = new QComboBox(this);
    gotoList_->setObjectName(gotoName);
    gotoList_->setEditable(true);
    gotoList_->setInsertPolicy(QComboBox::NoInsert);
    gotoList_->setMaxVisibleItems(20);
    gotoList_->installEventFilter(this);
    label_->setBuddy(gotoList_);
    comparisons_ = new QComboBox(this);
    comparisons_->setObjectName(QStringLiteral("cmbComparison") + listName);
    labelList(*comparisons_, QStringLiteral("Comparison"));
    layout->addWidget(label_, 0, 0, 1, 2);
    layout->addWidget(gotoList_, 1, 0, 1, 2);
    layout->addWidget(comparisons_, 2, 0, 1, 2);
    for (int i = 0; i < 4; ++i) {
        findButtons_[i] = makeButton(
            kFindCaptions[i], QStringLiteral("btnFind%1%2").arg(buttonLetter).arg(i + 1), this);
        connect(findButtons_[i], &QPushButton::clicked, this, [this, i] { find(i + 1); });
        layout->addWidget(findButtons_[i], 3 + i / 2, i % 2);
    }
    if (moveButtons == MoveButtons::None) {
        return;
    }
    layout->setRowMinimumHeight(5, 24);
    for (int i = 0; i < 4; ++i) {
        moveButtons_[i] = makeButton(
            kMoveCaptions[i], QStringLiteral("btnMove%1%2").arg(buttonLetter).arg(i + 1), this);
        connect(moveButtons_[i], &QPushButton::clicked, this, [this, i] { move(i + 1); });
        layout->addWidget(moveButtons_[i], 6 + i / 2, i % 2);
    }
}

void FindPanel::setRows(store::DataControl* rows, std::function<QString()> gotoField,
                        platform::Dialogs& dialogs) {
    rows_ = rows;
    gotoField_ = std::move(gotoField);
    dialogs_ = &dialogs;
}

void FindPanel::showLists(const query::GotoLists& lists) {
    comparisons_->clear();
    comparisons_->addItems(lists.comparisons);
    comparisons_->setCurrentText(lists.comparisonPreset);
    gotoList_->clear();
    gotoList_->addItems(lists.entries);
    gotoList_->setToolTip(lists.tooltip);
    gotoList_->setCurrentIndex(-1);
    gotoList_->setEditText(QString());
}

void FindPanel::setCaption(const QString& caption) {
    QString shown = caption;
    label_->setText(QStringLiteral("Fin&d ") +
                    shown.replace(QLatin1Char('&'), QStringLiteral("&&")) + QLatin1Char(':'));
}

void FindPanel::setControlsEnabled(bool enabled) {
    gotoList_->setEnabled(enabled);
    comparisons_->setEnabled(enabled);
    for (int i = 0; i < 4; ++i) {
        findButtons_[i]->setEnabled(enabled);
        if (moveButtons_[i] != nullptr) {
            moveButtons_[i]->setEnabled(enabled);
        }
    }
}

void FindPanel::find(int index) {
    if (rows_ == nullptr || !rows_->hasRecordset()) {
        return;
    }
    QString value = gotoList_->currentText();
    query::findInGotoList(index, comparisons_->currentText(), value, rows_->recordset(),
                          gotoField_(), *dialogs_);
    gotoList_->setEditText(value);
    rows_->notifyCurrentChanged();
}

void FindPanel::move(int index) {
    if (rows_ == nullptr || !rows_->hasRecordset()) {
        return;
    }
    shell::moveRecord(index, rows_->recordset());
    rows_->notifyCurrentChanged();
}

bool FindPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == gotoList_ && isEnterPress(event)) {
        findButtons_[0]->click();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace ui
