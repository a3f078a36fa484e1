#pragma once

#include <QString>
#include <QWidget>
#include <boost/function.hpp>

#include <string>

class CardRange;
class CardRangeText;
class QAbstractButton;
namespace Range {
class RandomSource;
}

namespace Ui {
class BoardCardsWidget;
}

// The board of a situation: flop (3 cards), turn (1), river (1) and dead cards (up to 21),
// each a text field with its shuffle button over a row of card pictures, the buttons to pick
// and to clear stacked beside the pictures.
//
// Rules kept after every change: a turn needs a full flop, a river needs a turn (a field
// left without its predecessor is cleared), and the turn and river controls are enabled
// only when their predecessor is complete and the field is not "stronglyDisabled". No card
// stands in two fields. After each change the callback, if set, receives the four texts,
// and changeOccured is emitted.
//
// Texts are two characters a card, value upper case and suit lower case: "AhKd2c".
class BoardCardsWidget : public QWidget {
    Q_OBJECT

public:
    using Callback = boost::function<void(const std::string& flop, const std::string& turn,
                                          const std::string& river, const std::string& dead)>;

    static constexpr unsigned int MaxDeadCards = 21;

    explicit BoardCardsWidget(QWidget* parent = nullptr);
    ~BoardCardsWidget() override;

    // Flop, turn and river joined: 0, 3, 4 or 5 cards.
    std::string getBoard() const;
    std::string getFlop() const;
    std::string getTurn() const;
    std::string getRiver() const;
    std::string getDeadCards() const;

    // Fill the fields from text, as if typed, and apply the rules. A board text is split as
    // flop (first 3 cards), turn, river. They call the callback but do not emit
    // changeOccured: they serve restoring a saved state, which is no user change.
    void setBoard(const std::string& board);
    void setDeadCards(const std::string& dead);
    // Empties all four fields, the same way.
    void clearAll();

    void setCallback(const Callback& callback);

    CardRange* flopRange() const;
    CardRange* turnRange() const;
    CardRange* riverRange() const;
    CardRange* deadRange() const;
    CardRangeText* flopText() const;
    CardRangeText* turnText() const;
    CardRangeText* riverText() const;
    CardRangeText* deadText() const;

    // Sets the "stronglyDisabled" property of the turn or river field; such a field is
    // disabled whatever the flop holds. Clearing its cards is the caller's business.
    void setStronglyDisabled(CardRange* range, bool disabled);

    // The generator the shuffle buttons draw from; the program's shared one unless set. Not
    // owned.
    void setRandomSource(Range::RandomSource* source) { random = source; }

    // `count` random cards none of which lies in `excluded` or repeats: a place in the deck
    // "2d3d...Ad2h...Ac" drawn from `random` (52 equally likely), drawn again on a repeat.
    // Fewer cards when not enough are free.
    static std::string randomCards(const std::string& excluded, unsigned int count,
                                   Range::RandomSource& random);

signals:
    void changeOccured();

public slots:
    void onSelectFlopCards();
    void onSelectTurnCard();
    void onSelectRiverCard();
    void onSelectDeadCards();
    void onClearFlopCards();
    void onClearTurnCard();
    void onClearRiverCard();
    void onClearDeadCards();
    void onShuffleFlop(bool withoutSignals = false);
    void onShuffleTurn(bool withoutSignals = false);
    void onShuffleRiver(bool withoutSignals = false);
    void onShuffleDeadcards();
    void onCardsTextChanged();

protected:
    bool event(QEvent* event) override;

private:
    void matchCardRowsToButtons();
    // Rules 1 to 4 and the callback; `announce` adds changeOccured.
    void applyRules(bool announce);
    void clearField(CardRange* range, CardRangeText* text);
    void fillField(CardRange* range, CardRangeText* text, const std::string& cards,
                   bool withoutSignals);
    void rewriteAllTexts();
    void selectWithDialog(CardRange* range);

    Ui::BoardCardsWidget* ui;
    Callback callback;
    Range::RandomSource* random;
};
