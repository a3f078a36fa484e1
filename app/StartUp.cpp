#include "app/StartUp.h"

#include "app/BlockedWindow.h"
#include "app/CrashReporter.h"
#include "app/Platform.h"
#include "app/ProductServer.h"
#include "app/ReleaseNoteDialog.h"
#include "quorvane/Version.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>
#include <QPixmap>
#include <QScreen>
#include <QSettings>
#include <QTimer>
#include <QUrl>
#include <QWebFrame>
#include <QWebPage>
#include <QWebView>
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

QString updaterPath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/QuorvaneUpdater");
}

bool updaterAvailable() {
    const QFileInfo updater(updaterPath());
    return updater.isFile() && updater.isExecutable();
}

namespace {

QString downloadLink() {
    const QString address = ProductServer::downloadAddress();
    return QStringLiteral("<a href=\"%1\">%1</a>").arg(address);
}

} // namespace

void launchUpdater() {
    if (Platform::startElevatedDetached(updaterPath()))
        return;
    QMessageBox::critical(
        nullptr, QStringLiteral("QuorvaneUpdater not found"),
        QStringLiteral("QuorvaneUpdater could not be found. Please make sure that no files have "
                       "been deleted or install the update manually by downloading the latest "
                       "version at ") +
            downloadLink() + QStringLiteral("<br/><br/>We apologize for the inconvenience!"),
        QMessageBox::Ok);
}

void announceUpdate() {
    QMessageBox box;
    box.setWindowTitle(QStringLiteral("Update available"));
    box.setTextFormat(Qt::RichText);
    box.setText(QStringLiteral("An update is available. You can download it at ") + downloadLink());
    box.setTextInteractionFlags(Qt::TextBrowserInteraction);
    box.setWindowFlags(Qt::WindowStaysOnTopHint | Qt::MSWindowsFixedSizeDialogHint);
    box.setStandardButtons(QMessageBox::Ok);
    box.setIcon(QMessageBox::Information);
    box.setWindowIcon(QIcon(QStringLiteral(":/favicon.ico")));
    box.raise();
    box.exec();
}

QMessageBox* warnOfFailedUpdateCheck(QWidget* window) {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    if (settings.value(QStringLiteral("PreStarter/ignoreInternetWarning"), false).toBool())
        return nullptr;
    auto* box = new QMessageBox(
        QMessageBox::Warning, QStringLiteral("Update Check Failed"),
        QStringLiteral("Check for updates failed. Please make sure that this software has "
                       "sufficient permissions to access the internet. Otherwise, checks for "
                       "updates cannot be performed. Alternatively, you can download the "
                       "newest version at ") +
            downloadLink() +
            QStringLiteral("<br/><br/>Press Ignore to disable this warning in the future."),
        QMessageBox::Ok | QMessageBox::Ignore, window);
    box->setTextFormat(Qt::RichText);
    box->setTextInteractionFlags(Qt::TextBrowserInteraction);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QMessageBox::buttonClicked, box, [box](QAbstractButton* button) {
        if (box->standardButton(button) == QMessageBox::Ignore)
            QSettings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"))
                .setValue(QStringLiteral("PreStarter/ignoreInternetWarning"), true);
    });
    box->open();
    return box;
}

void keepClearOf(QWidget& box, const QWidget& other) {
    const QScreen* screen = other.screen();
    if (screen == nullptr)
        return;
    box.adjustSize();
    const QRect free = screen->availableGeometry();
    const QRect taken = other.frameGeometry();
    const QSize size = box.frameGeometry().size();
    constexpr int gap = 12;
    const int centred = taken.center().x() - size.width() / 2;
    const int middle = taken.center().y() - size.height() / 2;
    for (const QPoint& place :
         {QPoint(centred, taken.bottom() + gap), QPoint(centred, taken.top() - gap - size.height()),
          QPoint(taken.right() + gap, middle), QPoint(taken.left() - gap - size.width(), middle)}) {
        if (free.contains(QRect(place, size))) {
            box.move(place);
            return;
        }
    }
}

ReleaseNoteDialog* showReleaseNotesIfNew(QWidget* window) {
    QSettings settings(QStringLiteral("Velmara"), QStringLiteral("Quorvane"));
    const float shownVersion = settings.value(QStringLiteral("releaseNoteVersion"), 0).toFloat();
    if (!(Version::program > shownVersion))
        return nullptr;
    auto* dialog = new ReleaseNoteDialog(window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    dialog->raise();
    settings.setValue(QStringLiteral("releaseNoteVersion"), Version::program);
    return dialog;
}

namespace {

// Watches the application for the first paint of a widget in `window`, then runs the action
// from the event loop, so that the paint is on screen first; it deletes itself afterwards.
// A window that is not drawn within fallbackMs (hidden at once, say) runs it then.
class FirstPaintWatch : public QObject {
public:
    static constexpr int fallbackMs = 2000;

    FirstPaintWatch(QWidget& window, std::function<void()> action)
        : QObject(&window), window(window), action(std::move(action)) {
        QCoreApplication::instance()->installEventFilter(this);
        QTimer::singleShot(fallbackMs, this, [this] { fire(); });
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            auto* widget = qobject_cast<QWidget*>(watched);
            if (widget && widget->window() == &window)
                fire();
        }
        return false;
    }

private:
    void fire() {
        if (!action)
            return;
        QCoreApplication::instance()->removeEventFilter(this);
        QTimer::singleShot(0, &window, std::move(action));
        action = nullptr;
        deleteLater();
    }

    QWidget& window;
    std::function<void()> action;
};

} // namespace

void whenFirstDrawn(QWidget& window, std::function<void()> action) {
    new FirstPaintWatch(window, std::move(action));
}

namespace {

// What a visible top-level window shows, for the end-to-end tests.
QString describeWindow(QWidget& widget) {
    QString text =
        QStringLiteral("[%1] %2\n")
            .arg(QString::fromLatin1(widget.metaObject()->className()), widget.windowTitle());
    if (auto* box = qobject_cast<QMessageBox*>(&widget))
        text += box->text() + QLatin1Char('\n');
    if (auto* notes = qobject_cast<ReleaseNoteDialog*>(&widget))
        text += notes->webView()->page()->mainFrame()->toPlainText() + QLatin1Char('\n');
    return text;
}

} // namespace

void screenshotAndQuitIfAsked(QWidget& window) {
    const QString picturePath = qEnvironmentVariable("QUORVANE_SCREENSHOT_AND_QUIT");
    if (picturePath.isEmpty())
        return;
    // Half a second after the first drawing lets the first events settle.
    whenFirstDrawn(window, [&window, picturePath] {
        QTimer::singleShot(500, &window, [&window, picturePath] {
            bool saved = window.grab().save(picturePath, "PNG");
            if (QScreen* screen = window.screen())
                saved = screen->grabWindow(0).save(picturePath + QStringLiteral(".screen.png"),
                                                   "PNG") &&
                        saved;
            QString windows;
            for (QWidget* widget : QApplication::topLevelWidgets())
                if (widget->isVisible())
                    windows += describeWindow(*widget);
            QFile report(picturePath + QStringLiteral(".windows.txt"));
            saved =
                report.open(QIODevice::WriteOnly) && report.write(windows.toUtf8()) >= 0 && saved;
            QCoreApplication::exit(saved ? 0 : 3);
        });
    });
}
