// Release notes once per version, the updater launch, the process list, the program
// version texts and the server address.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "QtPrinting.h"
#include "support/TestEnvironment.h"

#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "app/StartUp.h"
#include "quorvane/Version.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QUrl>
#include <QWebFrame>
#include <QWebView>
#include <boost/lexical_cast.hpp>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

namespace {

QSettings appSettings() {
    return QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
}

// Runs the event loop until `done` holds or `limitMs` passed; returns `done()`.
bool waitUntil(const std::function<bool()>& done, int limitMs = 10000) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < limitMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

// ---- Program version -------------------------------------------------------------------

TEST(Version, IsTheSinglePrecisionConstant) {
    const float version = Version::program;
    quint32 bits = 0;
    std::memcpy(&bits, &version, sizeof bits);
    EXPECT_EQ(bits, 0x3F99DCC6u);
}

TEST(Version, Texts) {
    EXPECT_EQ(Version::crashReportText(), "1.20205");
    EXPECT_EQ(Version::fileText(), "1.20204997");
    EXPECT_EQ(Version::fileText(), boost::lexical_cast<std::string>(Version::program));
    EXPECT_EQ(Version::aboutText(), "v1.20.2");
    // The nine-digit text reads back to the same float.
    EXPECT_EQ(std::stof(Version::fileText()), Version::program);
}

// ---- Server address ----------------------------------------------------------------------

TEST(ProductServer, BuiltInAddressAndOverride) {
    qunsetenv("QUORVANE_SERVER");
    EXPECT_EQ(ProductServer::baseUrl(), QStringLiteral("https://www.quorvane.com"));
    EXPECT_EQ(ProductServer::url(QStringLiteral("/Downloadables/version.php")).toString(),
              QStringLiteral("https://www.quorvane.com/Downloadables/version.php"));
    {
        ServerOverride local(QStringLiteral("http://127.0.0.1:8123/"));
        EXPECT_EQ(ProductServer::baseUrl(), QStringLiteral("http://127.0.0.1:8123"));
        EXPECT_EQ(ProductServer::url(QStringLiteral("/crashReports/crashrprt.php")).toString(),
                  QStringLiteral("http://127.0.0.1:8123/crashReports/crashrprt.php"));
        // What users read stays the public address.
        EXPECT_EQ(ProductServer::webAddress(), QStringLiteral("https://www.quorvane.com"));
    }
    ServerOverride empty(QString{});
    EXPECT_EQ(ProductServer::baseUrl(), QStringLiteral("https://www.quorvane.com"));
}

// ---- Release notes ------------------------------------------------------------------------

class ReleaseNotesTest : public ::testing::Test {
protected:
    void SetUp() override {
        appSettings().clear();
        server.answer("/changeLogContent.php",
                      {200,
                       "<html><body><h2>Quorvane 1.20.2</h2><ul><li>Faster board hits.</li>"
                       "<li>Hand histories of more sites.</li></ul></body></html>",
                       0, false, "text/html; charset=utf-8"});
    }

    // Calls showReleaseNotesIfNew; returns how many release note dialogs it ran. The first
    // one is checked, photographed and closed with Ok.
    int showAndCount(const QString& screenshotName = QString()) {
        int shown = 0;
        ModalDriver driver;
        driver.onOtherModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<ReleaseNoteDialog*>(modal);
            ASSERT_NE(dialog, nullptr) << modal->metaObject()->className();
            ++shown;
            checkDialog(*dialog, screenshotName);
            dialog->accept();
        });
        showReleaseNotesIfNew();
        EXPECT_FALSE(driver.timedOut());
        EXPECT_EQ(driver.boxes().size(), 0);
        return shown;
    }

    void checkDialog(ReleaseNoteDialog& dialog, const QString& screenshotName) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Quorvane - Release Notes"));
        EXPECT_EQ(dialog.size(), QSize(647, 436));
        EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
        EXPECT_FALSE(dialog.windowIcon().isNull());
        EXPECT_EQ(dialog.parentWidget(), nullptr);
        QWebView* view = dialog.webView();
        EXPECT_TRUE(view->renderHints().testFlag(QPainter::TextAntialiasing));
        EXPECT_TRUE(waitUntil([view] {
            return view->page()->mainFrame()->toPlainText().contains(
                QStringLiteral("Faster board hits."));
        }));
        EXPECT_EQ(view->url().toString(),
                  server.baseUrl() + QStringLiteral("/changeLogContent.php"));
        // Rendered as a page, not shown as source.
        EXPECT_FALSE(view->page()->mainFrame()->toPlainText().contains(QStringLiteral("<li>")));
        if (!screenshotName.isEmpty())
            dialog.grab().save(QString::fromStdString(TestEnvironment::outputFolder()) + "/" +
                               screenshotName);
    }

    LocalHttpServer server;
    ServerOverride serverOverride{server.baseUrl()};
};

