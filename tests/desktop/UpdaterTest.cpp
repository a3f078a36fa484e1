// Where the updater is installed beside the program, a newer version is offered for
// installation and the updater is started. All of it in one test, since the updater is one
// file beside this binary that no other test of this folder may see.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "WaitUntil.h"

#include "app/SplashScreen.h"
#include "app/StartUp.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace {

int runSplash(ModalDriver& driver) {
    driver.ignore("SplashScreen");
    SplashScreen splash;
    splash.exec();
    EXPECT_FALSE(driver.timedOut());
    EXPECT_FALSE(splash.updateCheckFailed());
    return splash.startUpStatus();
}

TEST(InstalledUpdater, IsOfferedAndStarted) {
    QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).clear();
    LocalHttpServer server;
    ServerOverride serverOverride(server.baseUrl());
    server.answer("/Downloadables/version.php", {200, "1.3\nNotes for the updater\n", 0, false});

    // A stand-in updater that leaves a mark.
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString mark = folder.filePath(QStringLiteral("updater-ran"));
    const QString updater = updaterPath();
    {
        QFile script(updater);
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$#\" > '" + mark.toUtf8() + "'\n");
        script.close();
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
    }
    struct RemoveAtEnd {
        QString path;
        ~RemoveAtEnd() { QFile::remove(path); }
    } removeAtEnd{updater};
    ASSERT_TRUE(updaterAvailable());

    // Cancel: the program starts, and the offer comes again at the next start.
    {
        ModalDriver driver;
        driver.press(QMessageBox::Cancel);
        EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
        ASSERT_EQ(driver.boxes().size(), 1);
        const ModalDriver::SeenBox& box = driver.boxes()[0];
        EXPECT_EQ(box.title, QStringLiteral("Update available"));
        EXPECT_EQ(box.text, QStringLiteral("An update is available. Press Ok to install it."));
        EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
        EXPECT_EQ(box.icon, QMessageBox::Information);
        EXPECT_TRUE(box.flags.testFlag(Qt::WindowStaysOnTopHint));
        EXPECT_TRUE(box.parentless);
    }
    // Ok: the start ends in the updater.
    {
        ModalDriver driver;
        driver.press(QMessageBox::Ok);
        EXPECT_EQ(runSplash(driver), SplashScreen::InstallUpdate);
        ASSERT_EQ(driver.boxes().size(), 1);
        EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update available"));
    }
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 2);

    ModalDriver driver;
    launchUpdater();
    EXPECT_TRUE(waitUntil([&mark] { return QFile::exists(mark); }));
    EXPECT_TRUE(driver.boxes().isEmpty());
    QFile marked(mark);
    ASSERT_TRUE(waitUntil([&marked] { return marked.size() > 0; }));
    ASSERT_TRUE(marked.open(QIODevice::ReadOnly));
    EXPECT_EQ(marked.readAll().trimmed(), QByteArray("0")); // started with no arguments
}

} // namespace
