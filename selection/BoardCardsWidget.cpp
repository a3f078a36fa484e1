#include "selection/BoardCardsWidget.h"

#include "Range/Assertion.h"
#include "Range/RandomSource.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/CardSelectionDialog.h"
#include "ui_BoardCardsWidget.h"

#include <QEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace {

const char deck[] = "2d3d4d5d6d7d8d9dTdJdQdKdAd2h3h4h5h6h7h8h9hThJhQhKhAh"
                    "2s3s4s5s6s7s8s9sTsJsQsKsAs2c3c4c5c6c7c8c9cTcJcQcKcAc";

bool holdsCard(const std::string& cards, const std::string& card) {
    for (std::size_t i = 0; i + 1 < cards.size(); i += 2) {
        if (cards.compare(i, 2, card) == 0) {
            return true;
        }
    }
    return false;
}
} // namespace

BoardCardsWidget::BoardCardsWidget(QWidget* parent)
    : QWidget(parent), ui(new Ui::BoardCardsWidget), random(&Range::RandomSource::shared()) {
    ui->setupUi(this);

    struct Field {
        CardRange* range;
        CardRangeText* text;
        unsigned int maxCards;
        const char* title;
        const char* place; // where its cards are, for the notes of the other fields
        const char* limit; // its room, for its own notes
    };
    const Field fields[] = {
        {ui->flopCards, ui->flopText, 3, "Select Flop Cards", "on the board",
         "a flop has three cards"},
        {ui->turnCards, ui->turnText, 1, "Select Turn Cards", "on the board", "a turn is one card"},
        {ui->riverCards, ui->riverText, 1, "Select River Cards", "on the board",
         "a river is one card"},
        {ui->deadCards, ui->deadText, MaxDeadCards, "Select Dead Cards", "among the dead cards",
         "at most 21 dead cards"},
    };
    for (const Field& field : fields) {
        field.range->setMaxCards(field.maxCards);
        field.range->setSelectionTitle(QString::fromLatin1(field.title));
        field.range->setNoteNames(QString::fromLatin1(field.place),
                                  QString::fromLatin1(field.limit));
        field.text->setCardRange(field.range);
        std::vector<CardRange*> others;
        for (const Field& other : fields) {
            if (other.range != field.range) {
                others.push_back(other.range);
            }
        }
        field.range->setOtherRanges(others);
        connect(field.text, &CardRangeText::UpdateFromCardRange, this,
                &BoardCardsWidget::onCardsTextChanged);
    }
    matchCardRowsToButtons();

    connect(ui->flopCards, &CardRange::doubleClicked, this, &BoardCardsWidget::onSelectFlopCards);
    connect(ui->turnCards, &CardRange::doubleClicked, this, &BoardCardsWidget::onSelectTurnCard);
    connect(ui->riverCards, &CardRange::doubleClicked, this, &BoardCardsWidget::onSelectRiverCard);
    connect(ui->deadCards, &CardRange::doubleClicked, this, &BoardCardsWidget::onSelectDeadCards);
    connect(ui->flopText, &CardRangeText::doubleClicked, this,
            &BoardCardsWidget::onSelectFlopCards);
    connect(ui->turnText, &CardRangeText::doubleClicked, this, &BoardCardsWidget::onSelectTurnCard);
    connect(ui->riverText, &CardRangeText::doubleClicked, this,
            &BoardCardsWidget::onSelectRiverCard);
    connect(ui->deadText, &CardRangeText::doubleClicked, this,
            &BoardCardsWidget::onSelectDeadCards);

    connect(ui->selectFlopButton, &QPushButton::clicked, this,
            &BoardCardsWidget::onSelectFlopCards);
    connect(ui->selectTurnButton, &QPushButton::clicked, this, &BoardCardsWidget::onSelectTurnCard);
    connect(ui->selectRiverButton, &QPushButton::clicked, this,
            &BoardCardsWidget::onSelectRiverCard);
    connect(ui->selectDeadButton, &QPushButton::clicked, this,
            &BoardCardsWidget::onSelectDeadCards);
    connect(ui->shuffleFlopButton, &QToolButton::clicked, this, [this] { onShuffleFlop(false); });
    connect(ui->shuffleTurnButton, &QToolButton::clicked, this, [this] { onShuffleTurn(false); });
    connect(ui->shuffleRiverButton, &QToolButton::clicked, this, [this] { onShuffleRiver(false); });
    connect(ui->clearFlopButton, &QPushButton::clicked, this, &BoardCardsWidget::onClearFlopCards);
    connect(ui->clearTurnButton, &QPushButton::clicked, this, &BoardCardsWidget::onClearTurnCard);
    connect(ui->clearRiverButton, &QPushButton::clicked, this, &BoardCardsWidget::onClearRiverCard);
    connect(ui->clearDeadButton, &QPushButton::clicked, this, &BoardCardsWidget::onClearDeadCards);

    applyRules(false);
}

BoardCardsWidget::~BoardCardsWidget() {
    delete ui;
}

