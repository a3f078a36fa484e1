// The public hand histories of the shared folder: which dialects the import reads, and for
// each hand it reads, whether the record says what the text says. The expected values come
// from the raw text by regular expressions of this test (not through the normalisation),
// and for one hand of each readable site from reading the hand by hand.

#include "HandHistorySamples.h"

#include "evfe/Line.h"
#include "evfe/LineList.h"
#include "handhistory/HandHistoryLines.h"
#include "handhistory/HandHistoryNormalisation.h"
#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Stacks = HandHistoryRecord::Stacks;

// Which files are read. The hands of the two others are Omaha, which the import refuses
// with that reason.
struct FileExpectation {
    const char* prefix;
    bool parses;
    const char* reason;
};

const char* const omaha = "the game is Omaha, not No Limit Hold'em";

const FileExpectation fileExpectations[] = {
    {"ipoker-multiplehands-", false, omaha},
    {"winningpoker-handaction-", false, omaha},
    {"pokerstars-", true, ""},
    {"fulltilt-", true, ""},
    {"888-", true, ""},
    {"pacific-", true, ""},
    {"partypoker-", true, ""},
    {"ongame-", true, ""},
    {"winamax-", true, ""},
    {"winningpoker-", true, ""},
    {"ipoker-", true, ""},
    {"merge-", true, ""},
    {"microgaming-", true, ""},
};

const FileExpectation* expectationFor(const std::string& file) {
    for (const FileExpectation& e : fileExpectations)
        if (file.compare(0, std::string(e.prefix).size(), e.prefix) == 0)
            return &e;
    return nullptr;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (lines.empty() && line.compare(0, 3, "\xEF\xBB\xBF") == 0)
            line.erase(0, 3);
        lines.push_back(line);
    }
    return lines;
}

float amountOf(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    return std::stof(text);
}

std::string compactCards(const std::string& text) {
    std::string out;
    for (const char c : text)
        if (c != ' ' && c != ',')
            out.push_back(c);
    return out;
}

struct Oracle {
    std::string hero;
    std::set<std::string> holeCards;
    float smallBlind = 0.0f;
    float bigBlind = 0.0f;
    Stacks stacks;
    std::string flop, turn, river;
    std::vector<HandHistoryAction> actions[4];
    float pots[4] = {0, 0, 0, 0};
    Stacks streetStacks[4];
};

