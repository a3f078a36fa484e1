// The version check of the splash against a local HTTP server.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "QtPrinting.h"
#include "WaitUntil.h"
#include "support/TestEnvironment.h"

#include "app/ProductServer.h"
#include "app/SplashScreen.h"
#include "app/StartUp.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPointer>
#include <QSettings>
#include <QTcpServer>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>

namespace {

QVariant setting(const QString& key) {
    return QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).value(key);
}

const QString downloadLink = QStringLiteral(
    "<a href=\"https://www.quorvane.com/download\">https://www.quorvane.com/download</a>");

const QString updateCheckFailedText =
    QStringLiteral("Check for updates failed. Please make sure that this software has sufficient "
                   "permissions to access the internet. Otherwise, checks for updates cannot be "
                   "performed. Alternatively, you can download the newest version at ") +
    downloadLink + QStringLiteral("<br/><br/>Press Ignore to disable this warning in the future.");

const QString updateAnnouncementText =
    QStringLiteral("An update is available. You can download it at ") + downloadLink;

class SplashScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).clear();
    }

    void serveVersion(const QByteArray& body, int status = 200) {
        server.answer("/Downloadables/version.php", {status, body, 0, false});
    }

    // Runs one splash like `main` does and returns its start-up status; the last text of
    // the progress line goes to `progressText`, whether the check failed to `failed`.
    int runSplash(ModalDriver& driver, QString* progressText = nullptr, bool* failed = nullptr,
                  qint64* elapsedMs = nullptr) {
        driver.ignore("SplashScreen");
        QElapsedTimer clock;
        clock.start();
        SplashScreen splash;
        splash.exec();
        if (elapsedMs)
            *elapsedMs = clock.elapsed();
        if (progressText)
            *progressText = splash.findChild<QLabel*>(QStringLiteral("action"))->text();
        if (failed)
            *failed = splash.updateCheckFailed();
        EXPECT_FALSE(driver.timedOut());
        return splash.startUpStatus();
    }

    LocalHttpServer server;
    ServerOverride serverOverride{server.baseUrl()};
};

TEST_F(SplashScreenTest, NewerVersionWithoutUpdaterNamesTheDownloadPage) {
    ASSERT_FALSE(updaterAvailable());
    serveVersion("1.3\nSome notes for the updater\n");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    QString progress;
    bool failed = true;
    EXPECT_EQ(runSplash(driver, &progress, &failed), SplashScreen::StartProgram);
    EXPECT_FALSE(failed);

    ASSERT_EQ(driver.boxes().size(), 1);
    const ModalDriver::SeenBox& box = driver.boxes()[0];
    EXPECT_EQ(box.title, QStringLiteral("Update available"));
    EXPECT_EQ(box.text, updateAnnouncementText);
    EXPECT_EQ(box.buttons, QMessageBox::Ok);
    EXPECT_EQ(box.icon, QMessageBox::Information);
    EXPECT_TRUE(box.flags.testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(box.hasWindowIcon);
    EXPECT_TRUE(box.parentless);
    EXPECT_EQ(driver.unexpectedBoxes(), 0);
    // Nothing to install: the start goes on.
    EXPECT_EQ(progress, QStringLiteral("Starting..."));

    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_EQ(server.requests()[0].method, QByteArray("GET"));
    EXPECT_EQ(server.requests()[0].path, QByteArray("/Downloadables/version.php"));
}

TEST_F(SplashScreenTest, TheAnnouncementComesAgainAtTheNextStart) {
    serveVersion("2.0\n");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update available"));

    ModalDriver nextStart;
    nextStart.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(nextStart), SplashScreen::StartProgram);
    ASSERT_EQ(nextStart.boxes().size(), 1);
    EXPECT_EQ(nextStart.boxes()[0].title, QStringLiteral("Update available"));
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 2);
}

