#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

TEST(HandHistoryText, CurrencySignsBecomeSingleWindows1252Bytes) {
    EXPECT_EQ(HandHistoryText::toWindows1252("0.25\xE2\x82\xAC"), "0.25\x80");
    EXPECT_EQ(HandHistoryText::toWindows1252("\xC2\xA3"
                                             "10"),
              "\xA3"
              "10");
    EXPECT_EQ(HandHistoryText::toWindows1252("$5"), "$5");
}

TEST(HandHistoryText, ByteOrderMarkIsDroppedAndForeignCharactersBecomeQuestionMarks) {
    EXPECT_EQ(HandHistoryText::toWindows1252("\xEF\xBB\xBFPokerStars"), "PokerStars");
    EXPECT_EQ(HandHistoryText::toWindows1252("\xE2\x99\xA0"), "?");     // spade suit
    EXPECT_EQ(HandHistoryText::toWindows1252("\xF0\x9F\x82\xA1"), "?"); // playing card
    EXPECT_EQ(HandHistoryText::toWindows1252("Jos\xC3\xA9"), "Jos\xE9");
}

TEST(HandHistoryText, InvalidUtf8IsTakenAsWindows1252) {
    EXPECT_EQ(HandHistoryText::toWindows1252("\x80"
                                             "5 \xA3"
                                             "3"),
              "\x80"
              "5 \xA3"
              "3");
    EXPECT_EQ(HandHistoryText::toWindows1252("\xE2\x82"), "\xE2\x82");
}

TEST(HandHistoryText, RoundTripsToUtf8) {
    const std::string utf8 = "Jos\xC3\xA9 \xE2\x82\xAC"
                             "5 \xC2\xA3"
                             "3 \xE2\x80\x94";
    EXPECT_EQ(HandHistoryText::toUtf8(HandHistoryText::toWindows1252(utf8)), utf8);
}

TEST(HandHistoryText, SplitsAtRunsOfBlankLinesAndCountsLines) {
    const auto pieces =
        HandHistoryText::splitAtBlankLines("\nhand one\nline two\n\n \r\n\t\nhand two\r\n\n\n");
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[0].text, "hand one\nline two\n");
    EXPECT_EQ(pieces[0].firstLine, 2);
    EXPECT_EQ(pieces[0].lastLine, 3);
    EXPECT_EQ(pieces[1].text, "hand two\r\n");
    EXPECT_EQ(pieces[1].firstLine, 7);
    EXPECT_EQ(pieces[1].lastLine, 7);
    EXPECT_TRUE(HandHistoryText::splitAtBlankLines(" \n\n").empty());
    const auto last = HandHistoryText::splitAtBlankLines("a\nb");
    ASSERT_EQ(last.size(), 1u);
    EXPECT_EQ(last[0].text, "a\nb");
}
