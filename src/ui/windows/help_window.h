#pragma once

#include <QDialog>

class QTextBrowser;

namespace ui {

// The help: HTML pages from the program folder's help/ in a browser window.
class HelpWindow : public QDialog {
    Q_OBJECT
  public:
    explicit HelpWindow(QWidget* parent = nullptr);
    void showContents();
    QString currentPage() const;

  private:
    QTextBrowser* browser_;
};

}  // namespace ui
