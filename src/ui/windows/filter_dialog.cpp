#include "ui/windows/filter_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "query/field_values.h"
#include "shell/navigation.h"
#include "shell/session.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/list_label.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/screen_colours.h"

namespace ui {

namespace {

// Enough digits for a large collection; a larger count widens the display.
constexpr int kMinimumDigits = 7;

QComboBox* editableList(const QString& name, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    return list;
}

QLabel* caption(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

// The text of a key typed into an empty list with its letter a capital; empty when the key
// stays as typed.
QString upcasedText(const QKeyEvent& key) {
    if (key.text().size() != 1) {
        return {};
    }
    const char16_t typed = key.text().at(0).unicode();
    qint16 code = qint16(typed);
    query::upcaseKey(code);
    return code == qint16(typed) ? QString() : QString(QChar(char16_t(code)));
}

}  // namespace

FilterDialog::FilterDialog(shell::Session& session, platform::Dialogs& dialogs,
                           GetSongsWindow& picker)
    : QDialog(&picker), session_(session), dialogs_(dialogs), picker_(picker) {
    setObjectName(QStringLiteral("frmFilter"));
    setWindowTitle(QStringLiteral("Filter Source"));
    setModal(true);
    buildControls();
    QPalette palette = passed_->palette();
    palette.setColor(QPalette::WindowText, shell::positionColour(screenColourCount(*this)));
    passed_->setPalette(palette);
    showPassed(session_.state().album.passedCount);
    adjustSize();
    orderFocusByLayout(*this);
    setGeometry(shell::placedOver(geometry(), picker_.geometry()));
    // The picker set the hourglass before opening the dialog.
    QApplication::restoreOverrideCursor();
}

void FilterDialog::buildControls() {
    auto* layout = new QGridLayout(this);
    const std::array<QLabel*, 3> headers{
        caption(QStringLiteral("lblVariable"), QStringLiteral("&Variable"), this),
        caption(QStringLiteral("lblComparison"), QStringLiteral("Co&mparison"), this),
        caption(QStringLiteral("lblString"), QStringLiteral("&Text"), this)};
    for (int column = 0; column < 3; ++column) {
        layout->addWidget(headers[column], 0, column);
    }
    addRow(0, 1, *layout);
    // The column captions' mnemonics reach the first condition.
    headers[0]->setBuddy(variables_[0]);
    headers[1]->setBuddy(comparisons_[0]);
    headers[2]->setBuddy(texts_[0]);
    auto* joint = new QHBoxLayout;
    QLabel* concatLabel = caption(QStringLiteral("lblConcat"), QStringLiteral("Co&ncat."), this);
    concatenation_ = new QComboBox(this);
    concatenation_->setObjectName(QStringLiteral("cmbConcat"));
    concatLabel->setBuddy(concatenation_);
    refillConcatenation();
    joint->addWidget(concatLabel);
    joint->addWidget(concatenation_);
    joint->addStretch(1);
    layout->addLayout(joint, 2, 0, 1, 3);
    addRow(1, 3, *layout);
    layout->addWidget(buildButtons(), 0, 3, 4, 1);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, 2);
    layout->setColumnStretch(2, 3);
    layout->setColumnMinimumWidth(0, 160);
    layout->setColumnMinimumWidth(1, 110);
    layout->setColumnMinimumWidth(2, 130);
}

void FilterDialog::addRow(int index, int gridRow, QGridLayout& layout) {
    const QString number = QString::number(index);
    QComboBox* variable = editableList(QStringLiteral("tdbcFilterVar") + number, this);
    for (const query::FilterVariable& entry : query::variableTable()) {
        variable->addItem(entry.caption);
    }
    variable->setCurrentIndex(-1);
    QComboBox* comparison = editableList(QStringLiteral("tdbcFilterComp") + number, this);
    // Completing inline would turn a typed "<" into the "<>" listed before it.
    comparison->setCompleter(nullptr);
    auto* text = new QLineEdit(this);
    text->setObjectName(QStringLiteral("txtFilter") + number);
    for (QWidget* list : {static_cast<QWidget*>(variable), static_cast<QWidget*>(comparison)}) {
        list->installEventFilter(this);
    }
    variable->lineEdit()->installEventFilter(this);
    comparison->lineEdit()->installEventFilter(this);
    connect(variable, &QComboBox::activated, this, [this, index] { chooseVariable(index); });
    // A variable typed in full counts as chosen.
    connect(variable, &QComboBox::editTextChanged, this, [this, index](const QString& typed) {
        if (query::findVariable(typed) != nullptr) {
            chooseVariable(index);
        }
    });
    const QString condition =
        index == 0 ? QStringLiteral("First condition: ") : QStringLiteral("Second condition: ");
    variable->setAccessibleName(condition + QStringLiteral("variable"));
    comparison->setAccessibleName(condition + QStringLiteral("comparison"));
    if (index > 0) {  // the first condition's lists are labelled by the column captions
        labelList(*variable, variable->accessibleName());
        labelList(*comparison, comparison->accessibleName());
    }
    text->setAccessibleName(condition + QStringLiteral("text"));
    variables_[index] = variable;
    comparisons_[index] = comparison;
    texts_[index] = text;
    layout.addWidget(variable, gridRow, 0);
    layout.addWidget(comparison, gridRow, 1);
    layout.addWidget(text, gridRow, 2);
}

QWidget* FilterDialog::buildButtons() {
    auto* panel = new QWidget(this);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(8, 0, 0, 0);
    auto* applyButton = new QPushButton(QStringLiteral("&Apply Filter"), panel);
    applyButton->setObjectName(QStringLiteral("btnApply"));
    applyButton->setDefault(true);
    auto* clearButton = new QPushButton(QStringLiteral("&Clear Fields"), panel);
    clearButton->setObjectName(QStringLiteral("btnClear"));
    clearButton->setAutoDefault(false);
    passed_ = new QLCDNumber(kMinimumDigits, panel);
    passed_->setObjectName(QStringLiteral("digNumberPassed"));
    passed_->setSegmentStyle(QLCDNumber::Filled);
    passed_->setMinimumSize(170, 54);
    passed_->setToolTip(QStringLiteral("Tracks passing the filter"));
    layout->addWidget(applyButton);
    layout->addWidget(clearButton);
    layout->addWidget(passed_);
    layout->addStretch(1);
    connect(applyButton, &QPushButton::clicked, this, &FilterDialog::apply);
    connect(clearButton, &QPushButton::clicked, this, &FilterDialog::clearFields);
    return panel;
}

// The comparisons that the chosen variable's type allows, none chosen yet; a time variable
// shows the input hint on its text box.
void FilterDialog::chooseVariable(int index) {
    QComboBox* comparison = comparisons_[index];
    comparison->clear();
    comparison->clearEditText();
    const query::FilterVariable* variable = query::findVariable(variables_[index]->currentText());
    if (variable == nullptr) {
        texts_[index]->setToolTip(QString());
        return;
    }
    const query::ComparisonChoice choice =
        query::fillComparison(variable->kind, session_.state().inputHint);
    comparison->addItems(choice.comparisons);
    comparison->setCurrentIndex(-1);
    texts_[index]->setToolTip(choice.textTooltip);
}

std::array<query::FilterRow, 2> FilterDialog::rows() const {
    std::array<query::FilterRow, 2> rows;
    for (size_t i = 0; i < rows.size(); ++i) {
        rows[i] = {variables_[i]->currentText(), comparisons_[i]->currentText(), texts_[i]->text()};
    }
    return rows;
}

// A validation failure leaves the filter and the source as they were. When no track passes,
// the filter stays in force and the empty source is shown.
void FilterDialog::apply() {
    shell::AppState& state = session_.state();
    query::FilterOutcome outcome;
    try {
        outcome = query::applyFilter(state.database, rows(), concatenation_->currentText(),
                                     state.filterClause, state.album.passedCount);
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
        return;
    }
    showTexts(outcome);
    const bool noTrack = outcome.message == query::kNoTrackMeetsCriteria;
    if (outcome.failed() && !noTrack) {
        dialogs_.exclamation(outcome.message);
        return;
    }
    picker_.requerySource();
    if (noTrack) {
        dialogs_.exclamation(outcome.message);
    }
    showPassed(state.album.passedCount);
}

void FilterDialog::showTexts(const query::FilterOutcome& outcome) {
    for (size_t i = 0; i < texts_.size(); ++i) {
        texts_[i]->setText(outcome.texts[i]);
    }
}

void FilterDialog::showPassed(qint64 count) {
    const QString digits = QString::number(count);
    passed_->setDigitCount(std::max(kMinimumDigits, int(digits.size())));
    passed_->display(digits);
    passed_->setAccessibleName(passed_->toolTip() + QStringLiteral(": ") + digits);
}

// Empties both rows and the concatenation; the filter in force stays until the next Apply.
void FilterDialog::clearFields() {
    for (size_t i = 0; i < variables_.size(); ++i) {
        variables_[i]->setCurrentIndex(-1);
        variables_[i]->clearEditText();
        comparisons_[i]->clear();
        comparisons_[i]->clearEditText();
        texts_[i]->clear();
    }
    refillConcatenation();
}

void FilterDialog::refillConcatenation() {
    concatenation_->clear();
    concatenation_->addItems({QStringLiteral("And"), QStringLiteral("Or")});
    concatenation_->setCurrentIndex(-1);
}

void FilterDialog::done(int result) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QDialog::done(result);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    picker_.resetSourceGotoList();
    QApplication::restoreOverrideCursor();
}

// The first letter typed into an empty variable or comparison list becomes a capital, as the
// entries are written.
bool FilterDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    for (size_t i = 0; i < variables_.size(); ++i) {
        for (QComboBox* list : {variables_[i], comparisons_[i]}) {
            if ((watched != list && watched != list->lineEdit()) ||
                !list->currentText().isEmpty()) {
                continue;
            }
            const auto* key = static_cast<QKeyEvent*>(event);
            const QString upper = upcasedText(*key);
            if (!upper.isEmpty()) {
                QKeyEvent capital(QEvent::KeyPress, key->key(), key->modifiers(), upper,
                                  key->isAutoRepeat(), key->count());
                QApplication::sendEvent(watched, &capital);
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace ui
