// The equity selector: the hands of a range within equity bounds and within the best share
// of them, checked against the evaluator's by-hand equities sorted here; its background run,
// cancel and stale results; and its place in the dialog with the moving select button.

#include "HandSelectionTestHelpers.h"

#include "Range/GroupColor.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "calculation/ThreadPool.h"
#include "selection/EquityRangeSelector.h"
#include "selection/EquityRangeSelectorTab.h"
#include "selection/HandSelectionDialog.h"

#include "ui_HandSelectionDialog.h"

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>

namespace {

const std::string hero = "22+,A2s+,K9s+,QTs+,JTs,T9s,A9o+,KTo+,QJo";
const std::string villain = "TT+,AQs+,AKo";
const std::string turn = "Kh9h4c2d";

std::string technical(const std::string& text) {
    return Range::HandRangeStringReader(HandSelectionTest::rangeOf(text)).technicalText();
}

WinEvaluationsByHand evaluate(const std::string& range, const std::string& other,
                              const std::string& board, const std::string& dead = "") {
    volatile bool stop = false;
    return getWinEvaluationByHand(technical(range), technical(other), board, dead, stop);
}

float equityOf(const WinEvaluationByHand& record) {
    return static_cast<float>(
        (static_cast<double>(record.wins) + 0.5 * static_cast<double>(record.ties)) /
        static_cast<double>(record.total));
}

BoardType maskOf(const std::string& hand) {
    return Range::maskOfText(hand);
}

// What a selection must give, worked out here: the records with a total inside the equity
// bounds, best first (records of equal equity in the evaluator's order), cut by the share
// of hands.
std::vector<BoardType> expectedByHands(const WinEvaluationsByHand& records, float equityLower,
                                       float equityUpper, float percentileLower,
                                       float percentileUpper) {
    std::vector<const WinEvaluationByHand*> kept;
    for (const WinEvaluationByHand& record : records)
        if (record.total > 0 && equityOf(record) >= equityLower && equityOf(record) <= equityUpper)
            kept.push_back(&record);
    std::stable_sort(kept.begin(), kept.end(),
                     [](const WinEvaluationByHand* a, const WinEvaluationByHand* b) {
                         return equityOf(*a) > equityOf(*b);
                     });
    const std::size_t n = kept.size();
    const auto first = static_cast<std::size_t>(percentileLower * static_cast<float>(n));
    const auto last = static_cast<std::size_t>(percentileUpper * static_cast<float>(n));
    std::vector<BoardType> hands;
    for (std::size_t i = first; i < last && i < n; ++i)
        hands.push_back(maskOf(kept[i]->hand));
    return hands;
}

WinEvaluationByHand record(const std::string& hand, unsigned long long total,
                           unsigned long long wins, unsigned long long ties) {
    WinEvaluationByHand result;
    result.hand = hand;
    result.total = total;
    result.wins = wins;
    result.ties = ties;
    result.losses = total - wins - ties;
    return result;
}

std::vector<BoardType> sorted(std::vector<BoardType> hands) {
    std::sort(hands.begin(), hands.end());
    return hands;
}

} // namespace

// --- The selection of finished records -----------------------------------------------------------

TEST(EquitySelection, EquityAndPercentileBoundsCutTheRankingOfTheEvaluator) {
    const WinEvaluationsByHand records = evaluate(hero, villain, turn);
    ASSERT_GT(records.size(), 100u);
    const BoardType dead = Range::maskOfText(turn);
    const std::vector<std::array<float, 4>> bounds = {
        {0.0f, 1.0f, 0.0f, 1.0f}, {0.4f, 0.7f, 0.0f, 1.0f}, {0.0f, 1.0f, 0.0f, 0.2f},
        {0.0f, 1.0f, 0.2f, 0.5f}, {0.3f, 1.0f, 0.5f, 1.0f}, {0.9f, 0.95f, 0.0f, 1.0f}};
    for (const auto& bound : bounds) {
        const std::vector<BoardType> expected =
            expectedByHands(records, bound[0], bound[1], bound[2], bound[3]);
        EXPECT_EQ(
            EquityRangeSelector::selectFrom(records, bound[0], bound[1], bound[2], bound[3], dead),
            expected)
            << bound[0] << " " << bound[1] << " " << bound[2] << " " << bound[3];
    }
    // 0 to 100 both ways: every hand that can occur, none that cannot.
    const std::vector<BoardType> all =
        EquityRangeSelector::selectFrom(records, 0.0f, 1.0f, 0.0f, 1.0f, dead);
    const auto possible = std::count_if(records.begin(), records.end(),
                                        [](const WinEvaluationByHand& r) { return r.total > 0; });
    EXPECT_EQ(all.size(), static_cast<std::size_t>(possible));
    EXPECT_LT(all.size(), records.size());
    for (BoardType hand : all)
        EXPECT_EQ(hand & dead, 0u);
    // The best fifth is ranked best first.
    const std::vector<BoardType> best =
        EquityRangeSelector::selectFrom(records, 0.0f, 1.0f, 0.0f, 0.2f, dead);
    EXPECT_EQ(best.size(), static_cast<std::size_t>(0.2f * static_cast<float>(possible)));
}