void BoardCardsWidget::matchCardRowsToButtons() {
    // Each field's cards stand beside its two stacked buttons, as tall as both together, so
    // that the four fields fit side by side on the smallest screens.
    const int buttons = ui->selectFlopButton->sizeHint().height() +
                        ui->clearFlopButton->sizeHint().height() + ui->flopButtonRow->spacing();
    const int height = std::max(buttons, 58);
    for (CardRange* range : {ui->flopCards, ui->turnCards, ui->riverCards, ui->deadCards}) {
        range->setFixedHeight(height);
    }
}

bool BoardCardsWidget::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    // The buttons' height follows the style sheet, which the window sets after building it.
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::FontChange) {
        matchCardRowsToButtons();
    }
    return handled;
}

std::string BoardCardsWidget::getFlop() const {
    return ui->flopCards->cardsText().toStdString();
}
std::string BoardCardsWidget::getTurn() const {
    return ui->turnCards->cardsText().toStdString();
}
std::string BoardCardsWidget::getRiver() const {
    return ui->riverCards->cardsText().toStdString();
}
std::string BoardCardsWidget::getDeadCards() const {
    return ui->deadCards->cardsText().toStdString();
}
std::string BoardCardsWidget::getBoard() const {
    return getFlop() + getTurn() + getRiver();
}

CardRange* BoardCardsWidget::flopRange() const {
    return ui->flopCards;
}
CardRange* BoardCardsWidget::turnRange() const {
    return ui->turnCards;
}
CardRange* BoardCardsWidget::riverRange() const {
    return ui->riverCards;
}
CardRange* BoardCardsWidget::deadRange() const {
    return ui->deadCards;
}
CardRangeText* BoardCardsWidget::flopText() const {
    return ui->flopText;
}
CardRangeText* BoardCardsWidget::turnText() const {
    return ui->turnText;
}
CardRangeText* BoardCardsWidget::riverText() const {
    return ui->riverText;
}
CardRangeText* BoardCardsWidget::deadText() const {
    return ui->deadText;
}

void BoardCardsWidget::setCallback(const Callback& newCallback) {
    callback = newCallback;
}

void BoardCardsWidget::setStronglyDisabled(CardRange* range, bool disabled) {
    CardRange::setStronglyDisabled(range, disabled);
    applyRules(false);
}

void BoardCardsWidget::clearField(CardRange* range, CardRangeText* text) {
    const QSignalBlocker rangeBlocker(range);
    const QSignalBlocker textBlocker(text);
    range->clear();
    text->clear();
    text->clearNote();
}

void BoardCardsWidget::fillField(CardRange* range, CardRangeText* text, const std::string& cards,
                                 bool withoutSignals) {
    {
        const QSignalBlocker rangeBlocker(withoutSignals ? range : nullptr);
        range->setCardsFromText(QString::fromStdString(cards));
    }
    text->showDropsOfLastFill();
    text->rewriteFromCardRange();
}

void BoardCardsWidget::rewriteAllTexts() {
    ui->flopText->rewriteFromCardRange();
    ui->turnText->rewriteFromCardRange();
    ui->riverText->rewriteFromCardRange();
    ui->deadText->rewriteFromCardRange();
}

void BoardCardsWidget::applyRules(bool announce) {
    if (ui->flopCards->cardCount() < 3 && ui->turnCards->cardCount() == 1) {
        clearField(ui->turnCards, ui->turnText);
    }
    if (ui->turnCards->cardCount() == 0 && ui->riverCards->cardCount() == 1) {
        clearField(ui->riverCards, ui->riverText);
    }
    const bool turnOpen =
        ui->flopCards->cardCount() == 3 && !CardRange::isStronglyDisabled(ui->turnCards);
    for (QWidget* widget : std::initializer_list<QWidget*>{ui->turnText, ui->selectTurnButton,
                                                           ui->shuffleTurnButton, ui->turnCards}) {
        widget->setEnabled(turnOpen);
    }
    const bool riverOpen =
        ui->turnCards->cardCount() == 1 && !CardRange::isStronglyDisabled(ui->riverCards);
    for (QWidget* widget : std::initializer_list<QWidget*>{
             ui->riverText, ui->selectRiverButton, ui->shuffleRiverButton, ui->riverCards}) {
        widget->setEnabled(riverOpen);
    }
    if (callback) {
        callback(getFlop(), getTurn(), getRiver(), getDeadCards());
    }
    if (announce) {
        emit changeOccured();
    }
}

void BoardCardsWidget::onCardsTextChanged() {
    applyRules(true);
}

void BoardCardsWidget::setBoard(const std::string& board) {
    clearField(ui->flopCards, ui->flopText);
    clearField(ui->turnCards, ui->turnText);
    clearField(ui->riverCards, ui->riverText);
    fillField(ui->flopCards, ui->flopText, board.substr(0, std::min<std::size_t>(6, board.size())),
              true);
    if (board.size() > 6) {
        fillField(ui->turnCards, ui->turnText, board.substr(6, 2), true);
    }
    if (board.size() > 8) {
        fillField(ui->riverCards, ui->riverText, board.substr(8, 2), true);
    }
    applyRules(false);
}

