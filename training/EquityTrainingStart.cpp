#include "training/EquityTrainingStart.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "calculation/ThreadPool.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/CardSelectionDialog.h"
#include "selection/HandRangeLine.h"
#include "selection/HandSelectionDialog.h"
#include "ui_EquityTrainingStart.h"

#include <QRadioButton>

#include <utility>

EquityTrainingStart::EquityTrainingStart(QWidget* parent)
    : QWidget(parent), ui(new Ui::EquityTrainingStart), prompts(EquityTrainingPrompts::standard()) {
    ui->setupUi(this);
    ui->heroRange->setHandRange(&hero);
    ui->villainRange1->setHandRange(&villain1);
    ui->villainRange2->setHandRange(&villain2);

    connect(ui->startTrainingButton, &QPushButton::clicked, this,
            &EquityTrainingStart::onStartTraining);
    for (QRadioButton* radio : {ui->noneRadio, ui->flopRadio, ui->turnRadio, ui->riverRadio})
        connect(radio, &QRadioButton::toggled, this, [this](bool checked) {
            if (checked)
                reactToRadioChanges();
        });
    connect(ui->boardCardsWidget, &BoardCardsWidget::changeOccured, this,
            &EquityTrainingStart::updateBoardForRanges);

    struct Row {
        HandRangeLine* line;
        QToolButton* selectRange;
        QToolButton* selectCards;
        QToolButton* clear;
        void (EquityTrainingStart::*onSelectRange)();
        void (EquityTrainingStart::*onSelectCards)();
        void (EquityTrainingStart::*onClear)();
    };
    const Row rows[] = {
        {ui->heroRange, ui->selectHeroRangeButton, ui->selectHeroCardsButton,
         ui->clearHeroRangeButton, &EquityTrainingStart::onHeroSelectRange,
         &EquityTrainingStart::onHeroSelectCards, &EquityTrainingStart::onHeroClearRange},
        {ui->villainRange1, ui->selectVillain1RangeButton, ui->selectVillain1CardsButton,
         ui->clearVillain1RangeButton, &EquityTrainingStart::onVillainRange1SelectRange,
         &EquityTrainingStart::onVillainRange1SelectCards,
         &EquityTrainingStart::onVillainRange1ClearRange},
        {ui->villainRange2, ui->selectVillain2RangeButton, ui->selectVillain2CardsButton,
         ui->clearVillain2RangeButton, &EquityTrainingStart::onVillainRange2SelectRange,
         &EquityTrainingStart::onVillainRange2SelectCards,
         &EquityTrainingStart::onVillainRange2ClearRange}};
    for (const Row& row : rows) {
        connect(row.selectRange, &QToolButton::clicked, this, row.onSelectRange);
        connect(row.selectCards, &QToolButton::clicked, this, row.onSelectCards);
        connect(row.clear, &QToolButton::clicked, this, row.onClear);
        connect(row.line, &HandRangeLine::doubleClicked, this, row.onSelectRange);
    }

    reactToRadioChanges();
}

EquityTrainingStart::~EquityTrainingStart() {
    // The lines let go of the ranges before these go away.
    ui->heroRange->clear();
    ui->villainRange1->clear();
    ui->villainRange2->clear();
    delete ui;
}

void EquityTrainingStart::setThreadPool(ThreadPool* threadPool) {
    pool = threadPool;
}

void EquityTrainingStart::setRandomSource(Range::RandomSource* random) {
    ui->boardCardsWidget->setRandomSource(random);
}

void EquityTrainingStart::setPrompts(EquityTrainingPrompts newPrompts) {
    prompts = std::move(newPrompts);
}

BoardCardsWidget* EquityTrainingStart::boardCards() const {
    return ui->boardCardsWidget;
}
HandRangeLine* EquityTrainingStart::heroLine() const {
    return ui->heroRange;
}
HandRangeLine* EquityTrainingStart::villain1Line() const {
    return ui->villainRange1;
}
HandRangeLine* EquityTrainingStart::villain2Line() const {
    return ui->villainRange2;
}

EquityTrainingRandomness EquityTrainingStart::randomness() const {
    if (ui->flopRadio->isChecked())
        return EquityTrainingRandomness::Flop;
    if (ui->turnRadio->isChecked())
        return EquityTrainingRandomness::Turn;
    if (ui->riverRadio->isChecked())
        return EquityTrainingRandomness::River;
    return EquityTrainingRandomness::None;
}

void EquityTrainingStart::warn(const char* title, const char* text) {
    prompts.warn(this, QString::fromLatin1(title), QString::fromLatin1(text));
}

