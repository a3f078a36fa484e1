// The real program, killed with SIGKILL in the middle of unsaved work, and started again: the
// work comes back. Driven on a real X server with xdotool, as a user would.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHostAddress>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <signal.h>

namespace {

bool waitUntil(const std::function<bool()>& done, int limitMs) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > limitMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        QThread::msleep(50);
    }
    return true;
}

// What xdotool prints, trimmed; empty when it fails.
QString xdotool(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    if (!process.waitForFinished(10000) || process.exitCode() != 0)
        return QString();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

// The first visible window whose name matches the regular expression `pattern`.
QString windowNamed(const QString& pattern) {
    const QString found = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                   QStringLiteral("--name"), pattern});
    return found.section(QLatin1Char('\n'), 0, 0);
}

class RecoveryAfterKill : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(home.isValid());
        if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            GTEST_SKIP() << "xdotool is missing: install the Debian package xdotool "
                            "(./setup.sh test does)";
        QSettings settings(home.path() + QStringLiteral("/config/Velmara/Quorvane.conf"),
                           QSettings::IniFormat);
        // Release notes seen, and no network: the start goes straight to the main window.
        settings.setValue(QStringLiteral("releaseNoteVersion"), 1.20205f);
        settings.setValue(QStringLiteral("PreStarter/ignoreInternetWarning"), true);
    }

    void TearDown() override {
        if (program.state() != QProcess::NotRunning) {
            program.kill();
            program.waitForFinished();
        }
    }

    void start() {
        QTcpServer closed;
        ASSERT_TRUE(closed.listen(QHostAddress::LocalHost, 0));
        const QString nowhere = QStringLiteral("http://127.0.0.1:%1").arg(closed.serverPort());
        closed.close();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path() + "/config");
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home.path() + "/data");
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), home.path() + "/cache");
        environment.insert(QStringLiteral("QUORVANE_SERVER"), nowhere);
        environment.remove(QStringLiteral("QUORVANE_SCREENSHOT_AND_QUIT"));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(qEnvironmentVariable("QUORVANE_BUILD_DIR") + QStringLiteral("/quorvane"),
                      QStringList());
        ASSERT_TRUE(program.waitForStarted(10000));
    }

    QString recoveryFile() const {
        return home.path() + QStringLiteral("/data/Velmara/Quorvane/recovery.qva");
    }
    std::string recoveryText() const {
        QFile file(recoveryFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

    QTemporaryDir home;
    QProcess program;
};

TEST_F(RecoveryAfterKill, UnsavedWorkComesBackAfterSigkill) {
    start();
    QString window;
    ASSERT_TRUE(waitUntil(
        [&window] {
            return !(window = windowNamed(QStringLiteral("^untitled[.]qva - Quorvane"))).isEmpty();
        },
        30000));
    // Into player 1's range line (below the scenario row, left half of the window) and type.
    QThread::msleep(500);
    xdotool({QStringLiteral("mousemove"), QStringLiteral("--window"), window, QStringLiteral("400"),
             QStringLiteral("152"), QStringLiteral("click"), QStringLiteral("1")});
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("40"),
             QStringLiteral("AA,KK")});
    ASSERT_TRUE(waitUntil(
        [&window] {
            return xdotool({QStringLiteral("getwindowname"), window}) ==
                   QStringLiteral("*untitled.qva - Quorvane");
        },
        10000))
        << "the typing did not reach player 1's range line";
    // Within a second of the last change the recovery file holds it.
    ASSERT_TRUE(waitUntil(
        [this] { return recoveryText().find("text=\"KK+\"") != std::string::npos; }, 5000));

    ::kill(static_cast<pid_t>(program.processId()), SIGKILL);
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
    ASSERT_TRUE(QFile::exists(recoveryFile()));

    // Started again: the question, answered with Yes (the default button, Return).
    start();
    // The splash is titled "Quorvane" too: the question comes after the main window.
    ASSERT_TRUE(waitUntil(
        [] { return !windowNamed(QStringLiteral("^untitled[.]qva - Quorvane")).isEmpty(); },
        30000));
    QString question;
    ASSERT_TRUE(waitUntil(
        [&question] { return !(question = windowNamed(QStringLiteral("^Quorvane$"))).isEmpty(); },
        30000))
        << "no question at the start";
    QThread::msleep(300);
    // Events sent to a window are synthetic and ignored by Qt; the focused window gets real
    // ones.
    xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), question});
    xdotool({QStringLiteral("key"), QStringLiteral("Return")});
    ASSERT_TRUE(waitUntil(
        [] { return !windowNamed(QStringLiteral("^[*]untitled[.]qva - Quorvane")).isEmpty(); },
        10000))
        << "the restored analysis is not shown unsaved; windows: "
        << xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                    QStringLiteral("--name"), QStringLiteral(".")})
               .split(QLatin1Char('\n'))
               .join(QLatin1Char(' '))
               .toStdString()
        << " question " << question.toStdString() << " named "
        << xdotool({QStringLiteral("getwindowname"), question}).toStdString();
    // Still unsaved, so still kept for the next crash.
    EXPECT_NE(recoveryText().find("text=\"KK+\""), std::string::npos);
}

} // namespace
