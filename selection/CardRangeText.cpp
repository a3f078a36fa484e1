#include "selection/CardRangeText.h"

#include "selection/CardRange.h"

#include <QSignalBlocker>

CardRangeText::CardRangeText(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textChanged, this, &CardRangeText::onTextChanged);
    connect(this, &QLineEdit::editingFinished, this, &CardRangeText::rewriteFromCardRange);
}

void CardRangeText::setCardRange(CardRange* cardRange) {
    range = cardRange;
}

void CardRangeText::rewriteFromCardRange() {
    if (range == nullptr) {
        return;
    }
    const QString cards = range->cardsText();
    if (cards != text()) {
        const QSignalBlocker blocker(this);
        setText(cards);
    }
}

void CardRangeText::onTextChanged(const QString& newText) {
    if (range == nullptr) {
        return;
    }
    range->setCardsFromText(newText);
    emit UpdateFromCardRange();
}

void CardRangeText::mouseDoubleClickEvent(QMouseEvent* event) {
    QLineEdit::mouseDoubleClickEvent(event);
    emit doubleClicked();
}
