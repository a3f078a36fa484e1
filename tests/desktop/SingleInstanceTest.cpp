// One program per user and display: the first listens, later ones hand their files over.
// The later programs are separate processes (desktop_instance_probe), as they are for real.

#include "app/SingleInstance.h"
#include "WaitUntil.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace {

// A later start, as its own process.
class Probe {
public:
    Probe(const QString& socket, int holdMs, const QStringList& files) {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(QUORVANE_INSTANCE_PROBE),
                      QStringList{socket, QString::number(holdMs)} + files);
        process.waitForStarted();
    }
    ~Probe() {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }
    // Waits (running this process's event loop, which may be the first program's) for the
    // end; the exit code, -1 when it did not end in time.
    int finish(int limitMs = 15000) {
        if (!waitUntil([this] { return process.state() == QProcess::NotRunning; }, limitMs))
            return -1;
        output += QString::fromUtf8(process.readAll());
        return process.exitCode();
    }
    QString output;

private:
    QProcess process;
};

class SingleInstanceTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }
    QString socketPath() const { return folder.filePath(QStringLiteral("quorvane-test.socket")); }

    QTemporaryDir folder;
};

TEST_F(SingleInstanceTest, FirstListensAndALaterStartHandsOverItsFilesInOrder) {
    SingleInstance first(socketPath());
    ASSERT_EQ(first.start({QStringLiteral("/ignored/by/nobody.qva")}), SingleInstance::Role::First);
    EXPECT_TRUE(QFileInfo(socketPath()).exists());
    QSignalSpy received(&first, &SingleInstance::filesReceived);

    const QStringList files = {QStringLiteral("/home/player/flop c-bet.qva"),
                               QStringLiteral("/home/player/Ranges ÄÖÜ.qvt"),
                               QStringLiteral("/tmp/second.qva")};
    Probe later(socketPath(), 0, files);
    EXPECT_EQ(later.finish(), 10) << later.output.toStdString();
    EXPECT_TRUE(later.output.contains(QStringLiteral("handed over")));
    ASSERT_TRUE(waitUntil([&received] { return received.count() == 1; }));
    EXPECT_EQ(received[0][0].toStringList(), files);
}

TEST_F(SingleInstanceTest, ALaterStartWithoutFilesStillReachesTheFirst) {
    SingleInstance first(socketPath());
    ASSERT_EQ(first.start({}), SingleInstance::Role::First);
    QSignalSpy received(&first, &SingleInstance::filesReceived);
    Probe later(socketPath(), 0, {});
    EXPECT_EQ(later.finish(), 10) << later.output.toStdString();
    ASSERT_TRUE(waitUntil([&received] { return received.count() == 1; }));
    EXPECT_TRUE(received[0][0].toStringList().isEmpty());
}

TEST_F(SingleInstanceTest, StartsAtTheSameMomentMakeExactlyOneFirst) {
    std::vector<std::unique_ptr<Probe>> probes;
    for (int i = 0; i < 4; ++i)
        probes.push_back(std::make_unique<Probe>(socketPath(), 4000,
                                                 QStringList{QStringLiteral("/f%1.qva").arg(i)}));
    int firsts = 0;
    int handedOver = 0;
    QString firstOutput;
    for (auto& probe : probes) {
        const int code = probe->finish(20000);
        if (code == 0) {
            ++firsts;
            firstOutput = probe->output;
        } else if (code == 10) {
            ++handedOver;
        } else {
            ADD_FAILURE() << "exit " << code << ": " << probe->output.toStdString();
        }
    }
    EXPECT_EQ(firsts, 1);
    EXPECT_EQ(handedOver, 3);
    // The first got the files of the three others.
    EXPECT_EQ(firstOutput.count(QStringLiteral("received:1")), 3) << firstOutput.toStdString();
}

