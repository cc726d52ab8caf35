#include "ui/windows/get_songs_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>

#include "assembly/compilation_record.h"
#include "assembly/performer_tree.h"
#include "assembly/track_order.h"
#include "assembly/track_picker.h"
#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "query/filter_clause.h"
#include "query/goto_lists.h"
#include "query/time_text.h"
#include "shell/medium_choices.h"
#include "shell/medium_text.h"
#include "shell/navigation.h"
#include "shell/picker_source.h"
#include "shell/session.h"
#include "store/album_source.h"
#include "store/compilation_queries.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/find_panel.h"
#include "ui/controls/focus_order.h"
#include "ui/windows/filter_dialog.h"
#include "ui/windows/navigator_window.h"
#include "ui/windows/rearrange_window.h"
#include "ui/windows/screen_colours.h"
#include "ui/windows/sort_dialog.h"
#include "ui/windows/track_lookup_window.h"
#include "ui/windows/window_registry.h"

namespace ui {

namespace {

// 0xBBGGRR, as the colour values are kept.
QColor fromBgr(quint32 value) {
    return QColor(int(value & 0xff), int((value >> 8) & 0xff), int((value >> 16) & 0xff));
}

QLineEdit* counterBox(const QString& name, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    return box;
}

// A counter's caption, its mnemonic reaching the counter.
QLabel* counterLabel(const QString& caption, QLineEdit* counter, QWidget* parent) {
    auto* label = new QLabel(caption, parent);
    label->setBuddy(counter);
    return label;
}

// A screen reader reads a counter's meaning with its value: "Tracks: 12".
void showCounter(QLineEdit* counter, const QString& caption, const QString& value) {
    counter->setText(value);
    counter->setAccessibleName(caption + QStringLiteral(": ") + value);
}

// Runs one step of the window's loading: a step that fails leaves its control empty and the
// loading goes on.
template <typename Step>
void loadStep(Step step) {
    try {
        step();
    } catch (const engine::JetError&) {
    }
}

}  // namespace

GetSongsWindow::GetSongsWindow(shell::Session& session, WindowRegistry& registry,
                               platform::Dialogs& dialogs, qint64 compilationId, QWidget* owner)
    : QWidget(owner, Qt::Window),
      session_(session),
      registry_(registry),
      dialogs_(dialogs),
      compilationId_(compilationId),
      owner_(owner),
      sourceRows_(this),
      targetRows_(this) {
    setObjectName(QStringLiteral("frmGetSongs"));
    setWindowTitle(QStringLiteral("Get Tracks"));
    setAttribute(Qt::WA_DeleteOnClose);
    sourceRows_.setObjectName(QStringLiteral("datSource"));
    targetRows_.setObjectName(QStringLiteral("datCompilation01"));
    shell::followDatabaseClosing(sourceRows_, session_);
    shell::followTracks(targetRows_, session_, [this] { return compilationId_; });
    for (auto signal : {&shell::Session::tracksChanged, &shell::Session::compilationChanged}) {
        connect(&session_, signal, this, &GetSongsWindow::followCompilation);
    }
    buildControls();
    resize(1100, 720);
    registry.add(this);
    load();
    orderFocusByLayout(*this);
    source_->setFocus();
}

void GetSongsWindow::buildControls() {
    auto* layout = new QGridLayout(this);
    source_ = new DataGrid(this);
    source_->setObjectName(QStringLiteral("grd6Source"));
    source_->setAccessibleName(QStringLiteral("Album tracks"));
    source_->setColumns(store::gridColumns(store::GridKind::GetSource));
    source_->setDataControl(&sourceRows_);
    target_ = new DataGrid(this);
    target_->setObjectName(QStringLiteral("grd6Target"));
    target_->setAccessibleName(QStringLiteral("Tracks on the compilation"));
    target_->setColumns(store::gridColumns(store::GridKind::GetTarget));
    target_->setDataControl(&targetRows_);
    target_->installEventFilter(this);
    connect(source_, &DataGrid::doubleClicked, this, &GetSongsWindow::addTrack);
    connect(source_, &DataGrid::clicked, this, [this] { toggleSplitState(*source_); });
    connect(source_, &DataGrid::headerClicked, this, [this](int column) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        useGotoColumn(column);
        QApplication::restoreOverrideCursor();
    });
    connect(source_, &DataGrid::rowChanged, this, &GetSongsWindow::showSourcePosition);
    connect(target_, &DataGrid::doubleClicked, this, &GetSongsWindow::removeTrack);
    connect(target_, &DataGrid::clicked, this, [this] { toggleSplitState(*target_); });
    auto* grids = new QSplitter(Qt::Vertical, this);
    grids->addWidget(target_);
    grids->addWidget(source_);
    grids->setStretchFactor(0, 2);
    grids->setStretchFactor(1, 3);
    layout->addWidget(buildCounters(), 0, 0);
    layout->addWidget(grids, 1, 0);
    layout->addWidget(buildSidePanel(), 0, 1, 2, 1);
    layout->setColumnStretch(0, 1);
}

