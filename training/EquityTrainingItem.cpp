#include "training/EquityTrainingItem.h"

#include "Range/Assertion.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringReader.h"
#include "Range/RandomSource.h"
#include "calculation/ThreadPool.h"
#include "selection/CardRange.h"
#include "selection/HandRangeLine.h"
#include "training/EquityTrainingDeal.h"
#include "training/EquityTrainingItemTable.h"
#include "training/EquityTrainingScore.h"
#include "ui_EquityTrainingItem.h"
#include "utils/ui/EquityColor.h"

#include <QLineEdit>
#include <QMovie>
#include <QSignalBlocker>

#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double notKnown = std::numeric_limits<double>::quiet_NaN();
// What the correct boxes show while their equity is not known: their minimum, shown as the
// special text "n/a".
constexpr double unknownBoxValue = -1.0;

} // namespace

EquityTrainingItem::EquityTrainingItem(ThreadPool* threadPool, Range::RandomSource& randomSource,
                                       const Range::HandRange& heroRange,
                                       const Range::HandRange& villainRange1,
                                       const Range::HandRange& villainRange2,
                                       const std::string& board, const std::string& dead,
                                       EquityTrainingRandomness randomCards,
                                       EquityTrainingPrompts messagePrompts, QWidget* parent)
    : QWidget(parent), ui(new Ui::EquityTrainingItem), pool(threadPool), random(randomSource),
      prompts(std::move(messagePrompts)), hero(heroRange), villain1(villainRange1),
      villain2(villainRange2), villain1Text(Range::HandRangeStringReader(villain1).technicalText()),
      villain2Text(Range::HandRangeStringReader(villain2).technicalText()), givenBoard(board),
      deadCards(dead), randomness(randomCards), correct1(notKnown), correct2(notKnown),
      waitingMovie(new QMovie(QStringLiteral(":/loading.gif"), QByteArray(), this)) {
    ui->setupUi(this);
    ui->heroCards->setMaxCards(2);
    ui->boardCards->setMaxCards(5);
    ui->heroRange->setHandRange(&hero);
    ui->villainRange1->setHandRange(&villain1);
    ui->villainRange2->setHandRange(&villain2);
    // The training shows these ranges; they are not edited here.
    for (HandRangeLine* line : {ui->heroRange, ui->villainRange1, ui->villainRange2})
        line->setReadOnlyMode(true);
    ui->villain2Label->setVisible(hasSecondVillain());
    ui->villainRange2->setVisible(hasSecondVillain());
    ui->range2Block->setVisible(hasSecondVillain());
    ui->itemTable->showItems(results, hasSecondVillain());
    const bool withDeadCards = !deadCards.empty();
    ui->deadCardsLabel->setVisible(withDeadCards);
    ui->deadCardsText->setVisible(withDeadCards);
    ui->deadCardsText->setText(QString::fromStdString(deadCards));
    ui->waitingSign->setMovie(waitingMovie);
    showWaiting(false);
    // The result rows keep their place while hidden, so that nothing moves under the
    // player's pointer when the result shows.
    for (QWidget* control : resultControls()) {
        QSizePolicy policy = control->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        control->setSizePolicy(policy);
    }

    connect(ui->guess1, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTrainingItem::spinValue1Changed);
    connect(ui->guessSlider1, &QSlider::valueChanged, this,
            &EquityTrainingItem::sliderValue1Changed);
    connect(ui->correct1, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTrainingItem::correctSpinValue1Changed);
    connect(ui->guess2, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTrainingItem::spinValue2Changed);
    connect(ui->guessSlider2, &QSlider::valueChanged, this,
            &EquityTrainingItem::sliderValue2Changed);
    connect(ui->correct2, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &EquityTrainingItem::correctSpinValue2Changed);
    for (QSlider* slider : {ui->guessSlider1, ui->guessSlider2})
        connect(slider, &QSlider::sliderPressed, this, &EquityTrainingItem::deselectSpin);
    connect(ui->solveButton, &QPushButton::clicked, this,
            &EquityTrainingItem::proceedToResultState);
    connect(ui->continueButton, &QPushButton::clicked, this,
            &EquityTrainingItem::ProceedToInputState);
    connect(ui->finishButton, &QPushButton::clicked, this, &EquityTrainingItem::onFinish);
    connect(ui->cancelButton, &QPushButton::clicked, this, &EquityTrainingItem::onCancel);
    if (pool)
        connect(pool, &ThreadPool::EquityCalculationFinished, this,
                &EquityTrainingItem::calculationFinished);
}

