// The crash reporter: installation and its failures, the reports a crashing child process
// leaves, and sending them to the server.

#include "LocalHttpServer.h"
#include "ModalDriver.h"
#include "QtPrinting.h"
#include "WaitUntil.h"

#include "app/CrashReporter.h"
#include "app/StartUp.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cwchar>
#include <functional>

namespace {

QString lastErrorMessage() {
    wchar_t buffer[256];
    crGetLastErrorMessage(buffer, 256);
    return QString::fromWCharArray(buffer);
}

// Points XDG_DATA_HOME somewhere else for its life time.
class DataFolderOverride {
public:
    explicit DataFolderOverride(const QString& folder) : former(qgetenv("XDG_DATA_HOME")) {
        qputenv("XDG_DATA_HOME", folder.toUtf8());
    }
    ~DataFolderOverride() { qputenv("XDG_DATA_HOME", former); }

private:
    QByteArray former;
};

CrashReporterInstallInfo validRecord() {
    CrashReporterInstallInfo info;
    info.size = sizeof(info);
    info.applicationName = L"Velmara Quorvane";
    info.applicationVersion = L"1.20205";
    info.reportReceiverUrl = L"http://127.0.0.1:1/crashReports/crashrprt.php";
    info.flags = 0x5FFF;
    return info;
}

// ---- Installation ---------------------------------------------------------------------

TEST(CrashReporterInstall, RefusesMalformedRecords) {
    EXPECT_NE(crInstall(nullptr), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("The installation record is missing."));

    CrashReporterInstallInfo wrongSize = validRecord();
    wrongSize.size = 100;
    EXPECT_NE(crInstall(&wrongSize), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("The installation record has the wrong size."));

    CrashReporterInstallInfo unnamed = validRecord();
    unnamed.applicationName.clear();
    EXPECT_NE(crInstall(&unnamed), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("The application name is empty."));

    CrashReporterInstallInfo tooLong = validRecord();
    tooLong.reportReceiverUrl = std::wstring(5000, L'x');
    EXPECT_NE(crInstall(&tooLong), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("A text of the installation record is too long."));
}

TEST(CrashReporterInstall, OperationsNeedAnInstalledReporter) {
    EXPECT_NE(crAddScreenshot(crScreenshotMainWindow | crScreenshotJpeg, 95), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("The crash reporter is not installed."));
    EXPECT_NE(crUninstall(), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("The crash reporter is not installed."));
}

TEST(CrashReporterInstall, InstallScreenshotAndUninstall) {
    QTemporaryDir data;
    DataFolderOverride folder(data.path());
    const CrashReporterInstallInfo info = validRecord();
    ASSERT_EQ(crInstall(&info), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("No error."));
    EXPECT_TRUE(QFileInfo(data.path() + "/Velmara/Quorvane/crashReports").isDir());
    EXPECT_EQ(CrashReporter::reportFolder(), data.path() + "/Velmara/Quorvane/crashReports");

    EXPECT_NE(crInstall(&info), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("The crash reporter is installed already."));

    EXPECT_NE(crAddScreenshot(crScreenshotJpeg, 95), 0);
    EXPECT_EQ(lastErrorMessage(),
              QStringLiteral("Only pictures of the main window are supported."));
    EXPECT_NE(crAddScreenshot(crScreenshotMainWindow, 95), 0);
    EXPECT_EQ(lastErrorMessage(), QStringLiteral("Only JPEG pictures are supported."));
    EXPECT_NE(crAddScreenshot(9, 101), 0);
    EXPECT_EQ(lastErrorMessage(),
              QStringLiteral("The picture quality must lie between 0 and 100."));
    EXPECT_EQ(crAddScreenshot(9, 95), 0);

    EXPECT_EQ(crUninstall(), 0);
    EXPECT_NE(crUninstall(), 0);
    // Installable again after an uninstall.
    ASSERT_EQ(crInstall(&info), 0);
    EXPECT_EQ(crUninstall(), 0);
}

TEST(CrashReporterInstall, LastErrorMessageIsCutToTheBuffer) {
    EXPECT_NE(crInstall(nullptr), 0);
    wchar_t small[5];
    EXPECT_EQ(crGetLastErrorMessage(small, 5), 4);
    EXPECT_EQ(std::wstring(small), L"The ");
    EXPECT_EQ(crGetLastErrorMessage(small, 0), -1);
    EXPECT_EQ(crGetLastErrorMessage(nullptr, 5), -1);
}

TEST(CrashReporterInstall, UnusableDataFolderShowsTheWarningAndFails) {
    QTemporaryDir data;
    QFile blocker(data.filePath(QStringLiteral("not-a-folder")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    DataFolderOverride folder(blocker.fileName()); // a file where a folder must be

    ModalDriver driver;
    driver.press(QMessageBox::Ok);
    EXPECT_FALSE(installCrashReporter());
    ASSERT_EQ(driver.boxes().size(), 1);
    const ModalDriver::SeenBox& box = driver.boxes()[0];
    EXPECT_EQ(box.title, QStringLiteral("crInstall error"));
    EXPECT_EQ(box.text, QStringLiteral("The crash report folder ") + blocker.fileName() +
                            QStringLiteral("/Velmara/Quorvane/crashReports cannot be created."));
    EXPECT_EQ(box.buttons, QMessageBox::Ok);
    EXPECT_EQ(box.icon, QMessageBox::Warning);
    EXPECT_TRUE(box.parentless);
}

// ---- Reports of a crashing process --------------------------------------------------------

struct ChildRun {
    QProcess::ExitStatus exitStatus = QProcess::NormalExit;
    int exitCode = 0;
    QString reportFolder;
    QStringList reports; // file names of the text reports
};

ChildRun runCrashingChild(const QString& dataFolder, const QString& mode) {
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dataFolder);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    // Nothing is pending at the first start, so nothing is sent; the address is unused.
    environment.insert(QStringLiteral("QUORVANE_SERVER"), QStringLiteral("http://127.0.0.1:1"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QStringLiteral(QUORVANE_CRASHING_CHILD), {mode});
    child.waitForFinished(60000);
    ChildRun run;
    run.exitStatus = child.exitStatus();
    run.exitCode = child.exitCode();
    run.reportFolder = dataFolder + QStringLiteral("/Velmara/Quorvane/crashReports");
    run.reports = QDir(run.reportFolder).entryList({QStringLiteral("crash-*.txt")}, QDir::Files);
    return run;
}

QString readText(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

// Checks the fields every report has; returns the report text.
QString checkReport(const ChildRun& run, const QString& cause) {
    EXPECT_EQ(run.reports.size(), 1);
    if (run.reports.size() != 1)
        return QString();
    const QString text = readText(run.reportFolder + "/" + run.reports[0]);
    EXPECT_TRUE(
        text.startsWith(QStringLiteral("Application: Velmara Quorvane\nVersion: 1.20205\n")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\nCause: ") + cause + "\n")) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\nFlags: 0x5FFF\n")));
    EXPECT_TRUE(text.contains(
        QStringLiteral("\nReceiver: http://127.0.0.1:1/crashReports/crashrprt.php\n")));

    const QRegularExpressionMatch time =
        QRegularExpression(
            QStringLiteral("\nTime: (\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d) UTC\n"))
            .match(text);
    EXPECT_TRUE(time.hasMatch()) << text.toStdString();
    QDateTime written =
        QDateTime::fromString(time.captured(1), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    written.setTimeSpec(Qt::UTC);
    EXPECT_LE(qAbs(written.secsTo(QDateTime::currentDateTimeUtc())), 120)
        << time.captured(1).toStdString();

    const int traceStart = text.indexOf(QStringLiteral("\nStack trace:\n"));
    const int traceEnd = text.indexOf(QStringLiteral("\nEnd of stack trace.\n"));
    EXPECT_GT(traceStart, 0);
    EXPECT_GT(traceEnd, traceStart);
    const QStringList frames =
        text.mid(traceStart + 14, traceEnd - traceStart - 14).split('\n', Qt::SkipEmptyParts);
    EXPECT_GE(frames.size(), 3) << text.toStdString();
    return text;
}

class CrashReporterChild : public ::testing::Test {
protected:
    QTemporaryDir data;
};

TEST_F(CrashReporterChild, SegmentationFaultIsReportedWithItsStack) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("segv"));
    EXPECT_EQ(run.exitStatus, QProcess::CrashExit);
    const QString text = checkReport(run, QStringLiteral("signal 11 (SIGSEGV)"));
    EXPECT_TRUE(text.contains(QStringLiteral("crashingChildDereferencesNull")))
        << text.toStdString();
    // No picture from inside a signal handler.
    EXPECT_FALSE(text.contains(QStringLiteral("Screenshot:")));
}

TEST_F(CrashReporterChild, EveryFatalSignalIsReported) {
    const struct {
        const char* mode;
        const char* cause;
    } cases[] = {{"abort", "signal 6 (SIGABRT)"},
                 {"fpe", "signal 8 (SIGFPE)"},
                 {"ill", "signal 4 (SIGILL)"},
                 {"bus", "signal 7 (SIGBUS)"}};
    for (const auto& crash : cases) {
        QTemporaryDir own;
        const ChildRun run = runCrashingChild(own.path(), QString::fromLatin1(crash.mode));
        EXPECT_EQ(run.exitStatus, QProcess::CrashExit) << crash.mode;
        checkReport(run, QString::fromLatin1(crash.cause));
    }
}

TEST_F(CrashReporterChild, StackOverflowIsReported) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("overflow"));
    EXPECT_EQ(run.exitStatus, QProcess::CrashExit);
    const QString text = checkReport(run, QStringLiteral("signal 11 (SIGSEGV)"));
    EXPECT_TRUE(text.contains(QStringLiteral("crashingChildRecursesForever")));
}

