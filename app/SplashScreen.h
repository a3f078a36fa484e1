#pragma once

#include <QDialog>
#include <QNetworkAccessManager>

class QNetworkReply;
namespace Ui {
class SplashScreen;
}

// The start-up window. Its construction sends the version request to the product's web
// server; the reply decides whether an update is offered, and the last stage initialises
// the evaluator's board tables before the splash closes. `main` reads startUpStatus() after
// exec() returns.
class SplashScreen : public QDialog {
    Q_OBJECT
public:
    // What `main` does after the splash closed.
    enum StartUpStatus { StillRunning = 0, InstallUpdate = 1, StartProgram = 2 };

    // How long the version request may go without any progress before it counts as failed,
    // in ms: a network that drops packets would otherwise hold the splash for the system's
    // connect time-out (minutes).
    static constexpr int versionCheckTimeoutMs = 5000;

    explicit SplashScreen(QWidget* parent = nullptr);
    ~SplashScreen() override;

    int startUpStatus() const { return status; }

public slots:
    void onNetworkReplyForVersionCheck(QNetworkReply* reply);
    // The last stage: "Starting...", a one second pause, the evaluator's board tables, then
    // close with StartProgram.
    void setNewNonUpdateStep();

private:
    Ui::SplashScreen* ui;
    QNetworkAccessManager network;
    int status = StillRunning;
};
