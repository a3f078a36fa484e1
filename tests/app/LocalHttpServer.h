#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTcpServer>

class QTcpSocket;

// A tiny HTTP/1.1 server on 127.0.0.1 for the start-up tests: each path answers with a
// fixed status and body, after an optional delay; every request is recorded. Lives on the
// test's main thread, so it answers whenever an event loop runs (a dialog's exec() too).
class LocalHttpServer : public QObject {
    Q_OBJECT
public:
    struct Answer {
        int status = 200;
        QByteArray body;
        int delayMs = 0;
        bool silent = false; // accept the request and never answer
        QByteArray contentType = "text/plain";
    };
    struct Request {
        QByteArray method;
        QByteArray path;
        QHash<QByteArray, QByteArray> headers; // names in lower case
        QByteArray body;
    };

    LocalHttpServer();
    ~LocalHttpServer() override;

    // "http://127.0.0.1:<port>"
    QString baseUrl() const;
    void answer(const QByteArray& path, const Answer& answer);
    const QList<Request>& requests() const { return received; }
    int requestCount(const QByteArray& path) const;

private:
    void onNewConnection();
    void onReadyRead(QTcpSocket* socket);
    void respond(QTcpSocket* socket, const Request& request);

    QTcpServer server;
    QHash<QByteArray, Answer> answers;
    QHash<QTcpSocket*, QByteArray> pending;
    QList<Request> received;
};

// Points QUORVANE_SERVER at `url` for its life time, then restores the former value.
class ServerOverride {
public:
    explicit ServerOverride(const QString& url);
    ~ServerOverride();

private:
    QByteArray former;
    bool hadFormer;
};