TEST_F(ReleaseNotesTest, FirstStartShowsThemOnceAndStoresTheVersion) {
    EXPECT_EQ(showAndCount(QStringLiteral("app-release-notes.png")), 1);
    EXPECT_EQ(appSettings().value(QStringLiteral("releaseNoteVersion")).toFloat(),
              Version::program);
    EXPECT_EQ(server.requestCount("/changeLogContent.php"), 1);
    // The stored float reads back equal: the next start shows nothing.
    EXPECT_EQ(showAndCount(), 0);
}

TEST_F(ReleaseNotesTest, OlderStoredVersionShowsThem) {
    appSettings().setValue(QStringLiteral("releaseNoteVersion"), 1.2f);
    EXPECT_EQ(showAndCount(), 1);
    EXPECT_EQ(appSettings().value(QStringLiteral("releaseNoteVersion")).toFloat(),
              Version::program);
}

TEST_F(ReleaseNotesTest, EqualStoredVersionShowsNothing) {
    appSettings().setValue(QStringLiteral("releaseNoteVersion"), Version::program);
    EXPECT_EQ(showAndCount(), 0);
}

TEST_F(ReleaseNotesTest, GreaterStoredVersionShowsNothingAndIsKept) {
    appSettings().setValue(QStringLiteral("releaseNoteVersion"), 1.3f);
    EXPECT_EQ(showAndCount(), 0);
    EXPECT_EQ(appSettings().value(QStringLiteral("releaseNoteVersion")).toFloat(), 1.3f);
}

TEST_F(ReleaseNotesTest, UnreachablePageSaysSo) {
    server.answer("/changeLogContent.php", {404, "", 0, false});
    ServerOverride nowhere(QStringLiteral("http://127.0.0.1:1"));
    ReleaseNoteDialog dialog;
    QWebView* view = dialog.webView();
    EXPECT_TRUE(waitUntil([view] {
        return view->page()->mainFrame()->toPlainText().contains(
            QStringLiteral("The release notes could not be loaded."));
    }));
}

// ---- Updater --------------------------------------------------------------------------------

TEST(LaunchUpdater, MissingUpdaterShowsTheCriticalBoxAndAPresentOneIsStarted) {
    const QString updater =
        QCoreApplication::applicationDirPath() + QStringLiteral("/QuorvaneUpdater");
    QFile::remove(updater);
    {
        ModalDriver driver;
        driver.press(QMessageBox::Ok);
        launchUpdater();
        ASSERT_EQ(driver.boxes().size(), 1);
        const ModalDriver::SeenBox& box = driver.boxes()[0];
        EXPECT_EQ(box.title, QStringLiteral("QuorvaneUpdater.exe not found"));
        EXPECT_EQ(box.text,
                  QStringLiteral("QuorvaneUpdater.exe could not be found. Please make sure that "
                                 "no files have been deleted or install the update manually by "
                                 "downloading the latest version at https://www.quorvane.com"
                                 "<br/><br/>We apologize for the inconvenience!"));
        EXPECT_EQ(box.buttons, QMessageBox::Ok);
        EXPECT_EQ(box.icon, QMessageBox::Critical);
        EXPECT_TRUE(box.parentless);
    }

    // A stand-in updater that leaves a mark.
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString mark = folder.filePath(QStringLiteral("updater-ran"));
    {
        QFile script(updater);
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$#\" > '" + mark.toUtf8() + "'\n");
        script.close();
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
    }
    ModalDriver driver;
    launchUpdater();
    const bool ran = waitUntil([&mark] { return QFile::exists(mark); });
    QFile::remove(updater);
    EXPECT_TRUE(ran);
    EXPECT_TRUE(driver.boxes().isEmpty());
    QFile marked(mark);
    ASSERT_TRUE(waitUntil([&marked] { return marked.size() > 0; }));
    ASSERT_TRUE(marked.open(QIODevice::ReadOnly));
    EXPECT_EQ(marked.readAll().trimmed(), QByteArray("0")); // started with no arguments
}

