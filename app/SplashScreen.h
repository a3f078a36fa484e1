#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QNetworkAccessManager>

class QNetworkReply;
namespace Ui {
class SplashScreen;
}

// The start-up window. Its construction sends the version request to the product's web
// server; the reply decides whether an update is offered, and the last stage initialises
// the evaluator's board tables before the splash closes. `main` reads startUpStatus() and
// updateCheckFailed() after exec() returns.
//
// A newer version is offered for installation where the updater is installed beside the
// program; elsewhere (a distribution's package) the box names the download page instead.
class SplashScreen : public QDialog {
    Q_OBJECT
public:
    // What `main` does after the splash closed.
    enum StartUpStatus { StillRunning = 0, InstallUpdate = 1, StartProgram = 2 };

    // How long the version request may take before it counts as failed, in ms, however
    // much progress it makes: without network the main window is to be up within three
    // seconds, and a network that drops packets would hold the splash for the system's
    // connect time-out (minutes).
    static constexpr int versionCheckTimeoutMs = 1500;
    // The shortest time the splash is on screen, in ms, counted from its construction: the
    // version request runs meanwhile.
    static constexpr int shortestShowMs = 1000;

    explicit SplashScreen(QWidget* parent = nullptr);
    ~SplashScreen() override;

    int startUpStatus() const { return status; }
    // The version check failed (network error, a status other than 200, the time-out). The
    // warning comes once the main window is up: see warnOfFailedUpdateCheck.
    bool updateCheckFailed() const { return checkFailed; }

public slots:
    void onNetworkReplyForVersionCheck(QNetworkReply* reply);
    // The last stage: "Starting...", a pause until the splash has been shown for
    // shortestShowMs, the evaluator's board tables, then close with StartProgram.
    void setNewNonUpdateStep();

private:
    Ui::SplashScreen* ui;
    QNetworkAccessManager network;
    QElapsedTimer shownFor;
    int status = StillRunning;
    bool checkFailed = false;
};