TEST_F(CrashReporterChild, UncaughtExceptionOnTheMainThreadAddsAPictureOfTheMainWindow) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("exception"));
    EXPECT_EQ(run.exitStatus, QProcess::CrashExit);
    const QString text =
        checkReport(run, QStringLiteral("uncaught exception: The range tree file is damaged."));
    // One report only, though the exception ends in an abort.
    ASSERT_EQ(run.reports.size(), 1);
    const QString picture = QFileInfo(run.reports[0]).completeBaseName() + QStringLiteral(".jpg");
    EXPECT_TRUE(text.endsWith(QStringLiteral("Screenshot: ") + picture + "\n"))
        << text.toStdString();
    QImageReader reader(run.reportFolder + "/" + picture);
    EXPECT_EQ(reader.format(), QByteArray("jpeg"));
    const QImage image = reader.read();
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(640, 400));
    // The window's teal background, give or take the JPEG coder.
    const QColor centre = image.pixelColor(20, 200);
    EXPECT_NEAR(centre.red(), 0x17, 12);
    EXPECT_NEAR(centre.green(), 0x80, 12);
    EXPECT_NEAR(centre.blue(), 0x8f, 12);
}

TEST_F(CrashReporterChild, ThrownTextIsReported) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("text-exception"));
    EXPECT_EQ(run.exitStatus, QProcess::CrashExit);
    checkReport(run, QStringLiteral("uncaught exception (text): Node 7 is no folder."));
}