EquityTrainingItem::~EquityTrainingItem() {
    stopCalculations();
    for (HandRangeLine* line : {ui->heroRange, ui->villainRange1, ui->villainRange2})
        line->clear();
    delete ui;
}

double EquityTrainingItem::correctEquity(int range) const {
    return range == 2 ? correct2 : correct1;
}

const ThreadHandle& EquityTrainingItem::calculationHandle(int range) const {
    return range == 2 ? handle2 : handle1;
}

void EquityTrainingItem::ProceedToInputState() {
    solveRequested = false;
    inResultState = false;
    ++items;
    ui->itemCounter->setText(QStringLiteral("Training Item %1").arg(items));
    stopCalculations();
    const std::optional<EquityTrainingDeal::Cards> cards =
        EquityTrainingDeal::deal(hero, givenBoard, deadCards, randomness, random);
    if (!cards) {
        const QString failure = QStringLiteral("Hero's Range only contains board cards.");
        prompts.warn(this, failure, failure);
        emit trainingCanceled();
        return;
    }
    dealtHand = cards->heroHand;
    dealtBoard = cards->board;
    ui->heroCards->setCardsFromText(QString::fromStdString(dealtHand));
    ui->boardCards->setCardsFromText(QString::fromStdString(dealtBoard));
    const std::vector<unsigned long long> dead = Range::cardsOfText(deadCards);
    for (HandRangeLine* line : {ui->heroRange, ui->villainRange1, ui->villainRange2}) {
        line->setBoard(dealtBoard);
        line->setDeadCards(dead);
    }
    startCalculations();
    // A fresh guess: both boxes at one half, nothing of the last result shown.
    showWaiting(false);
    showResultControls(false);
    ui->guess1->setValue(50.0);
    ui->guess2->setValue(50.0);
    ui->guessSlider1->setValue(sliderMaximum / 2);
    ui->guessSlider2->setValue(sliderMaximum / 2);
    enableInputs(true);
    ui->solveButton->setEnabled(true);
    ui->continueButton->setEnabled(false);
    ui->finishButton->setEnabled(false);
    ui->guess1->setFocus();
    ui->guess1->selectAll();
}

void EquityTrainingItem::startCalculations() {
    correct1 = notKnown;
    correct2 = notKnown;
    ui->correct1->setValue(unknownBoxValue);
    ui->correct2->setValue(unknownBoxValue);
    runningCalculations = 0;
    QV_ASSERT(pool, "The training has no pool to calculate with.");
    if (!pool)
        return;
    handle1 = pool->createEquityCalculationHandle();
    handle1.Start(dealtHand, villain1Text, dealtBoard, deadCards);
    runningCalculations = 1;
    if (hasSecondVillain()) {
        handle2 = pool->createEquityCalculationHandle();
        handle2.Start(dealtHand, villain2Text, dealtBoard, deadCards);
        runningCalculations = 2;
    }
}

void EquityTrainingItem::stopCalculations() {
    // At the program's end the pool may be gone before the page; it stopped everything then.
    if (!pool)
        return;
    for (EquityCalculationHandle* handle : {&handle1, &handle2})
        if (handle->IsRunning())
            handle->Stop();
}

void EquityTrainingItem::calculationFinished(const ThreadHandle& handle,
                                             const LongedEvaluation& result) {
    const int range = handle == handle1 ? 1 : handle == handle2 ? 2 : 0;
    if (range == 0)
        return;
    --runningCalculations;
    const double correct = EquityTrainingScore::correctEquity(result);
    if (range == 1) {
        correct1 = correct;
        ui->correct1->setValue(std::isnan(correct) ? unknownBoxValue : correct);
    } else {
        correct2 = correct;
        ui->correct2->setValue(std::isnan(correct) ? unknownBoxValue : correct);
    }
    if (solveRequested && runningCalculations == 0) {
        showWaiting(false);
        enterResultState();
    }
}

void EquityTrainingItem::proceedToResultState() {
    if (inResultState)
        return;
    solveRequested = true;
    enableInputs(false);
    ui->solveButton->setEnabled(false);
    if (runningCalculations == 0)
        enterResultState();
    else
        showWaiting(true);
}

