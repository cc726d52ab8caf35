#pragma once

#include <QMainWindow>

#include "report_engine/page_model.h"

class QComboBox;
class QLabel;
class QPrinter;
class QScrollArea;
class QToolBar;

namespace platform {
class Dialogs;
}

namespace ui {

class ReportPageView;

// The preview of a laid-out report: one page at a time, page by page (PgUp/PgDn, Home/End),
// at a zoom that fits the page, fits its width or is a percentage (Ctrl+plus/minus), printed
// through the print dialog (Ctrl+P) or saved as PDF (Ctrl+S). Not modal; it deletes itself
// when closed.
class ReportPreviewWindow : public QMainWindow {
    Q_OBJECT
  public:
    enum class ZoomMode { FitPage, FitWidth, Percent };

    ReportPreviewWindow(report_engine::PageModel model, const QString& caption,
                        platform::Dialogs& dialogs, QWidget* parent = nullptr);

    int pageIndex() const;
    int pageCount() const { return int(model_.pages.size()); }
    const report_engine::PageModel& model() const { return model_; }
    double zoom() const;
    ZoomMode zoomMode() const { return mode_; }
    QString statusText() const;

    void showPage(int index);          // brought into the report's pages
    void setZoomPercent(int percent);  // brought into 50 to 400
    void setZoomMode(ZoomMode mode);
    void zoomIn();
    void zoomOut();
    void printTo(QPrinter& printer);  // every page, or the printer's page range
    void print();                     // through the print dialog
    void saveAsPdf();                 // under a name the save dialog gives

    // For a cover: printing draws it through the printer's calibration, and a tool opens the
    // calibration dialog.
    void useCoverCalibration();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildToolBar();
    QAction* addTool(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                     void (ReportPreviewWindow::*slot)());
    void firstPage() { showPage(0); }
    void previousPage() { showPage(pageIndex() - 1); }
    void nextPage() { showPage(pageIndex() + 1); }
    void lastPage() { showPage(pageCount() - 1); }
    int addZoomEntry(int percent);
    void zoomChosen(int entryData);
    double fittedZoom() const;
    void redraw(int index);
    void openCalibration();

    report_engine::PageModel model_;
    QString caption_;
    platform::Dialogs& dialogs_;
    ZoomMode mode_ = ZoomMode::FitWidth;
    int percent_ = 100;
    QScrollArea* scroll_ = nullptr;
    ReportPageView* view_ = nullptr;
    QComboBox* zoomList_ = nullptr;
    QLabel* status_ = nullptr;
    QToolBar* tools_ = nullptr;
    bool coverCalibration_ = false;
};

}  // namespace ui