TEST_F(CrashReporterChild, ExceptionOnAnotherThreadIsReportedWithoutPicture) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("thread-exception"));
    EXPECT_EQ(run.exitStatus, QProcess::CrashExit);
    const QString text =
        checkReport(run, QStringLiteral("uncaught exception: The range tree file is damaged."));
    EXPECT_FALSE(text.contains(QStringLiteral("Screenshot:")));
    EXPECT_TRUE(QDir(run.reportFolder).entryList({QStringLiteral("*.jpg")}).isEmpty());
}

TEST_F(CrashReporterChild, CleanExitLeavesNoReport) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("exit"));
    EXPECT_EQ(run.exitStatus, QProcess::NormalExit);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.reports.isEmpty());
}

// ---- Sending ------------------------------------------------------------------------------

TEST_F(CrashReporterChild, PendingReportsAreSentAndDeletedOnlyWhenTheServerTookThem) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("exception"));
    ASSERT_EQ(run.reports.size(), 1);
    DataFolderOverride folder(data.path());
    LocalHttpServer server;
    const QString receiver = server.baseUrl() + QStringLiteral("/crashReports/crashrprt.php");

    server.answer("/crashReports/crashrprt.php", {503, "busy", 0, false});
    {
        CrashReportSender sender(receiver);
        QSignalSpy finished(&sender, &CrashReportSender::finished);
        EXPECT_EQ(sender.sendPendingReports(), 1);
        ASSERT_TRUE(finished.wait(10000));
        EXPECT_EQ(finished[0][0].toInt(), 0);
        EXPECT_EQ(finished[0][1].toInt(), 1);
    }
    EXPECT_EQ(QDir(run.reportFolder).entryList(QDir::Files).size(), 2); // text and picture kept

    server.answer("/crashReports/crashrprt.php", {200, "ok", 0, false});
    {
        CrashReportSender sender(receiver);
        QSignalSpy finished(&sender, &CrashReportSender::finished);
        EXPECT_EQ(sender.sendPendingReports(), 1);
        ASSERT_TRUE(finished.wait(10000));
        EXPECT_EQ(finished[0][0].toInt(), 1);
        EXPECT_EQ(finished[0][1].toInt(), 0);
    }
    EXPECT_TRUE(QDir(run.reportFolder).entryList(QDir::Files).isEmpty());

    ASSERT_EQ(server.requests().size(), 2);
    const LocalHttpServer::Request& post = server.requests()[1];
    EXPECT_EQ(post.method, QByteArray("POST"));
    EXPECT_EQ(post.path, QByteArray("/crashReports/crashrprt.php"));
    EXPECT_TRUE(post.headers.value("content-type").startsWith("multipart/form-data"));
    EXPECT_TRUE(post.body.contains("name=\"application\"\r\n\r\nVelmara Quorvane\r\n"));
    EXPECT_TRUE(post.body.contains("name=\"version\"\r\n\r\n1.20205\r\n"));
    EXPECT_TRUE(
        post.body.contains("name=\"report\"; filename=\"" + run.reports[0].toUtf8() + "\""));
    EXPECT_TRUE(post.body.contains("Cause: uncaught exception: The range tree file is damaged."));
    EXPECT_TRUE(post.body.contains("name=\"screenshot\"; filename=\""));
    EXPECT_TRUE(post.body.contains("Content-Type: image/jpeg"));
}

