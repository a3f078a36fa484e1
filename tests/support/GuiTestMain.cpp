#include "TestEnvironment.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    TestEnvironment::isolateUserFolders();
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
