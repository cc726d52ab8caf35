#pragma once

#include <QPointer>
#include <QWidget>

class QMessageBox;

#include "platform/dialogs.h"

namespace ui {

// The dialogs a person answers: message boxes, file and font dialogs of the desktop.
class QtDialogs : public platform::Dialogs {
  public:
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }

    platform::MessageAnswer message(const platform::MessageRequest& request) override;
    std::optional<QString> openFile(const platform::FileRequest& request) override;
    std::optional<QString> saveFile(const platform::FileRequest& request) override;
    using platform::Dialogs::chooseFont;
    std::optional<QFont> chooseFont(const platform::FontRequest& request) override;
    // A progress dialog with a Cancel button, shown when the work lasts longer than a moment.
    std::unique_ptr<platform::Progress> startProgress(const QString& title) override;

  private:
    QWidget* owner() const;

    QPointer<QWidget> parent_;
};

// A message box showing a request: icon, title, text, buttons and the default button.
void setUpMessageBox(QMessageBox& box, const platform::MessageRequest& request);

// "MS Access Files (*.mdb)|*.mdb" as Qt writes file filters: "MS Access Files (*.mdb)".
QStringList qtNameFilters(const QString& filter);

}  // namespace ui