// What the text says, read line by line with regular expressions.
Oracle oracleOf(const std::string& text) {
    static const std::regex seatLine(R"(^Seat (\d+): (.*?) \(\$?([0-9][0-9,.]*))");
    static const std::regex dealt(R"(^Dealt to (.+?) \[(\S\S) (\S\S)\])");
    static const std::regex action(
        R"(^(.+?): (posts small blind|posts big blind|posts the ante|folds|checks|calls|bets|raises)(?: \$?([0-9][0-9.,]*))?(?: to \$?([0-9][0-9.,]*))?)");
    static const std::regex head(R"(\$([0-9.]+)/\$([0-9.]+))");
    static const std::regex lastBracket(R"(\[([^\[\]]*)\][^\[]*$)");
    static const std::map<std::string, std::pair<const char*, const char*>> verbs = {
        {"posts small blind", {"post", "small blind"}},
        {"posts big blind", {"post", "big blind"}},
        {"posts the ante", {"post", "ante"}},
        {"folds", {"fold", ""}},
        {"checks", {"check", ""}},
        {"calls", {"call", ""}},
        {"bets", {"bet", ""}},
        {"raises", {"raise", ""}},
    };

    Oracle o;
    const std::vector<std::string> lines = linesOf(text);
    std::smatch m;
    if (!lines.empty() && std::regex_search(lines[0], m, head)) {
        o.smallBlind = std::stof(m[1]);
        o.bigBlind = std::stof(m[2]);
    }
    int street = -1; // before the posts end
    bool seatsDone = false;
    for (const std::string& line : lines) {
        if (line.find("*** SUMMARY ***") != std::string::npos)
            break;
        if (!seatsDone && std::regex_search(line, m, seatLine)) {
            o.stacks[m[2]] = amountOf(m[3]);
            continue;
        }
        if (line.find("posts") != std::string::npos ||
            line.find("*** HOLE CARDS ***") != std::string::npos)
            seatsDone = true;
        if (line.find("*** HOLE CARDS ***") != std::string::npos) {
            street = 0;
            continue;
        }
        if (std::regex_search(line, m, dealt) && o.hero.empty()) {
            o.hero = m[1];
            o.holeCards = {m[2], m[3]};
            continue;
        }
        for (const auto& [marker, index] :
             {std::make_pair("*** FLOP ***", 1), std::make_pair("*** TURN ***", 2),
              std::make_pair("*** RIVER ***", 3)}) {
            if (line.compare(0, std::string(marker).size(), marker) == 0) {
                street = index;
                std::smatch b;
                if (std::regex_search(line, b, lastBracket))
                    (index == 1 ? o.flop : index == 2 ? o.turn : o.river) = compactCards(b[1]);
            }
        }
        if (std::regex_search(line, m, action)) {
            const auto& [verb, blind] = verbs.at(m[2]);
            HandHistoryAction a;
            a.player = m[1];
            a.verb = verb;
            a.blind = blind;
            if (m[4].matched)
                a.amount = amountOf(m[4]);
            else if (m[3].matched)
                a.amount = amountOf(m[3]);
            o.actions[street < 0 ? 0 : street].push_back(a);
            if (a.verb == "post" && a.blind == "small blind")
                o.smallBlind = a.amount;
        }
    }
    for (const HandHistoryAction& a : o.actions[0])
        if (a.verb == "post" && a.blind == "big blind") {
            o.bigBlind = a.amount;
            break;
        }

    // Money: posts first, then each street; a raise puts in what it goes to beyond what the
    // player has in on the street already.
    Stacks stacks = o.stacks;
    o.streetStacks[0] = o.stacks;
    float pot = 0.0f;
    std::map<std::string, float> in;
    for (const HandHistoryAction& a : o.actions[0])
        if (a.verb == "post") {
            pot += a.amount;
            stacks[a.player] -= a.amount;
            if (a.blind != "ante")
                in[a.player] += a.amount;
        }
    o.pots[0] = pot;
    for (int s = 0; s < 4; ++s) {
        if (s > 0) {
            if (o.actions[s].empty() && (s == 1 ? o.flop : s == 2 ? o.turn : o.river).empty())
                break;
            in.clear();
            o.pots[s] = pot;
            o.streetStacks[s] = stacks;
        }
        for (const HandHistoryAction& a : o.actions[s]) {
            if (a.verb == "fold") {
                stacks.erase(a.player);
            } else if (a.verb == "call") {
                in[a.player] += a.amount;
                stacks[a.player] -= a.amount;
                pot += a.amount;
            } else if (a.verb == "bet" || a.verb == "raise") {
                const float more = a.amount - in[a.player];
                in[a.player] = a.amount;
                stacks[a.player] -= more;
                pot += more;
            }
        }
    }
    return o;
}

void expectSameStacks(const Stacks& actual, const Stacks& expected, const char* what) {
    SCOPED_TRACE(what);
    ASSERT_EQ(actual.size(), expected.size());
    for (const auto& [name, stack] : expected) {
        const auto it = actual.find(name);
        ASSERT_NE(it, actual.end()) << name;
        EXPECT_NEAR(it->second, stack, 0.005f) << name;
    }
}

void expectSameActions(const std::vector<HandHistoryAction>& actual,
                       const std::vector<HandHistoryAction>& expected, const char* street) {
    SCOPED_TRACE(street);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(actual[i].player, expected[i].player) << i;
        EXPECT_EQ(actual[i].verb, expected[i].verb) << i;
        EXPECT_EQ(actual[i].blind, expected[i].blind) << i;
        EXPECT_NEAR(actual[i].amount, expected[i].amount, 0.001f) << i;
    }
}

