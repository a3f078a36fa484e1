#include "handhistory/HandHistoryParser.h"

#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Stacks = HandHistoryRecord::Stacks;

// A cash hand in the canonical dialect, dollars, hero Bob, played to the river.
const std::string head = "PokerStars Game #1:  Hold'em No Limit ($1/$2 USD) - 2020/01/01\n"
                         "Table 'T' 6-max Seat #3 is the button\n"
                         "Seat 1: Ann ($200 in chips)\n"
                         "Seat 3: Bob ($150.50 in chips)\n"
                         "Seat 5: Cy ($80 in chips)\n"
                         "Cy: posts small blind $1\n"
                         "Ann: posts big blind $2\n";
const std::string preflop = "*** HOLE CARDS ***\n"
                            "Dealt to Bob [2c Ah]\n"
                            "Bob: raises $4 to $6\n"
                            "Cy: calls $5\n"
                            "Ann: folds\n";
const std::string flop = "*** FLOP *** [Qs 7d 2h]\n"
                         "Cy: checks\n"
                         "Bob: bets $10\n"
                         "Cy: raises $15 to $25\n"
                         "Bob: calls $15\n";
const std::string turn = "*** TURN *** [Qs 7d 2h] [Kc]\n"
                         "Cy: bets $49 and is all-in\n"
                         "Bob: calls $49\n";
const std::string river = "*** RIVER *** [Qs 7d 2h Kc] [3s]\n"
                          "*** SHOW DOWN ***\n"
                          "Cy: shows [Kd Qd] (two pair, Kings and Queens)\n"
                          "Bob: shows [2c Ah] (a pair of Deuces)\n"
                          "Cy collected $162 from pot\n";
const std::string summary = "*** SUMMARY ***\n"
                            "Total pot $162 | Rake $0\n"
                            "Board [Qs 7d 2h Kc 3s]\n"
                            "Seat 1: Ann (big blind) folded before Flop\n";
const std::string cashHand = head + preflop + flop + turn + river + summary;

struct Expected {
    const char* player;
    const char* verb;
    float amount;
    const char* blind = "";
};

void expectActions(const std::vector<HandHistoryAction>& actions,
                   const std::vector<Expected>& expected) {
    ASSERT_EQ(actions.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE("action " + std::to_string(i));
        EXPECT_EQ(actions[i].player, expected[i].player);
        EXPECT_EQ(actions[i].verb, expected[i].verb);
        EXPECT_FLOAT_EQ(actions[i].amount, expected[i].amount);
        EXPECT_EQ(actions[i].blind, expected[i].blind);
        EXPECT_TRUE(actions[i].sane);
    }
}

void expectStacks(const Stacks& stacks, const Stacks& expected) {
    ASSERT_EQ(stacks.size(), expected.size());
    for (const auto& [name, stack] : expected) {
        const auto it = stacks.find(name);
        ASSERT_NE(it, stacks.end()) << name;
        EXPECT_FLOAT_EQ(it->second, stack) << name;
    }
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

} // namespace

