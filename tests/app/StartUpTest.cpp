// Release notes once per version, the updater launch, the process list, the program
// version texts and the server address.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "QtPrinting.h"
#include "WaitUntil.h"
#include "support/TestEnvironment.h"

#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "app/StartUp.h"
#include "quorvane/Version.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPointer>
#include <QProcess>
#include <QRandomGenerator>
#include <QScreen>
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
        EXPECT_EQ(ProductServer::downloadAddress(),
                  QStringLiteral("https://www.quorvane.com/download"));
    }
    ServerOverride empty(QString{});
    EXPECT_EQ(ProductServer::baseUrl(), QStringLiteral("https://www.quorvane.com"));
}

// ---- Release notes ------------------------------------------------------------------------

const QByteArray serverNotes = "<html><body><h2>Quorvane 1.20.2</h2><ul><li>Faster board hits.</li>"
                               "<li>Hand histories of more sites.</li></ul></body></html>";

QString shownText(const ReleaseNoteDialog& dialog) {
    return dialog.webView()->page()->mainFrame()->toPlainText();
}

class ReleaseNotesTest : public ::testing::Test {
protected:
    void SetUp() override {
        appSettings().clear();
        server.answer("/changeLogContent.php",
                      {200, serverNotes, 0, false, "text/html; charset=utf-8"});
        window.resize(900, 600);
        window.show();
    }

    // Calls showReleaseNotesIfNew over the window; returns how many dialogs it opened. The
    // first one is checked, photographed and closed.
    int showAndCount(const QString& screenshotName = QString()) {
        ModalDriver driver; // no modal window may come
        ReleaseNoteDialog* dialog = showReleaseNotesIfNew(&window);
        if (!dialog)
            return 0;
        QPointer<ReleaseNoteDialog> alive(dialog);
        checkDialog(*dialog, screenshotName);
        dialog->close(); // deletes itself, later
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(alive.isNull());
        EXPECT_TRUE(driver.boxes().isEmpty());
        return 1;
    }

    void checkDialog(ReleaseNoteDialog& dialog, const QString& screenshotName) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Quorvane - Release Notes"));
        EXPECT_EQ(dialog.size(), QSize(647, 436));
        EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
        EXPECT_FALSE(dialog.windowIcon().isNull());
        // Over the main window, which it does not hold back.
        EXPECT_EQ(dialog.parentWidget(), &window);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(dialog.isModal());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        QWebView* view = dialog.webView();
        EXPECT_TRUE(view->renderHints().testFlag(QPainter::TextAntialiasing));
        EXPECT_TRUE(waitUntil([&dialog] { return dialog.settled(); }));
        EXPECT_EQ(dialog.source(), ReleaseNoteDialog::Source::Server);
        EXPECT_TRUE(shownText(dialog).contains(QStringLiteral("Faster board hits.")));
        // Rendered as a page, not shown as source.
        EXPECT_FALSE(shownText(dialog).contains(QStringLiteral("<li>")));
        if (!screenshotName.isEmpty())
            dialog.grab().save(QString::fromStdString(TestEnvironment::outputFolder()) + "/" +
                               screenshotName);
    }

    LocalHttpServer server;
    ServerOverride serverOverride{server.baseUrl()};
    QWidget window;
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
    EXPECT_EQ(server.requestCount("/changeLogContent.php"), 0);
}

TEST_F(ReleaseNotesTest, GreaterStoredVersionShowsNothingAndIsKept) {
    appSettings().setValue(QStringLiteral("releaseNoteVersion"), 1.3f);
    EXPECT_EQ(showAndCount(), 0);
    EXPECT_EQ(appSettings().value(QStringLiteral("releaseNoteVersion")).toFloat(), 1.3f);
}

TEST(BundledReleaseNotes, AreThisVersionsNotes) {
    const QString notes = ReleaseNoteDialog::bundledNotes();
    ASSERT_FALSE(notes.isEmpty());
    EXPECT_TRUE(
        notes.contains(QStringLiteral("Quorvane ") + QString::fromStdString(Version::aboutText())));
}

// The server's page fails in one of many ways: the dialog keeps the bundled notes and never
// shows what the server sent instead.
class ReleaseNotesFallbackTest : public ::testing::Test {
protected:
    void expectBundledNotes(const char* screenshotName = nullptr) {
        ReleaseNoteDialog dialog;
        dialog.show();
        // The bundled notes are there at once, before the server answered.
        EXPECT_TRUE(waitUntil(
            [&dialog] {
                return shownText(dialog).contains(
                    QStringLiteral("These notes come with the program."));
            },
            3000));
        QElapsedTimer clock;
        clock.start();
        EXPECT_TRUE(waitUntil([&dialog] { return dialog.settled(); },
                              ReleaseNoteDialog::pageTimeoutMs + 3000));
        EXPECT_LE(clock.elapsed(), ReleaseNoteDialog::pageTimeoutMs + 1000);
        EXPECT_EQ(dialog.source(), ReleaseNoteDialog::Source::Bundled);
        const QString text = shownText(dialog);
        EXPECT_TRUE(text.contains(QString::fromStdString(Version::aboutText())))
            << qPrintable(text);
        EXPECT_FALSE(text.contains(QStringLiteral("Error"), Qt::CaseInsensitive))
            << qPrintable(text);
        EXPECT_FALSE(text.contains(QStringLiteral("404")));
        if (screenshotName)
            dialog.grab().save(QString::fromStdString(TestEnvironment::outputFolder()) + "/" +
                               screenshotName);
    }

