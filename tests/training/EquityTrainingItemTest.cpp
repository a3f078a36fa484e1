// The page of a running training: the deal shown, the guesses with their sliders, both
// background calculations, waiting, the result with its differences, and cancel, continue
// and finish.

#include "TrainingTestHelpers.h"

#include "Range/RandomSource.h"
#include "calculation/ThreadPool.h"
#include "selection/CardRange.h"
#include "selection/HandRangeLine.h"
#include "training/EquityTrainingDeal.h"
#include "training/EquityTrainingItem.h"
#include "utils/ui/EquityColor.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QTimer>

#include <cmath>
#include <memory>

using namespace TrainingTestHelpers;

namespace {

class EquityTrainingItemTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { prepareEvaluator(); }

    EquityTrainingItem& open(const char* hero, const char* villain1, const char* villain2,
                             const char* board, const char* dead,
                             EquityTrainingRandomness randomness) {
        page = std::make_unique<EquityTrainingItem>(&pool, random, rangeOf(hero), rangeOf(villain1),
                                                    rangeOf(villain2), board, dead, randomness,
                                                    recordingPrompts(log));
        QObject::connect(page.get(), &EquityTrainingItem::trainingCanceled, page.get(),
                         [this] { ++canceled; });
        QObject::connect(page.get(), &EquityTrainingItem::trainingFinished, page.get(),
                         [this](const std::vector<EquityTrainingItemResults>& results) {
                             finished.push_back(results);
                         });
        page->resize(900, 600);
        page->show();
        return *page;
    }

    template <typename T>
    T* get(const char* name) {
        return child<T>(page.get(), name);
    }
    bool shown(const char* name) { return get<QWidget>(name)->isVisibleTo(page.get()); }
    void click(const char* button) { QTest::mouseClick(get<QPushButton>(button), Qt::LeftButton); }
    bool waitForCalculations() {
        return waitUntil([this] { return page->runningCalculationCount() == 0; });
    }
    bool waitForResult() {
        return waitUntil([this] { return page->isInResultState(); });
    }

    ThreadPool pool;
    Range::RandomSource random{20251125};
    std::shared_ptr<PromptLog> log = std::make_shared<PromptLog>();
    std::unique_ptr<EquityTrainingItem> page;
    int canceled = 0;
    std::vector<std::vector<EquityTrainingItemResults>> finished;
};

} // namespace

TEST_F(EquityTrainingItemTest, TheInputStateShowsTheDealAndHidesTheResult) {
    EquityTrainingItem& item = open("AKs", "QQ+", "", "", "", EquityTrainingRandomness::Flop);
    item.ProceedToInputState();
    EXPECT_EQ(get<QLabel>("itemCounter")->text(), QStringLiteral("Training Item 1"));
    // The deal is the one the generator gives for this seed.
    Range::RandomSource reference(20251125);
    const auto expected =
        EquityTrainingDeal::deal(rangeOf("AKs"), "", "", EquityTrainingRandomness::Flop, reference);
    ASSERT_TRUE(expected.has_value());
    EXPECT_EQ(item.heroHand(), expected->heroHand);
    EXPECT_EQ(item.board(), expected->board);
    EXPECT_EQ(get<CardRange>("heroCards")->cardsText().toStdString(), item.heroHand());
    EXPECT_EQ(get<CardRange>("boardCards")->cardsText().toStdString(), item.board());
    EXPECT_EQ(get<HandRangeLine>("villainRange1")->text(), QStringLiteral("QQ+"));
    EXPECT_TRUE(get<HandRangeLine>("villainRange1")->isReadOnlyMode());
    EXPECT_EQ(get<HandRangeLine>("villainRange1")->boardText(), item.board());
    // One calculation, against villain's only range.
    EXPECT_EQ(item.runningCalculationCount(), 1);
    EXPECT_TRUE(item.calculationHandle(1).isValid());
    EXPECT_FALSE(item.calculationHandle(2).isValid());
    EXPECT_FALSE(item.isSolveRequested());
    // Guesses at one half, the result hidden.
    EXPECT_DOUBLE_EQ(get<QDoubleSpinBox>("guess1")->value(), 50.0);
    EXPECT_EQ(get<QSlider>("guessSlider1")->value(), EquityTrainingItem::sliderMaximum / 2);
    EXPECT_EQ(get<QSlider>("guessSlider1")->maximum(), EquityTrainingItem::sliderMaximum);
    for (const char* hidden : {"correct1Label", "correct1", "correctSlider1", "absolute1Caption",
                               "absolute1", "relative1Caption", "relative1", "range2Block",
                               "villainRange2", "waitingSign", "waitingText", "deadCardsLabel"})
        EXPECT_FALSE(shown(hidden)) << hidden;
    EXPECT_TRUE(get<QWidget>("guess1")->isEnabled());
    EXPECT_TRUE(get<QWidget>("guessSlider1")->isEnabled());
    EXPECT_TRUE(get<QWidget>("solveButton")->isEnabled());
    EXPECT_FALSE(get<QWidget>("continueButton")->isEnabled());
    EXPECT_FALSE(get<QWidget>("finishButton")->isEnabled());
    EXPECT_EQ(get<QLabel>("correct1Label")->text(), QStringLiteral("C&orrect vs. Range1:"));
    EXPECT_EQ(get<QPushButton>("solveButton")->text(), QStringLiteral("&Solve"));
    EXPECT_EQ(get<QPushButton>("continueButton")->text(), QStringLiteral("&Continue"));
    EXPECT_EQ(get<QPushButton>("finishButton")->text(), QStringLiteral("&Finish"));
    EXPECT_EQ(get<QPushButton>("cancelButton")->text(), QStringLiteral("C&ancel"));
    ASSERT_TRUE(waitForCalculations());
}

