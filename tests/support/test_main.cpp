// The main of the test programs that need an application object, of the kind mx_test's APP names.
#include <gtest/gtest.h>

#if defined(MIXORAMA_TEST_APP_Widgets)
#include <QApplication>
using Application = QApplication;
#elif defined(MIXORAMA_TEST_APP_Gui)
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
