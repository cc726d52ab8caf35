#include "ui/windows/overview_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QStackedWidget>

#include "assembly/compilation_record.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/dialogs.h"
#include "query/goto_lists.h"
#include "report_engine/report_error.h"
#include "reports/list_sources.h"
#include "shell/navigation.h"
#include "shell/toolbar_tools.h"
#include "store/album_source.h"
#include "store/compilation_queries.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/find_panel.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/main_toolbar.h"
#include "ui/controls/panel_status_bar.h"
#include "ui/windows/compilation_browser_window.h"
#include "ui/windows/cover_viewer.h"
#include "ui/windows/edit_compilation_window.h"
#include "ui/windows/help_window.h"
#include "ui/windows/intro_page.h"
#include "ui/windows/report_preview_window.h"
#include "ui/windows/screen_colours.h"

namespace ui {

OverviewWindow::OverviewWindow(platform::Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent), dialogs_(dialogs), windows_(session_), compilations_(this) {
    setObjectName(QStringLiteral("frmOverview"));
    compilations_.setObjectName(QStringLiteral("datCompilation01"));
    shell::followCompilations(compilations_, session_);
    connect(&compilations_, &store::DataControl::rowsReread, this,
            &OverviewWindow::showFollowedRows);
    setWindowTitle(QStringLiteral("Mixorama"));
    buildControls();
    resize(1220, 700);
    move(shell::twipsToPixels(1000), 0);
    statusBar_->setSimpleText(shell::kStatusHint);
    showDatabaseState(false);
    orderFocusByLayout(*this);
}

OverviewWindow::~OverviewWindow() {
    unloadAll();
}

void OverviewWindow::buildControls() {
    toolBar_ = new MainToolBar(this);
    addToolBar(Qt::TopToolBarArea, toolBar_);
    connect(toolBar_, &MainToolBar::toolClicked, this, &OverviewWindow::runTool);
    statusBar_ = new PanelStatusBar(this);
    statusBar_->setObjectName(QStringLiteral("stbOverview"));
    setStatusBar(statusBar_);
    auto* pages = new QStackedWidget(this);
    introPage_ = buildIntroPage(this);
    listPage_ = buildListPage();
    pages->addWidget(introPage_);
    pages->addWidget(listPage_);
    setCentralWidget(pages);
}

QWidget* OverviewWindow::buildListPage() {
    auto* page = new QWidget(this);
    auto* layout = new QHBoxLayout(page);
    grid_ = new DataGrid(page);
    grid_->setObjectName(QStringLiteral("grd6Compilation"));
    grid_->setAccessibleName(QStringLiteral("Compilations"));
    grid_->setDataControl(&compilations_);
    grid_->setColumns(store::gridColumns(store::GridKind::Overview));
    connect(grid_, &DataGrid::headerClicked, this, &OverviewWindow::onHeaderClicked);
    connect(grid_, &DataGrid::rowChanged, this, &OverviewWindow::showPosition);
    connect(grid_, &DataGrid::doubleClicked, this, &OverviewWindow::onGridDoubleClicked);
    layout->addWidget(grid_, 1);
    layout->addWidget(buildSidePanel());
    return page;
}

QWidget* OverviewWindow::buildSidePanel() {
    auto* panel = new QWidget(this);
    panel->setFixedWidth(210);
    auto* layout = new QVBoxLayout(panel);
    findPanel_ = new FindPanel(QStringLiteral("Compilation"), QStringLiteral("C"),
                               FindPanel::MoveButtons::Shown, panel);
    findPanel_->setRows(
        &compilations_, [this] { return state().gotoField; }, dialogs_);
    layout->addWidget(findPanel_);
    position_ = new QLabel(panel);
    position_->setObjectName(QStringLiteral("digActualGridPos"));
    position_->setAlignment(Qt::AlignCenter);
    QFont digits(QStringLiteral("Monospace"));
    digits.setStyleHint(QFont::Monospace);
    digits.setPointSize(16);
    digits.setBold(true);
    position_->setFont(digits);
    position_->setFrameShape(QFrame::StyledPanel);
    layout->addWidget(position_);
    layout->addStretch(1);
    return panel;
}

void OverviewWindow::showDatabaseState(bool isOpen) {
    for (QWidget* widget : {static_cast<QWidget*>(findPanel_), static_cast<QWidget*>(grid_),
                            static_cast<QWidget*>(position_)}) {
        widget->setVisible(isOpen);
    }
    static_cast<QStackedWidget*>(centralWidget())
        ->setCurrentWidget(isOpen ? listPage_ : introPage_);
    for (const QString& id : shell::toolsForOpenDatabase()) {
        toolBar_->setToolEnabled(id, isOpen);
    }
    for (const QString& id : shell::toolsForClosedDatabase()) {
        toolBar_->setToolEnabled(id, !isOpen);
    }
}

bool OverviewWindow::loadDatabase(const QString& chosen) {
    // Whatever fails on the way, the window returns to its closed state with nothing open.
    try {
        const std::optional<QString> path = shell::databaseToOpen(chosen, dialogs_, *this);
        if (!path || session_.open(*path, dialogs_) != shell::OpenOutcome::Opened) {
            setBusy(false);
            return false;
        }
        setBusy(true);
        showLoadedDatabase();
    } catch (...) {
        abandonDatabase();
        return false;
    }
    setBusy(false);
    return true;
}

void OverviewWindow::showLoadedDatabase() {
    setStatusText(QStringLiteral("Loading Compilations ..."));
    compilations_.setDatabase(state().database);
    store::setRecordSource(QStringLiteral("Compilation"), nullptr, compilations_,
                           state().databasePath);
    compilations_.refresh();
    setStatusText(QStringLiteral("Building List for Compilation Page: Compilation Title ..."));
    state().gotoField = QStringLiteral("c_name");
    refillGotoList();
    findPanel_->setCaption(QStringLiteral("Compilation Title"));
    setGridLayout(*grid_, store::GridKind::Overview, colourCount());
    const store::RecordCountText counts =
        store::showRecordCount(compilations_.recordset(), state().databasePath);
    statusBar_->setPanelText(1, counts.database);
    statusBar_->setPanelText(2, counts.count);
    statusBar_->showPanels();
    compilations_.notifyCurrentChanged();
    setWindowTitle(QStringLiteral("Overview"));
    position_->setStyleSheet(
        QStringLiteral("color: %1").arg(shell::positionColour(colourCount()).name()));
    showDatabaseState(true);
    toolBar_->setToolEnabled(QStringLiteral("ID_NewCompilation"), true);
    toolBar_->reportTypeList()->setCurrentIndex(shell::kDefaultReportType);
    setToolbarState();
    showListCount();
    showPosition();
    grid_->setFocus();
}

void OverviewWindow::abandonDatabase() {
    session_.abandon();
    showClosedState();
    setBusy(false);
}

void OverviewWindow::showClosedState() {
    statusBar_->setSimpleText(shell::kStatusHint);
    setWindowTitle(QStringLiteral("Mixorama"));
    showDatabaseState(false);
}

void OverviewWindow::setToolbarState() {
    const bool hasRows =
        compilations_.hasRecordset() && compilations_.recordset().recordCount() > 0;
    for (const QString& id : shell::toolsForRows()) {
        toolBar_->setToolEnabled(id, hasRows);
    }
    findPanel_->setControlsEnabled(hasRows);
}

void OverviewWindow::refillGotoList() {
    const query::GotoLists lists =
        query::fillCompilationGotoList(state().database, state().gotoField, state().inputHint);
    findPanel_->showLists(lists);
    state().gotoCountCompilation = lists.count;
}

// Another window changed a compilation: its row has followed; the goto list, the counts and the
// tools follow it.
void OverviewWindow::showFollowedRows() {
    refillGotoList();
    showListCount();
    setToolbarState();
    showPosition();
}

void OverviewWindow::showListCount() {
    const int count = compilations_.hasRecordset() ? compilations_.recordset().recordCount() : 0;
    statusBar_->setPanelText(2, shell::listCountText(count, state().gotoCountCompilation));
}

void OverviewWindow::showPosition() {
    if (compilations_.hasRecordset()) {
        const engine::Recordset& rows = compilations_.recordset();
        position_->setText(shell::positionText(rows));
        position_->setAccessibleName(shell::positionSentence(
            QStringLiteral("Compilation"), rows.absolutePosition() + 1, rows.recordCount()));
    }
}

void OverviewWindow::onHeaderClicked(int column) {
    if (column < 0 || column >= grid_->columnCount()) {
        return;
    }
    setBusy(true);
    try {
        state().gotoField = query::gotoFieldForColumn(grid_->columnDataField(column));
        refillGotoList();
        showListCount();
        findPanel_->setCaption(grid_->columnCaption(column));
    } catch (const engine::JetError&) {
        // The list stays as it was; the grid is still usable.
    }
    setBusy(false);
}

void OverviewWindow::onGridDoubleClicked() {
    if (!compilations_.hasRecordset() || compilations_.recordset().recordCount() == 0) {
        dialogs_.exclamation(QStringLiteral("No compilation available."));
        return;
    }
    setBusy(true);
    try {
        auto* browser = new CompilationBrowserWindow(*this, dialogs_);
        connect(browser, &CompilationBrowserWindow::editRequested, browser, [this, browser] {
            openCompilationEditor(session_, dialogs_, browser, assembly::EditorMode::Edit,
                                  browser->compilationId());
        });
        browser->show();
    } catch (const engine::JetError& error) {
        dialogs_.exclamation(error.description());
    }
    repaint();
    setBusy(false);
}

void OverviewWindow::runTool(const QString& id) {
    try {
        switch (shell::commandForTool(id)) {
            case shell::ToolCommand::NewDatabase:
                newDatabase();
                break;
            case shell::ToolCommand::OpenDatabase:
                openDatabase();
                break;
            case shell::ToolCommand::CloseDatabase:
                closeDatabase();
                break;
            case shell::ToolCommand::CompactDatabase:
                compactDatabase();
                break;
            case shell::ToolCommand::Print:
                print();
                break;
            case shell::ToolCommand::NewCompilation:
                openEditor(assembly::EditorMode::Add);
                break;
            case shell::ToolCommand::EditCompilation:
                openEditor(assembly::EditorMode::Edit);
                break;
            case shell::ToolCommand::DeleteCompilation:
                deleteCompilation();
                break;
            case shell::ToolCommand::Help:
                showHelp();
                break;
            case shell::ToolCommand::Exit:
                close();
                break;
            case shell::ToolCommand::Unknown:
                dialogs_.message({platform::kAppTitle, shell::kUnexpectedToolError,
                                  platform::MessageIcon::None, platform::MessageButtons::Ok,
                                  platform::MessageAnswer::Ok});
                break;
        }
    } catch (const report_engine::WriteError& error) {
        // A report that cannot be written: a PDF file open in another program, a full disk.
        setBusy(false);
        dialogs_.exclamation(shell::pdfWriteMessage(error));
    } catch (const report_engine::ReportError& error) {
        // A report that cannot be laid out (its compilation gone, say) says why.
        setBusy(false);
        dialogs_.exclamation(error.description());
    } catch (const engine::JetError& error) {
        setBusy(false);
        if (error.number() == engine::jet::kNoCurrentRecord) {
            showCompilationGone();
        }
        // Any other failure ends the command; the window is left usable.
    }
}

void OverviewWindow::newDatabase() {
    if (const std::optional<QString> path = shell::newDatabase(dialogs_, *this)) {
        loadDatabase(*path);
    }
}

void OverviewWindow::openDatabase() {
    if (const std::optional<QString> path = shell::chooseDatabase(dialogs_)) {
        loadDatabase(*path);
    }
}

void OverviewWindow::closeDatabase() {
    session_.close();
    showClosedState();
}

void OverviewWindow::compactDatabase() {
    session_.compact(dialogs_, *this);
}

void OverviewWindow::deleteCompilation() {
    const platform::MessageAnswer answer = dialogs_.message(
        {platform::kAppTitle, assembly::kDeleteCompilationQuestion, platform::MessageIcon::Question,
         platform::MessageButtons::OkCancel, platform::MessageAnswer::Ok});
    const std::optional<qint64> id = currentId();
    if (answer == platform::MessageAnswer::Ok && id) {
        assembly::deleteCompilation(state().database, *id);
        showListWithout(*id);
    }
    setToolbarState();
}

void OverviewWindow::showListWithout(qint64 deletedId) {
    compilations_.refresh();
    state().gotoField = QStringLiteral("c_name");
    // The list has its new rows already; the goto list and counts follow the announcement.
    session_.announceCompilationDeleted(deletedId);
}

// The list still shows a compilation another program has deleted: say so and read the list again.
void OverviewWindow::showCompilationGone() {
    dialogs_.exclamation(shell::kCompilationGone);
    if (const std::optional<qint64> id = currentId()) {
        showListWithout(*id);
    }
    setToolbarState();
}

void OverviewWindow::openEditor(assembly::EditorMode mode) {
    setBusy(true);
    openCompilationEditor(session_, dialogs_, this, mode, currentId());
    setBusy(false);
}

void OverviewWindow::showEditorResult(std::optional<qint64> addedId) {
    if (!session_.isOpen() || !compilations_.hasRecordset()) {
        return;
    }
    try {
        if (addedId) {
            compilations_.recordset().findFirst(QStringLiteral("CompilationID_P=") +
                                                QString::number(*addedId));
            compilations_.notifyCurrentChanged();
        }
        state().gotoField = query::gotoFieldForColumn(grid_->columnDataField(0));
        refillGotoList();
        showListCount();
        findPanel_->setCaption(QStringLiteral("Compilation Title"));
    } catch (const engine::JetError&) {
        // The list keeps its rows; its goto list stays as it was.
    }
    setToolbarState();
    showPosition();
}

std::optional<qint64> OverviewWindow::currentId() {
    if (!compilations_.hasRecordset() || compilations_.recordset().eof() ||
        compilations_.recordset().bof()) {
        return std::nullopt;
    }
    return compilations_.recordset().value(QStringLiteral("CompilationID_P")).toLongLong();
}

std::optional<shell::CurrentCompilation> OverviewWindow::currentCompilation() {
    const std::optional<qint64> id = currentId();
    if (!id) {
        return std::nullopt;
    }
    const assembly::CompilationRecord record = assembly::readCompilation(state().database, *id);
    return shell::CurrentCompilation{record.id, record.stored.trackCount, record.format};
}

void OverviewWindow::print() {
    const shell::PrintChoice* choice =
        shell::printChoice(toolBar_->reportTypeList()->currentIndex());
    if (choice == nullptr || !session_.isOpen()) {
        return;
    }
    setBusy(true);
    const std::optional<shell::CurrentCompilation> current = currentCompilation();
    const qint64 id = current ? current->id : 0;
    if (const std::optional<QString> refusal =
            shell::printRefusal(state().database, *choice, current)) {
        setBusy(false);
        dialogs_.information(*refusal);
        return;
    }
    switch (choice->output) {
        case shell::PrintOutput::Cover:
            windows_.add(showCover(state().database, id, current ? current->format : QString(),
                                   dialogs_, this));
            break;
        case shell::PrintOutput::Preview:
            showPreview(choice->report, id);
            break;
        case shell::PrintOutput::Pdf:
            reports::exportListPdf(state().database, choice->report, id, shell::pdfPath(*choice),
                                   reports::listPaper(), QDate::currentDate());
            break;
    }
    setBusy(false);
}

ReportPreviewWindow* OverviewWindow::showPreview(reports::ListReport kind, qint64 compilationId) {
    auto* preview = new ReportPreviewWindow(
        reports::buildListReport(state().database, kind, compilationId, reports::listPaper(),
                                 QDate::currentDate()),
        reports::listReportCaption(kind), dialogs_, this);
    windows_.add(preview);
    preview->show();
    return preview;
}

void OverviewWindow::showHelp() {
    if (help_ == nullptr) {
        help_ = new HelpWindow(this);
    }
    help_->showContents();
}

double OverviewWindow::colourCount() const {
    return screenColourCount(*this);
}

void OverviewWindow::closeEvent(QCloseEvent* event) {
    if (unloaded_) {
        event->accept();
        return;
    }
    if (!dialogs_.askYesNo(QStringLiteral("Do you really want to exit the application?"))) {
        event->ignore();
        return;
    }
    unloadAll();
    event->accept();
}

void OverviewWindow::unloadAll() {
    if (unloaded_) {
        return;
    }
    unloaded_ = true;
    // The other windows close from the last loaded to the first while the database is still
    // open; then the database closes (without its album links), and the help goes last.
    windows_.closeAll();
    session_.close();
    engine::Workspace::defaultWorkspace().close();
    if (help_ != nullptr) {
        help_->close();
    }
}

void OverviewWindow::setBusy(bool busy) {
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        while (QApplication::overrideCursor() != nullptr) {
            QApplication::restoreOverrideCursor();
        }
    }
}

void OverviewWindow::setStatusText(const QString& text) {
    statusBar_->setSimpleText(text);
}

void OverviewWindow::processPendingEvents() {
    QApplication::processEvents();
}

}  // namespace ui
