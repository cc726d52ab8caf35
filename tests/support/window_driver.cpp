#include "support/window_driver.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace testsupport {

void clickButton(const QWidget* window, const QString& name) {
    auto* button = control<QPushButton>(window, name);
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
}

bool activate(QWidget* window) {
    window->show();
    // The offscreen platform does not always hand the activation on to a window whose owner
    // hid itself (the rearranging window over the picker); the application is told directly.
    QApplication::setActiveWindow(window);
    return QTest::qWaitForWindowActive(window);
}

void pressInWindow(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    ASSERT_NE(control, nullptr);
    ASSERT_TRUE(activate(control->window()));
    control->setFocus();
    QTest::keyClick(control, key, modifiers);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void chooseFromList(QComboBox* list, const QString& caption) {
    ASSERT_NE(list, nullptr);
    const int row = list->findText(caption);
    ASSERT_GE(row, 0) << caption.toStdString();
    QTest::mouseClick(list, Qt::LeftButton);
    QAbstractItemView* popup = list->view();
    ASSERT_TRUE(popup->isVisible());
    // The popup ignores a release right after it opened, so the entry is picked with the keys.
    QTest::keyClick(popup, Qt::Key_Home);
    for (int i = 0; i < row; ++i) {
        QTest::keyClick(popup, Qt::Key_Down);
    }
    QTest::keyClick(popup, Qt::Key_Return);
    EXPECT_EQ(list->currentText(), caption);
}

QStringList columnTexts(const QAbstractItemView* view, int column) {
    QStringList texts;
    const QAbstractItemModel* model = view->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        texts << model->index(row, column).data().toString();
    }
    return texts;
}

int rowWith(const QAbstractItemView* view, int column, const QString& text) {
    const int row = int(columnTexts(view, column).indexOf(text));
    EXPECT_GE(row, 0) << "no row " << text.toStdString();
    return row;
}

void clickRow(QAbstractItemView* view, int row, int column) {
    const QModelIndex cell = view->model()->index(row, column);
    view->scrollTo(cell);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
}

void doubleClickRow(QAbstractItemView* view, int row, int column) {
    clickRow(view, row, column);
    const QModelIndex cell = view->model()->index(row, column);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
}

ModalAnswer::ModalAnswer(const char* className, std::function<void(QWidget&)> use) {
    auto attempts = std::make_shared<int>(0);
    auto step = std::make_shared<std::function<void()>>();
    *step = [className, use, attempts, step, shown = shown_] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || !dialog->inherits(className)) {
            if (++*attempts < 50) {
                QTimer::singleShot(10, *step);
            }
            return;
        }
        *shown = true;
        use(*dialog);
        if (dialog->isVisible()) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        }
        *step = nullptr;  // ends the cycle of the function holding itself
    };
    QTimer::singleShot(0, *step);
}

}  // namespace testsupport
