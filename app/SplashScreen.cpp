#include "app/SplashScreen.h"

#include "ui_SplashScreen.h"

#include "app/ProductServer.h"
#include "app/StartUp.h"
#include "quorvane/Version.h"

#include <VelmaraEvaluatorBase.h>

#include <QIcon>
#include <QMessageBox>
#include <QMovie>
#include <QMutex>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QWaitCondition>

SplashScreen::SplashScreen(QWidget* parent)
    : QDialog(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      ui(new Ui::SplashScreen) {
    setAttribute(Qt::WA_TranslucentBackground);
    ui->setupUi(this);
    auto* spinner = new QMovie(QStringLiteral(":/loading.gif"), QByteArray(), this);
    ui->spinner->setMovie(spinner);
    spinner->start();
    ui->versionLabel->setText(QStringLiteral("Version ") +
                              QString::fromStdString(Version::aboutText()).mid(1));

    // Read and dropped: the check runs whatever the value, and no menu entry changes it.
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    settings.value(QStringLiteral("optionmenu/checkForUpdates"), true).toBool();

    ui->action->setText(QStringLiteral("Searching for Updates..."));
    ui->action->adjustSize();
    connect(&network, &QNetworkAccessManager::finished, this,
            &SplashScreen::onNetworkReplyForVersionCheck);
    QNetworkRequest request(ProductServer::url(QStringLiteral("/Downloadables/version.php")));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    shownFor.start();
    QNetworkReply* reply = network.get(request);
    // An aborted request reaches the reply handler as a failure.
    QTimer::singleShot(versionCheckTimeoutMs, Qt::PreciseTimer, reply, &QNetworkReply::abort);
}

SplashScreen::~SplashScreen() {
    delete ui;
}

void SplashScreen::onNetworkReplyForVersionCheck(QNetworkReply* reply) {
    const bool failed = reply->error() != QNetworkReply::NoError ||
                        reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 200;

    if (!failed) {
        // Garbage reads as 0, which never offers an update.
        const float serverVersion = QString::fromUtf8(reply->readLine()).toFloat();
        reply->readLine(); // a second line may follow; this flow has no use for it
        if (serverVersion > Version::program && !updaterAvailable()) {
            announceUpdate();
        } else if (serverVersion > Version::program) {
            QMessageBox box;
            box.setWindowTitle(QStringLiteral("Update available"));
            box.setText(QStringLiteral("An update is available. Press Ok to install it."));
            box.setWindowFlags(Qt::WindowStaysOnTopHint | Qt::MSWindowsFixedSizeDialogHint);
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            box.setIcon(QMessageBox::Information);
            box.setWindowIcon(QIcon(QStringLiteral(":/favicon.ico")));
            box.raise();
            if (box.exec() == QMessageBox::Ok) {
                reply->deleteLater();
                status = InstallUpdate;
                close();
                return;
            }
        }
        reply->deleteLater();
        setNewNonUpdateStep();
        return;
    }

    // The warning waits for the main window, which is to come up without delay.
    checkFailed = true;
    reply->deleteLater();
    setNewNonUpdateStep();
}

void SplashScreen::setNewNonUpdateStep() {
    ui->action->setText(QStringLiteral("Starting..."));
    ui->action->adjustSize();
    QCoreApplication::processEvents();

    // A pause on the main thread until the splash has been seen for its shortest time:
    // nobody wakes the condition. The splash stays visible meanwhile, and no timer event
    // runs. The version request ran during the first part of that time.
    const qint64 rest = shortestShowMs - shownFor.elapsed();
    if (rest > 0) {
        QMutex mutex;
        QWaitCondition neverSignalled;
        mutex.lock();
        neverSignalled.wait(&mutex, static_cast<unsigned long>(rest));
        mutex.unlock();
    }

    // Must have returned before any calculation starts; nothing else calls it.
    initializeAllBoardsBeforeCalculation();

    status = StartProgram;
    close();
}
