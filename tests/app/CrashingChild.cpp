// A small program that installs the crash reporter like the real program and then dies in
// the way its argument names. The crash reporter tests run it and read what it left.
//
//   quorvane_crashing_child segv|abort|fpe|ill|bus|overflow|exception|text-exception|
//                           thread-exception|exit

#include "app/CrashReporter.h"
#include "app/StartUp.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>

// Not static, not inlined: the names must show in the stack trace of the report.
__attribute__((noinline)) void crashingChildDereferencesNull() {
    volatile int* nowhere = nullptr;
    *nowhere = 1;
}

// Far deeper than any stack allows; volatile, so that the compiler cannot see the end.
volatile int crashingChildDepthLimit = 1 << 30;

__attribute__((noinline)) int crashingChildRecursesForever(int depth) {
    volatile char frame[512];
    frame[0] = static_cast<char>(depth);
    if (depth >= crashingChildDepthLimit)
        return frame[0];
    return crashingChildRecursesForever(depth + 1) + frame[0];
}

__attribute__((noinline)) void crashingChildThrows() {
    throw std::runtime_error("The range tree file is damaged.");
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const std::string mode = argc > 1 ? argv[1] : "";

    if (!installCrashReporter())
        return 2;

    QMainWindow window;
    auto* content = new QLabel(QStringLiteral("<h2>Crashing child</h2>"));
    content->setAlignment(Qt::AlignCenter);
    content->setStyleSheet(QStringLiteral("background: #17808f; color: white;"));
    window.setCentralWidget(content);
    window.setFixedSize(640, 400);
    window.show();

    QTimer::singleShot(100, &window, [mode] {
        if (mode == "segv")
            crashingChildDereferencesNull();
        else if (mode == "abort")
            std::abort();
        else if (mode == "fpe")
            std::raise(SIGFPE);
        else if (mode == "ill")
            std::raise(SIGILL);
        else if (mode == "bus")
            std::raise(SIGBUS);
        else if (mode == "overflow")
            std::printf("%d\n", crashingChildRecursesForever(0));
        else if (mode == "exception")
            crashingChildThrows();
        else if (mode == "text-exception")
            throw std::string("Node 7 is no folder.");
        else if (mode == "thread-exception")
            std::thread([] { crashingChildThrows(); }).join();
        QCoreApplication::exit(0); // "exit", or a crash that did not happen
    });
    const int exitCode = application.exec();
    crUninstall();
    return exitCode;
}
