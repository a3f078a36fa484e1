// The tab with its three pages, and whole trainings driven through the widgets with a fixed
// seed: every true equity counted again here, every number of the summary computed here from
// the typed guesses.

#include "TrainingTestHelpers.h"

#include "Range/RandomSource.h"
#include "calculation/ThreadPool.h"
#include "selection/BoardCardsWidget.h"
#include "selection/CardRange.h"
#include "selection/CardRangeText.h"
#include "selection/HandRangeLine.h"
#include "training/EquityTrainingDeal.h"
#include "training/EquityTrainingGuessPlot.h"
#include "training/EquityTrainingItem.h"
#include "training/EquityTrainingResults.h"
#include "training/EquityTrainingStart.h"
#include "training/EquityTrainingTab.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace TrainingTestHelpers;

namespace {

class EquityTrainingTabTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { prepareEvaluator(); }

    void SetUp() override {
        tab.setThreadPool(&pool);
        tab.setRandomSource(&random);
        tab.setPrompts(recordingPrompts(log));
        tab.resize(1000, 640);
        tab.show();
    }

    void click(QWidget* page, const char* button) {
        QTest::mouseClick(child<QPushButton>(page, button), Qt::LeftButton);
    }
    void typeBoard(CardRangeText* field, const char* cards) {
        field->setFocus();
        QTest::keyClicks(field, QString::fromLatin1(cards));
        QTest::keyClick(field, Qt::Key_Return);
    }
    // Fills the start page and starts.
    void startTraining(const char* hero, const char* villain1, const char* villain2,
                       const char* radio, const char* flop = "", const char* dead = "") {
        tab.StartTraining();
        EquityTrainingStart* start = tab.startPage();
        typeRange(start->heroLine(), QString::fromLatin1(hero));
        typeRange(start->villain1Line(), QString::fromLatin1(villain1));
        typeRange(start->villain2Line(), QString::fromLatin1(villain2));
        child<QRadioButton>(start, radio)->click();
        if (*flop)
            typeBoard(start->boardCards()->flopText(), flop);
        if (*dead)
            typeBoard(start->boardCards()->deadText(), dead);
        click(start, "startTrainingButton");
    }

    ThreadPool pool;
    Range::RandomSource random{4711};
    std::shared_ptr<PromptLog> log = std::make_shared<PromptLog>();
    EquityTrainingTab tab;
};

} // namespace

TEST_F(EquityTrainingTabTest, TheStartPageIsBuiltOnceAndKeptWithItsRanges) {
    EXPECT_FALSE(tab.hasPage());
    EXPECT_EQ(tab.currentPage(), nullptr);
    tab.StartTraining();
    ASSERT_NE(tab.startPage(), nullptr);
    EXPECT_TRUE(tab.hasPage());
    EXPECT_EQ(tab.currentPage(), tab.startPage());
    EquityTrainingStart* start = tab.startPage();
    startTraining("AA", "KK", "", "flopRadio");
    ASSERT_NE(tab.itemPage(), nullptr);
    EXPECT_EQ(tab.currentPage(), tab.itemPage());
    EXPECT_TRUE(start->isHidden());
    // Cancelled, the training goes and the same start page comes back with its ranges.
    QPointer<EquityTrainingItem> item = tab.itemPage();
    click(item, "cancelButton");
    EXPECT_EQ(log->cancelQuestions, 1);
    EXPECT_EQ(tab.startPage(), start);
    EXPECT_EQ(tab.currentPage(), start);
    EXPECT_EQ(tab.itemPage(), nullptr);
    EXPECT_EQ(start->heroLine()->text(), QStringLiteral("AA"));
    EXPECT_EQ(start->villain1Line()->text(), QStringLiteral("KK"));
    QTest::qWait(0);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(item.isNull());
}