TEST(HandHistoryParser, ReadsACashHandWithStacksAndPotsPerStreet) {
    const HandHistoryParser parser(cashHand);
    EXPECT_EQ(parser.currency(), '$');
    EXPECT_FLOAT_EQ(parser.smallBlind(), 1.0f);
    EXPECT_FLOAT_EQ(parser.bigBlind(), 2.0f);
    ASSERT_EQ(parser.seats().size(), 3u);
    EXPECT_EQ(parser.seats()[1].name, "Bob");
    EXPECT_EQ(parser.seats()[1].seat, 3);
    // The button of the table line is not a seat line's: no positions are given.
    for (const HandHistorySeat& seat : parser.seats())
        EXPECT_EQ(seat.positionKind, 2) << seat.name;

    EXPECT_EQ(parser.hero(), "Bob");
    EXPECT_EQ(parser.holeCards(), "Ah2c");
    EXPECT_EQ(parser.flop(), "Qs7d2h");
    EXPECT_EQ(parser.turn(), "Kc");
    EXPECT_EQ(parser.river(), "3s");
    EXPECT_EQ(parser.board(), "Qs7d2hKc3s");

    expectStacks(parser.stacksAtStart(), {{"Ann", 200.0f}, {"Bob", 150.5f}, {"Cy", 80.0f}});
    expectStacks(parser.stacksPreflop(), {{"Ann", 200.0f}, {"Bob", 150.5f}, {"Cy", 80.0f}});
    expectStacks(parser.stacksFlop(), {{"Bob", 144.5f}, {"Cy", 74.0f}});
    expectStacks(parser.stacksTurn(), {{"Bob", 119.5f}, {"Cy", 49.0f}});
    expectStacks(parser.stacksRiver(), {{"Bob", 70.5f}, {"Cy", 0.0f}});
    EXPECT_FLOAT_EQ(parser.potPreflop(), 3.0f);
    EXPECT_FLOAT_EQ(parser.potFlop(), 14.0f);
    EXPECT_FLOAT_EQ(parser.potTurn(), 64.0f);
    EXPECT_FLOAT_EQ(parser.potRiver(), 162.0f);

    expectActions(parser.postActions(), {{"Cy", "post", 1.0f, "small blind"},
                                         {"Ann", "post", 2.0f, "big blind"},
                                         {"Bob", "raise", 6.0f},
                                         {"Cy", "call", 5.0f},
                                         {"Ann", "fold", 0.0f}});
    expectActions(parser.flopActions(), {{"Cy", "check", 0.0f},
                                         {"Bob", "bet", 10.0f},
                                         {"Cy", "raise", 25.0f},
                                         {"Bob", "call", 15.0f}});
    expectActions(parser.turnActions(), {{"Cy", "bet", 49.0f}, {"Bob", "call", 49.0f}});
    EXPECT_TRUE(parser.riverActions().empty()) << "show lines are no actions";
}

TEST(HandHistoryParser, WindowsLineEndsReadTheSame) {
    std::string crlf;
    for (const char c : cashHand) {
        if (c == '\n')
            crlf += '\r';
        crlf += c;
    }
    const HandHistoryParser parser(crlf);
    EXPECT_EQ(parser.hero(), "Bob");
    EXPECT_EQ(parser.holeCards(), "Ah2c");
    EXPECT_EQ(parser.board(), "Qs7d2hKc3s");
    EXPECT_EQ(parser.postActions().size(), 5u);
    EXPECT_EQ(parser.flopActions().size(), 4u);
    EXPECT_FLOAT_EQ(parser.potRiver(), 162.0f);
}

TEST(HandHistoryParser, ReadsATournamentHandInChipsWithAntes) {
    const std::string text =
        "PokerStars Hand #2: Tournament #9, $1+$0.10 USD Hold'em No Limit - Level II (15/30)\n"
        "Table '9 1' 9-max Seat #1 is the button\n"
        "Seat 1: Ann (1500 in chips)\n"
        "Seat 2: Bob (1,470 in chips)\n"
        "Seat 3: Cy (3000 in chips)\n"
        "Ann: posts the ante 5\n"
        "Bob: posts the ante 5\n"
        "Cy: posts the ante 5\n"
        "Bob: posts small blind 15\n"
        "Cy: posts big blind 30\n"
        "*** HOLE CARDS ***\n"
        "Dealt to Cy [Kc Kh]\n"
        "Ann: raises 60 to 90\n"
        "Bob: folds\n"
        "Cy: raises 210 to 300\n"
        "Ann: calls 210\n"
        "*** FLOP *** [8d 5s 2c]\n"
        "Cy: bets 400\n"
        "Ann: raises 795 to 1195 and is all-in\n"
        "Cy: calls 795\n"
        "*** TURN *** [8d 5s 2c] [Jh]\n"
        "*** RIVER *** [8d 5s 2c Jh] [4d]\n"
        "*** SHOW DOWN ***\n"
        "Ann: shows [As Ad] (a pair of Aces)\n"
        "Cy: shows [Kh Kc] (a pair of Kings)\n"
        "Ann collected 3,020 from pot\n"
        "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    EXPECT_EQ(parser.currency(), 0);
    EXPECT_FLOAT_EQ(parser.smallBlind(), 15.0f);
    EXPECT_FLOAT_EQ(parser.bigBlind(), 30.0f);
    EXPECT_EQ(parser.hero(), "Cy");
    EXPECT_EQ(parser.holeCards(), "KhKc");
    EXPECT_EQ(parser.board(), "8d5s2cJh4d");
    expectStacks(parser.stacksAtStart(), {{"Ann", 1500.0f}, {"Bob", 1470.0f}, {"Cy", 3000.0f}});
    expectStacks(parser.stacksFlop(), {{"Ann", 1195.0f}, {"Cy", 2695.0f}});
    expectStacks(parser.stacksTurn(), {{"Ann", 0.0f}, {"Cy", 1500.0f}});
    expectStacks(parser.stacksRiver(), {{"Ann", 0.0f}, {"Cy", 1500.0f}});
    EXPECT_FLOAT_EQ(parser.potPreflop(), 60.0f);
    EXPECT_FLOAT_EQ(parser.potFlop(), 630.0f);
    EXPECT_FLOAT_EQ(parser.potTurn(), 3020.0f);
    EXPECT_FLOAT_EQ(parser.potRiver(), 3020.0f);
    expectActions(parser.postActions(), {{"Ann", "post", 5.0f, "ante"},
                                         {"Bob", "post", 5.0f, "ante"},
                                         {"Cy", "post", 5.0f, "ante"},
                                         {"Bob", "post", 15.0f, "small blind"},
                                         {"Cy", "post", 30.0f, "big blind"},
                                         {"Ann", "raise", 90.0f},
                                         {"Bob", "fold", 0.0f},
                                         {"Cy", "raise", 300.0f},
                                         {"Ann", "call", 210.0f}});
    expectActions(parser.flopActions(),
                  {{"Cy", "bet", 400.0f}, {"Ann", "raise", 1195.0f}, {"Cy", "call", 795.0f}});
    EXPECT_TRUE(parser.turnActions().empty());
    EXPECT_TRUE(parser.riverActions().empty());
}

