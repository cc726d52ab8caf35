#include "sort_dialog_driver.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "ui/windows/sort_dialog.h"

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
    EXPECT_FALSE(popup->isVisible());
    EXPECT_EQ(list->currentText(), caption);
}

void clickButton(QWidget* window, const QString& name) {
    auto* button = window->findChild<QPushButton*>(name);
    ASSERT_NE(button, nullptr) << name.toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
}

SortDialogScript::SortDialogScript(std::function<void(ui::SortDialog&)> use) {
    auto attempts = std::make_shared<int>(0);
    auto step = std::make_shared<std::function<void()>>();
    *step = [use, attempts, step, shown = shown_] {
        auto* dialog = qobject_cast<ui::SortDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            if (++*attempts < 50) {
                QTimer::singleShot(10, *step);
            }
            return;
        }
        *shown = true;
        use(*dialog);
        QTest::keyClick(dialog, Qt::Key_Escape);
        *step = nullptr;  // ends the cycle of the function holding itself
    };
    QTimer::singleShot(0, *step);
}
