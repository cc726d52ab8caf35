#include <gtest/gtest.h>

#include <QCoreApplication>

// QProcess and the reader's program lookup want an application object.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
