#include "ui/windows/report_preview_window.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>

#include "platform/dialogs.h"
#include "platform/program_folder.h"
#include "report_engine/painter.h"
#include "report_engine/pdf_export.h"
#include "report_engine/report_error.h"
#include "shell/print_command.h"
#include "shell/printer_calibrations.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/list_label.h"
#include "ui/windows/printer_calibration_dialog.h"
#include "ui/windows/report_page_view.h"

namespace ui {

namespace {

const QList<int> kPercents{50, 75, 100, 150, 200, 300, 400};
// The zoom list's entries carry their percentage; the two fitting ones carry these.
constexpr int kFitPageEntry = -1;
constexpr int kFitWidthEntry = -2;
constexpr int kPaperMargin = 16;  // pixels of grey around the page

QPageLayout pageLayoutOf(const report_engine::PageSetup& setup) {
    const QPageSize size(QSizeF(setup.paper) / report_engine::kTwipsPerPoint, QPageSize::Point);
    return QPageLayout(size, setup.orientation, QMarginsF());
}

}  // namespace

ReportPreviewWindow::ReportPreviewWindow(report_engine::PageModel model, const QString& caption,
                                         platform::Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent), model_(std::move(model)), caption_(caption), dialogs_(dialogs) {
    setObjectName(QStringLiteral("frmARViewer"));
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName(QStringLiteral("scrPages"));
    scroll_->setAccessibleName(QStringLiteral("Report page"));
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setBackgroundRole(QPalette::Dark);
    // The pages take the focus at start: a frame shows it, as the focus frame of a control does.
    scroll_->setStyleSheet(
        QStringLiteral("QScrollArea:focus { border: 2px solid palette(text); }"));
    view_ = new ReportPageView(model_, scroll_);
    scroll_->setWidget(view_);
    scroll_->viewport()->installEventFilter(this);
    setCentralWidget(scroll_);
    status_ = new QLabel(this);
    status_->setObjectName(QStringLiteral("lblPageStatus"));
    statusBar()->addWidget(status_);
    buildToolBar();
    orderFocusByLayout(*this);
    resize(820, 960);
    setZoomMode(ZoomMode::FitPage);
}

QAction* ReportPreviewWindow::addTool(const QString& name, const QString& text,
                                      const QList<QKeySequence>& keys,
                                      void (ReportPreviewWindow::*slot)()) {
    QAction* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WindowShortcut);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
    return action;
}