TEST(HandHistoryParser, EuroStacksFromUtf8Text) {
    const std::string utf8 = "Game ($0.25/$0.50)\n"
                             "Seat 1: Ann (\xE2\x82\xAC"
                             "67.80)\n"
                             "Seat 2: Bob (\xE2\x82\xAC"
                             "38.52)\n"
                             "Ann: posts small blind \xE2\x82\xAC"
                             "0.25\n"
                             "Bob: posts big blind \xE2\x82\xAC"
                             "0.50\n"
                             "*** HOLE CARDS ***\n"
                             "Ann: raises \xE2\x82\xAC"
                             "1 to \xE2\x82\xAC"
                             "1.50\n"
                             "Bob: folds\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(HandHistoryText::toWindows1252(utf8));
    EXPECT_EQ(parser.currency(), '\x80');
    EXPECT_FLOAT_EQ(parser.stacksAtStart().at("Ann"), 67.80f);
    expectActions(parser.postActions(), {{"Ann", "post", 0.25f, "small blind"},
                                         {"Bob", "post", 0.5f, "big blind"},
                                         {"Ann", "raise", 1.5f},
                                         {"Bob", "fold", 0.0f}});
}

// --- Stage 1: seats ------------------------------------------------------------------

TEST(HandHistoryParser, TwoSeatsMakeTheButtonTheBigBlind) {
    const std::string text = "Game ($1/$2)\n"
                             "Seat 1 is the button\n"
                             "Seat 1: Ann ($100)\n"
                             "Seat 4: Bob ($100)\n"
                             "Ann: posts small blind $1\n"
                             "Bob: posts big blind $2\n"
                             "*** HOLE CARDS ***\n"
                             "Ann: folds\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    ASSERT_EQ(parser.seats().size(), 2u);
    EXPECT_EQ(parser.seats()[0].name, "Ann");
    EXPECT_EQ(parser.seats()[0].positionKind, 1);
    EXPECT_EQ(parser.seats()[1].name, "Bob");
    EXPECT_EQ(parser.seats()[1].positionKind, 0);
}