    LocalHttpServer server;
};

TEST_F(ReleaseNotesFallbackTest, HttpErrorPageIsNeverShown) {
    server.answer(
        "/changeLogContent.php",
        {404, "<html><body><h1>Error code: 404</h1></body></html>", 0, false, "text/html"});
    ServerOverride local(server.baseUrl());
    expectBundledNotes("app-release-notes-offline.png");
    EXPECT_EQ(server.requestCount("/changeLogContent.php"), 1);
}

TEST_F(ReleaseNotesFallbackTest, ServerErrorKeepsTheBundledNotes) {
    server.answer("/changeLogContent.php",
                  {500, "<html>Internal Server Error</html>", 0, false, "text/html"});
    ServerOverride local(server.baseUrl());
    expectBundledNotes();
}

TEST_F(ReleaseNotesFallbackTest, EmptyPageKeepsTheBundledNotes) {
    server.answer("/changeLogContent.php", {200, "  \n", 0, false, "text/html"});
    ServerOverride local(server.baseUrl());
    expectBundledNotes();
}

TEST_F(ReleaseNotesFallbackTest, RefusedConnectionKeepsTheBundledNotes) {
    ServerOverride nowhere(QStringLiteral("http://127.0.0.1:1"));
    expectBundledNotes();
}

TEST_F(ReleaseNotesFallbackTest, ServerThatNeverAnswersTimesOut) {
    server.answer("/changeLogContent.php", {200, serverNotes, 0, true});
    ServerOverride local(server.baseUrl());
    expectBundledNotes();
}

TEST_F(ReleaseNotesFallbackTest, LateButGoodPageReplacesTheBundledNotes) {
    server.answer("/changeLogContent.php", {200, serverNotes, 800, false, "text/html"});
    ServerOverride local(server.baseUrl());
    ReleaseNoteDialog dialog;
    EXPECT_EQ(dialog.source(), ReleaseNoteDialog::Source::Bundled);
    ASSERT_TRUE(waitUntil([&dialog] { return dialog.settled(); }));
    EXPECT_EQ(dialog.source(), ReleaseNoteDialog::Source::Server);
    EXPECT_TRUE(waitUntil(
        [&dialog] { return shownText(dialog).contains(QStringLiteral("Faster board hits.")); }));
}

// ---- Updater --------------------------------------------------------------------------------

// The updater is never present beside this binary: the splash tests here announce updates
// with the download page. An installed updater is tested in tests/desktop, in another folder.
TEST(LaunchUpdater, MissingUpdaterShowsTheCriticalBoxNamingTheDownloadPage) {
    const QString updater = updaterPath();
    EXPECT_EQ(updater, QCoreApplication::applicationDirPath() + QStringLiteral("/QuorvaneUpdater"));
    ASSERT_FALSE(QFile::exists(updater));
    EXPECT_FALSE(updaterAvailable());
    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    launchUpdater();
    ASSERT_EQ(driver.boxes().size(), 1);
    const ModalDriver::SeenBox& box = driver.boxes()[0];
    EXPECT_EQ(box.title, QStringLiteral("QuorvaneUpdater not found"));
    EXPECT_EQ(box.text,
              QStringLiteral("QuorvaneUpdater could not be found. Please make sure that no files "
                             "have been deleted or install the update manually by downloading "
                             "the latest version at <a "
                             "href=\"https://www.quorvane.com/download\">"
                             "https://www.quorvane.com/download</a>"
                             "<br/><br/>We apologize for the inconvenience!"));
    EXPECT_FALSE(box.text.contains(QStringLiteral(".exe")));
    EXPECT_EQ(box.buttons, QMessageBox::Ok);
    EXPECT_EQ(box.icon, QMessageBox::Critical);
    EXPECT_TRUE(box.parentless);
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

// The release notes and the failed-check warning open together on a first start without
// network: the warning moves to where it covers nothing of the notes.
TEST(KeepClearOf, TheSecondWindowOfTheStartCoversNothingOfTheFirst) {
    QWidget notes;
    notes.setWindowTitle(QStringLiteral("Notes"));
    notes.resize(500, 300);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    notes.move(screen.center() - QPoint(250, 150));
    notes.show();
    QWidget box;
    box.resize(300, 120);
    box.move(notes.pos() + QPoint(100, 100)); // right over the notes, as a centred box is
    box.show();
    ASSERT_TRUE(box.frameGeometry().intersects(notes.frameGeometry()));
    keepClearOf(box, notes);
    EXPECT_FALSE(box.frameGeometry().intersects(notes.frameGeometry()));
    EXPECT_TRUE(screen.contains(box.frameGeometry()));
    // Below the notes, where there is room.
    EXPECT_GT(box.frameGeometry().top(), notes.frameGeometry().bottom());
}
