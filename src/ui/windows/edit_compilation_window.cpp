#include "ui/windows/edit_compilation_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

#include "assembly/cover_composer.h"
#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "shell/navigation.h"
#include "shell/session.h"
#include "store/album_source.h"
#include "store/screen_colours.h"
#include "ui/controls/cover_text_box.h"
#include "ui/controls/focus_order.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/overview_window.h"

namespace ui {

namespace {

constexpr int kWidthTwips = 9230;
const QStringList kGetCaptions{"&Performer", "Perf | &Album", "Perf | &Song"};
const QStringList kSortCaptions{"T&ime (decreasing)", "P&erformer, Album"};
constexpr assembly::CoverMode kGetModes[] = {assembly::CoverMode::Performer,
                                             assembly::CoverMode::PerformerAlbum,
                                             assembly::CoverMode::PerformerSong};

template <typename T>
T* named(T* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

QComboBox* valueCombo(const QString& name, bool editable, QWidget* parent) {
    auto* combo = named(new QComboBox(parent), name);
    combo->setEditable(editable);
    combo->setInsertPolicy(QComboBox::NoInsert);
    return combo;
}

// A list combo shows a stored value even when the list lacks it.
void showComboText(QComboBox* combo, const QString& text) {
    if (combo->isEditable()) {
        combo->setEditText(text);
        return;
    }
    int index = combo->findText(text, Qt::MatchFixedString);
    if (index < 0 && !text.isEmpty()) {
        combo->addItem(text);
        index = combo->count() - 1;
    }
    combo->setCurrentIndex(index);
}

void fill(QComboBox* combo, const QStringList& entries) {
    const QString shown = combo->currentText();
    combo->clear();
    combo->addItems(entries);
    showComboText(combo, shown);
}

// The main window is the root of every window the program opens.
OverviewWindow* mainWindowOf(QWidget* window) {
    for (QWidget* widget = window; widget != nullptr; widget = widget->parentWidget()) {
        if (auto* main = qobject_cast<OverviewWindow*>(widget)) {
            return main;
        }
    }
    return nullptr;
}

double screenColourCount(const QWidget* widget) {
    const QScreen* screen =
        widget->screen() != nullptr ? widget->screen() : QGuiApplication::primaryScreen();
    return shell::colourCount(screen != nullptr ? screen->depth() : 24);
}

}  // namespace

FieldColours requiredFieldColours(double colourCount, const QPalette& system) {
    if (store::hasFewColours(colourCount)) {
        return {system.color(QPalette::Highlight), system.color(QPalette::HighlightedText)};
    }
    return {system.color(QPalette::ToolTipBase), system.color(QPalette::WindowText)};
}

EditCompilationWindow::EditCompilationWindow(shell::Session& session, platform::Dialogs& dialogs,
                                             QWidget* opener, assembly::EditorMode mode,
                                             std::optional<qint64> currentId)
    : QWidget(opener, Qt::Window),
      session_(session),
      dialogs_(dialogs),
      opener_(opener),
      mode_(mode),
      editor_(session.database()) {
    setObjectName(QStringLiteral("frmEditCompilation"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Edit Compilation"));
    buildControls();
    load(currentId);
    orderFocusByLayout(*this);
    name_->setFocus();
}

void EditCompilationWindow::buildControls() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(buildFieldsFrame());
    layout->addWidget(buildCoverFrame(), 1);
}

QWidget* EditCompilationWindow::buildFieldsFrame() {
    auto* frame = named(new QGroupBox(QStringLiteral("Selected Compilation"), this),
                        QStringLiteral("frmSelectedCompilation"));
    auto* grid = new QGridLayout(frame);
    name_ = named(new QLineEdit(frame), QStringLiteral("txtCompilationName"));
    name_->setMaxLength(assembly::kNameLength);
    format_ = valueCombo(QStringLiteral("tdbCmbFmt"), false, frame);
    length_ = valueCombo(QStringLiteral("tdbCmbLen"), false, frame);
    manufacturer_ = valueCombo(QStringLiteral("tdbCmbMan"), true, frame);
    storage_ = named(new QLineEdit(frame), QStringLiteral("txtStorage"));
    storage_->setMaxLength(assembly::kStorageLength);
    date_ = named(new QLineEdit(frame), QStringLiteral("TDBDateRecording"));
    date_->setInputMask(QStringLiteral("99.99.99;_"));
    notes_ = named(new QLineEdit(frame), QStringLiteral("txtNotes"));
    struct Field {
        const char* caption;
        const char* labelName;
        QWidget* control;
    };
    const Field fields[] = {
        {"&Name", "lblCompilationName", name_}, {"Fo&rmat", "lblFormat", format_},
        {"&Length", "lblLength", length_},      {"&Manufacturer", "lblManufacturer", manufacturer_},
        {"S&torage", "lblStorage", storage_},   {"Recording &Date", "lblDate", date_},
        {"N&otes", "lblNotes", notes_}};
    int row = 0;
    for (const Field& field : fields) {
        auto* label = named(new QLabel(QString::fromLatin1(field.caption), frame),
                            QString::fromLatin1(field.labelName));
        label->setBuddy(field.control);
        grid->addWidget(label, row, 0);
        grid->addWidget(field.control, row++, 1);
    }
    updateButton_ =
        named(new QPushButton(QStringLiteral("&Update"), frame), QStringLiteral("btnUpdate"));
    connectButton_ =
        named(new QPushButton(QStringLiteral("&Connect"), frame), QStringLiteral("btnConnect"));
    getTracksButton_ =
        named(new QPushButton(QStringLiteral("&Get Tracks"), frame), QStringLiteral("BtnGetSongs"));
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {updateButton_, connectButton_, getTracksButton_}) {
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    grid->addLayout(buttons, 0, 2, row, 1);
    grid->setColumnStretch(1, 1);
    connectFieldEvents();
    return frame;
}

void EditCompilationWindow::connectFieldEvents() {
    connect(updateButton_, &QPushButton::clicked, this, &EditCompilationWindow::update);
    connect(connectButton_, &QPushButton::clicked, this, &EditCompilationWindow::connectAlbum);
    connect(getTracksButton_, &QPushButton::clicked, this, &EditCompilationWindow::getTracks);
    for (QLineEdit* box : {name_, storage_, date_, notes_}) {
        connect(box, &QLineEdit::textEdited, this, &EditCompilationWindow::fieldEdited);
    }
    connect(format_, &QComboBox::activated, this, &EditCompilationWindow::formatEdited);
    connect(length_, &QComboBox::activated, this, &EditCompilationWindow::fieldEdited);
    connect(manufacturer_, &QComboBox::activated, this, &EditCompilationWindow::fieldEdited);
    connect(manufacturer_->lineEdit(), &QLineEdit::textEdited, this,
            &EditCompilationWindow::fieldEdited);
    // Leaving the list or pressing Enter with a name it lacks asks to add the name.
    connect(manufacturer_->lineEdit(), &QLineEdit::editingFinished, this,
            &EditCompilationWindow::offerManufacturer);
}

QWidget* EditCompilationWindow::buildCoverFrame() {
    auto* panel = new QWidget(this);
    auto* layout = new QGridLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    cover_ = new CoverTextBox(panel);
    auto* coverLabel =
        named(new QLabel(QStringLiteral("Co&ver"), panel), QStringLiteral("lblCover"));
    coverLabel->setBuddy(cover_);
    cover_->installEventFilter(this);
    connect(cover_, &CoverTextBox::textChanged, this, &EditCompilationWindow::fieldEdited);

    auto* frame =
        named(new QGroupBox(QStringLiteral("Retrieve && Sort"), panel), QStringLiteral("frmSort"));
    auto* frameLayout = new QVBoxLayout(frame);
    for (int i = 0; i < 3; ++i) {
        getButtons_[i] =
            named(new QPushButton(kGetCaptions[i], frame), QStringLiteral("btnGet%1").arg(i));
        connect(getButtons_[i], &QPushButton::clicked, this, [this, i] { composeCover(i); });
        frameLayout->addWidget(getButtons_[i]);
    }
    for (int i = 0; i < 2; ++i) {
        sortOptions_[i] =
            named(new QRadioButton(kSortCaptions[i], frame), QStringLiteral("optSort%1").arg(i));
        frameLayout->addWidget(sortOptions_[i]);
    }
    fontButton_ =
        named(new QPushButton(QStringLiteral("&Font ..."), panel), QStringLiteral("btnFontDialog"));
    copyButton_ = named(new QPushButton(QStringLiteral("Copy to Clip&board"), panel),
                        QStringLiteral("btnCopy2Clip"));
    connect(fontButton_, &QPushButton::clicked, this, [this] { cover_->chooseFont(dialogs_); });
    connect(copyButton_, &QPushButton::clicked, this, [this] { cover_->copyToClipboard(); });

    layout->addWidget(coverLabel, 0, 0);
    layout->addWidget(cover_, 1, 0, 4, 1);
    layout->addWidget(frame, 1, 1);
    layout->addWidget(fontButton_, 2, 1);
    layout->addWidget(copyButton_, 3, 1);
    layout->setRowStretch(4, 1);
    layout->setColumnStretch(0, 1);
    return panel;
}

void EditCompilationWindow::fillValueLists() {
    fill(format_, assembly::valueList(editor_.database(), assembly::ValueList::Format));
    fill(length_, assembly::valueList(editor_.database(), assembly::ValueList::Length));
    fill(manufacturer_, assembly::valueList(editor_.database(), assembly::ValueList::Manufacturer));
}

// Load: a step that fails is passed over and loading goes on.
void EditCompilationWindow::load(std::optional<qint64> currentId) {
    if (opener_ != nullptr) {
        opener_->hide();
    }
    try {
        fillValueLists();
    } catch (const engine::JetError&) {
        // The lists stay empty; typed values are still checked by Update.
    }
    try {
        editor_.loadEditor(mode_, currentId);
    } catch (const engine::JetError&) {
        // The controls keep what they show.
    }
    showValues();
    // Activating the window sets the cover controls again, as tracks may have come meanwhile.
    setCoverControls();
    showGetTracksState();
    resize(shell::twipsToPixels(kWidthTwips), sizeHint().height());
    if (opener_ != nullptr) {
        move(opener_->pos());
    }
    markRequiredFields();
}

void EditCompilationWindow::showValues() {
    const assembly::EditorValues& values = editor_.values;
    showingValues_ = true;
    name_->setText(values.name);
    notes_->setText(values.notes);
    storage_->setText(values.storage);
    showComboText(format_, values.format);
    showComboText(length_, values.length);
    showComboText(manufacturer_, values.manufacturer);
    date_->setText(values.dateText == assembly::kEmptyDateMask ? QString() : values.dateText);
    // A composed cover is plain text: it takes the format's default font.
    cover_->setStoredText(QString());
    cover_->setDefaultFont(values.format);
    cover_->setStoredText(values.cover);
    showingValues_ = false;
}

void EditCompilationWindow::readValues() {
    assembly::EditorValues& values = editor_.values;
    values.name = name_->text();
    values.notes = notes_->text();
    values.storage = storage_->text();
    values.format = format_->currentText();
    values.length = length_->currentText();
    values.manufacturer = manufacturer_->currentText();
    values.dateText = date_->displayText();
    values.cover = cover_->storedText();
}

void EditCompilationWindow::markRequiredFields() {
    const FieldColours colours = requiredFieldColours(screenColourCount(this), palette());
    for (QWidget* field : {static_cast<QWidget*>(format_), static_cast<QWidget*>(length_),
                           static_cast<QWidget*>(name_)}) {
        QPalette marked = field->palette();
        for (QPalette::ColorRole back : {QPalette::Base, QPalette::Button}) {
            marked.setColor(back, colours.back);
        }
        for (QPalette::ColorRole fore : {QPalette::Text, QPalette::ButtonText}) {
            marked.setColor(fore, colours.fore);
        }
        field->setPalette(marked);
    }
}

bool EditCompilationWindow::update() {
    readValues();
    const bool wasNew = editor_.isNew();
    const assembly::UpdateOutcome outcome = editor_.updateCompilation(dialogs_);
    if (outcome.saved()) {
        const qint64 id = *editor_.compilationId();
        if (wasNew) {
            session_.announceCompilationAdded(id);
        } else {
            session_.announceCompilationChanged(id);
        }
        setCoverControls();
    }
    showGetTracksState();
    return outcome.saved();
}

void EditCompilationWindow::setCoverControls() {
    const assembly::CoverControls controls =
        editor_.setCoverControls(cover_->toPlainText().isEmpty(), sortOptions_[1]->isChecked());
    for (int i = 0; i < 3; ++i) {
        getButtons_[i]->setEnabled(controls.getEnabled[i]);
    }
    for (QRadioButton* option : sortOptions_) {
        option->setEnabled(controls.sortEnabled);
    }
    if (controls.chooseTimeOrder) {
        sortOptions_[0]->setChecked(true);
    }
    fontButton_->setEnabled(controls.fontEnabled);
    copyButton_->setEnabled(controls.copyEnabled);
    if (controls.resetCover) {
        showingValues_ = true;
        cover_->setStoredText(QString());
        cover_->setDefaultFont(format_->currentText());
        showingValues_ = false;
    }
}

void EditCompilationWindow::fieldEdited() {
    if (showingValues_) {
        return;
    }
    editor_.fieldEdited();
    showGetTracksState();
}

// Another format may change which covers can be composed: none until the next Update.
void EditCompilationWindow::formatEdited() {
    fieldEdited();
    for (QPushButton* button : getButtons_) {
        button->setEnabled(false);
    }
    for (QRadioButton* option : sortOptions_) {
        option->setEnabled(false);
    }
}

void EditCompilationWindow::showGetTracksState() {
    getTracksButton_->setEnabled(editor_.getTracksEnabled());
}

void EditCompilationWindow::offerManufacturer() {
    const QString typed = manufacturer_->currentText();
    if (askingManufacturer_ || typed.isEmpty()) {
        return;
    }
    askingManufacturer_ = true;  // the question takes the focus away: no second question
    try {
        if (!assembly::isListedManufacturer(editor_.database(), typed)) {
            if (assembly::offerManufacturer(editor_.database(), dialogs_, typed)) {
                fill(manufacturer_,
                     assembly::valueList(editor_.database(), assembly::ValueList::Manufacturer));
                manufacturer_->setEditText(typed);
            } else {
                manufacturer_->setEditText(QString());
            }
        }
    } catch (const engine::JetError&) {
        // The list stays as it was; the typed name is still written by Update.
    }
    askingManufacturer_ = false;
}

void EditCompilationWindow::connectAlbum() {
    store::connectAlbumDatabase(editor_.database(), dialogs_, session_.state().album,
                                editor_.connection());
    showGetTracksState();
}

void EditCompilationWindow::getTracks() {
    if (!editor_.compilationId()) {
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    repaint();
    emit getTracksRequested(*editor_.compilationId());
    QApplication::restoreOverrideCursor();
}

void EditCompilationWindow::composeCover(int button) {
    if (!editor_.compilationId()) {
        return;
    }
    const QString format = format_->currentText();
    const bool editedBefore = editor_.hasUnstoredEdits();
    try {
        const assembly::ComposedCover composed =
            assembly::retrieveCoverData(editor_.database(), *editor_.compilationId(),
                                        kGetModes[button], format, sortOptions_[0]->isChecked());
        session_.announceCompilationChanged(*editor_.compilationId());
        cover_->setStoredText(QString());
        cover_->setDefaultFont(format);
        cover_->setStoredText(composed.text);
        if (composed.setsParagraphs) {
            cover_->setHangingIndent(composed.hangingIndentTwips, assembly::kCoverTabStopTwips);
        }
        CoverTextBox::BoldRanges bold;
        for (const assembly::BoldRange& range : composed.bold) {
            bold.emplace_back(range.start, range.length);
        }
        cover_->boldPerformers(bold);
        editor_.coverComposed(editedBefore);
    } catch (const engine::JetError&) {
        // The cover stays as it was.
    }
    setCoverControls();
}

void EditCompilationWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        setCoverControls();
    }
    QWidget::changeEvent(event);
}

bool EditCompilationWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == cover_ && event->type() == QEvent::FocusOut) {
        setCoverControls();
    }
    return QWidget::eventFilter(watched, event);
}

