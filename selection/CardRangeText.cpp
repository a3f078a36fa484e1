#include "selection/CardRangeText.h"

#include "selection/CardRange.h"

#include <QPainter>
#include <QSignalBlocker>

CardRangeText::CardRangeText(QWidget* parent) : QLineEdit(parent), dropNote(this) {
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
    // The note's room follows the text, so it is judged after the text is rewritten.
    if (typedFill) {
        typedFill = false;
        dropNote.show(range->dropNote(true), range->dropHint(true));
    } else {
        dropNote.relayout();
    }
}

void CardRangeText::showDropsOfLastFill() {
    typedFill = false;
    if (range == nullptr) {
        dropNote.clear();
        return;
    }
    dropNote.show(range->dropNote(true), range->dropHint(true));
}

void CardRangeText::onTextChanged(const QString& newText) {
    if (range == nullptr) {
        return;
    }
    range->setCardsFromText(newText);
    // While the user types, the card at the cursor is on its way and no mistake yet.
    typedFill = hasFocus();
    dropNote.show(range->dropNote(!typedFill), range->dropHint(!typedFill));
    emit UpdateFromCardRange();
}

void CardRangeText::mouseDoubleClickEvent(QMouseEvent* event) {
    QLineEdit::mouseDoubleClickEvent(event);
    emit doubleClicked();
}

void CardRangeText::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (dropNote.isShown()) {
        QPainter painter(this);
        dropNote.paint(painter);
    }
}

void CardRangeText::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    dropNote.relayout();
}
