#pragma once

#include <QString>
#include <functional>
#include <memory>

class QComboBox;
class QWidget;

namespace ui {
class SortDialog;
}

// Chooses the entry with this caption of a drop-down list: a click opens its popup, the keys
// pick the entry.
void chooseFromList(QComboBox* list, const QString& caption);

// Clicks a push button of a window, found by object name.
void clickButton(QWidget* window, const QString& name);

// Works the next sort dialog once it is shown modal: use gets it (through its controls), then
// the dialog is closed with Escape. shown() tells afterwards whether one was shown.
class SortDialogScript {
  public:
    explicit SortDialogScript(std::function<void(ui::SortDialog&)> use);
    bool shown() const { return *shown_; }

  private:
    std::shared_ptr<bool> shown_ = std::make_shared<bool>(false);
};