TEST_F(SplashScreenTest, EqualVersionOffersNothing) {
    serveVersion("1.20205\n");
    ModalDriver driver;
    QString progress;
    bool failed = true;
    EXPECT_EQ(runSplash(driver, &progress, &failed), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_FALSE(failed);
    EXPECT_EQ(progress, QStringLiteral("Starting..."));
}

TEST_F(SplashScreenTest, SmallestNewerFloatIsOffered) {
    serveVersion("1.20206");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update available"));
}

TEST_F(SplashScreenTest, OlderVersionOffersNothing) {
    serveVersion("1.19\n");
    ModalDriver driver;
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, GarbageOffersNothingAndWarnsOfNothing) {
    serveVersion("<html><body>Maintenance</body></html>\n9.9\n");
    ModalDriver driver;
    bool failed = true;
    EXPECT_EQ(runSplash(driver, nullptr, &failed), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_FALSE(failed);
    EXPECT_FALSE(setting(QStringLiteral("PreStarter/ignoreInternetWarning")).isValid());
}

TEST_F(SplashScreenTest, EmptyBodyOffersNothing) {
    serveVersion("");
    ModalDriver driver;
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, Http404FailsWithoutABoxInTheSplash) {
    serveVersion("2.0\n", 404);
    ModalDriver driver;
    QString progress;
    bool failed = false;
    EXPECT_EQ(runSplash(driver, &progress, &failed), SplashScreen::StartProgram);
    EXPECT_TRUE(failed);
    // The warning waits for the main window.
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_EQ(progress, QStringLiteral("Starting..."));
}

TEST_F(SplashScreenTest, StatusOtherThan200IsAFailureEvenWithAVersion) {
    serveVersion("2.0\n", 500);
    ModalDriver driver;
    bool failed = false;
    EXPECT_EQ(runSplash(driver, nullptr, &failed), SplashScreen::StartProgram);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, NoServerFailsAndStartsTheProgramAtOnce) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost, 0));
    const quint16 port = closed.serverPort();
    closed.close(); // nothing listens there now: the connection is refused
    ServerOverride nowhere(QStringLiteral("http://127.0.0.1:%1").arg(port));

    ModalDriver driver;
    bool failed = false;
    qint64 elapsed = 0;
    EXPECT_EQ(runSplash(driver, nullptr, &failed, &elapsed), SplashScreen::StartProgram);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(driver.boxes().isEmpty());
    // Only the shortest show time and the board tables.
    EXPECT_GE(elapsed, SplashScreen::shortestShowMs);
    EXPECT_LT(elapsed, SplashScreen::shortestShowMs + 1500);
}

TEST_F(SplashScreenTest, UnknownHostFails) {
    ServerOverride nowhere(QStringLiteral("http://quorvane-version-check.invalid"));
    ModalDriver driver;
    bool failed = false;
    EXPECT_EQ(runSplash(driver, nullptr, &failed), SplashScreen::StartProgram);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, ServerThatNeverAnswersFailsAtTheTimeOut) {
    server.answer("/Downloadables/version.php", {200, "", 0, true});
    ModalDriver driver(3 * SplashScreen::versionCheckTimeoutMs);
    bool failed = false;
    qint64 elapsed = 0;
    EXPECT_EQ(runSplash(driver, nullptr, &failed, &elapsed), SplashScreen::StartProgram);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 1);
    EXPECT_GE(elapsed, SplashScreen::versionCheckTimeoutMs);
    EXPECT_LT(elapsed, SplashScreen::versionCheckTimeoutMs + 1500);
}

TEST_F(SplashScreenTest, AnAnswerAfterTheTimeOutComesTooLate) {
    server.answer("/Downloadables/version.php",
                  {200, "1.20205\n", SplashScreen::versionCheckTimeoutMs + 2000, false});
    ModalDriver driver(3 * SplashScreen::versionCheckTimeoutMs);
    bool failed = false;
    qint64 elapsed = 0;
    EXPECT_EQ(runSplash(driver, nullptr, &failed, &elapsed), SplashScreen::StartProgram);
    EXPECT_TRUE(failed);
    EXPECT_LT(elapsed, SplashScreen::versionCheckTimeoutMs + 1500);
}

TEST_F(SplashScreenTest, AQuickAnswerStillShowsTheSplashForItsShortestTime) {
    serveVersion("1.20205\n");
    ModalDriver driver;
    qint64 elapsed = 0;
    EXPECT_EQ(runSplash(driver, nullptr, nullptr, &elapsed), SplashScreen::StartProgram);
    EXPECT_GE(elapsed, SplashScreen::shortestShowMs);
    EXPECT_LT(elapsed, SplashScreen::shortestShowMs + 1500);
}

TEST_F(SplashScreenTest, CheckForUpdatesFalseStillSendsTheRequest) {
    QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"))
        .setValue(QStringLiteral("optionmenu/checkForUpdates"), false);
    serveVersion("3.0\n");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 1);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update available"));
    // Read, never written.
    EXPECT_FALSE(setting(QStringLiteral("optionmenu/checkForUpdates")).toBool());
}

// ---- The warning of a failed check, over the main window -----------------------------------

class FailedCheckWarningTest : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).clear();
        window.resize(800, 500);
        window.show();
    }

    QWidget window;
};

