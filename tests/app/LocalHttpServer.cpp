#include "LocalHttpServer.h"

#include <QTcpSocket>
#include <QTimer>
#include <QtGlobal>

LocalHttpServer::LocalHttpServer() {
    connect(&server, &QTcpServer::newConnection, this, &LocalHttpServer::onNewConnection);
    if (!server.listen(QHostAddress::LocalHost, 0))
        qFatal("LocalHttpServer cannot listen: %s", qPrintable(server.errorString()));
}

LocalHttpServer::~LocalHttpServer() {
    // Open connections are children of `server`; they must not call back into the members
    // that die before it.
    for (QTcpSocket* socket : server.findChildren<QTcpSocket*>()) {
        socket->disconnect(this);
        socket->abort();
    }
}

QString LocalHttpServer::baseUrl() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(server.serverPort());
}

void LocalHttpServer::answer(const QByteArray& path, const Answer& answer) {
    answers.insert(path, answer);
}

int LocalHttpServer::requestCount(const QByteArray& path) const {
    int count = 0;
    for (const Request& request : received)
        count += request.path == path ? 1 : 0;
    return count;
}

void LocalHttpServer::onNewConnection() {
    while (QTcpSocket* socket = server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            pending.remove(socket);
            socket->deleteLater();
        });
    }
}

void LocalHttpServer::onReadyRead(QTcpSocket* socket) {
    QByteArray& data = pending[socket];
    data += socket->readAll();
    const int headerEnd = data.indexOf("\r\n\r\n");
    if (headerEnd < 0)
        return;
    Request request;
    const QList<QByteArray> lines = data.left(headerEnd).split('\n');
    const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
    request.method = requestLine.value(0);
    request.path = requestLine.value(1);
    for (int i = 1; i < lines.size(); ++i) {
        const int colon = lines[i].indexOf(':');
        if (colon > 0)
            request.headers.insert(lines[i].left(colon).trimmed().toLower(),
                                   lines[i].mid(colon + 1).trimmed());
    }
    const int bodyLength = request.headers.value("content-length", "0").toInt();
    if (data.size() < headerEnd + 4 + bodyLength)
        return; // the rest of the body is still on its way
    request.body = data.mid(headerEnd + 4, bodyLength);
    data.clear();
    received.append(request);
    respond(socket, request);
}

void LocalHttpServer::respond(QTcpSocket* socket, const Request& request) {
    const Answer answer =
        answers.value(request.path, Answer{404, "not found", 0, false, "text/plain"});
    if (answer.silent)
        return;
    const QByteArray reason = answer.status == 200 ? "OK" : "Error";
    const QByteArray response = "HTTP/1.1 " + QByteArray::number(answer.status) + " " + reason +
                                "\r\nContent-Type: " + answer.contentType +
                                "\r\nContent-Length: " + QByteArray::number(answer.body.size()) +
                                "\r\nConnection: close\r\n\r\n" + answer.body;
    QTimer::singleShot(answer.delayMs, socket, [socket, response] {
        socket->write(response);
        socket->disconnectFromHost();
    });
}

ServerOverride::ServerOverride(const QString& url)
    : former(qgetenv("QUORVANE_SERVER")), hadFormer(qEnvironmentVariableIsSet("QUORVANE_SERVER")) {
    qputenv("QUORVANE_SERVER", url.toUtf8());
}

ServerOverride::~ServerOverride() {
    if (hadFormer)
        qputenv("QUORVANE_SERVER", former);
    else
        qunsetenv("QUORVANE_SERVER");
}
