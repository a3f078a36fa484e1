// What no played hand can hold refuses the hand with the reason: amounts that are no plain
// non-negative numbers of a sane size, impossible cards, games other than No Limit Hold'em,
// text that is no hand history. Nothing is read as a different amount or dropped silently.

#include "HandHistorySamples.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string canonical = "PokerStars Hand #1: Hold'em No Limit ($1/$2 USD)\n"
                              "Seat 1: Ann ($200)\n"
                              "Seat 2: Bob ($300)\n"
                              "Ann: posts small blind $1\n"
                              "Bob: posts big blind $2\n"
                              "*** HOLE CARDS ***\n"
                              "Dealt to Ann [As Kd]\n"
                              "Ann: raises $4 to $6\n"
                              "Bob: calls $4\n"
                              "*** FLOP *** [2c 7d 9h]\n"
                              "Bob: checks\n"
                              "Ann: bets $8\n"
                              "Bob: calls $8\n"
                              "*** TURN *** [2c 7d 9h] [Qs]\n"
                              "Bob: checks\n"
                              "Ann: checks\n"
                              "*** RIVER *** [2c 7d 9h Qs] [3h]\n"
                              "Bob: checks\n"
                              "Ann: checks\n"
                              "*** SUMMARY ***\n";

// The same hand as one site writes it without "name:", amounts adding up.
const std::string plain = "***** Hand History for Game 1 *****\n"
                          "$1/$2 USD NL Texas Hold'em - Monday\n"
                          "Seat 1 is the button\n"
                          "Seat 1: Ann ( $200 USD )\n"
                          "Seat 2: Bob ( $300 USD )\n"
                          "Ann posts small blind [$1 USD].\n"
                          "Bob posts big blind [$2 USD].\n"
                          "** Dealing down cards **\n"
                          "Dealt to Ann [ As, Kd ]\n"
                          "Ann raises [$5 USD]\n"
                          "Bob calls [$4 USD]\n"
                          "** Dealing Flop ** [ 2c, 7d, 9h ]\n"
                          "Bob checks\n"
                          "Ann bets [$8 USD]\n"
                          "Bob calls [$8 USD]\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error("test text lacks " + from);
    return text.replace(at, from.size(), to);
}

