#include "handhistory/HandHistoryStream.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

TEST(HandHistoryStream, LineHasLeavesTheStreamBehindTheWord) {
    const std::string text = "Joe: raises $2 to $6\nAnn: folds\n";
    HandHistoryStream stream(text);
    EXPECT_TRUE(stream.lineHas("raises"));
    EXPECT_EQ(stream.restOfLine(), " $2 to $6");
}

TEST(HandHistoryStream, LineHasFailsBehindTheNewlineAndNeverLooksIntoTheNextLine) {
    const std::string text = "Joe: raises $2 to $6\nAnn: folds\n";
    HandHistoryStream stream(text);
    EXPECT_FALSE(stream.lineHas("folds"));
    EXPECT_EQ(stream.restOfLine(), "Ann: folds");
    EXPECT_TRUE(stream.lineHas("folds"));
}

TEST(HandHistoryStream, LineHasFallsBackAfterAPartialMatch) {
    const std::string text = "aaab\n";
    HandHistoryStream stream(text);
    EXPECT_TRUE(stream.lineHas("aab"));
    EXPECT_TRUE(stream.atEnd() || stream.restOfLine().empty());
}

TEST(HandHistoryStream, LineHasAtTheEndOfATextWithoutNewline) {
    const std::string text = "no word here";
    HandHistoryStream stream(text);
    EXPECT_FALSE(stream.lineHas("word!"));
    EXPECT_TRUE(stream.atEnd());
    EXPECT_FALSE(stream.lineHas("x"));
}

TEST(HandHistoryStream, LineBeginsOnlyAtTheReadPosition) {
    const std::string text = "Table Seat 1\nSeat 2: Ann (5)\n";
    HandHistoryStream stream(text);
    EXPECT_FALSE(stream.lineBegins("Seat "));
    EXPECT_TRUE(stream.lineBegins("Seat "));
    EXPECT_EQ(stream.restOfLine(), "2: Ann (5)");
}

TEST(HandHistoryStream, ReadsNumbersOfEveryShapeButNoSignOrExponent) {
    const std::string text = " 12 0.5 .25 7. 1e5 -3";
    HandHistoryStream stream(text);
    float value = 0.0f;
    ASSERT_TRUE(stream.readNumber(value));
    EXPECT_FLOAT_EQ(value, 12.0f);
    ASSERT_TRUE(stream.readNumber(value));
    EXPECT_FLOAT_EQ(value, 0.5f);
    ASSERT_TRUE(stream.readNumber(value));
    EXPECT_FLOAT_EQ(value, 0.25f);
    ASSERT_TRUE(stream.readNumber(value));
    EXPECT_FLOAT_EQ(value, 7.0f);
    ASSERT_TRUE(stream.readNumber(value));
    EXPECT_FLOAT_EQ(value, 1.0f);
    EXPECT_FALSE(stream.readNumber(value)); // "e5"
    EXPECT_EQ(stream.readWord(), "e5");
    EXPECT_FALSE(stream.readNumber(value)); // "-3"
}

TEST(HandHistoryStream, NumbersDoNotDependOnTheCLocale) {
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    // Any locale with a decimal comma that the machine has; the test holds either way.
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
        if (std::setlocale(LC_NUMERIC, name))
            break;
    const std::string text = "1151.30";
    HandHistoryStream stream(text);
    float value = 0.0f;
    EXPECT_TRUE(stream.readNumber(value));
    EXPECT_FLOAT_EQ(value, 1151.30f);
    std::setlocale(LC_NUMERIC, previous.c_str());
}

TEST(HandHistoryStream, NumbersNeverCrossALineAndHugeOnesFail) {
    const std::string text = "bets\n5\n" + std::string(400, '9') + "\n";
    HandHistoryStream stream(text);
    stream.lineHas("bets");
    float value = 0.0f;
    EXPECT_FALSE(stream.readNumber(value));
    stream.skipLine();
    stream.skipLine();
    EXPECT_FALSE(stream.readNumber(value)) << "beyond the float range";
    int number = 0;
    EXPECT_FALSE(stream.readInteger(number)) << "beyond the int range";
}

TEST(HandHistoryStream, ReadUpToStaysInsideTheLine) {
    const std::string text = "Seat 1: Ann\n(5)\n";
    HandHistoryStream stream(text);
    std::string out;
    EXPECT_FALSE(stream.readUpTo('(', out));
    EXPECT_EQ(stream.position(), 0u);
    EXPECT_TRUE(stream.readUpTo(':', out));
    EXPECT_EQ(out, "Seat 1");
}

TEST(HandHistoryStream, ReadLineDropsTheCarriageReturn) {
    const std::string text = "fold\r\nnext";
    HandHistoryStream stream(text);
    EXPECT_EQ(stream.readLine(), "fold");
    EXPECT_EQ(stream.readLine(), "next");
    EXPECT_TRUE(stream.atEnd());
    EXPECT_EQ(stream.readLine(), "");
}
