#include "TestEnvironment.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    TestEnvironment::isolateUserFolders();
    // Widget tests run headless unless the harness chose a platform (xvfb tests use xcb).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
