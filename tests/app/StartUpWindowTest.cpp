// On a real X server: the watch for "PokerStars.exe" with BlockedWindow, also during the
// splash, and the real program started end to end. Every test that runs a process named
// "PokerStars.exe" lives in this binary, whose tests run one after the other, so that no
// other test sees such a process.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "QtPrinting.h"
#include "WaitUntil.h"
#include "support/TestEnvironment.h"

#include "app/BlockedWindow.h"
#include "app/SplashScreen.h"
#include "app/StartUp.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QSettings>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

namespace {

// A copy of /bin/sleep running under `fileName` until stopped.
class FakeProcess {
public:
    explicit FakeProcess(const QString& fileName) {
        const QString copy = folder.filePath(fileName);
        QFile::copy(QStringLiteral("/bin/sleep"), copy);
        process.start(copy, {QStringLiteral("120")});
        process.waitForStarted();
    }
    ~FakeProcess() { stop(); }
    void stop() {
        if (process.state() == QProcess::NotRunning)
            return;
        process.kill();
        process.waitForFinished();
    }
    bool running() const { return process.state() == QProcess::Running; }

private:
    QTemporaryDir folder;
    QProcess process;
};

QList<BlockedWindow*> blockedWindows() {
    QList<BlockedWindow*> found;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<BlockedWindow*>(widget))
            found.append(window);
    return found;
}

QString outputPath(const QString& name) {
    return QString::fromStdString(TestEnvironment::outputFolder()) + "/" + name;
}

// ---- The watch ------------------------------------------------------------------------------

TEST(WatchBlockingProcess, BlocksEveryTopLevelWidgetWhilePokerStarsRuns) {
    QMainWindow mainWindow;
    mainWindow.setWindowTitle(QStringLiteral("untitled.qva - Quorvane "));
    mainWindow.resize(800, 500);
    mainWindow.show();
    QDialog openDialog;
    openDialog.show();

    watchBlockingProcess();
    EXPECT_TRUE(mainWindow.isEnabled());
    EXPECT_TRUE(blockedWindows().isEmpty());

    FakeProcess pokerStars(QStringLiteral("PokerStars.exe"));
    ASSERT_TRUE(pokerStars.running());
    ASSERT_TRUE(isProcessRunning(QStringLiteral("PokerStars.exe")));
    watchBlockingProcess();
    EXPECT_FALSE(mainWindow.isEnabled());
    EXPECT_FALSE(openDialog.isEnabled());
    ASSERT_EQ(blockedWindows().size(), 1);
    BlockedWindow* blocked = blockedWindows()[0];
    EXPECT_TRUE(blocked->isVisible());
    EXPECT_TRUE(blocked->isEnabled()); // made after the widgets were disabled
    EXPECT_EQ(blocked->windowTitle(), QStringLiteral("Dialog"));
    EXPECT_EQ(blocked->objectName(), QStringLiteral("BlockScreen"));
    EXPECT_EQ(blocked->windowModality(), Qt::ApplicationModal);
    EXPECT_TRUE(blocked->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(blocked->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(blocked->parentWidget(), nullptr);
    bool noticeFound = false;
    for (QLabel* label : blocked->findChildren<QLabel*>())
        noticeFound |=
            label->text() == QStringLiteral("Quorvane is blocked while PokerStars is opened.");
    EXPECT_TRUE(noticeFound);
    EXPECT_EQ(blocked->findChild<QLabel*>(QStringLiteral("label_2"))->text(),
              QStringLiteral("<h1>Velmara Quorvane</h1>"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(blocked->grab().save(outputPath(QStringLiteral("app-blocked-window.png"))));

    // The next tick keeps the one window and disables it like every other top-level widget.
    watchBlockingProcess();
    ASSERT_EQ(blockedWindows().size(), 1);
    EXPECT_EQ(blockedWindows()[0], blocked);
    EXPECT_FALSE(blocked->isEnabled());

    pokerStars.stop();
    watchBlockingProcess();
    EXPECT_TRUE(mainWindow.isEnabled());
    EXPECT_TRUE(openDialog.isEnabled());
    EXPECT_TRUE(blockedWindows().isEmpty());

    // Nothing to undo a second time.
    watchBlockingProcess();
    EXPECT_TRUE(mainWindow.isEnabled());
    EXPECT_TRUE(blockedWindows().isEmpty());
}

TEST(WatchBlockingProcess, OtherCaseOfTheNameBlocksNothing) {
    QMainWindow mainWindow;
    mainWindow.show();
    FakeProcess lowerCase(QStringLiteral("pokerstars.exe"));
    ASSERT_TRUE(lowerCase.running());
    EXPECT_TRUE(isProcessRunning(QStringLiteral("pokerstars.exe")));
    EXPECT_FALSE(isProcessRunning(QStringLiteral("PokerStars.exe")));
    watchBlockingProcess();
    EXPECT_TRUE(mainWindow.isEnabled());
    EXPECT_TRUE(blockedWindows().isEmpty());
}

TEST(WatchBlockingProcess, TheTimerBlocksAndReleasesWithinItsPeriod) {
    QMainWindow mainWindow;
    mainWindow.show();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, &watchBlockingProcess);
    watch.start(2000);

    FakeProcess pokerStars(QStringLiteral("PokerStars.exe"));
    EXPECT_TRUE(waitUntil([] { return blockedWindows().size() == 1; }, 4500));
    EXPECT_FALSE(mainWindow.isEnabled());

    pokerStars.stop();
    EXPECT_TRUE(waitUntil([] { return blockedWindows().isEmpty(); }, 4500));
    EXPECT_TRUE(mainWindow.isEnabled());
}

TEST(WatchBlockingProcess, PokerStarsStartedDuringTheSplash) {
    QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane")).clear();
    LocalHttpServer server;
    // The watch runs from before the splash, as in `main`; its first tick comes while the
    // splash waits for the reply, which comes within the version check's time-out.
    server.answer("/Downloadables/version.php", {200, "1.20205\n", 1300, false});
    ServerOverride serverOverride(server.baseUrl());
    static_assert(1300 < SplashScreen::versionCheckTimeoutMs, "the reply must count");

    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, &watchBlockingProcess);
    watch.start(2000);
    FakeProcess pokerStars(QStringLiteral("PokerStars.exe"));
    waitUntil([] { return false; }, 1200); // the start before the splash

    ModalDriver driver;
    driver.ignore("SplashScreen");
    driver.ignore("BlockedWindow");
    SplashScreen splash;
    bool splashWasBlocked = false;
    QTimer::singleShot(1100, &splash, [&] {
        splashWasBlocked = !splash.isEnabled() && blockedWindows().size() == 1;
        if (splashWasBlocked)
            splash.grab().save(outputPath(QStringLiteral("app-splash-while-blocked.png")));
    });
    splash.exec();

    EXPECT_TRUE(splashWasBlocked);
    // The reply handler ran nevertheless and the program goes on.
    EXPECT_EQ(splash.startUpStatus(), SplashScreen::StartProgram);
    EXPECT_TRUE(driver.boxes().isEmpty());
    EXPECT_EQ(blockedWindows().size(), 1);

    QMainWindow mainWindow;
    mainWindow.show();
    EXPECT_TRUE(waitUntil([&mainWindow] { return !mainWindow.isEnabled(); }, 4500));
    pokerStars.stop();
    EXPECT_TRUE(
        waitUntil([&] { return mainWindow.isEnabled() && blockedWindows().isEmpty(); }, 4500));
    EXPECT_TRUE(splash.isEnabled());
}

// ---- The real program ---------------------------------------------------------------------

class EndToEnd : public ::testing::Test {
protected:
    // Runs the program with its own user folders and `server`, asking it to photograph its
    // main window into `picture` and quit. Returns false when it did not end in time.
    bool runProgram(const QString& serverUrl, const QString& picture,
                    const std::function<void(QSettings&)>& seedSettings) {
        QTemporaryDir home;
        home.setAutoRemove(true);
        {
            QSettings settings(home.path() + QStringLiteral("/config/Velmara/Quorvane.conf"),
                               QSettings::IniFormat);
            seedSettings(settings);
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path() + "/config");
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home.path() + "/data");
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), home.path() + "/cache");
        environment.insert(QStringLiteral("QUORVANE_SERVER"), serverUrl);
        environment.insert(QStringLiteral("QUORVANE_SCREENSHOT_AND_QUIT"), picture);
        QFile::remove(picture);

        QProcess program;
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        const QString path =
            qEnvironmentVariable("QUORVANE_BUILD_DIR") + QStringLiteral("/quorvane");
        program.start(path, QStringList());
        if (!program.waitForStarted(10000)) {
            ADD_FAILURE() << "cannot start " << path.toStdString();
            return false;
        }
        // The local server answers from this event loop, so wait here, not in waitForFinished.
        const bool ended =
            waitUntil([&program] { return program.state() == QProcess::NotRunning; }, 60000);
        if (!ended) {
            program.kill();
            program.waitForFinished();
            return false;
        }
        exitStatus = program.exitStatus();
        exitCode = program.exitCode();
        releaseNoteVersion =
            QSettings(home.path() + QStringLiteral("/config/Velmara/Quorvane.conf"),
                      QSettings::IniFormat)
                .value(QStringLiteral("releaseNoteVersion"));
        return true;
    }

    QProcess::ExitStatus exitStatus = QProcess::CrashExit;
    int exitCode = -1;
    QVariant releaseNoteVersion;
};

