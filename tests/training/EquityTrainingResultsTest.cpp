// The results page: its counts, the thresholds and their distribution, the plot of the
// guesses and the table of items.

#include "TrainingTestHelpers.h"

#include "TrainingResultsSamples.h"
#include "training/EquityTrainingGuessPlot.h"
#include "training/EquityTrainingResults.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include <cmath>

using namespace TrainingTestHelpers;
using TrainingResultsSamples::item;

namespace {

QString text(const EquityTrainingResults& page, const char* label) {
    return child<QLabel>(&page, label)->text();
}

} // namespace

TEST(EquityTrainingResultsTest, WithOneRangeTheGuessesAreTheItems) {
    // Differences 25, 12, 7.5, 2, 0.5.
    const EquityTrainingResults page(
        {item(40, 65), item(62, 50), item(30, 37.5), item(52, 50), item(80, 80.5)});
    EXPECT_EQ(text(page, "itemsCaption"), QStringLiteral("Training Items:"));
    EXPECT_EQ(text(page, "guessesCaption"), QStringLiteral("Training Guesses:"));
    EXPECT_EQ(text(page, "averageCaption"), QStringLiteral("Average Absolute Difference:"));
    EXPECT_EQ(text(page, "itemsValue"), QStringLiteral("5"));
    EXPECT_EQ(text(page, "guessesValue"), text(page, "itemsValue"));
    // (25 + 12 + 7.5 + 2 + 0.5) / 5 = 9.4 points.
    EXPECT_EQ(text(page, "averageValue"), QStringLiteral("9.40 %"));
    EXPECT_EQ(text(page, "threshold1Before"), QStringLiteral("Guesses with >"));
    EXPECT_EQ(text(page, "threshold1After"), QStringLiteral(" absolute difference:"));
    // Defaults 20, 10 and 5.
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(&page, "threshold1")->value(), 20.0);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(&page, "threshold2")->value(), 10.0);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(&page, "threshold3")->value(), 5.0);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(&page, "threshold1")->maximum(), 100.0);
    EXPECT_EQ(text(page, "threshold1Count"), QStringLiteral("1 (20.00 % of all guesses)"));
    EXPECT_EQ(text(page, "threshold2Count"), QStringLiteral("2 (40.00 % of all guesses)"));
    EXPECT_EQ(text(page, "threshold3Count"), QStringLiteral("3 (60.00 % of all guesses)"));
    EXPECT_EQ(text(page, "belowCaption"),
              QStringLiteral("Guesses with <= 5.00 % absolute difference:"));
    EXPECT_EQ(text(page, "belowCount"), QStringLiteral("2 (40.00 % of all guesses)"));
    EXPECT_EQ(child<QPushButton>(&page, "startNewTrainingButton")->text(),
              QStringLiteral("&Start New Training"));
}

TEST(EquityTrainingResultsTest, WithTwoRangesEachItemCountsTwoGuesses) {
    const EquityTrainingResults page(
        {item(40, 65, "JJ+", 50, 50), item(62, 50, "JJ+", 10, 31), item(30, 37.5, "JJ+", 90, 60)});
    EXPECT_EQ(text(page, "itemsValue"), QStringLiteral("3"));
    EXPECT_EQ(text(page, "guessesValue"), QStringLiteral("6"));
    // (25 + 0 + 12 + 21 + 7.5 + 30) / 6 = 15.91666 points.
    EXPECT_EQ(text(page, "averageValue"), QStringLiteral("15.92 %"));
    EXPECT_EQ(text(page, "threshold1Count"), QStringLiteral("3 (50.00 % of all guesses)"));
    EXPECT_EQ(text(page, "threshold2Count"), QStringLiteral("4 (66.67 % of all guesses)"));
    EXPECT_EQ(text(page, "threshold3Count"), QStringLiteral("5 (83.33 % of all guesses)"));
    EXPECT_EQ(text(page, "belowCount"), QStringLiteral("1 (16.67 % of all guesses)"));
}

TEST(EquityTrainingResultsTest, ChangingAThresholdCountsAgain) {
    EquityTrainingResults page(
        {item(40, 65), item(62, 50), item(30, 37.5), item(52, 50), item(80, 80.5)});
    auto* first = child<QDoubleSpinBox>(&page, "threshold1");
    auto* third = child<QDoubleSpinBox>(&page, "threshold3");
    // A box counts a guess when its value is less than the difference: 12 is not above 12.
    first->setValue(12.0);
    EXPECT_EQ(text(page, "threshold1Count"), QStringLiteral("1 (20.00 % of all guesses)"));
    first->setValue(11.9);
    EXPECT_EQ(text(page, "threshold1Count"), QStringLiteral("2 (40.00 % of all guesses)"));
    // The smallest box gives the last line, which counts guesses strictly below it.
    third->setValue(7.5);
    EXPECT_EQ(text(page, "threshold3Count"), QStringLiteral("2 (40.00 % of all guesses)"));
    EXPECT_EQ(text(page, "belowCaption"),
              QStringLiteral("Guesses with <= 7.50 % absolute difference:"));
    EXPECT_EQ(text(page, "belowCount"), QStringLiteral("2 (40.00 % of all guesses)"));
    first->setValue(1.0);
    EXPECT_EQ(text(page, "belowCaption"),
              QStringLiteral("Guesses with <= 1.00 % absolute difference:"));
    EXPECT_EQ(text(page, "belowCount"), QStringLiteral("1 (20.00 % of all guesses)"));
    EXPECT_EQ(text(page, "threshold1Count"), QStringLiteral("4 (80.00 % of all guesses)"));
}