TEST_F(EquityTrainingItemTest, ASecondVillainRangeAddsItsGuessAndCalculation) {
    EquityTrainingItem& item =
        open("AKs", "QQ+", "76s", "Kd7h", "2s", EquityTrainingRandomness::River);
    item.ProceedToInputState();
    EXPECT_EQ(item.runningCalculationCount(), 2);
    EXPECT_TRUE(item.calculationHandle(2).isValid());
    EXPECT_NE(item.calculationHandle(1), item.calculationHandle(2));
    EXPECT_TRUE(shown("range2Block"));
    EXPECT_TRUE(shown("guess2"));
    EXPECT_TRUE(shown("villainRange2"));
    EXPECT_FALSE(shown("correct2"));
    EXPECT_DOUBLE_EQ(get<QDoubleSpinBox>("guess2")->value(), 50.0);
    EXPECT_EQ(get<QSlider>("guessSlider2")->value(), EquityTrainingItem::sliderMaximum / 2);
    EXPECT_EQ(get<QLabel>("correct2Label")->text(), QStringLiteral("C&orrect vs. Range2:"));
    // The table of solved items has the columns of both ranges from the start.
    EXPECT_EQ(get<QTableWidget>("itemTable")->columnCount(), 8);
    EXPECT_EQ(get<QTableWidget>("itemTable")->rowCount(), 0);
    // The given cards stay, the dead cards are shown and stay off the board.
    EXPECT_EQ(item.board().substr(0, 4), "Kd7h");
    EXPECT_EQ(item.board().size(), 10u);
    EXPECT_EQ(item.board().find("2s") % 2, 1u) << item.board();
    EXPECT_TRUE(shown("deadCardsText"));
    EXPECT_EQ(get<QLabel>("deadCardsText")->text(), QStringLiteral("2s"));
    ASSERT_TRUE(waitForCalculations());
    EXPECT_DOUBLE_EQ(item.correctEquity(1),
                     equityInTest(item.heroHand(), technical("QQ+"), item.board(), "2s"));
    EXPECT_DOUBLE_EQ(item.correctEquity(2),
                     equityInTest(item.heroHand(), technical("76s"), item.board(), "2s"));
}

TEST_F(EquityTrainingItemTest, GuessBoxesAndSlidersFollowEachOther) {
    EquityTrainingItem& item = open("AKs", "QQ+", "JJ", "", "", EquityTrainingRandomness::Flop);
    item.ProceedToInputState();
    auto* box1 = get<QDoubleSpinBox>("guess1");
    auto* slider1 = get<QSlider>("guessSlider1");
    auto* box2 = get<QDoubleSpinBox>("guess2");
    auto* slider2 = get<QSlider>("guessSlider2");
    // The box's value scaled to the slider's range.
    typeGuess(box1, "37.5");
    EXPECT_DOUBLE_EQ(box1->value(), 37.5);
    EXPECT_EQ(slider1->value(), 375);
    typeGuess(box2, "81.27");
    EXPECT_EQ(slider2->value(), 813);
    // And back: the slider's position as a share of 100 %.
    slider1->setValue(620);
    EXPECT_DOUBLE_EQ(box1->value(), 62.0);
    slider2->setValue(3);
    EXPECT_DOUBLE_EQ(box2->value(), 0.3);
    QTest::keyClick(slider1, Qt::Key_End);
    EXPECT_DOUBLE_EQ(box1->value(), 100.0);
    typeGuess(box1, "0");
    EXPECT_EQ(slider1->value(), 0);
    ASSERT_TRUE(waitForCalculations());
}