void expectMatchesText(const HandHistoryParser& parser, const std::string& text) {
    const Oracle o = oracleOf(text);
    EXPECT_EQ(parser.hero(), o.hero);
    if (o.hero.empty()) {
        EXPECT_EQ(parser.holeCards(), "");
    } else {
        ASSERT_EQ(parser.holeCards().size(), 4u);
        EXPECT_EQ((std::set<std::string>{parser.holeCards().substr(0, 2),
                                         parser.holeCards().substr(2, 2)}),
                  o.holeCards);
    }
    EXPECT_FLOAT_EQ(parser.smallBlind(), o.smallBlind);
    EXPECT_FLOAT_EQ(parser.bigBlind(), o.bigBlind);
    expectSameStacks(parser.stacksAtStart(), o.stacks, "stacks at start");
    EXPECT_EQ(parser.seats().size(), o.stacks.size());
    EXPECT_EQ(parser.flop(), o.flop);
    EXPECT_EQ(parser.turn(), o.turn);
    EXPECT_EQ(parser.river(), o.river);
    EXPECT_EQ(parser.board(), o.flop + o.turn + o.river);
    expectSameActions(parser.postActions(), o.actions[0], "preflop");
    expectSameActions(parser.flopActions(), o.actions[1], "flop");
    expectSameActions(parser.turnActions(), o.actions[2], "turn");
    expectSameActions(parser.riverActions(), o.actions[3], "river");
    EXPECT_NEAR(parser.potPreflop(), o.pots[0], 0.005f);
    EXPECT_NEAR(parser.potFlop(), o.pots[1], 0.005f);
    EXPECT_NEAR(parser.potTurn(), o.pots[2], 0.005f);
    EXPECT_NEAR(parser.potRiver(), o.pots[3], 0.005f);
    expectSameStacks(parser.stacksPreflop(), o.streetStacks[0], "preflop stacks");
    expectSameStacks(parser.stacksFlop(), o.streetStacks[1], "flop stacks");
    expectSameStacks(parser.stacksTurn(), o.streetStacks[2], "turn stacks");
    expectSameStacks(parser.stacksRiver(), o.streetStacks[3], "river stacks");
}

HandHistoryParser onlyHandOf(const std::string& file, int index = 0) {
    const std::vector<SampleHand> hands = sampleHandsOf(file);
    if (static_cast<int>(hands.size()) <= index)
        throw std::runtime_error("missing sample hand " + file);
    return parseSample(hands[static_cast<std::size_t>(index)].text);
}

} // namespace

TEST(RealHandHistories, AtLeast98PercentOfTheHandsAreReadAndTheRestRefusedWithTheReason) {
    const std::vector<SampleHand> hands = loadSampleHands();
    ASSERT_EQ(hands.size(), 113u);
    int parsed = 0;
    std::map<std::string, int> parsedPerFile;
    for (const SampleHand& hand : hands) {
        SCOPED_TRACE(hand.file + " hand " + std::to_string(hand.index + 1));
        const FileExpectation* expectation = expectationFor(hand.file);
        ASSERT_NE(expectation, nullptr) << "a new file: list what it is expected to give";
        try {
            const HandHistoryParser parser = parseSample(hand.text);
            EXPECT_TRUE(expectation->parses) << "read, but expected: " << expectation->reason;
            // The canonical dialect is checked line by line against the text itself.
            if (hand.file.rfind("pokerstars-", 0) == 0)
                expectMatchesText(parser, hand.text);
            EXPECT_GT(parser.bigBlind(), 0.0f);
            EXPECT_GE(parser.seats().size(), 2u);
            ++parsed;
            ++parsedPerFile[hand.file];
        } catch (const HandHistoryParser::ParseError& error) {
            EXPECT_FALSE(expectation->parses) << "not read: " << error.reason;
            EXPECT_EQ(error.reason, expectation->reason);
            EXPECT_TRUE(error.refusesHand);
        }
    }
    EXPECT_EQ(parsed, 111);
    EXPECT_GE(parsed * 100, 98 * static_cast<int>(hands.size()));
    for (const char* file :
         {"pokerstars-multiplehands-10multiplehands.txt",
          "fulltilt-multiplehands-10multiplehands.txt",
          "partypoker-multiplehands-10multiplehands.txt",
          "ongame-multiplehands-10multiplehands.txt", "winamax-multiplehands-10multiplehands.txt",
          "winningpoker-multiplehands-10multiplehands.txt",
          "merge-multiplehands-10multiplehands.txt",
          "microgaming-multiplehands-10multiplehands.txt"})
        EXPECT_EQ(parsedPerFile[file], 10) << file;
    EXPECT_EQ(parsedPerFile["888-tournament-many.txt"], 12);
}