// The reason of the refusal; fails the test when the text reads.
std::string refusal(const std::string& text) {
    try {
        HandHistoryParser parser(text);
        ADD_FAILURE() << "read:\n" << text;
        return {};
    } catch (const HandHistoryParser::ParseError& error) {
        return error.reason;
    }
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(HandHistoryBadInput, BothTextsReadAsTheyStand) {
    const HandHistoryParser a(canonical);
    const HandHistoryParser b(plain);
    ASSERT_EQ(a.postActions().size(), 4u);
    ASSERT_EQ(b.postActions().size(), 4u);
    EXPECT_FLOAT_EQ(a.postActions()[2].amount, 6.0f);
    EXPECT_FLOAT_EQ(b.postActions()[2].amount, 6.0f);
    EXPECT_EQ(b.hero(), "Ann");
    EXPECT_EQ(b.holeCards(), "AsKd");
    EXPECT_FLOAT_EQ(b.flopActions()[1].amount, 8.0f);
}

TEST(HandHistoryBadInput, AmountWithExponentIsNoRaiseToOne) {
    const std::string reason =
        refusal(replaced(canonical, "raises $4 to $6", "raises $1e308 to $1e308"));
    EXPECT_TRUE(contains(reason, "not a plain number")) << reason;
    EXPECT_TRUE(
        contains(refusal(replaced(plain, "raises [$5 USD]", "raises [$1e308 USD]")), "exponent"));
}

TEST(HandHistoryBadInput, FortyOneDigitsAreNoAmount) {
    const std::string digits(41, '9');
    EXPECT_TRUE(contains(refusal(replaced(canonical, "Bob: calls $4", "Bob: calls $" + digits)),
                         "too large"));
    EXPECT_TRUE(contains(refusal(replaced(plain, "calls [$4 USD]", "calls [$" + digits + " USD]")),
                         "too large"));
    // A stack too.
    EXPECT_TRUE(contains(refusal(replaced(canonical, "($300)", "($" + digits + ")")), "too large"));
}

TEST(HandHistoryBadInput, NegativeAmountsDoNotVanish) {
    EXPECT_TRUE(
        contains(refusal(replaced(canonical, "Ann: bets $8", "Ann: bets $-50")), "negative"));
    EXPECT_TRUE(contains(refusal(replaced(plain, "bets [$8 USD]", "bets [-$50 USD]")), "negative"));
    EXPECT_TRUE(contains(refusal(replaced(plain, "bets [$8 USD]", "bets [$-50 USD]")), "negative"));
}

TEST(HandHistoryBadInput, TwoDecimalPointsAreNoAmount) {
    EXPECT_TRUE(contains(refusal(replaced(canonical, "Ann: bets $8", "Ann: bets $8.5.1")),
                         "not a plain number"));
}

TEST(HandHistoryBadInput, AStreetWithoutAnyAmountIsStillPassedOver) {
    // A line that only lacks its amount is no number at all: left out, as ever.
    const HandHistoryParser p(replaced(canonical, "Ann: bets $8", "Ann: bets"));
    EXPECT_EQ(p.flopActions().size(), 2u);
}

TEST(HandHistoryBadInput, ImpossibleCardsRefuseTheHand) {
    // The board 5c7c7dJcJc.
    std::string twice = replaced(canonical, "*** FLOP *** [2c 7d 9h]", "*** FLOP *** [5c 7c 7d]");
    twice = replaced(twice, "[2c 7d 9h] [Qs]", "[5c 7c 7d] [Jc]");
    twice = replaced(twice, "[2c 7d 9h Qs] [3h]", "[5c 7c 7d Jc] [Jc]");
    const std::string board = refusal(twice);
    EXPECT_TRUE(contains(board, "twice")) << board;
    EXPECT_TRUE(
        contains(refusal(replaced(canonical, "*** FLOP *** [2c 7d 9h]", "*** FLOP *** [Ah Ah Ah]")),
                 "Ah is dealt twice"));
    EXPECT_TRUE(contains(refusal(replaced(canonical, "[As Kd]", "[Xx Kd]")), "unknown card"));
    EXPECT_TRUE(contains(refusal(replaced(canonical, "[As Kd]", "[As 7d]")), "7d is dealt twice"));
    EXPECT_TRUE(
        contains(refusal(replaced(plain, "[ As, Kd ]", "[ As, 9h ]")), "9h is dealt twice"));
    EXPECT_TRUE(contains(refusal(replaced(plain, "[ 2c, 7d, 9h ]", "[ 2c, 2c, 9h ]")), "twice"));
}

TEST(HandHistoryBadInput, GamesOtherThanNoLimitHoldemAreRefused) {
    EXPECT_EQ(refusal(replaced(canonical, "Hold'em No Limit", "Omaha Pot Limit")),
              "the game is Omaha, not No Limit Hold'em");
    EXPECT_EQ(refusal(replaced(canonical, "Hold'em No Limit", "Hold'em Limit")),
              "the game is a limit game, not No Limit Hold'em");
    EXPECT_EQ(refusal(replaced(canonical, "Hold'em No Limit", "7 Card Stud")),
              "the game is Stud, not No Limit Hold'em");
    EXPECT_EQ(refusal(replaced(plain, "NL Texas Hold'em", "PL Texas Hold'em")),
              "the game is a limit game, not No Limit Hold'em");
    EXPECT_EQ(refusal(replaced(plain, "NL Texas Hold'em", "NL Omaha")),
              "the game is Omaha, not No Limit Hold'em");
    // Four hole cards say Omaha where no head does.
    EXPECT_TRUE(contains(refusal(replaced(plain, "[ As, Kd ]", "[ As, Kd, Qc, Jc ]")),
                         "more than two hole cards"));
}

TEST(HandHistoryBadInput, TextThatIsNoHandHistorySaysSo) {
    for (const std::string& text :
         {std::string(), std::string("Hello, this is a shopping list.\nMilk, bread\n"),
          std::string("<html><body>no</body></html>"), std::string("<game id=\"1\"><broken>")}) {
        try {
            HandHistoryParser parser(text);
            ADD_FAILURE() << "read: " << text;
        } catch (const HandHistoryParser::ParseError& error) {
            EXPECT_FALSE(error.reason.empty()) << text;
        }
    }
}

TEST(HandHistoryBadInput, TenMegabytesOfJunkAreAnswered) {
    std::string junk;
    junk.reserve(10u * 1024 * 1024);
    unsigned state = 12345;
    while (junk.size() < 10u * 1024 * 1024) {
        state = state * 1103515245u + 12345u;
        const char c = static_cast<char>((state >> 16) & 0xFF);
        junk.push_back(c == '\0' ? ' ' : c);
    }
    EXPECT_THROW(HandHistoryParser{junk}, HandHistoryParser::ParseError);
    EXPECT_THROW(HandHistoryParser{"Seat 1: A ($1)\n" + junk}, HandHistoryParser::ParseError);
    // Every piece between blank lines of it is answered as well.
    const std::vector<HandHistoryText::Piece> pieces =
        HandHistoryText::splitHands(HandHistoryText::decode(junk));
    EXPECT_FALSE(pieces.empty());
}