void EquityTrainingStart::onStartTraining() {
    // What the line shows may not be parsed yet when the button is clicked right after
    // typing; the range is what counts.
    const auto isEmpty = [](const Range::HandRange& range) {
        return Range::HandRangeStringReader(range).technicalText().empty();
    };
    if (isEmpty(hero)) {
        warn("Hero's Range is empty.", "Please specify a range for Hero.");
        return;
    }
    if (isEmpty(villain1)) {
        warn("Villain's Range1 is empty.", "Please specify at least Villain's range1.");
        return;
    }
    const BoardCardsWidget* board = ui->boardCardsWidget;
    const EquityTrainingRandomness chosen = randomness();
    if (chosen == EquityTrainingRandomness::None && board->getBoard().size() <= 5) {
        warn("Board is empty", "Please specify a flop or tick a random cards radio button.");
        return;
    }
    if (chosen == EquityTrainingRandomness::Flop && board->getFlop().size() == 6) {
        warn("Flop is given", "Please remove at least one flop card or choose no randomness.");
        return;
    }
    emit trainingStarted(hero, villain1, villain2, board->getBoard(), board->getDeadCards(),
                         chosen);
}

void EquityTrainingStart::reactToRadioChanges() {
    BoardCardsWidget* board = ui->boardCardsWidget;
    const EquityTrainingRandomness chosen = randomness();
    // A field the training deals itself cannot be given: it is closed and emptied.
    const bool closeTurn = chosen == EquityTrainingRandomness::Flop;
    const bool closeRiver = closeTurn || chosen == EquityTrainingRandomness::Turn;
    CardRange::setStronglyDisabled(board->turnRange(), closeTurn);
    CardRange::setStronglyDisabled(board->riverRange(), closeRiver);
    std::string kept = board->getFlop();
    if (!closeTurn)
        kept += board->getTurn();
    if (!closeRiver)
        kept += board->getRiver();
    // setBoard applies the board rules, which enable the turn and river fields by the cards
    // before them unless they are closed.
    board->setBoard(kept);
    updateBoardForRanges();
}

void EquityTrainingStart::updateBoardForRanges() {
    const BoardCardsWidget* board = ui->boardCardsWidget;
    const std::vector<unsigned long long> dead = Range::cardsOfText(board->getDeadCards());
    for (HandRangeLine* line : {ui->heroRange, ui->villainRange1, ui->villainRange2}) {
        line->setBoard(board->getBoard());
        line->setDeadCards(dead);
    }
}

void EquityTrainingStart::selectRange(HandRangeLine* line, Range::HandRange& range,
                                      const QString& who) {
    const BoardCardsWidget* board = ui->boardCardsWidget;
    if (HandSelectionDialog::selectRange(range, QStringLiteral("Select %1 Range").arg(who),
                                         board->getBoard(), board->getDeadCards(), pool.data(),
                                         this))
        line->setHandRange(&range);
}

void EquityTrainingStart::selectCards(HandRangeLine* line, Range::HandRange& range,
                                      const QString& who) {
    // One concrete hand, none of its cards on the board or dead.
    CardRange pickedHand;
    pickedHand.setMaxCards(2);
    CardSelectionDialog dialog(&pickedHand, {}, {}, this);
    dialog.setWindowTitle(QStringLiteral("Select %1 Cards").arg(who));
    const BoardCardsWidget* board = ui->boardCardsWidget;
    dialog.setForbiddenCards(QString::fromStdString(board->getBoard() + board->getDeadCards()));
    const bool picked = dialog.exec() == QDialog::Accepted && pickedHand.cardCount() == 2;
    if (!picked)
        return;
    Range::HandRangeStringManipulator(&range).setFree(pickedHand.cardsText().toStdString());
    line->setHandRange(&range);
}

void EquityTrainingStart::clearRange(HandRangeLine* line, Range::HandRange& range) {
    range.reset();
    line->setHandRange(&range);
}

void EquityTrainingStart::onHeroSelectRange() {
    selectRange(ui->heroRange, hero, QStringLiteral("Hero's"));
}
void EquityTrainingStart::onHeroSelectCards() {
    selectCards(ui->heroRange, hero, QStringLiteral("Hero's"));
}
void EquityTrainingStart::onHeroClearRange() {
    clearRange(ui->heroRange, hero);
}
void EquityTrainingStart::onVillainRange1SelectRange() {
    selectRange(ui->villainRange1, villain1, QStringLiteral("Villain's Range1"));
}
void EquityTrainingStart::onVillainRange1SelectCards() {
    selectCards(ui->villainRange1, villain1, QStringLiteral("Villain's Range1"));
}
void EquityTrainingStart::onVillainRange1ClearRange() {
    clearRange(ui->villainRange1, villain1);
}
void EquityTrainingStart::onVillainRange2SelectRange() {
    selectRange(ui->villainRange2, villain2, QStringLiteral("Villain's Range2"));
}
void EquityTrainingStart::onVillainRange2SelectCards() {
    selectCards(ui->villainRange2, villain2, QStringLiteral("Villain's Range2"));
}
void EquityTrainingStart::onVillainRange2ClearRange() {
    clearRange(ui->villainRange2, villain2);
}
