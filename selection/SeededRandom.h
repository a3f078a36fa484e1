#pragma once

#include <QtGlobal>

// A draw from Qt's per-thread generator behind qsrand(), 0..RAND_MAX: runs seeded with
// qsrand() repeat their draws, which the random card buttons' tests rely on. The one place
// that calls the deprecated qrand().
inline int drawRandom() {
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return qrand();
    QT_WARNING_POP
}
