#pragma once

#include "Range/CardValue.h"

#include <QListWidgetItem>

#include <string>

// One card in a card field (CardRange): its picture as the icon, its two-character text
// ("Ad") as the item text, which is what the field's text is read from.
class Card : public QListWidgetItem {
public:
    static constexpr int Type = QListWidgetItem::UserType + 1;

    explicit Card(const CardValue& card, QListWidget* parent = nullptr);
    // From a two-character card text such as "Ad". Throws std::runtime_error with the
    // messages of cardFromText for bad characters.
    explicit Card(const std::string& text, QListWidget* parent = nullptr);

    const CardValue& cardValue() const { return card; }
    int value() const { return card.value; }
    unsigned int suit() const { return card.suit; }
    const std::string& cardText() const { return card.text; }

private:
    CardValue card;
};