TEST_F(EquityTrainingTabTest, AHandThatOnlyCollidesEndsTheTrainingOnTheStartPage) {
    // Hero's range is one hand, and one of its cards is on the given flop.
    startTraining("AhAs", "KK", "", "noneRadio", "AhKd2c");
    ASSERT_EQ(log->warnings.size(), 1u);
    EXPECT_EQ(log->warnings[0],
              std::make_pair(QStringLiteral("Hero's Range only contains board cards."),
                             QStringLiteral("Hero's Range only contains board cards.")));
    EXPECT_EQ(tab.currentPage(), tab.startPage());
    EXPECT_EQ(tab.itemPage(), nullptr);
}

TEST_F(EquityTrainingTabTest, FinishShowsTheResultsAndANewTrainingStartsOver) {
    startTraining("QQ", "AK", "", "riverRadio");
    EquityTrainingItem* item = tab.itemPage();
    ASSERT_NE(item, nullptr);
    click(item, "solveButton");
    ASSERT_TRUE(waitUntil([&] { return item->isInResultState(); }));
    click(item, "finishButton");
    ASSERT_NE(tab.resultsPage(), nullptr);
    EXPECT_EQ(tab.currentPage(), tab.resultsPage());
    EXPECT_EQ(tab.itemPage(), nullptr);
    EXPECT_EQ(child<QLabel>(tab.resultsPage(), "itemsValue")->text(), QStringLiteral("1"));
    click(tab.resultsPage(), "startNewTrainingButton");
    EXPECT_EQ(tab.resultsPage(), nullptr);
    EXPECT_EQ(tab.currentPage(), tab.startPage());
    EXPECT_EQ(tab.startPage()->heroLine()->text(), QStringLiteral("QQ"));
}

// Five items with two villain ranges, a random turn on a given flop card and a dead card.
TEST_F(EquityTrainingTabTest, AWholeTrainingWithAFixedSeed) {
    const std::string hero = "TT+,AQs+,AKo";
    const std::string villain1 = "22+,A2s+,K7s+,Q8s+,J8s+,T8s+,97s+,87s,76s,65s,A7o+,KTo+,QTo+,JTo";
    const std::string villain2 = "QQ+,AKs";
    startTraining(hero.c_str(), villain1.c_str(), villain2.c_str(), "turnRadio", "Ks", "2h");

    // The deals the generator gives for the seed, one after the other.
    Range::RandomSource reference(4711);
    const double guesses1[] = {62.5, 40, 71.25, 18, 55};
    const double guesses2[] = {30, 47.5, 12, 66, 50};
    std::vector<float> differences;
    for (int index = 0; index < 5; ++index) {
        EquityTrainingItem* item = tab.itemPage();
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->itemNumber(), index + 1);
        const auto expected = EquityTrainingDeal::deal(rangeOf(hero), "Ks", "2h",
                                                       EquityTrainingRandomness::Turn, reference);
        ASSERT_TRUE(expected.has_value());
        const std::string hand = child<CardRange>(item, "heroCards")->cardsText().toStdString();
        const std::string board = child<CardRange>(item, "boardCards")->cardsText().toStdString();
        EXPECT_EQ(hand, expected->heroHand);
        EXPECT_EQ(board, expected->board);
        EXPECT_EQ(board.substr(0, 2), "Ks");

        typeGuess(child<QDoubleSpinBox>(item, "guess1"), QString::number(guesses1[index]));
        typeGuess(child<QDoubleSpinBox>(item, "guess2"), QString::number(guesses2[index]));
        click(item, "solveButton");
        ASSERT_TRUE(waitUntil([&] { return item->isInResultState(); }));

        const double correct1 = equityInTest(hand, technical(villain1), board, "2h");
        const double correct2 = equityInTest(hand, technical(villain2), board, "2h");
        EXPECT_EQ(item->correctEquity(1), correct1);
        EXPECT_EQ(item->correctEquity(2), correct2);
        EXPECT_EQ(child<QDoubleSpinBox>(item, "correct1")->text(),
                  QString::number(correct1, 'f', 2) + " %");
        const float difference1 =
            std::fabs(static_cast<float>(guesses1[index]) - static_cast<float>(correct1));
        const float difference2 =
            std::fabs(static_cast<float>(guesses2[index]) - static_cast<float>(correct2));
        EXPECT_EQ(child<QLabel>(item, "absolute2")->text(),
                  QString::number(static_cast<double>(difference2 / 100.0f * 100.0f), 'f', 2) +
                      " %");
        differences.push_back(difference1);
        differences.push_back(difference2);
        click(item, index < 4 ? "continueButton" : "finishButton");
    }

    EquityTrainingResults* results = tab.resultsPage();
    ASSERT_NE(results, nullptr);
    EXPECT_EQ(child<QLabel>(results, "itemsValue")->text(), QStringLiteral("5"));
    EXPECT_EQ(child<QLabel>(results, "guessesValue")->text(), QStringLiteral("10"));
    double sum = 0.0;
    for (float difference : differences)
        sum += difference;
    const auto percent = [](double fraction) {
        return QString::number(static_cast<double>(static_cast<float>(fraction) * 100.0f), 'f', 2) +
               " %";
    };
    EXPECT_EQ(child<QLabel>(results, "averageValue")->text(), percent(sum / 10.0 / 100.0));
    const auto above = [&](double threshold) {
        return static_cast<int>(std::count_if(differences.begin(), differences.end(),
                                              [&](float d) { return threshold < d; }));
    };
    const auto countText = [&](int count) {
        return QStringLiteral("%1 (%2 of all guesses)").arg(count).arg(percent(count / 10.0));
    };
    EXPECT_EQ(child<QLabel>(results, "threshold1Count")->text(), countText(above(20)));
    EXPECT_EQ(child<QLabel>(results, "threshold2Count")->text(), countText(above(10)));
    EXPECT_EQ(child<QLabel>(results, "threshold3Count")->text(), countText(above(5)));
    const int below = static_cast<int>(
        std::count_if(differences.begin(), differences.end(), [](float d) { return d < 5.0f; }));
    EXPECT_EQ(child<QLabel>(results, "belowCount")->text(), countText(below));
    EXPECT_EQ(results->guessPlot()->guesses(1)->data()->size(), 5);
    EXPECT_EQ(results->guessPlot()->guesses(2)->data()->size(), 5);
    EXPECT_TRUE(log->warnings.empty());
}

