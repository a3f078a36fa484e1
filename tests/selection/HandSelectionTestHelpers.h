#pragma once

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "selection/HandSelectionTable.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPoint>
#include <QWidget>

#include <string>

// Synthetic mouse events sent straight to a widget, as the window system would deliver
// them: a press, moves with the buttons held, a release.
namespace HandSelectionTest {

inline void press(QWidget* widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QMouseEvent event(QEvent::MouseButtonPress, position, widget->mapToGlobal(position), button,
                      button, modifiers);
    QApplication::sendEvent(widget, &event);
}

inline void move(QWidget* widget, const QPoint& position, Qt::MouseButtons buttons,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QMouseEvent event(QEvent::MouseMove, position, widget->mapToGlobal(position), Qt::NoButton,
                      buttons, modifiers);
    QApplication::sendEvent(widget, &event);
}

inline void release(QWidget* widget, const QPoint& position,
                    Qt::MouseButton button = Qt::LeftButton) {
    QMouseEvent event(QEvent::MouseButtonRelease, position, widget->mapToGlobal(position), button,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

// The centre of a cell of the hand table.
inline QPoint cellCentre(int column, int row) {
    return HandSelectionTable::cellRect(column, row).center();
}

// Column and row of a class text ("AKs", "AKo", "AA") on the hand table.
inline QPoint cellOf(const std::string& hand) {
    const std::string values = "AKQJT98765432";
    const int high = static_cast<int>(values.find(hand[0]));
    const int low = static_cast<int>(values.find(hand[1]));
    if (hand.size() == 2)
        return QPoint(high, high);
    return hand[2] == 's' ? QPoint(low, high) : QPoint(high, low);
}

inline QPoint centreOf(const std::string& hand) {
    const QPoint cell = cellOf(hand);
    return cellCentre(cell.x(), cell.y());
}

// A stroke with one button from the first cell over the others to the last.
inline void stroke(QWidget* table, std::initializer_list<std::string> hands,
                   Qt::MouseButton button = Qt::LeftButton,
                   Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    bool first = true;
    QPoint last;
    for (const std::string& hand : hands) {
        last = centreOf(hand);
        if (first)
            press(table, last, button, modifiers);
        else
            move(table, last, button, modifiers);
        first = false;
    }
    release(table, last, button);
}

inline std::string textOf(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

inline Range::HandRange rangeOf(const std::string& freeText) {
    Range::HandRange range;
    Range::HandRangeStringManipulator(range).setFree(freeText);
    return range;
}

inline unsigned int suitsOf(const Range::HandRange& range, const std::string& hand) {
    const QPoint cell = cellOf(hand);
    const Range::Element element = HandSelectionTable::cellElement(cell.x(), cell.y());
    return range.find(element.values, element.suited)->suits;
}

} // namespace HandSelectionTest