TEST(RealHandHistories, SessionOfSeveralXmlGamesIsListedGameByGame) {
    // Ten Omaha games in one session: each listed, each refused for its game.
    const std::vector<SampleHand> session =
        sampleHandsOf("ipoker-multiplehands-10multiplehands.txt");
    ASSERT_EQ(session.size(), 1u);
    const std::vector<HandHistoryText::Piece> games =
        HandHistoryText::splitHands(HandHistoryText::decode(session[0].text));
    ASSERT_EQ(games.size(), 10u);
    for (const HandHistoryText::Piece& game : games) {
        try {
            HandHistoryParser parser(game.text);
            ADD_FAILURE() << "an Omaha game read";
        } catch (const HandHistoryParser::ParseError& error) {
            EXPECT_EQ(error.reason, omaha);
        }
    }
    // The ten games of the other XML dialect stand between blank lines already.
    const std::vector<SampleHand> merge = sampleHandsOf("merge-multiplehands-10multiplehands.txt");
    std::string all;
    for (const SampleHand& hand : merge)
        all += hand.text;
    EXPECT_EQ(HandHistoryText::splitHands(HandHistoryText::decode(all)).size(), 10u);
}

TEST(RealHandHistories, PokerStarsCashHandByHand) {
    const HandHistoryParser p = onlyHandOf("pokerstars-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 5.0f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 10.0f);
    EXPECT_EQ(p.hero(), "");
    EXPECT_EQ(p.board(), "5c7c7dJdJc");
    ASSERT_EQ(p.seats().size(), 9u);
    EXPECT_EQ(p.seats()[6].name, "EASSA");
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("redskruf7"), 1151.30f);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("postler812"), 620.40f);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("EASSA"), 719.36f);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("jimmyhoo"), 1693.92f);
    // 5 + 10; EASSA raises to 30, jimmyhoo calls 20 more; flop 50, raise to 100, call 50;
    // turn 150 and 150: the summary's "Total pot $565".
    EXPECT_FLOAT_EQ(p.potPreflop(), 15.0f);
    EXPECT_FLOAT_EQ(p.potFlop(), 65.0f);
    EXPECT_FLOAT_EQ(p.potTurn(), 265.0f);
    EXPECT_FLOAT_EQ(p.potRiver(), 565.0f);
    EXPECT_EQ(p.stacksFlop().size(), 2u);
    EXPECT_NEAR(p.stacksFlop().at("EASSA"), 689.36f, 0.001f);
    EXPECT_NEAR(p.stacksFlop().at("jimmyhoo"), 1663.92f, 0.001f);
    EXPECT_NEAR(p.stacksTurn().at("EASSA"), 589.36f, 0.001f);
    EXPECT_NEAR(p.stacksTurn().at("jimmyhoo"), 1563.92f, 0.001f);
    EXPECT_NEAR(p.stacksRiver().at("EASSA"), 439.36f, 0.001f);
    EXPECT_NEAR(p.stacksRiver().at("jimmyhoo"), 1413.92f, 0.001f);
    ASSERT_EQ(p.postActions().size(), 11u);
    EXPECT_EQ(p.postActions()[2].player, "EASSA");
    EXPECT_EQ(p.postActions()[2].verb, "raise");
    EXPECT_FLOAT_EQ(p.postActions()[2].amount, 30.0f);
    EXPECT_EQ(p.postActions()[10].verb, "call");
    EXPECT_FLOAT_EQ(p.postActions()[10].amount, 20.0f);
    ASSERT_EQ(p.flopActions().size(), 4u);
    EXPECT_FLOAT_EQ(p.flopActions()[2].amount, 100.0f);
    ASSERT_EQ(p.riverActions().size(), 2u);
    EXPECT_EQ(p.riverActions()[1].verb, "check");
}

TEST(RealHandHistories, PokerStarsHandWithAntesByHand) {
    const HandHistoryParser p = onlyHandOf("pokerstars-handaction-allinhandwithshowdown.txt");
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.05f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.10f);
    // Five antes of 0.02 and the blinds; matze1987 raises to 0.30, numbush (in for 0.05)
    // to 1.30, matze1987 calls 1; flop 2, raise to 10.94 all-in, call 8.94.
    EXPECT_NEAR(p.potPreflop(), 0.25f, 1e-5f);
    EXPECT_NEAR(p.potFlop(), 2.80f, 1e-5f);
    EXPECT_NEAR(p.potTurn(), 24.68f, 1e-4f);
    EXPECT_NEAR(p.potRiver(), 24.68f, 1e-4f);
    EXPECT_NEAR(p.stacksFlop().at("matze1987"), 10.94f, 1e-4f);
    EXPECT_NEAR(p.stacksFlop().at("numbush"), 37.42f, 1e-4f);
    EXPECT_NEAR(p.stacksTurn().at("matze1987"), 0.0f, 1e-4f);
    EXPECT_NEAR(p.stacksTurn().at("numbush"), 26.48f, 1e-4f);
    EXPECT_EQ(p.board(), "5c4c4hQsKc");
    EXPECT_EQ(p.postActions()[2].blind, "ante");
    EXPECT_TRUE(p.turnActions().empty());
}