TEST(EquityTrainingResultsTest, ThePlotShowsEveryGuessOverItsCorrectEquity) {
    const EquityTrainingResults page(
        {item(40, 65, "JJ+", 50, 50), item(62, 50, "JJ+", 10, 31), item(30, 37.5, "JJ+", 90, 60)});
    EquityTrainingGuessPlot* plot = page.guessPlot();
    ASSERT_EQ(plot->diagonal()->data()->size(), 2);
    EXPECT_DOUBLE_EQ(plot->diagonal()->data()->at(0)->key, 0.0);
    EXPECT_DOUBLE_EQ(plot->diagonal()->data()->at(0)->value, 0.0);
    EXPECT_DOUBLE_EQ(plot->diagonal()->data()->at(1)->key, 100.0);
    EXPECT_DOUBLE_EQ(plot->diagonal()->data()->at(1)->value, 100.0);
    // Keyed by the correct equity, so in its order.
    const QCPGraph* first = plot->guesses(1);
    ASSERT_EQ(first->data()->size(), 3);
    EXPECT_DOUBLE_EQ(first->data()->at(0)->key, 37.5);
    EXPECT_DOUBLE_EQ(first->data()->at(0)->value, 30.0);
    EXPECT_DOUBLE_EQ(first->data()->at(1)->key, 50.0);
    EXPECT_DOUBLE_EQ(first->data()->at(1)->value, 62.0);
    EXPECT_DOUBLE_EQ(first->data()->at(2)->key, 65.0);
    EXPECT_DOUBLE_EQ(first->data()->at(2)->value, 40.0);
    const QCPGraph* second = plot->guesses(2);
    ASSERT_EQ(second->data()->size(), 3);
    EXPECT_DOUBLE_EQ(second->data()->at(0)->key, 31.0);
    EXPECT_DOUBLE_EQ(second->data()->at(0)->value, 10.0);
    EXPECT_TRUE(plot->legend->hasItemWithPlottable(second));
    // Both axes hold 0 to 100 % whole.
    for (const QCPAxis* axis : {plot->xAxis, plot->yAxis}) {
        EXPECT_LE(axis->range().lower, 0.0);
        EXPECT_GE(axis->range().upper, 100.0);
        EXPECT_LT(axis->range().size(), 110.0);
    }
}

TEST(EquityTrainingResultsTest, AGuessWithoutACorrectEquityIsNoPoint) {
    const EquityTrainingResults page({item(40, 65), item(10, std::nan(""))});
    EXPECT_EQ(page.guessPlot()->guesses(1)->data()->size(), 1);
    EXPECT_EQ(page.guessPlot()->guesses(2)->data()->size(), 0);
    EXPECT_FALSE(page.guessPlot()->legend->hasItemWithPlottable(page.guessPlot()->guesses(2)));
    // And its difference is no number, which the average then is too.
    EXPECT_EQ(text(page, "averageValue"), QStringLiteral("nan %"));
}

TEST(EquityTrainingResultsTest, TheTableListsTheItems) {
    const EquityTrainingResults page({item(40, 65), item(62.5, 50)});
    auto* table = child<QTableWidget>(&page, "itemTable");
    ASSERT_EQ(table->rowCount(), 2);
    ASSERT_EQ(table->columnCount(), 5);
    EXPECT_EQ(table->item(0, 0)->text(), QStringLiteral("AdKh"));
    EXPECT_EQ(table->item(0, 1)->text(), QStringLiteral("Qs7d2c"));
    EXPECT_EQ(table->item(1, 2)->text(), QStringLiteral("62.50 %"));
    EXPECT_EQ(table->item(1, 3)->text(), QStringLiteral("50.00 %"));
    EXPECT_EQ(table->item(1, 4)->text(), QStringLiteral("12.50 %"));
    const EquityTrainingResults two({item(40, 65, "JJ+", 50, 49)});
    EXPECT_EQ(child<QTableWidget>(&two, "itemTable")->columnCount(), 8);
    EXPECT_EQ(child<QTableWidget>(&two, "itemTable")->item(0, 7)->text(), QStringLiteral("1.00 %"));
}

TEST(EquityTrainingResultsTest, StartNewTrainingIsAnnounced) {
    EquityTrainingResults page({item(40, 65)});
    int announced = 0;
    QObject::connect(&page, &EquityTrainingResults::startNewTraining, &page, [&] { ++announced; });
    QTest::mouseClick(child<QPushButton>(&page, "startNewTrainingButton"), Qt::LeftButton);
    EXPECT_EQ(announced, 1);
}
