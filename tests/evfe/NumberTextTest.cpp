#include "evfe/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(NumberText, WritesTheLexicalForm) {
    EXPECT_EQ(NumberText::of(0.1f), "0.100000001");
    EXPECT_EQ(NumberText::of(100.0f), "100");
    EXPECT_EQ(NumberText::of(-0.0f), "-0");
    EXPECT_EQ(NumberText::of(std::numeric_limits<float>::quiet_NaN()), "nan");
    EXPECT_EQ(NumberText::of(-std::numeric_limits<float>::infinity()), "-inf");
    EXPECT_EQ(NumberText::of(2.5), "2.5");
    EXPECT_EQ(NumberText::of(0.1), "0.10000000000000001");
    EXPECT_EQ(NumberText::of(std::uint32_t{1326}), "1326");
    EXPECT_EQ(NumberText::of(-1), "-1");
    EXPECT_EQ(NumberText::of(true), "1");
    EXPECT_EQ(NumberText::of(false), "0");
}

TEST(NumberText, ReadsNumbersAndTheWordsForNoNumber) {
    EXPECT_EQ(*NumberText::toFloat("0.100000001"), 0.1f);
    EXPECT_EQ(*NumberText::toFloat(" 12.5\n"), 12.5f);
    EXPECT_EQ(*NumberText::toFloat("InFiNiTy"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(*NumberText::toFloat("-INFINITY"), -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(*NumberText::toFloat("NAN")));
    EXPECT_TRUE(std::isnan(*NumberText::toFloat("nAn")));
    EXPECT_TRUE(std::signbit(*NumberText::toFloat("-0")));
    EXPECT_EQ(*NumberText::toDouble("1e3"), 1000.0);
}

TEST(NumberText, TextThatIsNoNumberIsNoValue) {
    for (const char* text : {"", " ", "abc", "1.5e", "0x10", "1 2", "3.5e38"})
        EXPECT_FALSE(NumberText::toFloat(text)) << text;
    EXPECT_FALSE(NumberText::toUnsigned("-1"));
    EXPECT_FALSE(NumberText::toUnsigned("4294967296"));
    EXPECT_FALSE(NumberText::toUnsigned("+3"));
    EXPECT_EQ(*NumberText::toUnsigned("4294967295"), 4294967295u);
    EXPECT_EQ(*NumberText::toInt("-1"), -1);
    EXPECT_FALSE(NumberText::toInt("1.5"));
    EXPECT_FALSE(NumberText::toInt("-"));
    EXPECT_TRUE(*NumberText::toBool("1"));
    EXPECT_TRUE(*NumberText::toBool("True"));
    EXPECT_FALSE(*NumberText::toBool("0"));
    EXPECT_FALSE(NumberText::toBool("yes"));
}

} // namespace