TEST_F(EquityTrainingTabTest, TheSameSeedReplaysTheTraining) {
    const auto deals = [&](std::uint32_t seed) {
        random.reseed(seed);
        startTraining("22+,A2s+", "TT+", "", "riverRadio");
        std::vector<std::string> dealt;
        for (int index = 0; index < 3; ++index) {
            EquityTrainingItem* item = tab.itemPage();
            dealt.push_back(item->heroHand() + "/" + item->board());
            click(item, "solveButton");
            EXPECT_TRUE(waitUntil([&] { return item->isInResultState(); }));
            click(item, index < 2 ? "continueButton" : "finishButton");
        }
        click(tab.resultsPage(), "startNewTrainingButton");
        return dealt;
    };
    const std::vector<std::string> first = deals(99);
    const std::vector<std::string> second = deals(99);
    EXPECT_EQ(first, second);
    EXPECT_NE(deals(100), first);
}

TEST_F(EquityTrainingTabTest, WithOneRangeTheGuessesEqualTheItems) {
    startTraining("AKs", "QQ+", "", "flopRadio");
    for (int index = 0; index < 3; ++index) {
        EquityTrainingItem* item = tab.itemPage();
        click(item, "solveButton");
        ASSERT_TRUE(waitUntil([&] { return item->isInResultState(); }));
        click(item, index < 2 ? "continueButton" : "finishButton");
    }
    EXPECT_EQ(child<QLabel>(tab.resultsPage(), "guessesValue")->text(), QStringLiteral("3"));
    EXPECT_EQ(child<QLabel>(tab.resultsPage(), "itemsValue")->text(), QStringLiteral("3"));
}