TEST(HandHistoryParser, BlindPositionsWalkRoundTheTableFromTheButton) {
    const auto kindsFor = [](int button) {
        const std::string text = "Game ($1/$2)\n"
                                 "Seat 6: Cy ($100)\n"
                                 "Seat " +
                                 std::to_string(button) +
                                 " is the button\n"
                                 "Seat 1: Ann ($100)\n"
                                 "Total number of players : 3\n"
                                 "Seat 4: Bob ($100)\n"
                                 "Ann: posts small blind $1\n"
                                 "*** HOLE CARDS ***\n"
                                 "*** SUMMARY ***\n";
        const HandHistoryParser parser(text);
        std::vector<int> kinds;
        for (const HandHistorySeat& seat : parser.seats())
            kinds.push_back(seat.positionKind);
        return kinds;
    };
    EXPECT_EQ(kindsFor(4), (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(kindsFor(6), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(kindsFor(1), (std::vector<int>{2, 0, 1}));
    EXPECT_EQ(kindsFor(3), (std::vector<int>{2, 2, 2})) << "no seat 3: nothing assigned";
}

TEST(HandHistoryParser, SeatsAreSortedAndOtherLinesAmongThemPassedOver) {
    const std::string text = "Game ($1/$2)\n"
                             "Seat 7: Gil ($15.58)\n is sitting out\n"
                             "Seat 2: Ann ($10)\n"
                             "Ann: posts small blind $1\n"
                             "*** HOLE CARDS ***\n"
                             "*** SUMMARY ***\n"
                             "Seat 2: Ann (small blind) folded\n";
    const HandHistoryParser parser(text);
    ASSERT_EQ(parser.seats().size(), 2u);
    EXPECT_EQ(parser.seats()[0].seat, 2);
    EXPECT_EQ(parser.seats()[1].seat, 7);
    expectStacks(parser.stacksAtStart(), {{"Ann", 10.0f}, {"Gil", 15.58f}});
}

TEST(HandHistoryParser, SeatNameWithRoundBracketBreaksAtTheFirstOne) {
    const std::string tail = "Seat 2: Bob ($100)\n"
                             "Bob: posts small blind $1\n"
                             "*** HOLE CARDS ***\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser("Game ($1/$2)\nSeat 1: Joe (2) ($100)\n" + tail);
    EXPECT_EQ(parser.seats()[0].name, "Joe");
    EXPECT_FLOAT_EQ(parser.stacksAtStart().at("Joe"), 2.0f);
    EXPECT_THROW(HandHistoryParser("Game ($1/$2)\nSeat 1: Joe (the pro) ($100)\n" + tail),
                 HandHistoryParser::ParseError);
}

TEST(HandHistoryParser, BrokenOrMissingSeatLinesFail) {
    const std::string tail = "Ann: posts small blind $1\n*** HOLE CARDS ***\n*** SUMMARY ***\n";
    const char* broken[] = {
        "Seat 1: Ann $100\n",                             // no "("
        "Seat x: Ann ($100)\n",                           // no number
        "Seat 1: Ann (\n$100)\n",                         // line break inside
        "Seat 1: Ann ($)\n",                              // no number behind the sign
        "Table 'x' Seat #1 is the button\nAnn: ($100)\n", // no line begins with "Seat "
    };
    for (const char* seats : broken) {
        const std::string text = std::string("Game ($1/$2)\n") + seats + tail;
        EXPECT_THROW(HandHistoryParser{text}, HandHistoryParser::ParseError) << seats;
    }
    EXPECT_THROW(HandHistoryParser{"Game ($1/$2)\nSeat 1: Ann ("}, HandHistoryParser::ParseError);
    EXPECT_THROW(HandHistoryParser{""}, HandHistoryParser::ParseError);
    EXPECT_THROW(HandHistoryParser{"Seat"}, HandHistoryParser::ParseError);
}

// --- Stage 2: blinds and posts --------------------------------------------------------

TEST(HandHistoryParser, SmallBlindPostOverridesTheHead) {
    const HandHistoryParser both(replaced(cashHand, "($1/$2 USD)", "($5/$10 USD)"));
    EXPECT_FLOAT_EQ(both.smallBlind(), 1.0f);
    EXPECT_FLOAT_EQ(both.bigBlind(), 2.0f);
    const HandHistoryParser smallOnly(replaced(replaced(cashHand, "($1/$2 USD)", "($5/$10 USD)"),
                                               "Ann: posts big blind $2\n", ""));
    EXPECT_FLOAT_EQ(smallOnly.smallBlind(), 1.0f);
    EXPECT_FLOAT_EQ(smallOnly.bigBlind(), 10.0f);
}

TEST(HandHistoryParser, WithoutPostsTheHeadBlindsArePostedByThePositions) {
    const std::string text = "Game ($1/$2)\n"
                             "Seat 1 is the button\n"
                             "Seat 1: Ann ($100)\n"
                             "Seat 4: Bob ($50)\n"
                             "*** HOLE CARDS ***\n"
                             "Bob: raises $4 to $6\n"
                             "Ann: calls $4\n"
                             "*** FLOP *** [2c 3c 4c]\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    expectActions(parser.postActions(), {{"Bob", "post", 1.0f, "small blind"},
                                         {"Ann", "post", 2.0f, "big blind"},
                                         {"Bob", "raise", 6.0f},
                                         {"Ann", "call", 4.0f}});
    EXPECT_FLOAT_EQ(parser.potPreflop(), 3.0f);
    EXPECT_FLOAT_EQ(parser.potFlop(), 12.0f);
    expectStacks(parser.stacksFlop(), {{"Ann", 94.0f}, {"Bob", 44.0f}});
}

TEST(HandHistoryParser, BlindsFromABlindsLine) {
    const std::string text = "Game 12\n"
                             "Seat 2 is the button\n"
                             "Seat 1: Ann (100)\n"
                             "Seat 2: Bob (100)\n"
                             "Blinds-Antes(5/10 -1)\n"
                             "*** HOLE CARDS ***\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    EXPECT_FLOAT_EQ(parser.smallBlind(), 5.0f);
    EXPECT_FLOAT_EQ(parser.bigBlind(), 10.0f);
    expectActions(parser.postActions(),
                  {{"Ann", "post", 5.0f, "small blind"}, {"Bob", "post", 10.0f, "big blind"}});
}

TEST(HandHistoryParser, NoBlindsFromPostsNorHeadFails) {
    const std::string seats = "Seat 1 is the button\nSeat 1: Ann ($100)\nSeat 4: Bob ($50)\n"
                              "*** HOLE CARDS ***\n*** SUMMARY ***\n";
    EXPECT_THROW(HandHistoryParser("Game 1\n" + seats), HandHistoryParser::ParseError);
    EXPECT_THROW(HandHistoryParser("Game ($2/$1)\n" + seats), HandHistoryParser::ParseError);
    EXPECT_THROW(HandHistoryParser("Game ($0/$1)\n" + seats), HandHistoryParser::ParseError);
    EXPECT_NO_THROW(HandHistoryParser("Game ($1/$1)\n" + seats));
}

TEST(HandHistoryParser, UnreadablePostFailsTheHand) {
    EXPECT_THROW(HandHistoryParser(replaced(cashHand, "posts small blind $1", "posts small blind")),
                 HandHistoryParser::ParseError);
    EXPECT_THROW(
        HandHistoryParser(replaced(cashHand, "posts small blind $1", "posts small blind 1")),
        HandHistoryParser::ParseError)
        << "the currency sign must stand before the amount";
}

TEST(HandHistoryParser, SittingOutLinesAmongThePostsArePassedOver) {
    const HandHistoryParser parser(replaced(cashHand, "Ann: posts big blind $2\n",
                                            "Dee: posts small blind $1 is sitting out\n"
                                            "Ann: posts big blind $2\n"));
    EXPECT_EQ(parser.postActions()[1].player, "Ann");
    EXPECT_FLOAT_EQ(parser.potPreflop(), 3.0f);
}

// --- Stage 3: hole cards --------------------------------------------------------------

TEST(HandHistoryParser, HoleCardsHigherRankFirstAndPairsByTheSuitOrder) {
    const auto cardsOf = [](const std::string& dealt) {
        return HandHistoryParser(replaced(cashHand, "[2c Ah]", dealt)).holeCards();
    };
    EXPECT_EQ(cardsOf("[2c Ah]"), "Ah2c");
    EXPECT_EQ(cardsOf("[Ah 2c]"), "Ah2c");
    EXPECT_EQ(cardsOf("[ 8h, Kd ]"), "Kd8h");
    EXPECT_EQ(cardsOf("[8hKd]"), "Kd8h");
    EXPECT_EQ(cardsOf("[Jc Jh]"), "JhJc");
    EXPECT_EQ(cardsOf("[Jh Jc]"), "JhJc");
    EXPECT_EQ(cardsOf("[Js Jd]"), "JdJs");
    EXPECT_EQ(cardsOf("[Jd Js]"), "JdJs");
    EXPECT_EQ(cardsOf("[Ah Kd Qc]"), "AhKd") << "reduced to two cards";
    EXPECT_EQ(cardsOf("[HA, S10]"), "AhTs");
}

TEST(HandHistoryParser, UnknownHoleCardRefusesTheHand) {
    for (const char* dealt : {"[Xx 9s]", "[9s Xx]", "[Xx Xx]"}) {
        try {
            HandHistoryParser(replaced(cashHand, "[2c Ah]", dealt));
            ADD_FAILURE() << dealt << " read";
        } catch (const HandHistoryParser::ParseError& error) {
            EXPECT_TRUE(error.refusesHand) << dealt;
            EXPECT_NE(error.reason.find("unknown card"), std::string::npos) << error.reason;
        }
    }
}

TEST(HandHistoryParser, ShortOrUnreadableHoleCardsFail) {
    for (const char* dealt : {"[Ah]", "[Ah K]", "[10h Kd]", "[Ah Kz]"})
        EXPECT_THROW(HandHistoryParser(replaced(cashHand, "[2c Ah]", dealt)),
                     HandHistoryParser::ParseError)
            << dealt;
}

TEST(HandHistoryParser, FirstDealtToLineWithCardsWins) {
    const HandHistoryParser parser(replaced(cashHand, "Dealt to Bob [2c Ah]\n",
                                            "Dealt to Ann\n"
                                            "Dealt to Bob [2c Ah]\n"
                                            "Dealt to Cy [Kd Qd]\n"));
    EXPECT_EQ(parser.hero(), "Bob");
    EXPECT_EQ(parser.holeCards(), "Ah2c");
    EXPECT_EQ(parser.postActions().size(), 5u);
}

TEST(HandHistoryParser, WithoutDealtToHeroStaysEmptyAndAllStreetsParse) {
    const HandHistoryParser parser(replaced(cashHand, "Dealt to Bob [2c Ah]\n", ""));
    EXPECT_EQ(parser.hero(), "");
    EXPECT_EQ(parser.holeCards(), "");
    EXPECT_EQ(parser.postActions().size(), 5u);
    EXPECT_EQ(parser.flopActions().size(), 4u);
    EXPECT_EQ(parser.turnActions().size(), 2u);
    EXPECT_EQ(parser.board(), "Qs7d2hKc3s");
    EXPECT_FLOAT_EQ(parser.potRiver(), 162.0f);
}

// --- Stage 4: streets -----------------------------------------------------------------

TEST(HandHistoryParser, TextStoppingInTheRiverStandsAsRead) {
    const std::string cut =
        head + preflop + flop + turn + "*** RIVER *** [Qs 7d 2h Kc] [3s]\nBob: checks\nCy: be";
    const HandHistoryParser parser(cut);
    EXPECT_EQ(parser.river(), "3s");
    EXPECT_EQ(parser.board(), "Qs7d2hKc3s");
    expectActions(parser.riverActions(), {{"Bob", "check", 0.0f}});
    EXPECT_EQ(parser.turnActions().size(), 2u);
    EXPECT_FLOAT_EQ(parser.potRiver(), 162.0f);
}

TEST(HandHistoryParser, TextStoppingBeforeTheStreetsStandsToo) {
    const HandHistoryParser parser(head);
    EXPECT_EQ(parser.postActions().size(), 2u);
    EXPECT_EQ(parser.hero(), "");
    EXPECT_TRUE(parser.flop().empty());
}

TEST(HandHistoryParser, BetWithoutAmountInAStreetIsLeftOut) {
    const HandHistoryParser parser(
        replaced(cashHand, "Bob: bets $10\n", "Bob: bets\nBob: bets $\nBob: bets $10\n"));
    expectActions(parser.flopActions(), {{"Cy", "check", 0.0f},
                                         {"Bob", "bet", 10.0f},
                                         {"Cy", "raise", 25.0f},
                                         {"Bob", "call", 15.0f}});
    EXPECT_FLOAT_EQ(parser.potTurn(), 64.0f);
}

TEST(HandHistoryParser, HandEndingPreflopHasNoBoard) {
    const HandHistoryParser parser(head +
                                   "*** HOLE CARDS ***\nBob: raises $4 to $6\n"
                                   "Cy: folds\nAnn: folds\n"
                                   "Uncalled bet ($4) returned to Bob\n" +
                                   summary);
    EXPECT_EQ(parser.flop(), "");
    EXPECT_EQ(parser.turn(), "");
    EXPECT_EQ(parser.river(), "");
    EXPECT_EQ(parser.board(), "");
    EXPECT_TRUE(parser.stacksFlop().empty());
    EXPECT_FLOAT_EQ(parser.potFlop(), 0.0f);
    EXPECT_EQ(parser.postActions().size(), 5u);
}

TEST(HandHistoryParser, RaiseToTakesTheSecondNumberAndAllinIsARaise) {
    const std::string text = "Game 5\n"
                             "Seat 1: Ann (100)\n"
                             "Seat 2: Bob (100)\n"
                             "Ann: posts small blind 1\n"
                             "Bob: posts big blind 2\n"
                             "*** HOLE CARDS ***\n"
                             "Ann: raises 2 to 6\n"
                             "Bob: allin 6\n"
                             "Ann: Raises to 20\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    expectActions(parser.postActions(), {{"Ann", "post", 1.0f, "small blind"},
                                         {"Bob", "post", 2.0f, "big blind"},
                                         {"Ann", "raise", 6.0f},
                                         {"Bob", "raise", 6.0f},
                                         {"Ann", "raise", 20.0f}});
}

