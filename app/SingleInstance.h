#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QStringList>

class QLocalSocket;

// One Quorvane per user and display. The first process listens on a local socket; a later
// one hands its files (absolute paths) over to it and ends, so that a file opened from the
// desktop goes to the window that is already there.
//
// The socket lives in the user's runtime folder (XDG_RUNTIME_DIR) under a name that holds
// the display, so that programs on other displays (a second X server, a test's Xvfb) are
// not mistaken for this one. A lock file next to it makes "is there one?" and "then I am
// the one" a single step for two programs started at the same moment; a socket left by a
// program that crashed is found dead and replaced.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Role {
        // No other program answered: this one listens now and goes on.
        First,
        // The running program took the files: this one is to end.
        HandedOver,
        // A program holds the socket but did not take the files in time: this one is to
        // end rather than run beside it.
        NotTaken,
        // The socket or its lock could not be made (a runtime folder that cannot be
        // written): this one goes on, alone and unreachable for later ones.
        Alone
    };

    // How long a hand-over may take, in ms, until the running program confirms it.
    static constexpr int handOverTimeoutMs = 5000;

    // `socketPath` empty: the default for the user and display (defaultSocketPath()).
    explicit SingleInstance(const QString& socketPath = QString(), QObject* parent = nullptr);
    ~SingleInstance() override;

    // "<runtime folder>/quorvane-<display>.socket"; the display from WAYLAND_DISPLAY or
    // DISPLAY, "none" without either.
    static QString defaultSocketPath();

    const QString& socketPath() const { return path; }

    // Hands `files` to a running program, or becomes the program that others hand theirs to.
    // `files` should be absolute: the running program may have another working folder.
    Role start(const QStringList& files);

    // Why start() answered NotTaken or Alone.
    const QString& problem() const { return failure; }

signals:
    // A later program handed over `files` (possibly none: it was started without files and
    // the running window is to come to the front).
    void filesReceived(const QStringList& files);

private:
    bool handOver(const QStringList& files);
    void onNewConnection();
    void onReadyRead(QLocalSocket* socket);

    QString path;
    QLocalServer server;
    QString failure;
};