TEST(EquitySelection, ForHandClassesThePercentilesCountCombinations) {
    // Records of classes (as a by-class evaluation would give them), best first after
    // sorting: AA 0.9 (6), AKs 0.7 (4), 72o 0.2 (12), KQo 0.5 (12), 99 0.6 (6). 40 in all.
    const WinEvaluationsByHand records = {record("AA", 100, 90, 0),  record("72o", 100, 20, 0),
                                          record("KQo", 100, 50, 0), record("AKs", 100, 70, 0),
                                          record("99", 100, 60, 0),  record("JJ", 0, 0, 0)};
    auto classes = [&records](float lower, float upper, BoardType dead = 0) {
        return sorted(EquityRangeSelector::selectFrom(records, 0.0f, 1.0f, lower, upper, dead));
    };
    auto hands = [](const std::string& text) {
        std::vector<BoardType> result;
        Range::HandRange range = HandSelectionTest::rangeOf(text);
        for (const Range::Element& element : range)
            Range::handsOfElement(element.values, element.suits, result);
        return sorted(result);
    };
    // Before AA 0 of 40: the lower bound 0 starts there; 0.25 of 40 is 10, first reached
    // before AKs (6 < 10) ... before 99 (10 >= 10): AA and AKs.
    EXPECT_EQ(classes(0.0f, 0.25f), hands("AA,AKs"));
    EXPECT_EQ(classes(0.0f, 0.26f), hands("AA,AKs,99"));
    EXPECT_EQ(classes(0.25f, 0.6f), hands("99,KQo"));
    EXPECT_EQ(classes(0.0f, 1.0f), hands("AA,AKs,99,KQo,72o"));
    EXPECT_EQ(classes(0.95f, 1.0f), hands(""));
    // Dead cards take combinations out of the classes.
    EXPECT_EQ(classes(0.0f, 0.25f, Range::maskOfText("As")),
              hands("AdAh,AdAc,AhAc,AdKd,AhKh,AcKc"));
    // Equity bounds come first: without AA the classes count 34 combinations, and 30 % of
    // them is first reached before 72o (4 + 6 + 12 = 22 of 34).
    EXPECT_EQ(sorted(EquityRangeSelector::selectFrom(records, 0.0f, 0.8f, 0.0f, 0.3f, 0)),
              hands("AKs,99,KQo"));
    EXPECT_EQ(sorted(EquityRangeSelector::selectFrom(records, 0.0f, 0.8f, 0.0f, 0.29f, 0)),
              hands("AKs,99"));
}

TEST(EquitySelection, AConcreteHandThatHoldsADeadCardIsLeftOut) {
    const WinEvaluationsByHand records = {record("AhKh", 10, 9, 0), record("AsKs", 10, 8, 0)};
    EXPECT_EQ(
        EquityRangeSelector::selectFrom(records, 0.0f, 1.0f, 0.0f, 1.0f, Range::maskOfText("Ks")),
        std::vector<BoardType>{maskOf("AhKh")});
}

// --- In the background ---------------------------------------------------------------------------

TEST(EquitySelectorRun, AFinishedRunYieldsTheSelectionOfItsRecords) {
    ThreadPool pool;
    EquityRangeSelector selector(&pool);
    QSignalSpy finished(&selector, &EquityRangeSelector::calculationFinished);
    selector.start(technical(hero), technical(villain), turn, "", 0.2f, 0.9f, 0.1f, 0.6f);
    EXPECT_TRUE(selector.isRunning());
    ASSERT_TRUE(finished.wait(20000));
    EXPECT_FALSE(selector.isRunning());
    const std::vector<BoardType> hands = finished.at(0).at(0).value<std::vector<BoardType>>();
    EXPECT_EQ(hands, expectedByHands(evaluate(hero, villain, turn), 0.2f, 0.9f, 0.1f, 0.6f));
    EXPECT_FALSE(hands.empty());
}

TEST(EquitySelectorRun, OnlyTheLastStartReportsAndAStrangersResultIsDropped) {
    ThreadPool pool;
    EquityRangeSelector selector(&pool);
    QSignalSpy finished(&selector, &EquityRangeSelector::calculationFinished);
    selector.start(technical(hero), technical(villain), turn, "", 0.0f, 1.0f, 0.0f, 1.0f);
    selector.start(technical("AA,KK"), technical(villain), turn, "", 0.0f, 1.0f, 0.0f, 1.0f);
    // A result of a handle the selector does not hold.
    emit pool.WinEvaluationByHandFinished(ThreadHandle(&pool, 12345),
                                          evaluate(hero, villain, turn));
    ASSERT_TRUE(finished.wait(20000));
    QTest::qWait(300);
    ASSERT_EQ(finished.count(), 1);
    const std::vector<BoardType> hands = finished.at(0).at(0).value<std::vector<BoardType>>();
    EXPECT_EQ(sorted(hands),
              sorted(expectedByHands(evaluate("AA,KK", villain, turn), 0.0f, 1.0f, 0.0f, 1.0f)));
}