TEST_F(CrashReporterChild, NothingPendingSendsNothing) {
    DataFolderOverride folder(data.path());
    LocalHttpServer server;
    CrashReportSender sender(server.baseUrl() + QStringLiteral("/crashReports/crashrprt.php"));
    QSignalSpy finished(&sender, &CrashReportSender::finished);
    EXPECT_EQ(sender.sendPendingReports(), 0);
    ASSERT_TRUE(finished.wait(5000));
    EXPECT_EQ(finished[0][0].toInt(), 0);
    EXPECT_EQ(finished[0][1].toInt(), 0);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(CrashReporterChild, InstallingSendsWhatTheLastRunLeft) {
    const ChildRun run = runCrashingChild(data.path(), QStringLiteral("segv"));
    ASSERT_EQ(run.reports.size(), 1);
    DataFolderOverride folder(data.path());
    LocalHttpServer server;
    server.answer("/crashReports/crashrprt.php", {200, "ok", 0, false});
    ServerOverride serverOverride(server.baseUrl());

    ASSERT_TRUE(installCrashReporter());
    EXPECT_TRUE(
        waitUntil([&run] { return QDir(run.reportFolder).entryList(QDir::Files).isEmpty(); }));
    EXPECT_EQ(server.requestCount("/crashReports/crashrprt.php"), 1);
    EXPECT_EQ(crUninstall(), 0);
}

} // namespace
