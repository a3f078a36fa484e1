#include "utils/ui/EquityColor.h"
#include "tabs/EquityMatrixTable.h"
#include "tabs/EquityTableHandColumn.h"
#include "tabs/EquityTableNumberColumn.h"

#include <QFontMetrics>
#include <QImage>
#include <gtest/gtest.h>

#include <cmath>

namespace {

bool handLess(const char* a, const char* b) {
    return EquityTableHandColumn(a) < EquityTableHandColumn(b);
}
bool numberLess(const char* a, const char* b) {
    return EquityTableNumberColumn(a) < EquityTableNumberColumn(b);
}

} // namespace

TEST(EquityTableHandColumn, OrdersByFirstThenSecondRank) {
    EXPECT_TRUE(handLess("KK", "AA"));
    EXPECT_FALSE(handLess("AA", "KK"));
    EXPECT_TRUE(handLess("KQs", "AKo")); // the first rank decides
    EXPECT_TRUE(handLess("A5s", "AKs"));
    EXPECT_TRUE(handLess("T9s", "JTs"));
    EXPECT_TRUE(handLess("32o", "22") == false);
    EXPECT_TRUE(handLess("22", "32o"));
}

TEST(EquityTableHandColumn, OffsuitBeforeSuitedOfTheSameRanks) {
    EXPECT_TRUE(handLess("AKo", "AKs"));
    EXPECT_FALSE(handLess("AKs", "AKo"));
    EXPECT_FALSE(handLess("AKs", "AKs"));
    EXPECT_FALSE(handLess("AA", "AA"));
}

TEST(EquityTableHandColumn, ConcreteHandsByRanksThenSuits) {
    EXPECT_TRUE(handLess("KhQd", "AdKh"));
    EXPECT_TRUE(handLess("AdKh", "AhKd")); // first suit d before h
    EXPECT_TRUE(handLess("AhKd", "AhKs")); // then the second suit
    EXPECT_FALSE(handLess("AhKs", "AhKs"));
    EXPECT_TRUE(handLess("AdQd", "AdKd"));
}

TEST(EquityTableNumberColumn, SortsByTheNumberNotTheText) {
    EXPECT_TRUE(numberLess("9.50 %", "10.25 %"));
    EXPECT_FALSE(numberLess("10.25 %", "9.50 %"));
    EXPECT_FALSE(numberLess("9.50 %", "9.50 %"));
    EXPECT_TRUE(numberLess("4", "12"));
    EXPECT_FALSE(numberLess("12", "4"));
    EXPECT_FLOAT_EQ(EquityTableNumberColumn::numberOfText("57.31 %"), 57.31f);
    EXPECT_FLOAT_EQ(EquityTableNumberColumn::numberOfText("12"), 12.0f);
    EXPECT_FLOAT_EQ(EquityTableNumberColumn::numberOfText("n/a"), 0.0f);
}

TEST(EquityMatrixTable, CellsOfKeys) {
    int row = -1;
    int column = -1;
    ASSERT_TRUE(EquityMatrixTable::cellOfKey("AAP", row, column));
    EXPECT_EQ(row, 0);
    EXPECT_EQ(column, 0);
    ASSERT_TRUE(EquityMatrixTable::cellOfKey("KAS", row, column)); // above the diagonal
    EXPECT_EQ(row, 0);
    EXPECT_EQ(column, 1);
    ASSERT_TRUE(EquityMatrixTable::cellOfKey("AKO", row, column)); // below it
    EXPECT_EQ(row, 1);
    EXPECT_EQ(column, 0);
    ASSERT_TRUE(EquityMatrixTable::cellOfKey("22P", row, column));
    EXPECT_EQ(row, 12);
    EXPECT_EQ(column, 12);
    EXPECT_FALSE(EquityMatrixTable::cellOfKey("AKS", row, column)); // suited keys are swapped
    EXPECT_FALSE(EquityMatrixTable::cellOfKey("KAO", row, column));
    EXPECT_FALSE(EquityMatrixTable::cellOfKey("AKP", row, column));
    EXPECT_FALSE(EquityMatrixTable::cellOfKey("A1P", row, column));
    EXPECT_FALSE(EquityMatrixTable::cellOfKey("AK", row, column));
    EXPECT_EQ(EquityMatrixTable::cellHand(0, 0), "AA");
    EXPECT_EQ(EquityMatrixTable::cellHand(0, 1), "AKs");
    EXPECT_EQ(EquityMatrixTable::cellHand(1, 0), "AKo");
    EXPECT_EQ(EquityMatrixTable::cellHand(12, 11), "32o");
    EXPECT_EQ(EquityMatrixTable::cellHand(13, 0), "");
}

TEST(EquityMatrixTable, PaintsFilledAndEmptyCells) {
    EquityMatrixTable matrix;
    EXPECT_EQ(matrix.size(), QSize(365, 365));
    DisplayedHands hands;
    hands["AAP"].equity = 0.85f;
    hands["KAS"].equity = 0.5f;
    hands["AKO"].equity = 0.1f;
    hands["bad"].equity = 0.7f; // ignored
    matrix.SetRange(hands);
    const QImage image = matrix.pixmap(Qt::ReturnByValue).toImage();
    ASSERT_EQ(image.size(), QSize(365, 365));
    // A pixel in a cell's corner, away from its text.
    const auto corner = [&image](int row, int column) {
        return image.pixelColor(1 + column * 28 + 1, 1 + row * 28 + 1);
    };
    EXPECT_EQ(corner(0, 0), colorForEquity(0.85f));
    EXPECT_EQ(corner(0, 1), QColor(255, 255, 0));
    EXPECT_EQ(corner(1, 0), colorForEquity(0.1f));
    EXPECT_FLOAT_EQ(matrix.cellValue(0, 0), 0.85f);
    EXPECT_FLOAT_EQ(matrix.cellValue(1, 0), 0.1f);
    // Empty cells: a gradient from (32,32,32) at the top to (64,64,64) at the bottom.
    EXPECT_TRUE(std::isnan(matrix.cellValue(5, 7)));
    const QColor top = image.pixelColor(1 + 7 * 28 + 1, 1 + 5 * 28);
    const QColor bottom = image.pixelColor(1 + 7 * 28 + 1, 1 + 5 * 28 + 26);
    EXPECT_NEAR(top.red(), 32, 2);
    EXPECT_NEAR(bottom.red(), 64, 2);
    EXPECT_EQ(top.red(), top.green());
    // The last cell ends at the picture's edge.
    EXPECT_NEAR(image.pixelColor(363, 363).red(), 64, 2);

    // A new range empties what the old one filled.
    matrix.SetRange(DisplayedHands());
    EXPECT_TRUE(std::isnan(matrix.cellValue(0, 0)));
    EXPECT_NEAR(matrix.pixmap(Qt::ReturnByValue).toImage().pixelColor(2, 2).red(), 32, 2);
}

TEST(EquityMatrixTable, FontFitsTheWidestText) {
    EquityMatrixTable matrix;
    const QFontMetrics metrics(matrix.cellFont());
    EXPECT_LE(metrics.horizontalAdvance("100%"), EquityMatrixTable::cellSize);
    EXPECT_LE(metrics.height() * 2, EquityMatrixTable::cellSize);
    EXPECT_GE(matrix.cellFont().pointSize(), 5);
}
