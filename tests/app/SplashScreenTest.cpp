// The version check of the splash against a local HTTP server.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "QtPrinting.h"
#include "support/TestEnvironment.h"

#include "app/ProductServer.h"
#include "app/SplashScreen.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPixmap>
#include <QSettings>
#include <QTcpServer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

const QString updateCheckFailedText = QStringLiteral(
    "Check for updates failed. Please make sure that this software has sufficient permissions "
    "to access the internet. Otherwise, checks for updates cannot be performed. Alternatively, "
    "you can get the newest update by starting QuorvaneUpdater.exe or download it at "
    "https://www.quorvane.com<br/><br/>Press Ignore to disable this warning in the future.");

class SplashScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).clear();
    }

    void serveVersion(const QByteArray& body, int status = 200) {
        server.answer("/Downloadables/version.php", {status, body, 0, false});
    }

    // Runs one splash like `main` does and returns its start-up status; the last text of
    // the progress line goes to `progressText`.
    int runSplash(ModalDriver& driver, QString* progressText = nullptr) {
        driver.ignore("SplashScreen");
        SplashScreen splash;
        splash.exec();
        if (progressText)
            *progressText = splash.findChild<QLabel*>(QStringLiteral("action"))->text();
        EXPECT_FALSE(driver.timedOut());
        return splash.startUpStatus();
    }

    static QVariant setting(const QString& key) {
        return QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).value(key);
    }

    LocalHttpServer server;
    ServerOverride serverOverride{server.baseUrl()};
};

TEST_F(SplashScreenTest, NewerVersionOffersUpdateAndOkChoosesIt) {
    serveVersion("1.3\nSome notes for the updater\n");
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    QString progress;
    EXPECT_EQ(runSplash(driver, &progress), SplashScreen::InstallUpdate);

    ASSERT_EQ(driver.boxes().size(), 1);
    const ModalDriver::SeenBox& box = driver.boxes()[0];
    EXPECT_EQ(box.title, QStringLiteral("Update available"));
    EXPECT_EQ(box.text, QStringLiteral("An update is available. Press Ok to install it."));
    EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_EQ(box.icon, QMessageBox::Information);
    EXPECT_TRUE(box.flags.testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(box.flags.testFlag(Qt::MSWindowsFixedSizeDialogHint));
    EXPECT_TRUE(box.hasWindowIcon);
    EXPECT_TRUE(box.parentless);
    EXPECT_EQ(driver.unexpectedBoxes(), 0);
    // The last stage never ran: the update ends the start-up.
    EXPECT_EQ(progress, QStringLiteral("Searching for Updates..."));

    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_EQ(server.requests()[0].method, QByteArray("GET"));
    EXPECT_EQ(server.requests()[0].path, QByteArray("/Downloadables/version.php"));
}

TEST_F(SplashScreenTest, CancelStartsNormallyAndTheOfferComesAgainAtTheNextStart) {
    serveVersion("2.0\n");
    ModalDriver driver;
    driver.press(QMessageBox::Cancel);
    QString progress;
    EXPECT_EQ(runSplash(driver, &progress), SplashScreen::StartProgram);
    EXPECT_EQ(progress, QStringLiteral("Starting..."));
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update available"));

    ModalDriver nextStart;
    nextStart.press(QMessageBox::Cancel);
    EXPECT_EQ(runSplash(nextStart), SplashScreen::StartProgram);
    ASSERT_EQ(nextStart.boxes().size(), 1);
    EXPECT_EQ(nextStart.boxes()[0].title, QStringLiteral("Update available"));
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 2);
}

TEST_F(SplashScreenTest, EqualVersionOffersNothing) {
    serveVersion("1.20205\n");
    ModalDriver driver;
    QString progress;
    EXPECT_EQ(runSplash(driver, &progress), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_EQ(progress, QStringLiteral("Starting..."));
}

TEST_F(SplashScreenTest, SmallestNewerFloatIsOffered) {
    serveVersion("1.20206");
    ModalDriver driver;
    driver.press(QMessageBox::Cancel);
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
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_FALSE(setting(QStringLiteral("PreStarter/ignoreInternetWarning")).isValid());
}

TEST_F(SplashScreenTest, EmptyBodyOffersNothing) {
    serveVersion("");
    ModalDriver driver;
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, Http404WarnsAndOkKeepsTheWarning) {
    serveVersion("2.0\n", 404);
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    const ModalDriver::SeenBox& box = driver.boxes()[0];
    EXPECT_EQ(box.title, QStringLiteral("Update Check Failed"));
    EXPECT_EQ(box.text, updateCheckFailedText);
    EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Ignore);
    EXPECT_EQ(box.icon, QMessageBox::Warning);
    EXPECT_TRUE(box.parentless);
    EXPECT_FALSE(setting(QStringLiteral("PreStarter/ignoreInternetWarning")).toBool());
}

TEST_F(SplashScreenTest, StatusOtherThan200IsAFailureEvenWithAVersion) {
    serveVersion("2.0\n", 500);
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update Check Failed"));
}

TEST_F(SplashScreenTest, IgnoreIsWrittenAndHonouredAtTheNextStart) {
    serveVersion("", 404);
    ModalDriver driver;
    driver.press(QMessageBox::Ignore);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_TRUE(setting(QStringLiteral("PreStarter/ignoreInternetWarning")).toBool());

    ModalDriver nextStart;
    EXPECT_EQ(runSplash(nextStart), SplashScreen::StartProgram);
    EXPECT_TRUE(nextStart.boxes().isEmpty());
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 2);
}

TEST_F(SplashScreenTest, StoredIgnoreSuppressesTheWarning) {
    QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"))
        .setValue(QStringLiteral("PreStarter/ignoreInternetWarning"), true);
    serveVersion("", 404);
    ModalDriver driver;
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
}

TEST_F(SplashScreenTest, NoServerWarnsAndStartsTheProgram) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost, 0));
    const quint16 port = closed.serverPort();
    closed.close(); // nothing listens there now: the connection is refused
    ServerOverride nowhere(QStringLiteral("http://127.0.0.1:%1").arg(port));

    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update Check Failed"));
}

TEST_F(SplashScreenTest, UnknownHostWarns) {
    ServerOverride nowhere(QStringLiteral("http://quorvane-version-check.invalid"));
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update Check Failed"));
}

TEST_F(SplashScreenTest, ServerThatNeverAnswersFailsAfterTheTimeOut) {
    server.answer("/Downloadables/version.php", {200, "", 0, true});
    ModalDriver driver(3 * SplashScreen::versionCheckTimeoutMs);
    driver.press(QMessageBox::Ok);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update Check Failed"));
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 1);
}

TEST_F(SplashScreenTest, CheckForUpdatesFalseStillSendsTheRequest) {
    QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"))
        .setValue(QStringLiteral("optionmenu/checkForUpdates"), false);
    serveVersion("3.0\n");
    ModalDriver driver;
    driver.press(QMessageBox::Cancel);
    EXPECT_EQ(runSplash(driver), SplashScreen::StartProgram);
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 1);
    ASSERT_EQ(driver.boxes().size(), 1);
    EXPECT_EQ(driver.boxes()[0].title, QStringLiteral("Update available"));
    // Read, never written.
    EXPECT_FALSE(setting(QStringLiteral("optionmenu/checkForUpdates")).toBool());
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