QWidget* GetSongsWindow::buildCounters() {
    auto* frame = new QGroupBox(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* layout = new QHBoxLayout(frame);
    name_ = counterBox(QStringLiteral("txtCompilationName"), frame);
    trackCount_ = counterBox(QStringLiteral("txtTrackCount"), frame);
    timeCount_ = counterBox(QStringLiteral("txtTimeCount"), frame);
    trackCount_->setAlignment(Qt::AlignRight);
    timeCount_->setAlignment(Qt::AlignCenter);
    trackCount_->setFixedWidth(60);
    timeCount_->setFixedWidth(90);
    QFont bold = timeCount_->font();
    bold.setBold(true);
    timeCount_->setFont(bold);
    overTime_ = new QLabel(frame);
    overTime_->setObjectName(QStringLiteral("lblOverTime"));
    layout->addWidget(counterLabel(QStringLiteral("&Compilation:"), name_, frame));
    layout->addWidget(name_, 1);
    layout->addWidget(counterLabel(QStringLiteral("&Tracks:"), trackCount_, frame));
    layout->addWidget(trackCount_);
    layout->addWidget(counterLabel(QStringLiteral("Ti&me:"), timeCount_, frame));
    layout->addWidget(timeCount_);
    layout->addWidget(overTime_);
    return frame;
}

QWidget* GetSongsWindow::buildSidePanel() {
    auto* panel = new QWidget(this);
    panel->setFixedWidth(210);
    auto* layout = new QVBoxLayout(panel);
    findPanel_ = new FindPanel(QStringLiteral("SourceSong"), QStringLiteral("S"),
                               FindPanel::MoveButtons::None, panel);
    findPanel_->setRows(
        &sourceRows_, [this] { return session_.state().sourceGotoField; }, dialogs_);
    layout->addWidget(findPanel_);
    position_ = new QLabel(panel);
    position_->setObjectName(QStringLiteral("digNumberPassed"));
    position_->setAlignment(Qt::AlignCenter);
    position_->setFrameShape(QFrame::StyledPanel);
    QFont digits(QStringLiteral("Monospace"));
    digits.setStyleHint(QFont::Monospace);
    digits.setPointSize(14);
    digits.setBold(true);
    position_->setFont(digits);
    layout->addWidget(position_);
    layout->addSpacing(16);
    const struct {
        const char* caption;
        const char* name;
        void (GetSongsWindow::*open)();
    } tools[] = {{"F&ilter", "btnFilter", &GetSongsWindow::openFilter},
                 {"&Sort", "btnSort", &GetSongsWindow::openSort},
                 {"Na&vigate", "btnNavigation", &GetSongsWindow::openNavigator},
                 {"&Rearrange", "btnReArrange", &GetSongsWindow::openRearrange}};
    for (const auto& tool : tools) {
        QPushButton* button =
            makeButton(QString::fromLatin1(tool.caption), QString::fromLatin1(tool.name), panel);
        connect(button, &QPushButton::clicked, this, tool.open);
        layout->addWidget(button);
        if (button->objectName() == QLatin1String("btnReArrange")) {
            rearrange_ = button;
        }
    }
    layout->addSpacing(16);
    layout->addWidget(buildMediumPanel(panel));
    layout->addStretch(1);
    return panel;
}

QWidget* GetSongsWindow::buildMediumPanel(QWidget* parent) {
    auto* panel = new QGroupBox(tr("Medium"), parent);
    panel->setObjectName(QStringLiteral("fraMedium"));
    auto* layout = new QVBoxLayout(panel);
    mdMode_ = new QComboBox;
    mdMode_->setObjectName(QStringLiteral("cmbMdMode"));
    for (const medium::MdMode mode : medium::kMdModes) {
        mdMode_->addItem(medium::mdModeName(mode));
    }
    mdModeRow_ = new QWidget(panel);
    auto* modeLabel = new QLabel(tr("Rec&orded in:"), mdModeRow_);
    modeLabel->setBuddy(mdMode_);
    auto* modeRow = new QHBoxLayout(mdModeRow_);
    modeRow->setContentsMargins(0, 0, 0, 0);
    modeRow->addWidget(modeLabel);
    modeRow->addWidget(mdMode_, 1);
    layout->addWidget(mdModeRow_);
    balance_ = makeButton(tr("&Balance Sides"), QStringLiteral("btnBalance"), panel);
    balance_->setToolTip(
        tr("Renumber the tracks so that the sides are as even as they can be, "
           "each side in its running order"));
    layout->addWidget(balance_);
    mediumFit_ = new QLabel(panel);
    mediumFit_->setObjectName(QStringLiteral("lblMediumFit"));
    mediumFit_->setWordWrap(true);
    // Tab reaches it, so that a screen reader reads it as it reads the time.
    mediumFit_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    mediumFit_->setFocusPolicy(Qt::TabFocus);
    layout->addWidget(mediumFit_);
    connect(mdMode_, &QComboBox::activated, this, &GetSongsWindow::chooseMdMode);
    connect(balance_, &QPushButton::clicked, this, &GetSongsWindow::balanceSides);
    medium_ = panel;
    return panel;
}

// The loading sequence; without a source it stops, otherwise every step that fails is skipped
// and the next one runs.
void GetSongsWindow::load() {
    if (owner_ != nullptr) {
        setGeometry(shell::alignedWith(geometry(), owner_->geometry()));
    }
    sourceBuilt_ = buildSource();
    if (!sourceBuilt_) {
        return;
    }
    loadStep([this] { bindSource(); });
    loadStep([this] { readCompilation(); });
    loadStep([this] { bindTarget(); });
    loadStep([this] { useGotoColumn(0); });
    const double colours = screenColourCount(*this);
    setGridLayout(*source_, store::GridKind::GetSource, colours);
    setGridLayout(*target_, store::GridKind::GetTarget, colours);
    setColor();
    loadStep([this] { showMediumFit(); });
    position_->setStyleSheet(
        QStringLiteral("color: %1").arg(shell::positionColour(colours).name()));
    if (owner_ != nullptr) {
        owner_->hide();
    }
    activateRearrange();
    showSourcePosition();
}

// A new TempSource under the filter and sort of an earlier opening, which stay in force. A
// source that cannot be built leaves the window unshown: no rows of an earlier album database.
bool GetSongsWindow::buildSource() {
    try {
        shell::buildPickerSource(session_.state());
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
        return false;
    }
    return true;
}

void GetSongsWindow::bindSource() {
    shell::AppState& state = session_.state();
    sourceRows_.setDatabase(state.database);
    sourceRows_.setDatabaseName(state.databasePath);
    const bool plain = state.filterClause.isEmpty() && state.sortClause.isEmpty();
    sourceRows_.setRecordSource(
        plain ? assembly::kPlainSource
              : query::sourceRecordSource(state.filterClause, state.sortClause));
    sourceRows_.refresh();
}

void GetSongsWindow::bindTarget() {
    targetRows_.setDatabase(session_.database());
    targetRows_.setDatabaseName(session_.state().databasePath);
    targetRows_.setRecordSource(
        store::standardStatement(QStringLiteral("compilationtrack"), compilationId_));
    targetRows_.refresh();
}

void GetSongsWindow::readCompilation() {
    shown_ = assembly::readCompilation(session_.database(), compilationId_);
    showCounter(name_, QStringLiteral("Compilation"), shown_.name);
    showCounter(trackCount_, QStringLiteral("Tracks"), QString::number(shown_.stored.trackCount));
    showCounter(timeCount_, QStringLiteral("Time"),
                query::formatTime(double(shown_.stored.totalTime)));
}

// Red when the time no longer fits on the medium, else green; the excess is also said in words.
void GetSongsWindow::setColor() {
    const qint64 total = shown_.stored.totalTime;
    const int tracks = shown_.stored.trackCount;
    const quint32 colour = assembly::timeColour(total, shown_.lengthMinutes, tracks);
    QPalette palette = timeCount_->palette();
    palette.setColor(QPalette::Text, fromBgr(colour));
    timeCount_->setPalette(palette);
    const bool over = assembly::exceedsMedium(total, shown_.lengthMinutes, tracks);
    const qint64 excess = total - assembly::timeCapacity(shown_.lengthMinutes, tracks);
    overTime_->setText(over ? QStringLiteral("over by ") + query::formatTime(double(excess))
                            : QString());
    overTime_->setVisible(over);
    const QString time = QStringLiteral("Time: ") + timeCount_->text();
    timeCount_->setAccessibleName(over ? time + QStringLiteral(", ") + overTime_->text() : time);
}

void GetSongsWindow::activateRearrange() {
    rearrange_->setEnabled(assembly::rearrangeEnabled(trackCount_->text().toInt()));
}

// The compilation's tracks or values changed (here or elsewhere): the counters follow.
void GetSongsWindow::followCompilation(qint64 id) {
    if (id != compilationId_) {
        return;
    }
    loadStep([this] { readCompilation(); });
    setColor();
    loadStep([this] { showMediumFit(); });
    activateRearrange();
}

// The lines of the medium model for the compilation's format; the panel is hidden for a format
// that has only the capacity rule.
void GetSongsWindow::showMediumFit() {
    const shell::MediumKind kind = shell::mediumKindOf(shown_.format);
    medium_->setVisible(kind != shell::MediumKind::Other);
    const bool miniDisc = kind == shell::MediumKind::MiniDisc;
    mdModeRow_->setVisible(miniDisc);
    balance_->setVisible(kind == shell::MediumKind::Cassette);
    const std::optional<medium::MdMode> chosen =
        miniDisc ? shell::chosenMdMode(session_.state().databasePath, compilationId_)
                 : std::nullopt;
    mdMode_->setCurrentIndex(chosen ? mdMode_->findText(medium::mdModeName(*chosen)) : -1);
    const QStringList lines =
        shell::mediumFitLines(shown_.format, shown_.lengthMinutes,
                              shell::mediumTracks(session_.database(), compilationId_), chosen);
    mediumFit_->setText(lines.join(QLatin1Char('\n')));
    mediumFit_->setAccessibleName(tr("Medium: ") + lines.join(QStringLiteral("; ")));
}

void GetSongsWindow::chooseMdMode(int entry) {
    const std::optional<medium::MdMode> mode = medium::mdModeNamed(mdMode_->itemText(entry));
    if (mode && !shell::storeMdMode(session_.state().databasePath, compilationId_, *mode)) {
        dialogs_.exclamation(
            tr("The mode could not be kept: the settings file cannot be "
               "written."));
    }
    loadStep([this] { showMediumFit(); });
}

// One step, as every renumbering: the tracks and the windows that show them follow.
void GetSongsWindow::balanceSides() {
    try {
        if (!assembly::renumberBalanced(session_.database(), compilationId_,
                                        shown_.lengthMinutes)) {
            dialogs_.exclamation(shell::kTracksFitNoSides);
            return;
        }
        session_.announceTracksChanged(compilationId_);
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
}

void GetSongsWindow::useGotoColumn(int column) {
    if (column < 0 || column >= source_->columnCount()) {
        return;
    }
    shell::AppState& state = session_.state();
    state.sourceGotoField = query::gotoFieldForColumn(source_->columnDataField(column));
    findPanel_->showLists(query::fillSourceGotoList(state.database, state.sourceGotoField,
                                                    state.filterClause, state.inputHint));
    findPanel_->setCaption(source_->columnCaption(column));
}

void GetSongsWindow::showSourcePosition() {
    const int position =
        sourceRows_.hasRecordset() ? sourceRows_.recordset().absolutePosition() : -1;
    const qint64 passed = session_.state().album.passedCount;
    position_->setText(assembly::sourcePositionText(position, passed));
    position_->setAccessibleName(
        shell::positionSentence(QStringLiteral("Album track"), position + 1, passed));
}

void GetSongsWindow::addTrack() {
    if (!sourceRows_.hasRecordset() || sourceRows_.recordset().absolutePosition() < 0) {
        return;
    }
    try {
        const assembly::SourceTrack track = assembly::sourceTrackAt(sourceRows_.recordset());
        const assembly::AddResult result =
            assembly::addTrack(session_.database(), compilationId_, track, [&](engine::Recordset&) {
                return confirmRecorded(track.performerTrack.toString(),
                                       track.titleTrack.toString());
            });
        if (result.added) {
            session_.announceTracksChanged(compilationId_);
            target_->scrollToBottom();
        }
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
        return;
    }
    toggleSplitState(*source_);
}

// The lookup of the compilations that hold the track already: only its OK adds the track.
bool GetSongsWindow::confirmRecorded(const QString& performer, const QString& title) {
    TrackLookupWindow lookup(session_.database(), performer, title, true, this);
    return lookup.exec() == QDialog::Accepted && !lookup.addCancelled();
}

void GetSongsWindow::removeTrack() {
    if (!targetRows_.hasRecordset() || targetRows_.recordset().absolutePosition() < 0) {
        return;
    }
    const platform::MessageAnswer answer =
        dialogs_.message({platform::kAppTitle, QStringLiteral("Delete track. Are you sure?"),
                          platform::MessageIcon::Question, platform::MessageButtons::OkCancel,
                          platform::MessageAnswer::Ok});
    if (answer == platform::MessageAnswer::Ok) {
        try {
            const int trackNo = targetRows_.recordset().value(QStringLiteral("TrackNo")).toInt();
            assembly::removeTrack(session_.database(), compilationId_, trackNo);
            session_.announceTracksChanged(compilationId_);
        } catch (const engine::JetError& error) {
            dialogs_.exclamation(error.description());
        }
    }
    toggleSplitState(*target_);
}

void GetSongsWindow::requerySource() {
    const shell::AppState& state = session_.state();
    sourceRows_.setRecordSource(query::sourceRecordSource(state.filterClause, state.sortClause));
    sourceRows_.refresh();
    showSourcePosition();
}

void GetSongsWindow::resetSourceGotoList() {
    loadStep([this] { useGotoColumn(0); });
}

bool GetSongsWindow::moveSourceTo(const QString& criterion) {
    if (!sourceRows_.hasRecordset()) {
        return false;
    }
    engine::Recordset& rows = sourceRows_.recordset();
    rows.findFirst(criterion);
    if (rows.noMatch()) {
        return false;
    }
    sourceRows_.notifyCurrentChanged();
    return true;
}

void GetSongsWindow::closeNavigator() {
    if (navigator_ != nullptr) {
        navigator_->close();
    }
}

void GetSongsWindow::openFilter() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    closeNavigator();
    FilterDialog filter(session_, dialogs_, *this);
    filter.exec();
}

void GetSongsWindow::openSort() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    SortDialog dialog(
        query::SortCaller::Source,
        [this](const QString& orderText) {
            session_.state().sortClause = query::sourceSortClause(orderText);
            requerySource();
        },
        dialogs_, this);
    QApplication::restoreOverrideCursor();
    dialog.exec();
}

// One navigator at a time: a second click brings the open one to the front.
void GetSongsWindow::openNavigator() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (navigator_ == nullptr) {
        navigator_ = new NavigatorWindow(session_, registry_, dialogs_, *this);
    }
    navigator_->show();
    navigator_->raise();
    navigator_->activateWindow();
    QApplication::restoreOverrideCursor();
}

void GetSongsWindow::openRearrange() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    closeNavigator();
    auto* rearrange = new RearrangeWindow(session_, registry_, dialogs_, compilationId_, this);
    rearrange->show();
    QApplication::restoreOverrideCursor();
}

bool GetSongsWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == target_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        removeTrack();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void GetSongsWindow::closeEvent(QCloseEvent* event) {
    if (owner_ != nullptr) {
        owner_->show();
    }
    event->accept();
}

}  // namespace ui
