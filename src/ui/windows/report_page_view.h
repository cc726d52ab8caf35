#pragma once

#include <QWidget>

#include "report_engine/page_model.h"

namespace ui {

// One page of a laid-out report, drawn at a zoom whenever it is painted: nothing but the model
// is kept, so a long report costs no more than its page model.
class ReportPageView : public QWidget {
    Q_OBJECT
  public:
    ReportPageView(const report_engine::PageModel& model, QWidget* parent = nullptr);

    void showPage(int index, double zoom);
    int pageIndex() const { return index_; }
    double zoom() const { return zoom_; }
    // The paper's size in this widget's pixels at a zoom.
    QSize pixelSize(double zoom) const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const report_engine::PageModel& model_;
    int index_ = 0;
    double zoom_ = 1.0;
};

}  // namespace ui
