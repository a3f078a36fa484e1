#include "app/CrashReporter.h"
#include "app/Quorvane.h"
#include "app/SplashScreen.h"
#include "app/StartUp.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QTimer>

// The order of start-up and shutdown. Every step below relies on the ones above it.
int main(int argc, char* argv[]) {
    // 1. The application object; settings everywhere are QSettings("Velmara", "Quorvane").
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmara"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));

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

    // 8. Release notes, once per version.
    showReleaseNotesIfNew();

    // 9. The main window.
    auto* window = new Quorvane;
    window->show();
    screenshotAndQuitIfAsked(*window);

    // 10. The one event loop.
    const int exitCode = application.exec();

    // 11. From here on a crash is the system's business, not a report.
    crUninstall();

    // 12. The main window now; the splash, the timer and the application as the stack
    //     unwinds, in that order.
    delete window;
    return exitCode;
}