// ---- Process list ---------------------------------------------------------------------------

// A copy of /bin/sleep under a chosen file name, run for 60 s; killed at the end.
class NamedProcess {
public:
    NamedProcess(const QString& fileName, const QStringList& shellArguments = {}) {
        if (shellArguments.isEmpty()) {
            const QString copy = folder.filePath(fileName);
            QFile::copy(QStringLiteral("/bin/sleep"), copy);
            process.start(copy, {QStringLiteral("60")});
        } else {
            process.start(QStringLiteral("/bin/bash"), shellArguments);
        }
        process.waitForStarted();
    }
    ~NamedProcess() { stop(); }
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

// A name no other test process uses, so that tests may run side by side.
QString uniqueName(const QString& stem) {
    return QStringLiteral("%1-%2-%3.exe")
        .arg(stem)
        .arg(QCoreApplication::applicationPid())
        .arg(QRandomGenerator::global()->bounded(1000000));
}

TEST(IsProcessRunning, FindsAProcessByItsExactFileName) {
    const QString name = uniqueName(QStringLiteral("QvProbeProcess"));
    EXPECT_FALSE(isProcessRunning(name));
    NamedProcess probe(name);
    ASSERT_TRUE(probe.running());
    EXPECT_TRUE(isProcessRunning(name));
    // Another case, a prefix and a longer name are other names.
    EXPECT_FALSE(isProcessRunning(name.toLower()));
    EXPECT_FALSE(isProcessRunning(name.toUpper()));
    EXPECT_FALSE(isProcessRunning(name.left(name.size() - 4)));
    EXPECT_FALSE(isProcessRunning(name + QStringLiteral("x")));
    EXPECT_FALSE(isProcessRunning(QString()));
    probe.stop();
    EXPECT_FALSE(isProcessRunning(name));
}

TEST(IsProcessRunning, OtherCaseOfTheRunningNameIsNoMatch) {
    const QString name = uniqueName(QStringLiteral("qvcaseprobe"));
    NamedProcess probe(name);
    ASSERT_TRUE(probe.running());
    EXPECT_TRUE(isProcessRunning(name));
    EXPECT_FALSE(isProcessRunning(name.left(1).toUpper() + name.mid(1)));
}

TEST(IsProcessRunning, FindsAWindowsProgramByTheNameInItsPath) {
    // Under a compatibility layer the process list shows the Windows path of the program as
    // its first argument.
    const QString name = uniqueName(QStringLiteral("QvWindowsProbe"));
    NamedProcess probe(
        QString(), {QStringLiteral("-c"), QStringLiteral("exec -a 'C:\\Program Files\\Probe\\%1' "
                                                         "/bin/sleep 60")
                                              .arg(name)});
    ASSERT_TRUE(probe.running());
    EXPECT_TRUE(waitUntil([&name] { return isProcessRunning(name); }, 5000));
    EXPECT_FALSE(isProcessRunning(QStringLiteral("Probe\\") + name));
}

TEST(IsProcessRunning, FindsItself) {
    EXPECT_TRUE(isProcessRunning(QFileInfo(QCoreApplication::applicationFilePath()).fileName()));
}

} // namespace