void EquityTrainingItem::enterResultState() {
    inResultState = true;
    EquityTrainingItemResults record;
    record.heroHand = dealtHand;
    record.board = dealtBoard;
    record.villainRange2 =
        hasSecondVillain() ? Range::HandRangeStringReader(villain2).compactText() : std::string();
    record.guess1 = ui->guess1->value();
    record.correct1 = correct1;
    record.absoluteDifference1 = EquityTrainingScore::absoluteDifference(record.guess1, correct1);
    ui->absolute1->setText(equityPercentText(record.absoluteDifference1 / 100.0f));
    ui->relative1->setText(equityPercentText(
        EquityTrainingScore::relativeDifference(record.absoluteDifference1, correct1)));
    if (hasSecondVillain()) {
        record.guess2 = ui->guess2->value();
        record.correct2 = correct2;
        record.absoluteDifference2 =
            EquityTrainingScore::absoluteDifference(record.guess2, correct2);
        ui->absolute2->setText(equityPercentText(record.absoluteDifference2 / 100.0f));
        ui->relative2->setText(equityPercentText(
            EquityTrainingScore::relativeDifference(record.absoluteDifference2, correct2)));
    }
    results.push_back(record);
    ui->itemTable->showItems(results, hasSecondVillain());
    ui->itemTable->scrollToBottom();
    showResultControls(true);
    enableInputs(false);
    ui->solveButton->setEnabled(false);
    ui->continueButton->setEnabled(true);
    ui->finishButton->setEnabled(true);
    ui->continueButton->setFocus();
}

void EquityTrainingItem::showWaiting(bool waiting) {
    ui->waitingSign->setVisible(waiting);
    ui->waitingText->setVisible(waiting);
    if (waiting)
        waitingMovie->start();
    else
        waitingMovie->stop();
}

std::vector<QWidget*> EquityTrainingItem::resultControls() const {
    return {ui->correct1Label,    ui->correct1,         ui->correctSlider1,   ui->absolute1Caption,
            ui->absolute1,        ui->relative1Caption, ui->relative1,        ui->correct2Label,
            ui->correct2,         ui->correctSlider2,   ui->absolute2Caption, ui->absolute2,
            ui->relative2Caption, ui->relative2};
}

void EquityTrainingItem::showResultControls(bool shown) {
    for (QWidget* control : resultControls())
        control->setVisible(shown);
}

void EquityTrainingItem::enableInputs(bool enabled) {
    for (QWidget* input :
         {static_cast<QWidget*>(ui->guess1), static_cast<QWidget*>(ui->guess2),
          static_cast<QWidget*>(ui->guessSlider1), static_cast<QWidget*>(ui->guessSlider2)})
        input->setEnabled(enabled);
}

void EquityTrainingItem::spinValue1Changed(double value) {
    placeSlider(ui->guessSlider1, value);
}

void EquityTrainingItem::sliderValue1Changed(int value) {
    placeGuess(ui->guess1, value);
}

void EquityTrainingItem::correctSpinValue1Changed(double value) {
    ui->correctSlider1->setValue(static_cast<int>(sliderMaximum * value / 100.0));
}

void EquityTrainingItem::spinValue2Changed(double value) {
    placeSlider(ui->guessSlider2, value);
}

void EquityTrainingItem::sliderValue2Changed(int value) {
    placeGuess(ui->guess2, value);
}

void EquityTrainingItem::correctSpinValue2Changed(double value) {
    // The second correct slider has always run on half the scale of the first; kept so.
    ui->correctSlider2->setValue(static_cast<int>(sliderMaximum * value / 200.0));
}

void EquityTrainingItem::placeSlider(QSlider* slider, double percent) {
    // Silently: the box that moved it must not be rounded to the slider's steps.
    const QSignalBlocker blocker(slider);
    slider->setValue(static_cast<int>(std::lround(sliderMaximum * percent / 100.0)));
}

void EquityTrainingItem::placeGuess(QDoubleSpinBox* box, int sliderValue) {
    const QSignalBlocker blocker(box);
    box->setValue(sliderValue * 100.0 / sliderMaximum);
}

void EquityTrainingItem::onCancel() {
    if (!prompts.confirmCancel(this))
        return;
    stopCalculations();
    emit trainingCanceled();
}

void EquityTrainingItem::onFinish() {
    emit trainingFinished(results);
}

void EquityTrainingItem::deselectSpin() {
    for (QDoubleSpinBox* box : {ui->guess1, ui->guess2})
        if (auto* edit = box->findChild<QLineEdit*>())
            edit->deselect();
}