TEST(HandHistoryParser, CountedFoldsFoldTheNextSeatsInTurn) {
    const std::string text = "Game ($1/$2)\n"
                             "Seat 1: A ($100)\nSeat 2: B ($100)\nSeat 3: C ($100)\n"
                             "Seat 4: D ($100)\nSeat 5: E ($100)\n"
                             "A: posts small blind $1\n"
                             "B: posts big blind $2\n"
                             "*** HOLE CARDS ***\n"
                             "2 folds\n"
                             "E: raises $4 to $6\n"
                             "A: folds\n"
                             "B: calls $4\n"
                             "*** FLOP *** [2c 3d 4h]\n"
                             "B: checks\n"
                             "E: checks\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    expectActions(parser.postActions(), {{"A", "post", 1.0f, "small blind"},
                                         {"B", "post", 2.0f, "big blind"},
                                         {"C", "fold", 0.0f},
                                         {"D", "fold", 0.0f},
                                         {"E", "raise", 6.0f},
                                         {"A", "fold", 0.0f},
                                         {"B", "call", 4.0f}});
    expectStacks(parser.stacksFlop(), {{"B", 94.0f}, {"E", 94.0f}});
    EXPECT_FLOAT_EQ(parser.potFlop(), 13.0f);
}

TEST(HandHistoryParser, FoldLineFoldsTheSeatAfterTheLastActor) {
    const std::string text = "Game ($1/$2)\nSeat 1 is the button\n"
                             "Seat 1: A ($100)\nSeat 2: B ($100)\n"
                             "*** HOLE CARDS ***\nfold\nB: checks\n*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    // The posts are made up from the head; the big blind (the button, heads-up) is the
    // last to have acted.
    expectActions(parser.postActions(), {{"B", "post", 1.0f, "small blind"},
                                         {"A", "post", 2.0f, "big blind"},
                                         {"B", "fold", 0.0f},
                                         {"B", "check", 0.0f}});
}

