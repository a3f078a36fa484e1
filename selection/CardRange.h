#pragma once

#include <QListWidget>
#include <QString>

#include <string>
#include <vector>

// A card field: a row of card pictures (Card items) that holds at most `maxCards` cards and
// never a card that lies in one of up to four other fields it is told about.
//
// The field is filled from text only (setCardsFromText), and read back as the texts of its
// items joined ("AhKd2c"). The dynamic property "stronglyDisabled" (bool) marks a field that
// cannot take cards at the moment for reasons outside the board rules (the training page
// fixes parts of the board that way); the card dialog and BoardCardsWidget respect it.
class CardRange : public QListWidget {
    Q_OBJECT

public:
    static constexpr unsigned int MaxOtherRanges = 4;

    explicit CardRange(QWidget* parent = nullptr);

    void setMaxCards(unsigned int maxCards);
    unsigned int maxCards() const { return maximum; }

    // The fields whose cards this one refuses. More than four is a fault (asserted; the
    // rest is ignored). Null entries are skipped.
    void setOtherRanges(const std::vector<CardRange*>& ranges);
    const std::vector<CardRange*>& otherRanges() const { return others; }

    // Replaces the cards by those of `text`, two characters a card: the first is taken upper
    // case and the second lower case; a pair counts when it reads as a card of
    // "AKQJT98765432" and "dhsc", is not a repeat of an earlier card of the text, does not
    // lie in another field, and the field is not full. Everything else is dropped silently.
    void setCardsFromText(const QString& text);
    // The cards as text, in their order: "AhKd2c"; empty for an empty field.
    QString cardsText() const;
    unsigned int cardCount() const;
    // Whether the field holds the card of a canonical two-character text ("Ad").
    bool holdsCard(const QString& card) const;

    // Title of the card dialog when it edits this field ("Select Flop Cards").
    void setSelectionTitle(const QString& title) { selection = title; }
    QString selectionTitle() const { return selection; }

    // Reads and writes the dynamic property "stronglyDisabled".
    static bool isStronglyDisabled(const CardRange* range);
    static void setStronglyDisabled(CardRange* range, bool disabled);

signals:
    // A double click anywhere on the field, on a card or beside the cards.
    void doubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    unsigned int maximum = 52;
    std::vector<CardRange*> others;
    QString selection;
};