// Edits not stored are lost on closing: the user is asked first, unless every window closes
// with the database.
bool EditCompilationWindow::closeWithoutStoring() {
    OverviewWindow* main = mainWindowOf(opener_);
    if (!editor_.hasUnstoredEdits() || (main != nullptr && main->windowRegistry().closingAll())) {
        return true;
    }
    return dialogs_.message({platform::kAppTitle, assembly::kDiscardEditsQuestion,
                             platform::MessageIcon::Question, platform::MessageButtons::YesNo,
                             platform::MessageAnswer::No}) == platform::MessageAnswer::Yes;
}

// Unload: what the editor stored has been announced already, so the lists show it; the opener
// comes back.
void EditCompilationWindow::closeEvent(QCloseEvent* event) {
    if (!closeWithoutStoring()) {
        event->ignore();
        return;
    }
    std::optional<qint64> added;
    if (mode_ == assembly::EditorMode::Add && !editor_.isNew()) {
        added = editor_.compilationId();
    }
    emit unloaded(added);
    if (opener_ != nullptr) {
        opener_->show();
    }
    event->accept();
}

EditCompilationWindow* openCompilationEditor(shell::Session& session, platform::Dialogs& dialogs,
                                             QWidget* opener, assembly::EditorMode mode,
                                             std::optional<qint64> currentId) {
    auto* editor = new EditCompilationWindow(session, dialogs, opener, mode, currentId);
    if (OverviewWindow* main = mainWindowOf(opener)) {
        main->windowRegistry().add(editor);
        QObject::connect(editor, &EditCompilationWindow::unloaded, main,
                         &OverviewWindow::showEditorResult);
        QObject::connect(editor, &EditCompilationWindow::getTracksRequested, editor,
                         [&session, &dialogs, main, editor](qint64 compilationId) {
                             auto* picker = new GetSongsWindow(session, main->windowRegistry(),
                                                               dialogs, compilationId, editor);
                             if (picker->sourceBuilt()) {
                                 picker->show();
                             } else {
                                 picker->deleteLater();
                             }
                         });
    }
    editor->show();
    return editor;
}

}  // namespace ui