TEST(HandHistoryParser, FoldLineWithoutAnActorBeforeIsNoAction) {
    // No button: nobody posts, not even made up, and nobody has acted.
    const std::string text = "Game ($1/$2)\nSeat 1: A ($100)\nSeat 2: B ($100)\n"
                             "*** HOLE CARDS ***\nfold\nB: checks\n*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    expectActions(parser.postActions(), {{"B", "check", 0.0f}});
    EXPECT_FLOAT_EQ(parser.potPreflop(), 0.0f);
}

TEST(HandHistoryParser, BoardTakesOnlyStreetsWithTheirNumberOfCards) {
    const HandHistoryParser parser(
        replaced(cashHand, "*** FLOP *** [Qs 7d 2h]", "*** FLOP *** [Qs 7d]"));
    EXPECT_EQ(parser.flop(), "Qs7d");
    EXPECT_EQ(parser.turn(), "Kc");
    EXPECT_EQ(parser.board(), "Kc3s");
}

TEST(HandHistoryParser, ActionsOfOtherVerbsAreNotKept) {
    const HandHistoryParser parser(
        replaced(cashHand, "Cy: checks\n", "Cy: is sitting out\nCy: said, \"hi\"\nCy: checks\n"));
    EXPECT_EQ(parser.flopActions().size(), 4u);
    EXPECT_EQ(parser.flopActions()[0].verb, "check");
}

