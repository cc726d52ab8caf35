#include "ui/windows/compilation_browser_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "engine/jet_error.h"
#include "platform/dialogs.h"
#include "query/date_text.h"
#include "query/goto_lists.h"
#include "query/time_text.h"
#include "shell/navigation.h"
#include "shell/playlist_export.h"
#include "shell/session.h"
#include "store/compilation_queries.h"
#include "store/screen_colours.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/find_panel.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/panel_status_bar.h"
#include "ui/windows/overview_window.h"
#include "ui/windows/screen_colours.h"
#include "ui/windows/track_lookup_window.h"

namespace ui {

namespace {

const QString kKey = QStringLiteral("CompilationID_P");

// A value of the current row as the boxes show it: dates in short form, Null as empty.
QString shownValue(const QVariant& value) {
    if (value.typeId() == QMetaType::QDate) {
        return query::shortDateText(value.toDate());
    }
    return value.isNull() ? QString() : value.toString();
}

}  // namespace

CompilationBrowserWindow::CompilationBrowserWindow(OverviewWindow& main, platform::Dialogs& dialogs)
    : QWidget(&main, Qt::Window),
      main_(main),
      dialogs_(dialogs),
      compilations_(this),
      trackRows_(this) {
    setObjectName(QStringLiteral("frmCompilation"));
    setWindowTitle(QStringLiteral("Compilation Details"));
    setAttribute(Qt::WA_DeleteOnClose);
    compilations_.setObjectName(QStringLiteral("datCompilation01"));
    trackRows_.setObjectName(QStringLiteral("datTrack01"));
    shell::Session& session = main.session();
    shell::followCompilations(compilations_, session);
    shell::followTracks(trackRows_, session, [this] { return tracksOf_; });
    connect(&compilations_, &store::DataControl::currentChanged, this,
            &CompilationBrowserWindow::showCompilation);
    connect(&compilations_, &store::DataControl::rowsReread, this, [this] {
        refillGotoList();
        showListCount();
    });
    buildControls();
    resize(900, 620);
    main.windowRegistry().add(this);
    const engine::Recordset& chosen = main.compilations()->recordset();
    load(chosen.value(kKey).toLongLong());
    orderFocusByLayout(*this);
}

void CompilationBrowserWindow::buildControls() {
    auto* outer = new QVBoxLayout(this);
    auto* body = new QGridLayout;
    tracks_ = new DataGrid(this);
    tracks_->setObjectName(QStringLiteral("grd6Track"));
    tracks_->setAccessibleName(QStringLiteral("Tracks on the compilation"));
    tracks_->setColumns(store::gridColumns(store::GridKind::Compilation));
    tracks_->setDataControl(&trackRows_);
    connect(tracks_, &DataGrid::clicked, this, [this] { toggleSplitState(*tracks_); });
    connect(tracks_, &DataGrid::doubleClicked, this, &CompilationBrowserWindow::showTrackLookup);
    body->addWidget(buildFields(), 0, 0);
    body->addWidget(tracks_, 1, 0);
    body->addWidget(buildSidePanel(), 0, 1, 2, 1);
    body->setRowStretch(1, 1);
    body->setColumnStretch(0, 1);
    outer->addLayout(body, 1);
    statusBar_ = new PanelStatusBar(this);
    statusBar_->setObjectName(QStringLiteral("stbOverview"));
    outer->addWidget(statusBar_);
}

QWidget* CompilationBrowserWindow::buildFields() {
    // The title's mnemonic reaches the name, the box's first field.
    auto* frame = new QGroupBox(QStringLiteral("Selected &Compilation"), this);
    frame->setObjectName(QStringLiteral("fraCompilation"));
    auto* layout = new QGridLayout(frame);
    name_ = new QLineEdit(frame);
    name_->setObjectName(QStringLiteral("txtCompilationName"));
    name_->setReadOnly(true);
    name_->setAccessibleName(QStringLiteral("Compilation name"));
    name_->setToolTip(QStringLiteral("DblClick to Edit"));
    name_->installEventFilter(this);
    boundFields_.emplace_back(name_, QStringLiteral("C_Name"));
    layout->addWidget(name_, 0, 0, 1, 4);
    const struct {
        const char* caption;
        const char* name;
        const char* field;  // empty: written by the window
    } fields[] = {{"&Storage", "txtStorage", "C_Box"},
                  {"F&ormat", "txtFormat", "C_Format"},
                  {"Man&ufacturer", "txtManufacturer", "Manufacturer"},
                  {"Len&gth", "txtLength", "C_Length"},
                  {"Record&ing Date", "txtDate", "RecDate"},
                  {"Trac&k #", "txtTrack", "C_SumTrack"},
                  {"No&tes", "txtNotes", "C_Notes"},
                  {"Total Ti&me", "txtTime", ""}};
    int place = 0;
    for (const auto& field : fields) {
        auto* box = new QLineEdit(frame);
        box->setObjectName(QString::fromLatin1(field.name));
        box->setReadOnly(true);
        const int row = 1 + place / 2;
        const int column = (place % 2) * 2;
        auto* label = new QLabel(QString::fromLatin1(field.caption), frame);
        label->setBuddy(box);
        layout->addWidget(label, row, column);
        layout->addWidget(box, row, column + 1);
        ++place;
        if (*field.field == 0) {
            time_ = box;
        } else {
            boundFields_.emplace_back(box, QString::fromLatin1(field.field));
        }
    }
    layout->setColumnStretch(1, 1);
    layout->setColumnStretch(3, 1);
    colourName();
    return frame;
}

// The name's colours by the screen's colours: highlight colours on screens of at most 256
// colours, else those of a tool tip.
void CompilationBrowserWindow::colourName() {
    const bool few = store::hasFewColours(screenColourCount(*this));
    QPalette palette = name_->palette();
    palette.setColor(QPalette::Base,
                     palette.color(few ? QPalette::Highlight : QPalette::ToolTipBase));
    palette.setColor(QPalette::Text,
                     palette.color(few ? QPalette::HighlightedText : QPalette::WindowText));
    name_->setPalette(palette);
}

QWidget* CompilationBrowserWindow::buildSidePanel() {
    auto* panel = new QWidget(this);
    panel->setFixedWidth(210);
    auto* layout = new QVBoxLayout(panel);
    findPanel_ = new FindPanel(QStringLiteral("Compilation"), QStringLiteral("C"),
                               FindPanel::MoveButtons::Shown, panel);
    findPanel_->setRows(
        &compilations_, [this] { return gotoField_; }, dialogs_);
    layout->addWidget(findPanel_);
    layout->addSpacing(24);
    QPushButton* edit = makeButton(QStringLiteral("&Edit"), QStringLiteral("btnEdit"), panel);
    connect(edit, &QPushButton::clicked, this, &CompilationBrowserWindow::requestEdit);
    layout->addWidget(edit);
    QPushButton* exportButton =
        makeButton(QStringLiteral("Export Pla&ylist..."), QStringLiteral("btnExport"), panel);
    exportButton->setToolTip(
        QStringLiteral("Write the tracks as a playlist (M3U8, XSPF) or a "
                       "CUE sheet for the program that plays or burns them"));
    connect(exportButton, &QPushButton::clicked, this, [this] {
        if (compilationId() >= 0) {
            shell::exportCompilationPlaylist(main_.state().database, compilationId(), dialogs_);
        }
        raise();  // the window manager may have put the main window over this one
        activateWindow();
    });
    layout->addWidget(exportButton);
    layout->addStretch(1);
    return panel;
}

void CompilationBrowserWindow::load(qint64 chosenId) {
    setGeometry(shell::alignedWith(geometry(), main_.geometry()));
    const PanelStatusBar* mainStatus = main_.statusBarPanels();
    statusBar_->setPanelText(1, mainStatus->panelText(1));
    statusBar_->setPanelText(2, mainStatus->panelText(2));
    statusBar_->showPanels();
    shell::AppState& state = main_.state();
    compilations_.setDatabase(state.database);
    store::setRecordSource(QStringLiteral("Compilation"), nullptr, compilations_,
                           state.databasePath);
    compilations_.refresh();
    compilations_.recordset().findFirst(kKey + QStringLiteral("=") + QString::number(chosenId));
    compilations_.notifyCurrentChanged();
    refillGotoList();
    findPanel_->setCaption(QStringLiteral("Compilation Title"));
    showListCount();
    setGridLayout(*tracks_, store::GridKind::Compilation, screenColourCount(*this));
}

qint64 CompilationBrowserWindow::compilationId() {
    if (!compilations_.hasRecordset()) {
        return -1;
    }
    const engine::Recordset& rows = compilations_.recordset();
    return rows.absolutePosition() < 0 ? -1 : rows.value(kKey).toLongLong();
}

// The current compilation's values into the boxes; its tracks follow when it is another one.
void CompilationBrowserWindow::showCompilation() {
    const qint64 id = compilationId();
    for (auto& [box, field] : boundFields_) {
        box->setText(id < 0 ? QString() : shownValue(compilations_.recordset().value(field)));
    }
    const QVariant seconds = id < 0 ? QVariant() : compilations_.recordset().value("C_SumTime");
    time_->setText(seconds.isNull() ? QString() : query::formatTime(seconds.toDouble()));
    if (id != tracksOf_) {
        bindTracks();
    }
}

void CompilationBrowserWindow::bindTracks() {
    tracksOf_ = compilationId();
    trackRows_.setDatabase(main_.state().database);
    try {
        store::setRecordSource(QStringLiteral("CompilationTrack"), &compilations_, trackRows_,
                               main_.state().databasePath);
        trackRows_.refresh();
    } catch (const engine::JetError&) {
        trackRows_.clear();  // no compilation, no tracks
    }
}

void CompilationBrowserWindow::refillGotoList() {
    shell::AppState& state = main_.state();
    const query::GotoLists lists =
        query::fillCompilationGotoList(state.database, gotoField_, state.inputHint);
    findPanel_->showLists(lists);
    gotoCount_ = lists.count;
}

void CompilationBrowserWindow::showListCount() {
    const int count = compilations_.hasRecordset() ? compilations_.recordset().recordCount() : 0;
    statusBar_->setPanelText(2, shell::listCountText(count, gotoCount_));
}

void CompilationBrowserWindow::showTrackLookup() {
    toggleSplitState(*tracks_);
    if (!trackRows_.hasRecordset() || trackRows_.recordset().recordCount() == 0) {
        dialogs_.exclamation(QStringLiteral("No track available."));
        return;
    }
    const engine::Recordset& track = trackRows_.recordset();
    if (track.absolutePosition() < 0) {
        return;
    }
    TrackLookupWindow lookup(main_.state().database,
                             track.value(QStringLiteral("Track_Artist_Name")).toString(),
                             track.value(QStringLiteral("Track_Title")).toString(), false, this);
    lookup.exec();
}

void CompilationBrowserWindow::requestEdit() {
    emit editRequested();
}

bool CompilationBrowserWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == name_ && event->type() == QEvent::MouseButtonDblClick) {
        requestEdit();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void CompilationBrowserWindow::closeEvent(QCloseEvent* event) {
    main_.show();
    main_.raise();
    main_.activateWindow();
    event->accept();
}

}  // namespace ui