TEST_F(EquityTrainingItemTest, SolvingBeforeTheCalculationsEndWaitsForThem) {
    EquityTrainingItem& item = open("AKs", "QQ+", "22+", "", "", EquityTrainingRandomness::Turn);
    item.ProceedToInputState();
    typeGuess(get<QDoubleSpinBox>("guess1"), "40");
    typeGuess(get<QDoubleSpinBox>("guess2"), "45");
    // No result can have arrived: they come through the event loop, which has not run since
    // the calculations started.
    ASSERT_EQ(item.runningCalculationCount(), 2);
    click("solveButton");
    EXPECT_TRUE(item.isSolveRequested());
    EXPECT_FALSE(item.isInResultState());
    EXPECT_TRUE(shown("waitingSign"));
    EXPECT_TRUE(shown("waitingText"));
    EXPECT_FALSE(get<QWidget>("solveButton")->isEnabled());
    EXPECT_FALSE(get<QWidget>("guess1")->isEnabled());
    ASSERT_TRUE(waitForResult());
    EXPECT_EQ(item.runningCalculationCount(), 0);
    EXPECT_FALSE(shown("waitingSign"));
    EXPECT_TRUE(shown("correct1"));
    EXPECT_TRUE(shown("correct2"));
    EXPECT_TRUE(get<QWidget>("continueButton")->isEnabled());
    EXPECT_TRUE(get<QWidget>("finishButton")->isEnabled());
    ASSERT_EQ(item.getResults().size(), 1u);
    EXPECT_DOUBLE_EQ(item.getResults()[0].guess1, 40.0);
    EXPECT_DOUBLE_EQ(item.getResults()[0].guess2, 45.0);
}

TEST_F(EquityTrainingItemTest, SolvingAfterTheCalculationsShowsTheResultAtOnce) {
    EquityTrainingItem& item = open("QQ", "AKo", "", "", "", EquityTrainingRandomness::River);
    item.ProceedToInputState();
    ASSERT_TRUE(waitForCalculations());
    EXPECT_FALSE(item.isInResultState());
    typeGuess(get<QDoubleSpinBox>("guess1"), "70");
    click("solveButton");
    EXPECT_TRUE(item.isInResultState());
    EXPECT_FALSE(shown("waitingSign"));
    const double correct = equityInTest(item.heroHand(), technical("AKo"), item.board(), "");
    EXPECT_DOUBLE_EQ(item.correctEquity(1), correct);
    EXPECT_NEAR(get<QDoubleSpinBox>("correct1")->value(), correct, 0.005);
    const float absolute = std::fabs(70.0f - static_cast<float>(correct));
    EXPECT_EQ(get<QLabel>("absolute1")->text(),
              QString::number(static_cast<double>(absolute / 100.0f * 100.0f), 'f', 2) + " %");
    EXPECT_EQ(get<QLabel>("relative1")->text(),
              QString::number(static_cast<double>(absolute / static_cast<float>(correct) * 100.0f),
                              'f', 2) +
                  " %");
    EXPECT_EQ(get<QLabel>("absolute1Caption")->text(), QStringLiteral("Absolute Difference:"));
    EXPECT_EQ(get<QLabel>("relative1Caption")->text(), QStringLiteral("Relative Difference:"));
    const EquityTrainingItemResults& record = item.getResults().at(0);
    EXPECT_EQ(record.heroHand, item.heroHand());
    EXPECT_EQ(record.board, item.board());
    EXPECT_EQ(record.villainRange2, "");
    EXPECT_EQ(record.absoluteDifference1, absolute);
    EXPECT_DOUBLE_EQ(record.correct1, correct);
    // A second solve records nothing more.
    item.proceedToResultState();
    EXPECT_EQ(item.getResults().size(), 1u);
}

