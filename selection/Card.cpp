#include "selection/Card.h"

#include "Range/CardConversion.h"
#include "selection/CardPictures.h"

#include <QIcon>

Card::Card(const CardValue& value, QListWidget* parent)
    : QListWidgetItem(parent, Type), card(value) {
    const QString text = QString::fromStdString(card.text);
    setText(text);
    setTextAlignment(Qt::AlignCenter);
    setIcon(QIcon(CardPictures::card(card.value, card.suit)));
    setFlags(Qt::ItemIsEnabled);
}

Card::Card(const std::string& text, QListWidget* parent) : Card(cardFromText(text), parent) {}
