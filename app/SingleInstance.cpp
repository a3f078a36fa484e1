#include "app/SingleInstance.h"

#include <QDataStream>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>
#include <QTimer>

namespace {

// The first word of a hand-over, so that a stray client is not taken for a program.
constexpr quint32 handOverMagic = 0x51564931; // "QVI1"
constexpr char confirmation = 'K';

} // namespace

SingleInstance::SingleInstance(const QString& socketPath, QObject* parent)
    : QObject(parent), path(socketPath.isEmpty() ? defaultSocketPath() : socketPath) {
    connect(&server, &QLocalServer::newConnection, this, &SingleInstance::onNewConnection);
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::defaultSocketPath() {
    QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (display.isEmpty())
        display = qEnvironmentVariable("DISPLAY");
    if (display.isEmpty())
        display = QStringLiteral("none");
    // ":0.0" and "/run/user/1000/wayland-0" become file name characters.
    for (QChar& character : display)
        if (!character.isLetterOrNumber() && character != QLatin1Char('-') &&
            character != QLatin1Char('.'))
            character = QLatin1Char('_');
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           QStringLiteral("/quorvane-") + display + QStringLiteral(".socket");
}

SingleInstance::Role SingleInstance::start(const QStringList& files) {
    failure.clear();
    QDir().mkpath(QFileInfo(path).absolutePath());
    QLockFile lock(path + QStringLiteral(".lock"));
    if (!lock.tryLock(handOverTimeoutMs)) {
        failure = QStringLiteral("The lock file %1.lock cannot be taken.").arg(path);
        return Role::Alone;
    }
    if (handOver(files))
        return Role::HandedOver;
    if (!failure.isEmpty())
        return Role::NotTaken;

    // Nobody listens: a socket file left there belongs to a program that ended.
    QLocalServer::removeServer(path);
    server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!server.listen(path)) {
        failure = QStringLiteral("Cannot listen on %1: %2").arg(path, server.errorString());
        return Role::Alone;
    }
    return Role::First;
}

bool SingleInstance::handOver(const QStringList& files) {
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(handOverTimeoutMs))
        return false;

    QByteArray message;
    QDataStream out(&message, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    out << handOverMagic << files;
    socket.write(message);

    QElapsedTimer clock;
    clock.start();
    while (socket.bytesAvailable() < 1) {
        const qint64 rest = handOverTimeoutMs - clock.elapsed();
        if (rest <= 0 || !socket.waitForReadyRead(static_cast<int>(rest)))
            break;
    }
    char answer = 0;
    if (socket.getChar(&answer) && answer == confirmation)
        return true;
    failure = QStringLiteral("Quorvane runs already but did not take the files.");
    return false;
}

void SingleInstance::onNewConnection() {
    while (QLocalSocket* socket = server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        onReadyRead(socket);
    }
}

void SingleInstance::onReadyRead(QLocalSocket* socket) {
    QDataStream in(socket);
    in.setVersion(QDataStream::Qt_5_15);
    in.startTransaction();
    quint32 magic = 0;
    in >> magic;
    if (in.status() == QDataStream::Ok && magic != handOverMagic) {
        // A stranger (or another program's client): no answer.
        in.abortTransaction();
        socket->disconnectFromServer();
        return;
    }
    QStringList files;
    in >> files;
    if (!in.commitTransaction()) {
        if (in.status() != QDataStream::ReadPastEnd) // not just unfinished: garbage
            socket->disconnectFromServer();
        return;
    }
    socket->putChar(confirmation);
    socket->flush();
    socket->disconnectFromServer();
    // Later, from the event loop: opening a file may run dialogs of its own.
    QTimer::singleShot(0, this, [this, files] { emit filesReceived(files); });
}
