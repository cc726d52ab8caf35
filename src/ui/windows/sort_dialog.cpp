#include "ui/windows/sort_dialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "shell/navigation.h"
#include "ui/controls/find_panel.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/list_label.h"

namespace ui {

namespace {

// A drop-down list of captions with nothing chosen.
QComboBox* captionList(const QString& name, const QStringList& captions, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->addItems(captions);
    list->setCurrentIndex(-1);
    list->setMinimumContentsLength(16);
    return list;
}

QStringList keyCaptions(query::SortCaller caller) {
    QStringList captions;
    for (const query::SortKey& key : query::sortKeys(caller)) {
        captions << key.caption;
    }
    return captions;
}

QStringList directionCaptions() {
    QStringList captions;
    for (const query::SortDirectionChoice& direction : query::sortDirections()) {
        captions << direction.caption;
    }
    return captions;
}

const QStringList kLevelNames{"First", "Second", "Third"};

QLabel* columnHeader(const QString& text, QWidget* parent) {
    auto* header = new QLabel(text, parent);
    QFont bold = header->font();
    bold.setBold(true);
    header->setFont(bold);
    return header;
}

}  // namespace

SortDialog::SortDialog(query::SortCaller caller, ApplyOrder applyOrder, platform::Dialogs& dialogs,
                       QWidget* opener)
    : QDialog(opener), caller_(caller), applyOrder_(std::move(applyOrder)), dialogs_(dialogs) {
    setObjectName(QStringLiteral("frmSort"));
    setWindowTitle(query::sortDialogCaption(caller));
    setModal(true);
    buildControls();
    orderFocusByLayout(*this);
    resize(sizeHint().expandedTo(QSize(420, 0)));
    if (opener != nullptr) {
        setGeometry(shell::placedOver(geometry(), opener->window()->geometry()));
    }
}

void SortDialog::buildControls() {
    auto* layout = new QVBoxLayout(this);
    auto* explanation =
        new QLabel(QStringLiteral("Sort by up to three fields; the first one counts most. "
                                  "With none chosen the usual order applies."),
                   this);
    explanation->setObjectName(QStringLiteral("lblSort"));
    explanation->setWordWrap(true);
    layout->addWidget(explanation);
    auto* levels = new QGridLayout;
    levels->addWidget(columnHeader(QStringLiteral("Variable"), this), 0, 1);
    levels->addWidget(columnHeader(QStringLiteral("Sort Order"), this), 0, 2);
    const QStringList keys = keyCaptions(caller_);
    for (int level = 0; level < 3; ++level) {
        keys_[level] = captionList(QStringLiteral("tdbcSortVar%1").arg(level), keys, this);
        directions_[level] =
            captionList(QStringLiteral("tdbcSortOrd%1").arg(level), directionCaptions(), this);
        auto* number = new QLabel(QStringLiteral("&%1.").arg(level + 1), this);
        number->setBuddy(keys_[level]);
        const QString key = kLevelNames[level] + QStringLiteral(" sort key: ");
        keys_[level]->setAccessibleName(key + QStringLiteral("field"));
        number->setAccessibleName(keys_[level]->accessibleName());
        labelList(*directions_[level], key + QStringLiteral("direction"));
        levels->addWidget(number, level + 1, 0);
        levels->addWidget(keys_[level], level + 1, 1);
        levels->addWidget(directions_[level], level + 1, 2);
    }
    levels->setColumnStretch(1, 2);
    levels->setColumnStretch(2, 1);
    layout->addLayout(levels);
    auto* buttons = new QHBoxLayout;
    QPushButton* applyButton =
        makeButton(QStringLiteral("&Apply Sort"), QStringLiteral("btnApply"), this);
    QPushButton* clearButton =
        makeButton(QStringLiteral("&Clear Fields"), QStringLiteral("btnClear"), this);
    applyButton->setDefault(true);
    buttons->addStretch(1);
    buttons->addWidget(applyButton);
    buttons->addWidget(clearButton);
    layout->addLayout(buttons);
    connect(applyButton, &QPushButton::clicked, this, &SortDialog::apply);
    connect(clearButton, &QPushButton::clicked, this, &SortDialog::clear);
}

// A level counts when its key is chosen; a direction not chosen leaves the engine's ascending.
query::SortLevels SortDialog::chosenLevels() const {
    query::SortLevels levels;
    for (int level = 0; level < 3; ++level) {
        const int key = keys_[level]->currentIndex();
        if (key < 0) {
            continue;
        }
        levels[level].field = query::sortKeys(caller_)[key].field;
        const int direction = directions_[level]->currentIndex();
        if (direction >= 0) {
            levels[level].direction = query::sortDirections()[direction].value;
        }
    }
    return levels;
}

void SortDialog::apply() {
    sortOrderText_ = query::composeSortClause(chosenLevels(), caller_);
    try {
        applyOrder_(sortOrderText_);
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
}

void SortDialog::clear() {
    for (int level = 0; level < 3; ++level) {
        keys_[level]->setCurrentIndex(-1);
        directions_[level]->setCurrentIndex(-1);
    }
    sortOrderText_ = query::defaultSortOrder(caller_);
}

}  // namespace ui