TEST_F(EquityTrainingItemTest, TheCorrectSlidersShowTheCorrectEquityTheSecondOnHalfTheScale) {
    EquityTrainingItem& item = open("AKs", "QQ+", "JJ", "", "", EquityTrainingRandomness::Flop);
    item.ProceedToInputState();
    click("solveButton");
    ASSERT_TRUE(waitForResult());
    const int maximum = EquityTrainingItem::sliderMaximum;
    const double shown1 = get<QDoubleSpinBox>("correct1")->value();
    const double shown2 = get<QDoubleSpinBox>("correct2")->value();
    EXPECT_EQ(get<QSlider>("correctSlider1")->value(), static_cast<int>(maximum * shown1 / 100.0));
    EXPECT_EQ(get<QSlider>("correctSlider2")->value(), static_cast<int>(maximum * shown2 / 200.0));
    item.correctSpinValue1Changed(80.0);
    item.correctSpinValue2Changed(80.0);
    EXPECT_EQ(get<QSlider>("correctSlider1")->value(), 800);
    EXPECT_EQ(get<QSlider>("correctSlider2")->value(), 400);
    EXPECT_FALSE(get<QWidget>("correctSlider1")->isEnabled());
}

TEST_F(EquityTrainingItemTest, ACorrectEquityOfZeroPrintsAnUndefinedOrInfiniteRelativeDifference) {
    // Villain holds the royal flush that the board offers: hero cannot win or tie.
    EquityTrainingItem& item =
        open("3c3d", "Th9c", "", "AhKhQhJh2c", "", EquityTrainingRandomness::None);
    item.ProceedToInputState();
    typeGuess(get<QDoubleSpinBox>("guess1"), "0");
    click("solveButton");
    ASSERT_TRUE(waitForResult());
    EXPECT_EQ(item.correctEquity(1), 0.0);
    EXPECT_EQ(get<QDoubleSpinBox>("correct1")->text(), QStringLiteral("0.00 %"));
    EXPECT_EQ(get<QLabel>("absolute1")->text(), QStringLiteral("0.00 %"));
    EXPECT_EQ(get<QLabel>("relative1")->text(), QStringLiteral("nan %"));
    click("continueButton");
    typeGuess(get<QDoubleSpinBox>("guess1"), "10");
    click("solveButton");
    ASSERT_TRUE(waitForResult());
    EXPECT_EQ(get<QLabel>("absolute1")->text(), QStringLiteral("10.00 %"));
    EXPECT_EQ(get<QLabel>("relative1")->text(), QStringLiteral("inf %"));
}

TEST_F(EquityTrainingItemTest, ResultsOfOtherHandlesAreIgnored) {
    EquityTrainingItem& item = open("AKs", "QQ+", "", "", "", EquityTrainingRandomness::Flop);
    item.ProceedToInputState();
    click("solveButton");
    ASSERT_TRUE(waitForResult());
    const ThreadHandle first = item.calculationHandle(1);
    const double firstCorrect = item.correctEquity(1);
    click("continueButton");
    ASSERT_EQ(item.runningCalculationCount(), 1);
    // The first item's result, late, and one of a handle never started here.
    LongedEvaluation allWins;
    allWins.total = 10;
    allWins.wins1 = 10;
    item.calculationFinished(first, allWins);
    item.calculationFinished(ThreadHandle(), allWins);
    ThreadPool otherPool;
    item.calculationFinished(otherPool.createEquityCalculationHandle(), allWins);
    EXPECT_EQ(item.runningCalculationCount(), 1);
    EXPECT_TRUE(std::isnan(item.correctEquity(1)));
    EXPECT_EQ(get<QDoubleSpinBox>("correct1")->text(), QStringLiteral("n/a"));
    ASSERT_TRUE(waitForCalculations());
    EXPECT_DOUBLE_EQ(item.correctEquity(1),
                     equityInTest(item.heroHand(), technical("QQ+"), item.board(), ""));
    (void)firstCorrect;
}