TEST(EquitySelectorRun, AnAbortedRunStaysSilent) {
    ThreadPool pool;
    EquityRangeSelector selector(&pool);
    QSignalSpy finished(&selector, &EquityRangeSelector::calculationFinished);
    selector.start(technical(hero), technical(villain), "Kh9h4c", "", 0.0f, 1.0f, 0.0f, 1.0f);
    selector.abort();
    EXPECT_FALSE(selector.isRunning());
    EXPECT_FALSE(finished.wait(1500));
}

// --- In the dialog -------------------------------------------------------------------------------

namespace {

struct EquityDialog : ::testing::Test {
    Range::Tree player;
    ThreadPool pool;
    std::unique_ptr<HandSelectionDialog> dialog;
    Ui::HandSelectionDialog* ui = nullptr;
    EquityRangeSelectorTab* tab = nullptr;

    EquityDialog() {
        player.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
        dialog = std::make_unique<HandSelectionDialog>(player, turn, "", &pool);
        ui = dialog->form();
        tab = dialog->equitySelector();
        ui->selectorTabs->setCurrentWidget(ui->equityTab);
        dialog->setOpponentRange(villain);
        // The range shown; the root picks from all hands.
        ui->rangeText->setText(QString::fromStdString(hero));
        ui->rangeText->validateRange();
    }
};

} // namespace

TEST_F(EquityDialog, SelectRunsInTheBackgroundWithAMovingButtonAndAppliesTheResult) {
    dialog->form()->selectMode->setCurrentIndex(HandSelectionDialog::Overwrite);
    tab->equityLowerBound->setValue(50.0);
    const std::size_t steps = dialog->rangeUndoList().size();
    ui->selectButton->click();
    EXPECT_TRUE(dialog->isSelecting());
    EXPECT_TRUE(ui->selectButton->text().isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ui->selectButton->icon().isNull(); }, 5000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog->isSelecting(); }, 30000));
    EXPECT_EQ(ui->selectButton->text(), "&Select");
    EXPECT_TRUE(ui->selectButton->icon().isNull());
    // The input was the full range: every hand of it with half the pot or more.
    const Range::HandRange full(true);
    const WinEvaluationsByHand records =
        evaluate(Range::HandRangeStringReader(full).compactText(), villain, turn);
    std::vector<BoardType> shown;
    for (const Range::Element& element : dialog->currentRange())
        Range::handsOfElement(element.values, element.suits, shown);
    EXPECT_EQ(sorted(shown), sorted(expectedByHands(records, 0.5f, 1.0f, 0.0f, 1.0f)));
    EXPECT_EQ(dialog->rangeUndoList().size(), steps + 1);
}

TEST_F(EquityDialog, ACancelledSelectionLeavesTheRangeAsItWas) {
    const std::string before = dialog->currentRangeText();
    ui->selectButton->click();
    ASSERT_TRUE(dialog->isSelecting());
    ui->selectButton->click();
    EXPECT_FALSE(dialog->isSelecting());
    EXPECT_EQ(ui->selectButton->text(), "&Select");
    EXPECT_TRUE(ui->selectButton->icon().isNull());
    QTest::qWait(2500);
    EXPECT_EQ(dialog->currentRangeText(), before);
}

TEST_F(EquityDialog, AnUpperPercentileBelowTheLowerEquityBoundStartsNothing) {
    tab->equityLowerBound->setValue(40.0);
    tab->percentileUpperBound->setValue(30.0);
    const std::string before = dialog->currentRangeText();
    ui->selectButton->click();
    EXPECT_FALSE(dialog->isSelecting());
    EXPECT_EQ(ui->selectButton->text(), "&Select");
    EXPECT_EQ(dialog->currentRangeText(), before);
    // The upper equity bound below the lower one starts nothing either.
    tab->percentileUpperBound->setValue(100.0);
    tab->equityUpperBound->setValue(30.0);
    ui->selectButton->click();
    EXPECT_FALSE(dialog->isSelecting());
}

TEST_F(EquityDialog, ClosingTheDialogStopsARunningSelection) {
    ui->selectButton->click();
    ASSERT_TRUE(dialog->isSelecting());
    dialog->reject();
    EXPECT_FALSE(dialog->isSelecting());
    EXPECT_EQ(ui->selectButton->text(), "&Select");
}

TEST_F(EquityDialog, TheOtherRangeIsAnyHandWhenLeftEmptyAndNothingWhenItHoldsNoHand) {
    tab->setOtherRange("");
    EXPECT_EQ(tab->otherRangeText(),
              Range::HandRangeStringReader(Range::HandRange(true)).technicalText());
    tab->setOtherRange("zz");
    EXPECT_EQ(tab->otherRangeText(), "");
    EXPECT_FALSE(tab->startCalculation(technical(hero), tab->otherRangeText(), turn, ""));
    EXPECT_FALSE(tab->isRunning());
    tab->setOtherRange("qq+");
    EXPECT_EQ(tab->otherRangeText(), technical("QQ+"));
}
