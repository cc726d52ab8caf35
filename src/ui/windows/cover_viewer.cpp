#include "ui/windows/cover_viewer.h"

#include <QScreen>

#include "report_engine/page_model.h"
#include "report_engine/report_error.h"
#include "reports/cover_report.h"
#include "reports/cover_source.h"
#include "shell/print_command.h"
#include "ui/windows/report_preview_window.h"

namespace ui {

namespace {

QSize pixelsOf(QSize twips, const QWidget& window) {
    return QSize(
        qRound(double(twips.width()) * window.logicalDpiX() / report_engine::kTwipsPerInch),
        qRound(double(twips.height()) * window.logicalDpiY() / report_engine::kTwipsPerInch));
}

// Where the title bar and borders would put it: the top left corner of the screen.
void placeAtTopLeft(ReportPreviewWindow& viewer) {
    const QScreen* screen = viewer.screen();
    viewer.move(screen != nullptr ? screen->geometry().topLeft() : QPoint(0, 0));
}

}  // namespace

ReportPreviewWindow* showCover(engine::Database& database, qint64 compilationId,
                               const QString& format, platform::Dialogs& dialogs, QWidget* owner) {
    const std::optional<shell::CoverView> view = shell::coverView(format);
    if (!view) {
        throw report_engine::ReportError(reports::noCoverMessage(format));
    }
    auto* viewer = new ReportPreviewWindow(reports::buildCover(database, compilationId),
                                           view->caption, dialogs, owner);
    viewer->useCoverCalibration();
    viewer->resize(pixelsOf(kCoverViewerTwips, *viewer));
    placeAtTopLeft(*viewer);
    if (view->zoomPercent) {
        viewer->setZoomPercent(*view->zoomPercent);
    } else {
        viewer->setZoomMode(ReportPreviewWindow::ZoomMode::FitPage);
    }
    viewer->show();
    return viewer;
}

}  // namespace ui