TEST_F(SingleInstanceTest, SocketOfAProgramThatCrashedIsReplaced) {
    // A socket file that nobody listens on, as a killed program leaves it.
    const QByteArray path = socketPath().toLocal8Bit();
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(descriptor, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(descriptor);
    ASSERT_TRUE(QFileInfo::exists(socketPath()));

    SingleInstance next(socketPath());
    EXPECT_EQ(next.start({}), SingleInstance::Role::First) << next.problem().toStdString();
    QSignalSpy received(&next, &SingleInstance::filesReceived);
    Probe later(socketPath(), 0, {QStringLiteral("/a.qva")});
    EXPECT_EQ(later.finish(), 10);
    EXPECT_TRUE(waitUntil([&received] { return received.count() == 1; }));
}

TEST_F(SingleInstanceTest, AProgramThatDoesNotAnswerDoesNotTakeTheFiles) {
    QLocalServer deaf; // accepts and never answers
    ASSERT_TRUE(deaf.listen(socketPath()));
    QElapsedTimer clock;
    clock.start();
    Probe later(socketPath(), 0, {QStringLiteral("/a.qva")});
    EXPECT_EQ(later.finish(3 * SingleInstance::handOverTimeoutMs), 11)
        << later.output.toStdString();
    EXPECT_GE(clock.elapsed(), SingleInstance::handOverTimeoutMs - 200);
    EXPECT_TRUE(later.output.contains(QStringLiteral("did not take the files")));
}

TEST_F(SingleInstanceTest, AStrangerOnTheSocketIsIgnored) {
    SingleInstance first(socketPath());
    ASSERT_EQ(first.start({}), SingleInstance::Role::First);
    QSignalSpy received(&first, &SingleInstance::filesReceived);

    QLocalSocket stranger;
    stranger.connectToServer(socketPath());
    ASSERT_TRUE(
        waitUntil([&stranger] { return stranger.state() == QLocalSocket::ConnectedState; }));
    stranger.write("GET / HTTP/1.1\r\nHost: quorvane\r\n\r\n");
    stranger.flush();
    EXPECT_TRUE(
        waitUntil([&stranger] { return stranger.state() == QLocalSocket::UnconnectedState; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(received.count(), 0);
    EXPECT_EQ(stranger.bytesAvailable(), 0); // no confirmation for it

    // The program still takes the files of a real start.
    Probe later(socketPath(), 0, {QStringLiteral("/b.qva")});
    EXPECT_EQ(later.finish(), 10);
    ASSERT_TRUE(waitUntil([&received] { return received.count() == 1; }));
    EXPECT_EQ(received[0][0].toStringList(), QStringList{QStringLiteral("/b.qva")});
}

TEST_F(SingleInstanceTest, AHandOverInPiecesIsReadWhole) {
    SingleInstance first(socketPath());
    ASSERT_EQ(first.start({}), SingleInstance::Role::First);
    QSignalSpy received(&first, &SingleInstance::filesReceived);

    QByteArray message;
    QDataStream out(&message, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    out << quint32(0x51564931) << QStringList{QStringLiteral("/slow/one.qva")};
    QLocalSocket slow;
    slow.connectToServer(socketPath());
    ASSERT_TRUE(waitUntil([&slow] { return slow.state() == QLocalSocket::ConnectedState; }));
    slow.write(message.left(7));
    slow.flush();
    waitUntil([] { return false; }, 200);
    EXPECT_EQ(received.count(), 0);
    slow.write(message.mid(7));
    slow.flush();
    ASSERT_TRUE(waitUntil([&received] { return received.count() == 1; }));
    EXPECT_EQ(received[0][0].toStringList(), QStringList{QStringLiteral("/slow/one.qva")});
    EXPECT_TRUE(waitUntil([&slow] {
        return slow.bytesAvailable() > 0 || slow.state() == QLocalSocket::UnconnectedState;
    }));
    EXPECT_EQ(slow.read(1), QByteArray("K"));
}

TEST_F(SingleInstanceTest, AFolderThatCannotBeWrittenLeavesTheProgramAlone) {
    SingleInstance lonely(QStringLiteral("/proc/quorvane-nowhere/quorvane.socket"));
    EXPECT_EQ(lonely.start({}), SingleInstance::Role::Alone);
    EXPECT_FALSE(lonely.problem().isEmpty());
}

TEST(SingleInstancePath, HoldsTheUserFolderAndTheDisplay) {
    const QByteArray wayland = qgetenv("WAYLAND_DISPLAY");
    const QByteArray display = qgetenv("DISPLAY");
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DISPLAY", ":7.0");
    EXPECT_EQ(SingleInstance::defaultSocketPath(),
              runtime + QStringLiteral("/quorvane-_7.0.socket"));
    qputenv("DISPLAY", "localhost:12");
    EXPECT_EQ(SingleInstance::defaultSocketPath(),
              runtime + QStringLiteral("/quorvane-localhost_12.socket"));
    qputenv("WAYLAND_DISPLAY", "wayland-1");
    EXPECT_EQ(SingleInstance::defaultSocketPath(),
              runtime + QStringLiteral("/quorvane-wayland-1.socket"));
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("DISPLAY");
    EXPECT_EQ(SingleInstance::defaultSocketPath(),
              runtime + QStringLiteral("/quorvane-none.socket"));
    // Programs on two displays do not meet.
    qputenv("DISPLAY", ":1");
    const QString one = SingleInstance::defaultSocketPath();
    qputenv("DISPLAY", ":2");
    EXPECT_NE(SingleInstance::defaultSocketPath(), one);

    if (wayland.isNull())
        qunsetenv("WAYLAND_DISPLAY");
    else
        qputenv("WAYLAND_DISPLAY", wayland);
    if (display.isNull())
        qunsetenv("DISPLAY");
    else
        qputenv("DISPLAY", display);
}

} // namespace
