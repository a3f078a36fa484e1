#include "app/StartUp.h"

#include "app/BlockedWindow.h"
#include "app/CrashReporter.h"
#include "app/Platform.h"
#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "quorvane/Version.h"

#include <QApplication>
#include <QMessageBox>
#include <QPixmap>
#include <QSettings>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <string>

void watchBlockingProcess() {
    // The one pointer to the live BlockedWindow.
    static BlockedWindow* blockedWindow = nullptr;

    const bool blocked = isProcessRunning(QStringLiteral("PokerStars.exe"));
    for (QWidget* widget : QApplication::topLevelWidgets())
        widget->setEnabled(!blocked);

    if (!blocked) {
        if (blockedWindow) {
            blockedWindow->close();
            BlockedWindow* const gone = blockedWindow;
            blockedWindow = nullptr;
            delete gone;
        }
        return;
    }
    if (blockedWindow)
        return;
    blockedWindow = new BlockedWindow;
    blockedWindow->show();
    blockedWindow->raise();
    blockedWindow->activateWindow();
}

bool isProcessRunning(const QString& processFileName) {
    const auto snapshot = Platform::processSnapshot();
    if (!snapshot)
        return false;
    const std::string wanted = processFileName.toStdString();
    for (const Platform::ProcessEntry& entry : *snapshot)
        for (const std::string& name : entry.executableFileNames)
            if (name == wanted)
                return entry.processId != 0;
    return false;
}

bool installCrashReporter() {
    const QString receiver =
        ProductServer::url(QStringLiteral("/crashReports/crashrprt.php")).toString();
    CrashReporterInstallInfo info;
    info.size = sizeof(info);
    info.applicationName = L"Velmara Quorvane";
    info.applicationVersion = QString::fromStdString(Version::crashReportText()).toStdWString();
    info.reportReceiverUrl = receiver.toStdWString();
    info.flags |= 0x5FFF;
    info.privacyPolicyUrl = L"";

    if (crInstall(&info) != 0) {
        wchar_t message[256];
        crGetLastErrorMessage(message, 256);
        std::string narrowed; // the high byte of each character dropped
        for (const wchar_t* character = message; *character; ++character)
            narrowed += static_cast<char>(*character & 0xFF);
        QMessageBox::warning(nullptr, QStringLiteral("crInstall error"),
                             QString::fromLatin1(narrowed.c_str()), QMessageBox::Ok);
        return false;
    }
    crAddScreenshot(crScreenshotMainWindow | crScreenshotJpeg, 95);

    if (QCoreApplication::instance()) {
        auto* sender = new CrashReportSender(receiver, QCoreApplication::instance());
        QObject::connect(sender, &CrashReportSender::finished, sender, &QObject::deleteLater);
        sender->sendPendingReports();
    }
    return true;
}

void launchUpdater() {
    const QString updater =
        QCoreApplication::applicationDirPath() + QStringLiteral("/QuorvaneUpdater");
    if (Platform::startElevatedDetached(updater))
        return;
    QMessageBox::critical(
        nullptr, QStringLiteral("QuorvaneUpdater.exe not found"),
        QStringLiteral("QuorvaneUpdater.exe could not be found. Please make sure that no files "
                       "have been deleted or install the update manually by downloading the "
                       "latest version at ") +
            ProductServer::webAddress() +
            QStringLiteral("<br/><br/>We apologize for the inconvenience!"),
        QMessageBox::Ok);
}

void showReleaseNotesIfNew() {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    const float shownVersion = settings.value(QStringLiteral("releaseNoteVersion"), 0).toFloat();
    if (!(Version::program > shownVersion))
        return;
    ReleaseNoteDialog dialog;
    dialog.exec();
    settings.setValue(QStringLiteral("releaseNoteVersion"), Version::program);
}

void screenshotAndQuitIfAsked(QWidget& window) {
    const QString picturePath = qEnvironmentVariable("QUORVANE_SCREENSHOT_AND_QUIT");
    if (picturePath.isEmpty())
        return;
    // Half a second lets the window map and paint, and the first events settle.
    QTimer::singleShot(500, &window, [&window, picturePath] {
        const bool saved = window.grab().save(picturePath, "PNG");
        QCoreApplication::exit(saved ? 0 : 3);
    });
}