// --- Dialects end to end --------------------------------------------------------------

TEST(HandHistoryParser, PositionLineDialect) {
    const std::string text = "Game#5 NL $0.50/$1\n"
                             "SB: $100\n"
                             "BB: $150\n"
                             "Hero (BTN): $200\n"
                             "Preflop: Hero is BTN with Ah Kd\n"
                             "Hero: raises to $3\n"
                             "SB: folds\n"
                             "BB: calls $2\n"
                             "Flop: ($6.50) 2c 7d Qs (2 players)\n"
                             "BB: checks\n"
                             "Hero: bets $4\n"
                             "BB: folds\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    ASSERT_EQ(parser.seats().size(), 3u);
    EXPECT_EQ(parser.seats()[2].name, "Hero");
    EXPECT_EQ(parser.seats()[2].seat, 10);
    EXPECT_EQ(parser.seats()[0].positionKind, 0);
    EXPECT_EQ(parser.seats()[1].positionKind, 1);
    EXPECT_EQ(parser.hero(), "Hero");
    EXPECT_EQ(parser.holeCards(), "AhKd");
    EXPECT_EQ(parser.flop(), "2c7dQs");
    expectActions(parser.postActions(), {{"SB", "post", 0.5f, "small blind"},
                                         {"BB", "post", 1.0f, "big blind"},
                                         {"Hero", "raise", 3.0f},
                                         {"SB", "fold", 0.0f},
                                         {"BB", "call", 2.0f}});
    EXPECT_FLOAT_EQ(parser.potFlop(), 6.5f);
    expectStacks(parser.stacksFlop(), {{"BB", 147.0f}, {"Hero", 197.0f}});
    expectActions(parser.flopActions(),
                  {{"BB", "check", 0.0f}, {"Hero", "bet", 4.0f}, {"BB", "fold", 0.0f}});
}

