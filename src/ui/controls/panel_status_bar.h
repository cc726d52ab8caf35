#pragma once

#include <QLabel>
#include <QStatusBar>

namespace ui {

// A status bar with two text panels sharing its width (left- and right-aligned), or a single
// "simple text" across the bar instead of the panels.
class PanelStatusBar : public QStatusBar {
    Q_OBJECT
  public:
    explicit PanelStatusBar(QWidget* parent = nullptr);

    void setSimpleText(const QString& text);            // simple-text mode on
    void showPanels();                                  // simple-text mode off
    void setPanelText(int panel, const QString& text);  // panels 1 and 2
    QString panelText(int panel) const;
    QString simpleText() const { return simpleText_; }
    bool simpleMode() const { return simpleMode_; }

  private:
    QLabel* panel(int number) const;

    QLabel* left_;
    QLabel* right_;
    QString simpleText_;
    bool simpleMode_ = true;
};

}  // namespace ui