void ReportPreviewWindow::buildToolBar() {
    QToolBar* tools = tools_ = addToolBar(QStringLiteral("Preview"));
    tools->setObjectName(QStringLiteral("tbPreview"));
    tools->setMovable(false);
    tools->addAction(
        addTool("actFirstPage", tr("First Page"), {Qt::Key_Home}, &ReportPreviewWindow::firstPage));
    tools->addAction(addTool("actPreviousPage", tr("Previous Page"), {Qt::Key_PageUp},
                             &ReportPreviewWindow::previousPage));
    tools->addAction(addTool("actNextPage", tr("Next Page"), {Qt::Key_PageDown},
                             &ReportPreviewWindow::nextPage));
    tools->addAction(
        addTool("actLastPage", tr("Last Page"), {Qt::Key_End}, &ReportPreviewWindow::lastPage));
    tools->addSeparator();
    tools->addAction(addTool("actZoomOut", tr("Zoom Out"), {Qt::CTRL | Qt::Key_Minus},
                             &ReportPreviewWindow::zoomOut));
    zoomList_ = new QComboBox(tools);
    zoomList_->setObjectName(QStringLiteral("cmbZoom"));
    zoomList_->setFocusPolicy(Qt::StrongFocus);
    zoomList_->setToolTip(tr("Zoom"));
    labelList(*zoomList_, tr("Zoom"));
    zoomList_->addItem(tr("Fit Page"), kFitPageEntry);
    zoomList_->addItem(tr("Fit Width"), kFitWidthEntry);
    for (const int percent : kPercents) {
        addZoomEntry(percent);
    }
    connect(zoomList_, &QComboBox::activated, this,
            [this](int entry) { zoomChosen(zoomList_->itemData(entry).toInt()); });
    tools->addWidget(zoomList_);
    tools->addAction(addTool("actZoomIn", tr("Zoom In"),
                             {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
                             &ReportPreviewWindow::zoomIn));
    tools->addSeparator();
    tools->addAction(
        addTool("actPrint", tr("Print..."), {QKeySequence::Print}, &ReportPreviewWindow::print));
    tools->addAction(addTool("actSavePdf", tr("Save as PDF..."), {QKeySequence::Save},
                             &ReportPreviewWindow::saveAsPdf));
}

int ReportPreviewWindow::pageIndex() const {
    return view_->pageIndex();
}

double ReportPreviewWindow::zoom() const {
    return view_->zoom();
}

QString ReportPreviewWindow::statusText() const {
    return status_->text();
}

void ReportPreviewWindow::showPage(int index) {
    redraw(qBound(0, index, qMax(0, pageCount() - 1)));
    scroll_->verticalScrollBar()->setValue(0);
}

void ReportPreviewWindow::redraw(int index) {
    const double zoom = mode_ == ZoomMode::Percent ? percent_ / 100.0 : fittedZoom();
    view_->showPage(index, zoom);
    status_->setText(QStringLiteral("Page %1 of %2").arg(index + 1).arg(pageCount()));
}

double ReportPreviewWindow::fittedZoom() const {
    const QSize page = view_->pixelSize(1.0);
    const QSize room = scroll_->viewport()->size() - QSize(kPaperMargin, kPaperMargin);
    if (page.isEmpty() || room.width() <= 0 || room.height() <= 0) {
        return 1.0;
    }
    const double widthZoom = double(room.width()) / page.width();
    if (mode_ == ZoomMode::FitWidth) {
        // Room for the vertical scroll bar the taller page will need.
        const int bar = scroll_->verticalScrollBar()->sizeHint().width();
        return double(room.width() - bar) / page.width();
    }
    return qMin(widthZoom, double(room.height()) / page.height());
}

// A percentage between the list's steps gets an entry of its own, in order.
int ReportPreviewWindow::addZoomEntry(int percent) {
    int entry = zoomList_->findData(percent);
    if (entry >= 0) {
        return entry;
    }
    entry = zoomList_->count();
    while (entry > 0 && zoomList_->itemData(entry - 1).toInt() > percent) {
        --entry;
    }
    zoomList_->insertItem(entry, QStringLiteral("%1 %").arg(percent), percent);
    return entry;
}

void ReportPreviewWindow::setZoomMode(ZoomMode mode) {
    mode_ = mode;
    if (mode == ZoomMode::FitPage) {
        zoomList_->setCurrentIndex(zoomList_->findData(kFitPageEntry));
    } else if (mode == ZoomMode::FitWidth) {
        zoomList_->setCurrentIndex(zoomList_->findData(kFitWidthEntry));
    }
    redraw(pageIndex());
}

void ReportPreviewWindow::setZoomPercent(int percent) {
    percent_ = qBound(kPercents.first(), percent, kPercents.last());
    zoomList_->setCurrentIndex(addZoomEntry(percent_));
    setZoomMode(ZoomMode::Percent);
}

void ReportPreviewWindow::zoomIn() {
    const int current = qRound(zoom() * 100);
    for (const int percent : kPercents) {
        if (percent > current) {
            setZoomPercent(percent);
            return;
        }
    }
    setZoomPercent(kPercents.last());
}

void ReportPreviewWindow::zoomOut() {
    const int current = qRound(zoom() * 100);
    for (auto percent = kPercents.rbegin(); percent != kPercents.rend(); ++percent) {
        if (*percent < current) {
            setZoomPercent(*percent);
            return;
        }
    }
    setZoomPercent(kPercents.first());
}

void ReportPreviewWindow::zoomChosen(int entryData) {
    if (entryData == kFitPageEntry) {
        setZoomMode(ZoomMode::FitPage);
    } else if (entryData == kFitWidthEntry) {
        setZoomMode(ZoomMode::FitWidth);
    } else {
        setZoomPercent(entryData);
    }
}

bool ReportPreviewWindow::eventFilter(QObject* watched, QEvent* event) {
    // A page that fits follows the room the scroll area gives it.
    if (watched == scroll_->viewport() && event->type() == QEvent::Resize &&
        mode_ != ZoomMode::Percent) {
        redraw(pageIndex());
    }
    return QMainWindow::eventFilter(watched, event);
}

void ReportPreviewWindow::printTo(QPrinter& printer) {
    printer.setFullPage(true);
    printer.setPageLayout(pageLayoutOf(model_.setup));
    printer.setDocName(caption_);
    int first = 1;
    int last = pageCount();
    if (printer.printRange() == QPrinter::PageRange) {
        first = qMax(first, printer.fromPage());
        last = qMin(last, printer.toPage());
    }
    const report_engine::Calibration calibration =
        coverCalibration_
            ? shell::coverCalibration(printer.printerName(),
                                      printer.outputFormat() != QPrinter::NativeFormat)
            : report_engine::Calibration{};
    QPainter painter;
    if (!painter.begin(&printer)) {
        return;
    }
    for (int page = first; page <= last; ++page) {
        if (page > first) {
            printer.newPage();
        }
        report_engine::drawPage(painter, model_.pages[page - 1], 1.0, calibration);
    }
    painter.end();
}

void ReportPreviewWindow::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(pageLayoutOf(model_.setup));
    printer.setFromTo(1, pageCount());
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, pageCount());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() == QDialog::Accepted) {
        printTo(printer);
    }
}

void ReportPreviewWindow::saveAsPdf() {
    platform::FileRequest request;
    request.title = tr("Save as PDF");
    request.filter = QStringLiteral("PDF Files (*.pdf)|*.pdf");
    request.initialFolder = platform::dataFolder();
    request.fileName = caption_ + QStringLiteral(".pdf");
    request.mayNotExist = true;
    const std::optional<QString> path = dialogs_.saveFile(request);
    if (!path) {
        return;
    }
    try {
        report_engine::exportPdf(model_, *path, caption_);
    } catch (const report_engine::WriteError& error) {
        dialogs_.exclamation(shell::pdfWriteMessage(error));
    }
}

void ReportPreviewWindow::useCoverCalibration() {
    if (coverCalibration_) {
        return;
    }
    coverCalibration_ = true;
    tools_->addSeparator();
    tools_->addAction(addTool("actCalibration", tr("Printer Calibration..."),
                              {Qt::CTRL | Qt::SHIFT | Qt::Key_P},
                              &ReportPreviewWindow::openCalibration));
    orderFocusByLayout(*this);
}

void ReportPreviewWindow::openCalibration() {
    PrinterCalibrationDialog dialog(PrinterCalibrationDialog::installedPrinters(),
                                    PrinterCalibrationDialog::defaultPrinter(), dialogs_, this);
    dialog.exec();
}

}  // namespace ui
