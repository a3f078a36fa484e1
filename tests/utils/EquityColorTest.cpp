// The traffic light and its percent text.

#include "utils/ui/EquityColor.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ColorForEquity, TheThreeFixedPoints) {
    EXPECT_EQ(colorForEquity(0.0f), QColor(255, 0, 0, 255));
    EXPECT_EQ(colorForEquity(0.5f), QColor(255, 255, 0, 255));
    EXPECT_EQ(colorForEquity(1.0f), QColor(0, 255, 0, 255));
}

TEST(ColorForEquity, NotANumberIsYellow) {
    EXPECT_EQ(colorForEquity(std::numeric_limits<float>::quiet_NaN()), QColor(255, 255, 0, 255));
}

TEST(ColorForEquity, InBetweenTheChannelsAreTruncated) {
    // Above 0.5: red = int((1 - (v - 0.5) * 2) * 255); 0.75 -> 127.5 -> 127.
    EXPECT_EQ(colorForEquity(0.75f), QColor(127, 255, 0));
    // Below 0.5: green = int(v * 255 * 2); 0.25 -> 127.5 -> 127; 0.1 -> 51.
    EXPECT_EQ(colorForEquity(0.25f), QColor(255, 127, 0));
    EXPECT_EQ(colorForEquity(0.1f), QColor(255, 51, 0));
    // Just off the middle.
    EXPECT_EQ(colorForEquity(0.5001f).green(), 255);
    EXPECT_EQ(colorForEquity(0.5001f).red(), 254);
    EXPECT_EQ(colorForEquity(0.4999f).red(), 255);
    EXPECT_EQ(colorForEquity(0.4999f).green(), 254);
}

TEST(ColorForEquity, OutsideTheUnitIntervalItSaturates) {
    EXPECT_EQ(colorForEquity(1.7f), QColor(0, 255, 0));
    EXPECT_EQ(colorForEquity(-0.3f), QColor(255, 0, 0));
    EXPECT_EQ(colorForEquity(std::numeric_limits<float>::infinity()), QColor(0, 255, 0));
    EXPECT_EQ(colorForEquity(-std::numeric_limits<float>::infinity()), QColor(255, 0, 0));
}

TEST(EquityPercentText, TwoFixedDecimalsAndASpacedPercentSign) {
    EXPECT_EQ(equityPercentText(0.5731f), QStringLiteral("57.31 %"));
    EXPECT_EQ(equityPercentText(0.0f), QStringLiteral("0.00 %"));
    EXPECT_EQ(equityPercentText(1.0f), QStringLiteral("100.00 %"));
}

} // namespace
