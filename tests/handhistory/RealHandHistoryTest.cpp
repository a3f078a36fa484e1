// The public hand histories of the shared folder: which dialects the import reads, and for
// each hand it reads, whether the record says what the text says. The expected values come
// from the raw text by regular expressions of this test (not through the normalisation),
// and for one hand of each readable site from reading the hand by hand.

#include "HandHistorySamples.h"

#include "handhistory/HandHistoryNormalisation.h"
#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Stacks = HandHistoryRecord::Stacks;

// Which files parse. Every hand of the others must fail with ParseError, for the reason
// given: the XML dialects have no seat lines at all (one of them has "<Seat" elements, but
// no line begins with "Seat "); the remaining text dialects write their action lines
// without "name:", so no post is read, and their head line either has no blinds in its
// first line or writes them in a way the head reader does not take.
struct FileExpectation {
    const char* prefix;
    bool parses;
    const char* reason;
};

const FileExpectation fileExpectations[] = {
    {"pokerstars-", true, ""},
    {"fulltilt-", true, ""},
    {"888-", false, "no blinds: neither posts nor the head line give them"},
    {"pacific-", false, "no blinds: neither posts nor the head line give them"},
    {"partypoker-", false, "no blinds: neither posts nor the head line give them"},
    {"ongame-", false, "no blinds: neither posts nor the head line give them"},
    {"winamax-", false, "no blinds: neither posts nor the head line give them"},
    {"winningpoker-", false, "no blinds: neither posts nor the head line give them"},
    {"ipoker-", false, "no seat lines, no position lines and no \"Game#\": not a hand history"},
    {"merge-", false, "no seat lines, no position lines and no \"Game#\": not a hand history"},
    {"microgaming-", false, "no line begins with \"Seat \""},
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

TEST(RealHandHistories, EachHandParsesAsTheTextSaysOrFailsWithParseError) {
    const std::vector<SampleHand> hands = loadSampleHands();
    ASSERT_FALSE(hands.empty());
    int parsed = 0;
    std::map<std::string, int> parsedPerFile;
    for (const SampleHand& hand : hands) {
        SCOPED_TRACE(hand.file + " hand " + std::to_string(hand.index + 1));
        const FileExpectation* expectation = expectationFor(hand.file);
        ASSERT_NE(expectation, nullptr) << "a new file: list what it is expected to give";
        try {
            const HandHistoryParser parser = parseSample(hand.text);
            EXPECT_TRUE(expectation->parses) << "read, but expected: " << expectation->reason;
            expectMatchesText(parser, hand.text);
            ++parsed;
            ++parsedPerFile[hand.file];
        } catch (const HandHistoryParser::ParseError& error) {
            EXPECT_FALSE(expectation->parses) << "not read: " << error.reason;
            EXPECT_EQ(error.reason, expectation->reason);
        }
    }
    // Ten hands of each multi-hand file, one of each other file, of the two readable sites.
    EXPECT_EQ(parsed, 24);
    EXPECT_EQ(parsedPerFile["pokerstars-multiplehands-10multiplehands.txt"], 10);
    EXPECT_EQ(parsedPerFile["fulltilt-multiplehands-10multiplehands.txt"], 10);
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

TEST(RealHandHistories, FullTiltHandReadsSeatsBoardAndHeadBlindsButNoActions) {
    // Its action lines have no "name:", so none is read; no seat line names the button,
    // so no blinds are made up from the head either.
    const HandHistoryParser p = onlyHandOf("fulltilt-player-withshowdown.txt");
    EXPECT_EQ(p.currency(), '$');
    EXPECT_FLOAT_EQ(p.smallBlind(), 0.05f);
    EXPECT_FLOAT_EQ(p.bigBlind(), 0.10f);
    ASSERT_EQ(p.seats().size(), 9u);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("luka-poker"), 15.58f);
    EXPECT_FLOAT_EQ(p.stacksAtStart().at("OMGStoneAiken"), 35.75f);
    EXPECT_EQ(p.flop(), "4hJc3c");
    EXPECT_EQ(p.board(), "4hJc3c6h2h");
    EXPECT_TRUE(p.postActions().empty());
    EXPECT_TRUE(p.flopActions().empty());
    EXPECT_FLOAT_EQ(p.potRiver(), 0.0f);
    EXPECT_EQ(p.stacksRiver().size(), 9u);
}

TEST(RealHandHistories, TournamentHandIn888DialectIsRewrittenButHasNoReadablePosts) {
    const std::vector<SampleHand> hands = sampleHandsOf("888-tournament-many.txt");
    ASSERT_EQ(hands.size(), 12u);
    std::string text = HandHistoryText::toWindows1252(hands[0].text);
    HandHistoryRecord hand;
    normalise(text, hand);
    // Chips with thousands separators and money in brackets become plain amounts; the
    // dealing lines become markers; the posts stay without "name:".
    for (const char* piece :
         {"Seat 2: AliceBazooka ( $1000 )\n", "Seat 1: joeballoons ( $970 )\n",
          "ASKET174 posts small blind $10\n", "*** HOLE CARDS ***\n",
          "Dealt to jpprewitt [ 8h, Kd ]\n", "*** FLOP *** [ 2d, 7d, Qd ]\n",
          "*** TURN *** [ 3d ]\n", "svinoyob75 bets $760\n", "joeballoons collected  $2940 \n"})
        EXPECT_NE(text.find(piece), std::string::npos) << piece << "\nin\n" << text;
    // The head line is "#Game No : ...": the blinds stand in the second line only.
    EXPECT_FLOAT_EQ(hand.smallBlind, 0.0f);
    try {
        parseSample(hands[0].text);
        ADD_FAILURE() << "read";
    } catch (const HandHistoryParser::ParseError& error) {
        EXPECT_EQ(error.reason, "no blinds: neither posts nor the head line give them");
    }
}

TEST(RealHandHistories, EuroHandOfWinamaxKeepsItsEuroAsOneByte) {
    std::string text =
        HandHistoryText::toWindows1252(sampleHandsOf("winamax-player-withshowdown.txt").at(0).text);
    HandHistoryRecord hand;
    normalise(text, hand);
    EXPECT_NE(text.find("Seat 1: PornstarX (67.80\x80)\n"), std::string::npos) << text;
    // "(0.25€/0.50€)": the sign stands behind the amounts, so the head gives no blinds.
    EXPECT_FLOAT_EQ(hand.bigBlind, 0.0f);
}
