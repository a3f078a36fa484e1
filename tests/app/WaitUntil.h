#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <functional>

// Runs the event loop until `done` holds or `limitMs` passed; returns `done()`. For tests
// that wait for what a server, a timer or another process does.
inline bool waitUntil(const std::function<bool()>& done, int limitMs = 10000) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < limitMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}
