#include "app/CrashReporter.h"
#include "app/DesktopFileOpener.h"
#include "app/Quorvane.h"
#include "app/ReleaseNoteDialog.h"
#include "app/SingleInstance.h"
#include "app/SplashScreen.h"
#include "app/StartUp.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>

// The order of start-up and shutdown. Every step below relies on the ones above it.
int main(int argc, char* argv[]) {
    // 1. The application object; settings everywhere are QSettings("Velmara", "Quorvane").
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmara"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.quorvane.Quorvane"));

    //    One program per user and display: a later start hands its files to the running
    //    window and ends here, before any window of its own.
    const QStringList files =
        DesktopFileOpener::filesOf(QCoreApplication::arguments(), QDir::currentPath());
    SingleInstance instance;
    switch (instance.start(files)) {
    case SingleInstance::Role::HandedOver:
        return 0;
    case SingleInstance::Role::NotTaken:
        std::fprintf(stderr, "quorvane: %s\n", qPrintable(instance.problem()));
        return 1;
    case SingleInstance::Role::Alone:
        std::fprintf(stderr, "quorvane: %s Later starts will not reach this one.\n",
                     qPrintable(instance.problem()));
        break;
    case SingleInstance::Role::First:
        break;
    }

    // 2. The watch for the blocking process, from before the splash to the very end. Its
    //    first tick comes once an event loop runs (the splash's is the first).
    QTimer blockingProcessWatch;
    QObject::connect(&blockingProcessWatch, &QTimer::timeout, &blockingProcessWatch,
                     &watchBlockingProcess);
    blockingProcessWatch.start(2000);

    // 3. The crash reporter, or no program at all.
    if (!installCrashReporter()) {
        QMessageBox::critical(nullptr, QStringLiteral("CrashRptr could not be initialized."),
                              QStringLiteral("CrashRptr could not be initialized."),
                              QMessageBox::Ok);
        return -1;
    }

    // 4. The icon of every window.
    application.setWindowIcon(QIcon(QStringLiteral(":/quorvane-Logo-Small.png")));

    // 5. The splash: version check, then the evaluator's board tables.
    SplashScreen splash;
    splash.exec();

    // 6. What the closed splash left in the queue.
    QCoreApplication::processEvents();

    // 7. An update chosen in the splash ends the program here.
    if (splash.startUpStatus() == SplashScreen::InstallUpdate) {
        launchUpdater();
        QCoreApplication::quit();
        return 0;
    }

    // 8. The main window, then over it what the start has to say: the release notes once
    //    per version, and the failed version check. Neither holds the window back.
    auto* window = new Quorvane;
    window->show();
    const bool updateCheckFailed = splash.updateCheckFailed();
    whenFirstDrawn(*window, [window, updateCheckFailed] {
        const ReleaseNoteDialog* notes = showReleaseNotesIfNew(window);
        QMessageBox* warning = updateCheckFailed ? warnOfFailedUpdateCheck(window) : nullptr;
        if (notes != nullptr && warning != nullptr)
            keepClearOf(*warning, *notes);
    });
    screenshotAndQuitIfAsked(*window);
    // What a run that did not end cleanly left unsaved, offered once the window is up.
    QTimer::singleShot(0, window, [window] { window->offerRecovery(); });

    // 9. The files of the command line after that, and those of later starts as they come.
    DesktopFileOpener opener(
        window, [window](const QString& path) { return window->openAnalysisFile(path); },
        [window](const QString& path) { return DesktopFileOpener::importRangeTree(path, window); });
    QObject::connect(&instance, &SingleInstance::filesReceived, &opener, &DesktopFileOpener::open);
    if (!files.isEmpty())
        QTimer::singleShot(0, &opener, [&opener, &files] { opener.open(files); });

    // 10. The one event loop.
    const int exitCode = application.exec();

    // 11. From here on a crash is the system's business, not a report.
    crUninstall();

    // 12. The main window now; the splash, the timer and the application as the stack
    //     unwinds, in that order.
    delete window;
    return exitCode;
}