TEST(HandHistoryParser, PlayerListDialectBehindGameNumber) {
    const std::string text = "Game#77 NL $1/$2\n"
                             "Ann ($100)\n"
                             "Bob ($200)\n"
                             "Ann: posts small blind $1\n"
                             "Bob: posts big blind $2\n"
                             "Ann: raises to $6\n"
                             "Bob: calls $4\n"
                             "Flop: ($12) 5c 6c 7c\n"
                             "Bob: checks\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    ASSERT_EQ(parser.seats().size(), 2u);
    EXPECT_EQ(parser.seats()[0].name, "Ann");
    EXPECT_EQ(parser.seats()[1].seat, 2);
    expectActions(parser.postActions(), {{"Ann", "post", 1.0f, "small blind"},
                                         {"Bob", "post", 2.0f, "big blind"},
                                         {"Ann", "raise", 6.0f},
                                         {"Bob", "call", 4.0f}});
    EXPECT_EQ(parser.flop(), "5c6c7c");
    EXPECT_FLOAT_EQ(parser.potFlop(), 12.0f);
}

TEST(HandHistoryParser, SittingInSeatDialect) {
    const std::string text = "Hand 1 $1/$2\n"
                             "Ann sitting in seat 2 with $100\n"
                             "Bob sitting in seat 5 with $80 [button]\n"
                             "Ann: posts small blind $1\n"
                             "Bob: posts big blind $2\n"
                             "*** HOLE CARDS ***\n"
                             "Ann: calls $1\n"
                             "Bob: checks\n"
                             "*** SUMMARY ***\n";
    const HandHistoryParser parser(text);
    expectStacks(parser.stacksAtStart(), {{"Ann", 100.0f}, {"Bob", 80.0f}});
    EXPECT_EQ(parser.seats()[1].seat, 5);
    expectActions(parser.postActions(), {{"Ann", "post", 1.0f, "small blind"},
                                         {"Bob", "post", 2.0f, "big blind"},
                                         {"Ann", "call", 1.0f},
                                         {"Bob", "check", 0.0f}});
}