// --- One hand of every other site, every field read from the file by hand ---------------

namespace {

std::string twoDecimals(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", static_cast<double>(value));
    return text;
}

std::string seatsText(const HandHistoryParser& p) {
    std::string out;
    for (const HandHistorySeat& seat : p.seats())
        out += std::to_string(seat.seat) + " " + seat.name + " " +
               twoDecimals(p.stacksAtStart().at(seat.name)) + "\n";
    return out;
}

HandHistoryParser readFirstHand(const char* file) {
    const std::vector<SampleHand> hands = sampleHandsOf(file);
    if (hands.empty())
        throw std::runtime_error(std::string("missing ") + file);
    return parseSample(hands[0].text);
}

} // namespace

TEST(RealHandHistories, FullTiltByHand) {
    const HandHistoryParser p = readFirstHand("fulltilt-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.05f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.10f);
    EXPECT_EQ(p.hero(), "");
    EXPECT_EQ(seatsText(p), "1 burjennio 30.06\n2 Haklot 17.32\n3 14grant 10.15\n"
                            "4 Caribou0 9.78\n5 Corvus81 10.00\n6 MUFTI76 16.67\n"
                            "7 luka-poker 15.58\n8 ilya1681 10.00\n9 OMGStoneAiken 35.75\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "ilya1681 post small blind 0.05\nOMGStoneAiken post big blind 0.10\n"
              "burjennio raise 0.40\nHaklot fold\n14grant call 0.40\nCaribou0 fold\n"
              "Corvus81 fold\nMUFTI76 fold\nilya1681 fold\nOMGStoneAiken fold\n");
    EXPECT_EQ(actionsText(p.flopActions()), "burjennio bet 0.80\n14grant call 0.80\n");
    EXPECT_EQ(actionsText(p.turnActions()),
              "burjennio check\n14grant bet 1.70\nburjennio call 1.70\n");
    EXPECT_EQ(actionsText(p.riverActions()), "burjennio check\n14grant check\n");
    EXPECT_EQ(p.board(), "4hJc3c6h2h");
    // The text's own "(Total Pot: $0.95)", "$2.55", "$5.95".
    EXPECT_NEAR(p.potFlop(), 0.95f, 1e-5f);
    EXPECT_NEAR(p.potTurn(), 2.55f, 1e-5f);
    EXPECT_NEAR(p.potRiver(), 5.95f, 1e-5f);
}

TEST(RealHandHistories, PartyPokerByHand) {
    const HandHistoryParser p = readFirstHand("partypoker-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.05f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.10f);
    EXPECT_EQ(p.hero(), "");
    EXPECT_EQ(seatsText(p), "1 poket Ass 8.54\n5 stal1969 11.00\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "poket Ass post small blind 0.05\nstal1969 post big blind 0.10\n"
              "poket Ass call 0.05\nstal1969 check\n");
    for (const auto* street : {&p.flopActions(), &p.turnActions(), &p.riverActions()})
        EXPECT_EQ(actionsText(*street), "stal1969 check\npoket Ass check\n");
    EXPECT_EQ(p.board(), "Ah3s4s9dTc");
    EXPECT_NEAR(p.potRiver(), 0.20f, 1e-5f);
}

TEST(RealHandHistories, PacificByHandAndItsLines) {
    const HandHistoryParser p = readFirstHand("pacific-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.5f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 1.0f);
    EXPECT_EQ(seatsText(p), "2 ManakaReg 128.38\n6 Akisto 267.90\n");
    // "raises [$2.50]" adds to the small blind: a raise to 3.
    EXPECT_EQ(actionsText(p.postActions()),
              "Akisto post small blind 0.50\nManakaReg post big blind 1.00\n"
              "Akisto raise 3.00\nManakaReg call 2.00\n");
    EXPECT_EQ(actionsText(p.flopActions()), "ManakaReg check\nAkisto check\n");
    EXPECT_EQ(actionsText(p.riverActions()), "ManakaReg bet 3.00\nAkisto call 3.00\n");
    EXPECT_EQ(p.board(), "6dJsKs3dJc");
    EXPECT_NEAR(p.potRiver(), 6.0f, 1e-5f);

    HandHistoryLines builder(p.record());
    LineList lines;
    builder.preflopLines(lines);
    EXPECT_EQ(builder.hero(), "Akisto");
    builder.flopLines(lines);
    builder.riverLines(lines);
    builder.turnLines(lines);
    ASSERT_EQ(lines.size(), 6u);
    const Line* raise = findLine(lines, "Raise/Fold", 0);
    ASSERT_NE(raise, nullptr);
    const LineVariant& r = raise->variants.front();
    EXPECT_EQ(r.name, "Hero Raise/Fold");
    EXPECT_EQ(r.forPlayer, "Player1");
    EXPECT_FLOAT_EQ(r.actions[0].size, 3.0f);
    EXPECT_FLOAT_EQ(r.deadmoney, 1.5f);
    EXPECT_FLOAT_EQ(r.player1sEffectiveStackSize, 267.40f);
    EXPECT_FLOAT_EQ(r.player2sEffectiveStackSize, 127.38f);
    EXPECT_FLOAT_EQ(r.player1sLastInvestment, 0.5f);
    EXPECT_FLOAT_EQ(r.player2sLastInvestment, 1.0f);
    const Line* bet = findLine(lines, "Bet/Ship", 3);
    ASSERT_NE(bet, nullptr);
    const LineVariant& b = bet->variants.front();
    EXPECT_EQ(b.name, "ManakaReg Bet/Ship");
    EXPECT_EQ(b.forPlayer, "Player2");
    EXPECT_FALSE(b.actions[0].player1FirstToAct);
    EXPECT_FLOAT_EQ(b.actions[0].size, 3.0f);
    EXPECT_FLOAT_EQ(b.deadmoney, 6.0f);
    EXPECT_NEAR(b.player1sEffectiveStackSize, 264.90f, 1e-3f);
    EXPECT_NEAR(b.player2sEffectiveStackSize, 125.38f, 1e-3f);
    EXPECT_EQ(b.actions[3].verb, "raise/fold");
    EXPECT_EQ(b.actions[4].verb, "raise/call");
}

TEST(RealHandHistories, WinamaxByHandAndItsLines) {
    const HandHistoryParser p = readFirstHand("winamax-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '\x80');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.25f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.5f);
    EXPECT_EQ(seatsText(p), "1 PornstarX 67.80\n2 nico86190 38.52\n3 -LePianiste- 53.65\n"
                            "4 LEROISALO 22.85\n5 Matthieu_59_ 42.59\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "Matthieu_59_ post small blind 0.25\nPornstarX post big blind 0.50\n"
              "nico86190 raise 2.50\n-LePianiste- fold\nLEROISALO raise 22.85\n"
              "Matthieu_59_ fold\nPornstarX fold\nnico86190 call 20.35\n");
    EXPECT_TRUE(p.flopActions().empty());
    EXPECT_EQ(p.board(), "3c7cJd6c5s");
    EXPECT_NEAR(p.potFlop(), 46.45f, 1e-4f);

    HandHistoryLines builder(p.record());
    LineList lines;
    builder.preflopLines(lines);
    EXPECT_EQ(builder.hero(), "nico86190");
    const Line* threeBet = findLine(lines, "3-Bet/Call", 0);
    ASSERT_NE(threeBet, nullptr);
    const LineVariant& v = threeBet->variants.front();
    EXPECT_EQ(v.name, "LEROISALO 3-Bet/Call");
    EXPECT_EQ(v.forPlayer, "Player2");
    // 22.85 all-in over the raise to 2.50, into 0.75 + 2.50.
    EXPECT_NEAR(v.actions[0].size, 45.7f, 1e-4f);
    EXPECT_NEAR(v.deadmoney, 6.5f, 1e-4f);
    EXPECT_NEAR(v.player1sEffectiveStackSize, 72.04f, 1e-3f);
    EXPECT_NEAR(v.player2sEffectiveStackSize, 45.7f, 1e-3f);
    EXPECT_NEAR(v.player1sLastInvestment, 5.0f, 1e-4f);
    EXPECT_NEAR(v.player2sLastInvestment, 0.0f, 1e-4f);
    EXPECT_EQ(v.actions[3].verb, "4-bet");
}

TEST(RealHandHistories, OnGameByHand) {
    const HandHistoryParser p = readFirstHand("ongame-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.5f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 1.0f);
    EXPECT_EQ(seatsText(p), "2 kattiza 107.38\n3 spir12. 35.73\n8 adamsin1 102.00\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "adamsin1 post small blind 0.50\nkattiza post big blind 1.00\nspir12. fold\n"
              "adamsin1 raise 3.00\nkattiza call 2.00\n");
    EXPECT_EQ(actionsText(p.flopActions()), "adamsin1 check\nkattiza check\n");
    EXPECT_EQ(actionsText(p.turnActions()), "adamsin1 check\nkattiza check\n");
    EXPECT_EQ(actionsText(p.riverActions()), "adamsin1 bet 4.50\nkattiza call 4.50\n");
    EXPECT_EQ(p.board(), "Jd7cKc5hAs");
    // The summary's "Main pot: $15.00".
    EXPECT_NEAR(p.potRiver() + 9.0f, 15.0f, 1e-4f);
}

TEST(RealHandHistories, WinningPokerByHand) {
    const HandHistoryParser p = readFirstHand("winningpoker-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), 0);
    EXPECT_FLOAT_EQ(p.smallBlind(), 2.0f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 4.0f);
    EXPECT_EQ(seatsText(p), "1 xx59704 159.21\n4 Xavier2500 110.40\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "Xavier2500 post small blind 2.00\nxx59704 post big blind 4.00\n"
              "Xavier2500 call 2.00\nxx59704 check\n");
    // "raises (8)" and "raises (12)" add to what the player has in.
    EXPECT_EQ(actionsText(p.flopActions()), "xx59704 bet 4.00\nXavier2500 raise 8.00\n"
                                            "xx59704 raise 16.00\nXavier2500 call 8.00\n");
    EXPECT_EQ(actionsText(p.turnActions()), "xx59704 bet 26.33\nXavier2500 call 26.33\n");
    EXPECT_EQ(actionsText(p.riverActions()),
              "xx59704 bet 61.44\nXavier2500 raise 64.07\nxx59704 call 2.63\n");
    EXPECT_EQ(p.board(), "5c8s6cJdJs");
    // "Pot: 220.30. Rake 0.50", and the all-in of the whole 110.40.
    EXPECT_NEAR(p.potRiver() + 61.44f + 64.07f + 2.63f, 220.30f + 0.50f, 1e-3f);
    EXPECT_NEAR(p.stacksRiver().at("Xavier2500") - 64.07f, 0.0f, 1e-3f);
}

TEST(RealHandHistories, MicrogamingXmlByHand) {
    const HandHistoryParser p = readFirstHand("microgaming-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '\x80');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.01f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.02f);
    EXPECT_EQ(seatsText(p), "1 DuckGhoul 2.03\n2 dogugiev 2.01\n3 creys 0.61\n"
                            "4 4WHawkft 2.01\n5 _joker_ 2.00\n6 Jeesuslaps 2.00\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "dogugiev post small blind 0.01\ncreys post big blind 0.02\n4WHawkft raise 0.07\n"
              "_joker_ fold\nJeesuslaps call 0.07\ndogugiev fold\ncreys call 0.05\n");
    // creys' "AllIn" of 0.54 is the rest of his 0.61.
    EXPECT_EQ(actionsText(p.flopActions()),
              "creys check\n4WHawkft check\nJeesuslaps bet 0.22\ncreys raise 0.54\n"
              "4WHawkft fold\nJeesuslaps call 0.32\n");
    EXPECT_EQ(p.board(), "4d2cAh6cAd");
    EXPECT_NEAR(p.potTurn(), 1.30f, 1e-5f);
}

TEST(RealHandHistories, IPokerXmlByHand) {
    const HandHistoryParser p = readFirstHand("ipoker-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '\xA3');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.05f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.10f);
    // Two players show their cards and the session names nobody: no hero.
    EXPECT_EQ(p.hero(), "");
    EXPECT_EQ(seatsText(p), "1 dunny53 10.00\n6 chcake515151 12.49\n8 gogz8219 2.87\n"
                            "9 dondigidon79 7.85\n10 BeenToHell 9.67\n");
    // In the order of the actions' numbers, not of the file.
    EXPECT_EQ(actionsText(p.postActions()),
              "BeenToHell post ante 0.02\ndunny53 post ante 0.02\nchcake515151 post ante 0.02\n"
              "gogz8219 post ante 0.02\ndondigidon79 post ante 0.02\n"
              "BeenToHell post small blind 0.05\ndunny53 post big blind 0.10\n"
              "chcake515151 call 0.10\ngogz8219 raise 0.20\ndondigidon79 fold\n"
              "BeenToHell call 0.15\ndunny53 call 0.10\nchcake515151 call 0.10\n");
    EXPECT_EQ(actionsText(p.flopActions()),
              "BeenToHell check\ndunny53 check\nchcake515151 bet 0.63\ngogz8219 fold\n"
              "BeenToHell fold\ndunny53 call 0.63\n");
    EXPECT_EQ(actionsText(p.turnActions()),
              "dunny53 check\nchcake515151 bet 0.90\ndunny53 call 0.90\n");
    EXPECT_EQ(actionsText(p.riverActions()), "dunny53 bet 1.98\nchcake515151 call 1.98\n");
    EXPECT_EQ(p.board(), "9cTh9h5cJs");
    // dunny53's "bet" attribute: 3.73 in all.
    EXPECT_NEAR(p.stacksAtStart().at("dunny53") - p.stacksRiver().at("dunny53") + 1.98f, 3.73f,
                1e-4f);
}

TEST(RealHandHistories, MergeXmlByHandAndTheCappedShove) {
    const HandHistoryParser p = readFirstHand("merge-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 1.0f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 2.0f);
    EXPECT_EQ(seatsText(p), "1 GODEXISTSJK 269.96\n2 anica11 201.10\n3 fasthand007 302.79\n"
                            "4 m0ney2Blow 230.23\n5 Hateordiehere 186.83\n6 dugaly 222.84\n");
    EXPECT_EQ(actionsText(p.postActions()),
              "GODEXISTSJK post small blind 1.00\nanica11 post big blind 2.00\n"
              "fasthand007 fold\nm0ney2Blow fold\nHateordiehere raise 8.00\n"
              "dugaly raise 22.25\nGODEXISTSJK fold\nanica11 raise 49.00\n"
              "Hateordiehere fold\ndugaly raise 222.84\nanica11 call 152.10\n");
    EXPECT_EQ(p.board(), "JsQhJd6hTh");
    // The winners' 407.70 and 21.74 uncalled, with the rake.
    EXPECT_NEAR(p.potFlop(), 432.94f, 1e-3f);

    HandHistoryLines builder(p.record());
    LineList lines;
    builder.preflopLines(lines);
    EXPECT_EQ(builder.hero(), "Hateordiehere");
    EXPECT_EQ(lines.size(), 12u) << "Raise, 3-Bet, 4-Bet and 5-Bet, three each";
    const Line* shove = findLine(lines, "5-Bet/Fold", 0);
    ASSERT_NE(shove, nullptr);
    const LineVariant& v = shove->variants.front();
    EXPECT_EQ(v.name, "dugaly 5-Bet/Fold");
    EXPECT_EQ(v.forPlayer, "Player2");
    // 222.84 is more than anica11 has: capped at her 49 + 152.10.
    EXPECT_NEAR(v.actions[0].size, 100.55f, 1e-3f);
    EXPECT_NEAR(v.deadmoney, 40.125f, 1e-3f);
    EXPECT_NEAR(v.player1sEffectiveStackSize, 76.05f, 1e-3f);
    EXPECT_NEAR(v.player2sEffectiveStackSize, 100.295f, 1e-3f);
    EXPECT_NEAR(v.player1sLastInvestment, 24.5f, 1e-4f);
    EXPECT_NEAR(v.player2sLastInvestment, 11.125f, 1e-4f);
    EXPECT_EQ(v.actions[3].verb, "6-bet");
}

TEST(RealHandHistories, TournamentHandOf888WithThousandsAndHero) {
    const std::vector<SampleHand> hands = sampleHandsOf("888-tournament-many.txt");
    ASSERT_EQ(hands.size(), 12u);
    const HandHistoryParser p = parseSample(hands[0].text);
    EXPECT_EQ(p.hero(), "jpprewitt");
    EXPECT_EQ(p.holeCards(), "Kd8h");
    EXPECT_FLOAT_EQ(p.smallBlind(), 10.0f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 20.0f);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("AliceBazooka"), 1000.0f);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("joeballoons"), 970.0f);
    EXPECT_EQ(actionsText(p.flopActions()),
              "joeballoons check\nsvinoyob75 bet 760.00\nketaminol44n call 760.00\n"
              "joeballoons call 730.00\n");
    EXPECT_EQ(p.board(), "2d7dQd3d9h");
}