void BoardCardsWidget::setDeadCards(const std::string& dead) {
    clearField(ui->deadCards, ui->deadText);
    fillField(ui->deadCards, ui->deadText, dead, true);
    applyRules(false);
}

void BoardCardsWidget::clearAll() {
    clearField(ui->flopCards, ui->flopText);
    clearField(ui->turnCards, ui->turnText);
    clearField(ui->riverCards, ui->riverText);
    clearField(ui->deadCards, ui->deadText);
    applyRules(false);
}

std::string BoardCardsWidget::randomCards(const std::string& excluded, unsigned int count,
                                          Range::RandomSource& random) {
    std::string cards;
    unsigned int free = 0;
    for (std::size_t i = 0; i + 1 < sizeof(deck); i += 2) {
        const std::string card(deck + i, 2);
        free += holdsCard(excluded, card) ? 0 : 1;
    }
    QV_ASSERT(free >= count, "Not enough cards left to draw.");
    count = std::min(count, free);
    for (unsigned int drawn = 0; drawn < count;) {
        const std::uint32_t place = random.below(52);
        const std::string card(deck + 2 * place, 2);
        if (holdsCard(cards, card) || holdsCard(excluded, card)) {
            continue;
        }
        cards += card;
        ++drawn;
    }
    return cards;
}

void BoardCardsWidget::onShuffleFlop(bool withoutSignals) {
    clearField(ui->flopCards, ui->flopText);
    clearField(ui->turnCards, ui->turnText);
    clearField(ui->riverCards, ui->riverText);
    fillField(ui->flopCards, ui->flopText, randomCards(getDeadCards(), 3, *random), withoutSignals);
    applyRules(true);
}

void BoardCardsWidget::onShuffleTurn(bool withoutSignals) {
    clearField(ui->turnCards, ui->turnText);
    clearField(ui->riverCards, ui->riverText);
    // A turn needs a full flop: an empty (or, reached from code, a partial) flop is drawn
    // anew first.
    if (ui->flopCards->cardCount() < 3) {
        clearField(ui->flopCards, ui->flopText);
        fillField(ui->flopCards, ui->flopText, randomCards(getDeadCards(), 3, *random),
                  withoutSignals);
    }
    fillField(ui->turnCards, ui->turnText, randomCards(getFlop() + getDeadCards(), 1, *random),
              withoutSignals);
    applyRules(true);
}

void BoardCardsWidget::onShuffleRiver(bool withoutSignals) {
    clearField(ui->riverCards, ui->riverText);
    if (ui->flopCards->cardCount() < 3) {
        clearField(ui->flopCards, ui->flopText);
        clearField(ui->turnCards, ui->turnText);
        fillField(ui->flopCards, ui->flopText, randomCards(getDeadCards(), 3, *random),
                  withoutSignals);
    }
    if (ui->turnCards->cardCount() == 0) {
        fillField(ui->turnCards, ui->turnText, randomCards(getFlop() + getDeadCards(), 1, *random),
                  withoutSignals);
    }
    fillField(ui->riverCards, ui->riverText,
              randomCards(getFlop() + getTurn() + getDeadCards(), 1, *random), withoutSignals);
    applyRules(true);
}

void BoardCardsWidget::onShuffleDeadcards() {
    clearField(ui->deadCards, ui->deadText);
    fillField(ui->deadCards, ui->deadText, randomCards(getBoard(), 21, *random), false);
    applyRules(true);
}

void BoardCardsWidget::onClearFlopCards() {
    clearField(ui->flopCards, ui->flopText);
    applyRules(true);
}

void BoardCardsWidget::onClearTurnCard() {
    clearField(ui->turnCards, ui->turnText);
    applyRules(true);
}

void BoardCardsWidget::onClearRiverCard() {
    clearField(ui->riverCards, ui->riverText);
    applyRules(true);
}

void BoardCardsWidget::onClearDeadCards() {
    clearField(ui->deadCards, ui->deadText);
    applyRules(true);
}

void BoardCardsWidget::selectWithDialog(CardRange* range) {
    if (!range->isEnabled()) {
        return;
    }
    std::vector<CardRange*> row;
    std::vector<CardRange*> further;
    if (range == ui->deadCards) {
        further = {ui->flopCards, ui->turnCards, ui->riverCards};
    } else {
        row = {ui->flopCards, ui->turnCards, ui->riverCards};
        further = {ui->deadCards};
    }
    CardSelectionDialog dialog(range, row, further, this);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (accepted) {
        // The cards picked are the edit that ends every note about typed text.
        for (CardRangeText* text : {ui->flopText, ui->turnText, ui->riverText, ui->deadText}) {
            text->clearNote();
        }
    }
    rewriteAllTexts();
    applyRules(accepted);
}

void BoardCardsWidget::onSelectFlopCards() {
    selectWithDialog(ui->flopCards);
}
void BoardCardsWidget::onSelectTurnCard() {
    selectWithDialog(ui->turnCards);
}
void BoardCardsWidget::onSelectRiverCard() {
    selectWithDialog(ui->riverCards);
}
void BoardCardsWidget::onSelectDeadCards() {
    selectWithDialog(ui->deadCards);
}
