#pragma once

#include "Range/RandomSource.h"
#include "selection/CardSelectionTable.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace CardTestHelpers {

// Seeds the program's shared generator, which the card shuffles draw from.
inline void seedRandom(unsigned int seed) {
    Range::RandomSource::shared().reseed(seed);
}

// Centre of the cell of a card in the selection table.
inline QPoint cellCentre(const QString& card) {
    const int column = QStringLiteral("AKQJT98765432").indexOf(card.at(0));
    const int row = CardSelectionTable::rowOfSuit(card.at(1).toLatin1());
    return CardSelectionTable::cellRect(column, row).center();
}

inline void press(QWidget* table, const QString& card, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(table, button, Qt::NoModifier, cellCentre(card));
}

inline void release(QWidget* table, const QString& card, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(table, button, Qt::NoModifier, cellCentre(card));
}

inline void click(QWidget* table, const QString& card, Qt::MouseButton button = Qt::LeftButton) {
    press(table, card, button);
    release(table, card, button);
}

// A move with buttons held, which QTest::mouseMove cannot express.
inline void dragOver(QWidget* table, const QString& card, Qt::MouseButtons buttons) {
    const QPoint position = cellCentre(card);
    QMouseEvent move(QEvent::MouseMove, position, table->mapToGlobal(position), Qt::NoButton,
                     buttons, Qt::NoModifier);
    QApplication::sendEvent(table, &move);
}

// Runs `body` on the next modal dialog once it is shown (for dialogs opened with exec()).
inline void whenModalShows(const std::function<void(QWidget*)>& body) {
    // Gives up after about ten seconds, so that a dialog that never comes cannot leave a
    // poll running into later tests.
    auto poll = std::make_shared<std::function<void(int)>>();
    std::weak_ptr<std::function<void(int)>> weak = poll;
    *poll = [body, weak](int triesLeft) {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal != nullptr && modal->isVisible()) {
            body(modal);
        } else if (triesLeft > 0) {
            if (auto self = weak.lock()) {
                QTimer::singleShot(10, [self, triesLeft] { (*self)(triesLeft - 1); });
            }
        }
    };
    QTimer::singleShot(0, [poll] { (*poll)(1000); });
}

} // namespace CardTestHelpers
