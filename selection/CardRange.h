#pragma once

#include <QListWidget>
#include <QString>
#include <QStringList>

#include <string>
#include <utility>
#include <vector>

// A card field: a row of card pictures (Card items) that holds at most `maxCards` cards and
// never a card that lies in one of up to four other fields it is told about.
//
// The field is filled from text only (setCardsFromText), and read back as the texts of its
// items joined ("AhKd2c"). What a fill drops it remembers until the next fill, for telling
// the user (dropNote): pieces that are no card, repeats, cards that lie in another field,
// and cards beyond the field's room. The dynamic property "stronglyDisabled" (bool) marks a field
// that cannot take cards at the moment for reasons outside the board rules (the training page fixes
// parts of the board that way); the card dialog and BoardCardsWidget respect it.
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
    // lie in another field, and the field is not full. Everything else is dropped; the field
    // shows no message itself, but dropNote() tells what and why.
    void setCardsFromText(const QString& text);

    // How the notes of this field and of the fields beside it speak of it: where its cards
    // are ("on the board", "among the dead cards") and what its room is ("a flop has three
    // cards"). Unset, a field is "in another field" with "at most N cards".
    void setNoteNames(const QString& place, const QString& limit);
    QString notePlace() const;
    // What the last setCardsFromText dropped and why, in the order of the text, the reasons
    // parted by "; ": "not understood: Zz; a flop has three cards: 9c dropped". A lone
    // value letter that ends the text is a card on its way and is named only when
    // `finished`. Empty when nothing was dropped.
    QString dropNote(bool finished = true) const;
    // The same in short, for a field too narrow for the whole note: the pieces dropped,
    // "dropped: 9c, Ah"; empty when nothing was dropped.
    QString dropHint(bool finished = true) const;
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

    // Room for a whole flop, or for all the cards the field holds when it holds fewer; more
    // cards scroll.
    QSize minimumSizeHint() const override;

signals:
    // A double click anywhere on the field, on a card or beside the cards.
    void doubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    // What one fill dropped.
    struct Drops {
        QStringList notUnderstood;
        QStringList repeated;
        // Cards in another field, with that field's place, in the order of the text.
        std::vector<std::pair<QString, QString>> elsewhere;
        QStringList overLimit;
        // A value letter alone at the end of the text.
        QString unfinished;
    };

    void noteDrops(const QString& text, const std::vector<std::string>& read,
                   const std::vector<const CardRange*>& takenBy,
                   const std::vector<bool>& overLimit);

    unsigned int maximum = 52;
    std::vector<CardRange*> others;
    QString selection;
    QString place;
    QString limit;
    Drops drops;
};
