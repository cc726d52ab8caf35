#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>

class QAbstractItemView;
class QComboBox;

// Driving windows through their controls, as a user would, for the window tests.
namespace testsupport {

// The child control of that object name; a test failure when there is none.
template <typename T = QWidget>
T* control(const QWidget* window, const QString& name) {
    T* found = window->findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
}
// Clicks the push button of that object name.
void clickButton(const QWidget* window, const QString& name);
// Chooses the entry with this caption of a drop-down list: a click opens its popup, the keys
// pick the entry.
void chooseFromList(QComboBox* list, const QString& caption);

// Shows the window and makes it the active one; false when it did not become active.
bool activate(QWidget* window);
// Presses a key as a user would on the control: its window is made the active one and the
// control takes the focus first, so that the window's shortcuts see the key.
void pressInWindow(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers = {});

// The texts of a column of a view's rows, in order.
QStringList columnTexts(const QAbstractItemView* view, int column);
// The first row whose column shows text, -1 (and a test failure) when none does.
int rowWith(const QAbstractItemView* view, int column, const QString& text);
// A click (or a double click after a click) on a row's cell, scrolled into view first.
void clickRow(QAbstractItemView* view, int row, int column = 1);
void doubleClickRow(QAbstractItemView* view, int row, int column = 1);

// Answers the next modal dialog of class Dialog once it is shown: use works it through its
// controls, then it is closed with Escape unless use closed it. shown() tells afterwards
// whether one came.
class ModalAnswer {
  public:
    ModalAnswer(const char* className, std::function<void(QWidget&)> use);
    bool shown() const { return *shown_; }

  private:
    std::shared_ptr<bool> shown_ = std::make_shared<bool>(false);
};

template <typename Dialog>
ModalAnswer answerModal(std::function<void(Dialog&)> use = {}) {
    return ModalAnswer(Dialog::staticMetaObject.className(), [use](QWidget& dialog) {
        if (use) {
            use(static_cast<Dialog&>(dialog));
        }
    });
}

}  // namespace testsupport