TEST_F(EndToEnd, ReachesTheMainWindowAndQuitsCleanly) {
    LocalHttpServer server;
    server.answer("/Downloadables/version.php", {200, "1.20205\n", 0, false});
    const QString picture = outputPath(QStringLiteral("app-main-window.png"));
    ASSERT_TRUE(runProgram(server.baseUrl(), picture, [](QSettings& settings) {
        settings.setValue(QStringLiteral("releaseNoteVersion"), 1.20205f); // seen already
    }));
    EXPECT_EQ(exitStatus, QProcess::NormalExit);
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(server.requestCount("/Downloadables/version.php"), 1);
    EXPECT_EQ(server.requestCount("/changeLogContent.php"), 0);
    const QImage image(picture);
    ASSERT_FALSE(image.isNull());
    EXPECT_GT(image.width(), 0);
}

TEST_F(EndToEnd, WithoutNetworkAndTheWarningIgnoredItStartsAllTheSame) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost, 0));
    const QString nowhere = QStringLiteral("http://127.0.0.1:%1").arg(closed.serverPort());
    closed.close();
    const QString picture = outputPath(QStringLiteral("app-main-window-offline.png"));
    ASSERT_TRUE(runProgram(nowhere, picture, [](QSettings& settings) {
        settings.setValue(QStringLiteral("releaseNoteVersion"), 1.20205f);
        settings.setValue(QStringLiteral("PreStarter/ignoreInternetWarning"), true);
    }));
    EXPECT_EQ(exitStatus, QProcess::NormalExit);
    EXPECT_EQ(exitCode, 0);
    EXPECT_FALSE(QImage(picture).isNull());
}

} // namespace
