#pragma once

#include <QComboBox>
#include <QHash>
#include <QToolBar>

class QAction;

namespace ui {

// The main toolbar: one action per tool id, and the report type list as a combo box.
class MainToolBar : public QToolBar {
    Q_OBJECT
  public:
    explicit MainToolBar(QWidget* parent = nullptr);

    QAction* tool(const QString& id) const;  // nullptr for an unknown id
    void setToolEnabled(const QString& id, bool enabled);
    bool isToolEnabled(const QString& id) const;
    QComboBox* reportTypeList() const { return reportTypes_; }
    void clickTool(const QString& id);  // as a click on the tool

  signals:
    void toolClicked(const QString& id);

  private:
    void focusReportTypes(const QString& caption);
    QHash<QString, QAction*> actions_;
    QComboBox* reportTypes_ = nullptr;
};

}  // namespace ui
