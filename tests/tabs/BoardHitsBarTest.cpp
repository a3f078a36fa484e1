#include "tabs/BoardHitsBar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

int expectedWidth(const BoardHitsBar& bar, float fraction) {
    return static_cast<int>(static_cast<float>(bar.width() - (bar.innerBar()->x() + 10) + 1) *
                            fraction);
}

} // namespace

TEST(BoardHitsBar, InnerBarWidthFollowsTheFractionAndTheResize) {
    BoardHitsBar bar(BoardHitsBar::Style::Hits, 0.4f, -1.0f, -1.0f, 24);
    bar.resize(500, 24);
    bar.show(); // a hidden widget gets its resize event only when shown
    EXPECT_EQ(bar.innerBar()->objectName(), QStringLiteral("bar"));
    EXPECT_EQ(bar.innerBar()->width(), expectedWidth(bar, 0.4f));
    EXPECT_GT(bar.innerBar()->width(), 100);
    bar.resize(800, 24);
    EXPECT_EQ(bar.innerBar()->width(), expectedWidth(bar, 0.4f));
    EXPECT_EQ(bar.texts(), QStringList{QStringLiteral("40.00 % (24)")});
}

TEST(BoardHitsBar, NumbersLineUpInColumnsOfTheSampleWidth) {
    BoardHitsBar small(BoardHitsBar::Style::Hits, 0.05f, -1.0f, -1.0f, 3);
    BoardHitsBar large(BoardHitsBar::Style::Hits, 1.0f, -1.0f, -1.0f, 1326);
    small.resize(400, 24);
    large.resize(400, 24);
    // The bar starts at the same x whatever the number.
    EXPECT_EQ(small.innerBar()->x(), large.innerBar()->x());
    EXPECT_GE(small.innerBar()->x(),
              BoardHitsBar::numberColumnWidth(BoardHitsBar::Style::Hits, small.fontMetrics()));
    EXPECT_EQ(large.texts(), QStringList{QStringLiteral("100.00 % (1326)")});
}

TEST(BoardHitsBar, MissingValuesHaveNoTextAndNoWidth) {
    BoardHitsBar none(BoardHitsBar::Style::Hits, -1.0f, -1.0f, -1.0f, -1);
    none.resize(400, 24);
    EXPECT_EQ(none.innerBar()->width(), 0);
    EXPECT_EQ(none.texts(), QStringList{QString()});

    BoardHitsBar belowMinusOne(BoardHitsBar::Style::WinSplitLoss, -3.0f, 0.25f,
                               std::numeric_limits<float>::quiet_NaN(), -1);
    belowMinusOne.resize(400, 24);
    EXPECT_EQ(belowMinusOne.innerBar()->width(), 0);
    EXPECT_EQ(belowMinusOne.texts(),
              (QStringList{QString(), QStringLiteral("25.00 %"), QString()}));

    // A negative fraction above -1 is no value either for the width.
    BoardHitsBar negative(BoardHitsBar::Style::Hits, -0.5f, -1.0f, -1.0f, 0);
    negative.resize(400, 24);
    EXPECT_EQ(negative.innerBar()->width(), 0);
}

TEST(BoardHitsBar, WinSplitLossShowsThreeSharesAndTheWinBar) {
    BoardHitsBar bar(BoardHitsBar::Style::WinSplitLoss, 0.6f, 0.1f, 0.3f, -1);
    bar.resize(600, 24);
    bar.show();
    EXPECT_EQ(bar.texts(), (QStringList{QStringLiteral("60.00 %"), QStringLiteral("10.00 %"),
                                        QStringLiteral("30.00 %")}));
    EXPECT_EQ(bar.innerBar()->width(), expectedWidth(bar, 0.6f));
    EXPECT_EQ(BoardHitsBar::numberColumns(BoardHitsBar::Style::WinSplitLoss), 3);
    EXPECT_EQ(BoardHitsBar::percentText(0.123456f), QStringLiteral("12.35 %"));
    EXPECT_EQ(BoardHitsBar::percentText(-1.0f), QString());
}