TEST_F(FailedCheckWarningTest, NamesTheDownloadPageAndDoesNotWait) {
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    QMessageBox* box = warnOfFailedUpdateCheck(&window);
    ASSERT_NE(box, nullptr);
    // Returned at once: the box is up, unanswered, over the window.
    EXPECT_TRUE(box->isVisible());
    EXPECT_EQ(box->parentWidget(), &window);
    EXPECT_EQ(box->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(box->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_FALSE(box->text().contains(QStringLiteral(".exe")));
    // The download page is a link the user can click.
    const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->openExternalLinks());
    EXPECT_TRUE(label->textInteractionFlags().testFlag(Qt::LinksAccessibleByMouse));
    QPointer<QMessageBox> alive(box);
    ASSERT_TRUE(waitUntil([&driver] { return !driver.boxes().isEmpty(); }));
    const ModalDriver::SeenBox& seen = driver.boxes()[0];
    EXPECT_EQ(seen.title, QStringLiteral("Update Check Failed"));
    EXPECT_EQ(seen.text, updateCheckFailedText);
    EXPECT_EQ(seen.buttons, QMessageBox::Ok | QMessageBox::Ignore);
    EXPECT_EQ(seen.icon, QMessageBox::Warning);
    EXPECT_FALSE(seen.parentless);
    EXPECT_TRUE(waitUntil([&alive] { return alive.isNull(); }));
    // Ok keeps the warning for the next start.
    EXPECT_FALSE(setting(QStringLiteral("PreStarter/ignoreInternetWarning")).toBool());
}

TEST_F(FailedCheckWarningTest, IgnoreIsWrittenAndHonouredAtTheNextStart) {
    ModalDriver driver;
    driver.press(QMessageBox::Ignore);
    QPointer<QMessageBox> box = warnOfFailedUpdateCheck(&window);
    ASSERT_FALSE(box.isNull());
    ASSERT_TRUE(waitUntil([&box] { return box.isNull(); }));
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_TRUE(setting(QStringLiteral("PreStarter/ignoreInternetWarning")).toBool());

    ModalDriver nextStart;
    EXPECT_EQ(warnOfFailedUpdateCheck(&window), nullptr);
    QCoreApplication::processEvents();
    EXPECT_TRUE(nextStart.boxes().isEmpty());
}

TEST_F(FailedCheckWarningTest, StoredIgnoreSuppressesTheWarning) {
    QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"))
        .setValue(QStringLiteral("PreStarter/ignoreInternetWarning"), true);
    ModalDriver driver;
    EXPECT_EQ(warnOfFailedUpdateCheck(&window), nullptr);
    QCoreApplication::processEvents();
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, LookOfTheWindow) {
    serveVersion("1.20205\n", 200);
    server.answer("/Downloadables/version.php", {200, "1.20205\n", 60000, false});
    SplashScreen splash;
    EXPECT_EQ(splash.objectName(), QStringLiteral("SplashScreen"));
    const Qt::WindowFlags flags = splash.windowFlags();
    EXPECT_EQ(flags & Qt::WindowType_Mask, Qt::ToolTip);
    EXPECT_TRUE(flags.testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(splash.testAttribute(Qt::WA_TranslucentBackground));
    for (const char* name : {"upperWidget", "label", "widget", "label_2", "action", "lowerWidget"})
        EXPECT_NE(splash.findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    const auto* logo = splash.findChild<QLabel*>(QStringLiteral("label"));
    ASSERT_NE(logo, nullptr);

    EXPECT_FALSE(logo->pixmap(Qt::ReturnByValue).isNull());
    EXPECT_TRUE(logo->hasScaledContents());
    EXPECT_EQ(splash.findChild<QLabel*>(QStringLiteral("label_2"))->text(),
              QStringLiteral("<h1>Velmara Quorvane</h1>"));
    EXPECT_EQ(splash.findChild<QLabel*>(QStringLiteral("action"))->text(),
              QStringLiteral("Searching for Updates..."));
    EXPECT_TRUE(splash.styleSheet().contains(QStringLiteral("QDialog,#SplashScreen")));
    EXPECT_TRUE(splash.styleSheet().contains(QStringLiteral("rgba(255, 255, 255, 0%)")));

    splash.show();
    QCoreApplication::processEvents();
    const QString path = QString::fromStdString(TestEnvironment::outputFolder()) +
                         QStringLiteral("/app-splash-screen.png");
    EXPECT_TRUE(splash.grab().save(path));
    splash.hide();
}

} // namespace