TEST_F(EquityTrainingItemTest, ContinueDealsTheNextItemAndFinishHandsOnEveryResult) {
    EquityTrainingItem& item = open("22+", "AKo", "", "", "", EquityTrainingRandomness::Turn);
    item.ProceedToInputState();
    typeGuess(get<QDoubleSpinBox>("guess1"), "33");
    click("solveButton");
    ASSERT_TRUE(waitForResult());
    auto* table = get<QTableWidget>("itemTable");
    ASSERT_EQ(table->rowCount(), 1);
    EXPECT_EQ(table->item(0, 0)->text().toStdString(), item.heroHand());
    EXPECT_EQ(table->item(0, 2)->text(), QStringLiteral("33.00 %"));
    click("continueButton");
    EXPECT_EQ(get<QLabel>("itemCounter")->text(), QStringLiteral("Training Item 2"));
    EXPECT_EQ(item.itemNumber(), 2);
    EXPECT_FALSE(item.isInResultState());
    EXPECT_FALSE(shown("correct1"));
    EXPECT_DOUBLE_EQ(get<QDoubleSpinBox>("guess1")->value(), 50.0);
    EXPECT_FALSE(get<QWidget>("continueButton")->isEnabled());
    typeGuess(get<QDoubleSpinBox>("guess1"), "66");
    click("solveButton");
    ASSERT_TRUE(waitForResult());
    EXPECT_TRUE(finished.empty());
    EXPECT_EQ(table->rowCount(), 2);
    click("finishButton");
    ASSERT_EQ(finished.size(), 1u);
    ASSERT_EQ(finished[0].size(), 2u);
    EXPECT_DOUBLE_EQ(finished[0][0].guess1, 33.0);
    EXPECT_DOUBLE_EQ(finished[0][1].guess1, 66.0);
    EXPECT_EQ(canceled, 0);
}

TEST_F(EquityTrainingItemTest, CancelAsksFirst) {
    EquityTrainingItem& item = open("AKs", "QQ+", "", "", "", EquityTrainingRandomness::Flop);
    item.ProceedToInputState();
    const EquityCalculationHandle& running =
        static_cast<const EquityCalculationHandle&>(item.calculationHandle(1));
    log->answerYes = false;
    click("cancelButton");
    EXPECT_EQ(log->cancelQuestions, 1);
    EXPECT_EQ(canceled, 0);
    log->answerYes = true;
    click("cancelButton");
    EXPECT_EQ(log->cancelQuestions, 2);
    EXPECT_EQ(canceled, 1);
    // The calculation was stopped: the pool reports nothing for it.
    bool reported = false;
    QObject::connect(&pool, &ThreadPool::EquityCalculationFinished, page.get(),
                     [&](const ThreadHandle& handle, const LongedEvaluation&) {
                         reported = reported || handle == running;
                     });
    waitUntil([&] { return !running.IsRunning(); }, 200);
    QTest::qWait(200);
    EXPECT_FALSE(reported);
}

TEST_F(EquityTrainingItemTest, AHeroRangeOnTheBoardEndsTheTrainingAfterAThousandTries) {
    EquityTrainingItem& item = open("AhAs", "KK", "", "AhKd2c", "", EquityTrainingRandomness::None);
    item.ProceedToInputState();
    ASSERT_EQ(log->warnings.size(), 1u);
    EXPECT_EQ(log->warnings[0].first, QStringLiteral("Hero's Range only contains board cards."));
    EXPECT_EQ(log->warnings[0].second, QStringLiteral("Hero's Range only contains board cards."));
    EXPECT_EQ(canceled, 1);
    EXPECT_EQ(item.runningCalculationCount(), 0);
}

TEST_F(EquityTrainingItemTest, DeselectSpinTakesTheSelectionFromTheGuesses) {
    EquityTrainingItem& item = open("AKs", "QQ+", "", "", "", EquityTrainingRandomness::Flop);
    item.ProceedToInputState();
    auto* edit = get<QDoubleSpinBox>("guess1")->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    get<QDoubleSpinBox>("guess1")->selectAll();
    ASSERT_TRUE(edit->hasSelectedText());
    item.deselectSpin();
    EXPECT_FALSE(edit->hasSelectedText());
    ASSERT_TRUE(waitForCalculations());
}

TEST(EquityTrainingPromptsTest, TheStandardWindowsAskAndWarn) {
    const EquityTrainingPrompts prompts = EquityTrainingPrompts::standard();
    QString title;
    QString text;
    const auto answer = [&](QMessageBox::StandardButton button) {
        QTimer::singleShot(50, [&, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            title = box->windowTitle();
            text = box->text();
            box->button(button)->click();
        });
    };
    answer(QMessageBox::Yes);
    EXPECT_TRUE(prompts.confirmCancel(nullptr));
    EXPECT_EQ(title, QStringLiteral("Do you really want to cancel?"));
    EXPECT_EQ(text, QStringLiteral("Do you really want to cancel this training?"));
    answer(QMessageBox::No);
    EXPECT_FALSE(prompts.confirmCancel(nullptr));
    answer(QMessageBox::Ok);
    prompts.warn(nullptr, QStringLiteral("Flop is given"), QStringLiteral("Remove a card."));
    EXPECT_EQ(title, QStringLiteral("Flop is given"));
    EXPECT_EQ(text, QStringLiteral("Remove a card."));
}
