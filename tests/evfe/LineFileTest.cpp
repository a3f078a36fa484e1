#include "FileTestSupport.h"
#include "SampleLines.h"

#include "Range/HandRangeStringReader.h"
#include "Range/RandomSource.h"
#include "Range/TreeRangeNode.h"
#include "evfe/LineFactory.h"
#include "evfe/LineFile.h"
#include "evfe/Street.h"
#include "evfe/VariantRanges.h"

#include <gtest/gtest.h>
#include <rapidxml/rapidxml.hpp>

#include "support/TestEnvironment.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

namespace {

std::string compactText(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

std::string actionRangeText(const LineAction& action) {
    return action.range != nullptr ? compactText(action.range->handRange) : "(no group)";
}

LineList readBack(const std::string& text, LineFile::Problems& problems) {
    return LineFile::readLinesText(text, SampleLines::player1FullRange(),
                                   SampleLines::player2FullRange(), problems);
}

// One line of `name` on the flop, with one variant whose XML is `variantBody` (the children
// of the LineVariant element).
std::string lineWithVariant(const std::string& name, const std::string& variantBody,
                            const std::string& kind = "bs") {
    return "<Line name=\"" + name + "\"><forStreet>Flop</forStreet><actionSequence>" + kind +
           "</actionSequence><LineVariants><LineVariant name=\"V\">" + variantBody +
           "</LineVariant></LineVariants></Line>";
}

std::string actionElement(const std::string& code, const std::string& extra = "") {
    return "<LineAction action=\"" + code + "\">" + extra + "</LineAction>";
}

std::string actions(const std::vector<std::string>& codes) {
    std::string text = "<LineActions>";
    for (const std::string& code : codes)
        text += actionElement(code);
    return text + "</LineActions>";
}

bool mentions(const LineFile::Problems& problems, const std::string& part) {
    for (const std::string& problem : problems) {
        if (problem.find(part) != std::string::npos)
            return true;
    }
    return false;
}

// --- Golden file --------------------------------------------------------------------------

TEST(LineFile, WritesTheGoldenFileByteForByte) {
    const std::string written = LineFile::linesText(SampleLines::golden());
    const bool same = written == readDataFile("lines.xml");
    EXPECT_TRUE(same) << "the text written is in test-output/lines.xml";
    if (!same)
        std::ofstream(TestEnvironment::outputFolder() + "/lines.xml", std::ios::binary) << written;
}

TEST(LineFile, ReadsTheGoldenFileBackToTheSameText) {
    LineFile::Problems problems;
    const std::string golden = readDataFile("lines.xml");
    const LineList lines = readBack(golden, problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(LineFile::linesText(lines), golden);
}

TEST(LineFile, ReadsEveryFieldOfTheGoldenFile) {
    LineFile::Problems problems;
    const LineList lines = readBack(readDataFile("lines.xml"), problems);
    ASSERT_EQ(lines.size(), 3u);
    auto line = lines.begin();
    EXPECT_EQ(line->name, "Bet/Ship");
    EXPECT_EQ(line->street, 1);
    EXPECT_EQ(line->actionSequence, LineKind::BetShip);
    ASSERT_EQ(line->variants.size(), 2u);
    const LineVariant& main = line->variants.front();
    EXPECT_EQ(main.name, "Main Variant");
    EXPECT_EQ(main.forPlayer, "Player1");
    EXPECT_EQ(main.deadmoney, 12.5f);
    EXPECT_EQ(main.player1sEffectiveStackSize, 88.0f);
    EXPECT_EQ(main.player2sEffectiveStackSize, 94.5f);
    ASSERT_EQ(main.actions.size(), 5u);
    EXPECT_EQ(main.actions[0].size, 9.0f);
    EXPECT_TRUE(main.actions[0].firstToAct);
    EXPECT_TRUE(main.actions[0].needsOwnSize);
    EXPECT_EQ(actionRangeText(main.actions[0]), "TT+,AQs+,AKo");
    EXPECT_EQ(actionRangeText(main.actions[4]), "KK+");
    EXPECT_TRUE(std::isnan(main.actions[1].equityP1));
    EXPECT_EQ(main.actions[2].equityP1, 0.6234f);
    EXPECT_EQ(main.actions[2].rangeCombinations, 88u);
    EXPECT_EQ(main.actions[4].EV_P1, 0.0f);
    EXPECT_TRUE(std::signbit(main.actions[4].EV_P1));
    EXPECT_EQ(main.actions[4].EV_P2, std::numeric_limits<float>::infinity());
    EXPECT_EQ(main.actions[4].addition, "kept as written");
    EXPECT_EQ(main.actions[3].verb, "raise/fold");
    EXPECT_EQ(main.actions[2].rakeFraction, 0.0f); // rake is the page's, not the file's
    // Group 0 of each set is the scenario's full range of that player.
    EXPECT_EQ(compactText(main.firstActorRanges.group(0)->handRange),
              compactText(SampleLines::player1FullRange()));
    EXPECT_EQ(compactText(main.secondActorRanges.group(0)->handRange),
              compactText(SampleLines::player2FullRange()));
    // Each action's group lies below group 0 of its player's set.
    EXPECT_EQ(main.firstActorRanges.indexOf(main.actions[0].range), 1u);
    EXPECT_EQ(main.secondActorRanges.indexOf(main.actions[3].range), 3u);
    EXPECT_EQ(main.actions[3].range->parent, 0u);

    const LineVariant& second = line->variants.back();
    EXPECT_EQ(second.name, "Small \"Bet\" & <Shove>");
    EXPECT_EQ(second.forPlayer, "Player2");
    EXPECT_FALSE(second.actions[0].player1FirstToAct);
    EXPECT_EQ(compactText(second.firstActorRanges.group(0)->handRange),
              compactText(SampleLines::player2FullRange()));
    EXPECT_EQ(second.actions[2].EV_P1, 1.0f / 3.0f);

    ++line;
    EXPECT_EQ(line->name, "Check/Raise");
    EXPECT_EQ(line->street, 2);
    EXPECT_EQ(line->actionSequence, LineKind::CheckRaise);
    ++line;
    EXPECT_EQ(line->name, "3-Bet/Call");
    EXPECT_EQ(line->street, 0);
    EXPECT_EQ(line->variants.front().player1sLastInvestment, 0.5f);
    EXPECT_EQ(line->variants.front().actions[0].verb, "3-bet");
}

// The children in the order the file form gives them, written down here independently.
TEST(LineFile, WritesTheChildrenInFileOrder) {
    const std::string text = LineFile::linesText(SampleLines::golden());
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\0');
    rapidxml::xml_document<char> document;
    document.parse<0>(buffer.data());
    const auto names = [](const rapidxml::xml_node<char>* node) {
        std::vector<std::string> list;
        for (const auto* child = node->first_node(); child; child = child->next_sibling())
            list.emplace_back(child->name());
        return list;
    };
    const auto* lines = document.first_node("EV_FE_Lines");
    ASSERT_NE(lines, nullptr);
    const auto* line = lines->first_node("Line");
    EXPECT_STREQ(line->first_attribute()->name(), "name");
    EXPECT_EQ(names(line),
              (std::vector<std::string>{"forStreet", "actionSequence", "LineVariants"}));
    const auto* variant = line->first_node("LineVariants")->first_node("LineVariant");
    EXPECT_STREQ(variant->first_attribute()->name(), "name");
    EXPECT_EQ(names(variant),
              (std::vector<std::string>{"deadmoney", "player1sEffectiveStackSize",
                                        "player1sLastInvestment", "player2sEffectiveStackSize",
                                        "player2sLastInvestment", "EV_P1", "EV_P2", "FE_P1",
                                        "FE_P2", "actionSequence", "forPlayer", "LineActions"}));
    const auto* action = variant->first_node("LineActions")->first_node("LineAction");
    EXPECT_STREQ(action->first_attribute()->name(), "action");
    EXPECT_STREQ(action->first_attribute()->value(), "b");
    EXPECT_EQ(names(action), (std::vector<std::string>{"equityP1",
                                                       "equityP2",
                                                       "EV_P1",
                                                       "EV_P2",
                                                       "deadmoney",
                                                       "rangeCombinations",
                                                       "rangePercentage",
                                                       "size",
                                                       "firstToAct",
                                                       "needsOwnSize",
                                                       "parentRangePercentage",
                                                       "player1FirstToAct",
                                                       "player1sEffectiveStackSizeBeforeAction",
                                                       "player1sLastInvestmentBeforeAction",
                                                       "player2sEffectiveStackSizeBeforeAction",
                                                       "player2sLastInvestmentBeforeAction",
                                                       "previousMoney",
                                                       "range",
                                                       "addition",
                                                       "verb"}));
}

TEST(LineFile, NumbersUseTheLexicalForm) {
    const std::string text = LineFile::linesText(SampleLines::golden());
    // Nine significant digits for a float that has no short form, and the library's words
    // for the values that are no number.
    EXPECT_NE(text.find("<equityP1>0.623399973</equityP1>"), std::string::npos);
    EXPECT_NE(text.find("<equityP1>nan</equityP1>"), std::string::npos);
    EXPECT_NE(text.find("<EV_P2>inf</EV_P2>"), std::string::npos);
    EXPECT_NE(text.find("<EV_P1>-0</EV_P1>"), std::string::npos);
    EXPECT_NE(text.find("<deadmoney>12.5</deadmoney>"), std::string::npos);
    EXPECT_NE(text.find("<firstToAct>1</firstToAct>"), std::string::npos);
    EXPECT_NE(text.find("<actionSequence>bs</actionSequence>"), std::string::npos);
    EXPECT_NE(text.find("<forStreet>Flop</forStreet>"), std::string::npos);
}

// --- Random round trip --------------------------------------------------------------------

float randomNumber(Range::RandomSource& random) {
    switch (random.below(12)) {
    case 0:
        return std::numeric_limits<float>::quiet_NaN();
    case 1:
        return std::numeric_limits<float>::infinity();
    case 2:
        return -std::numeric_limits<float>::infinity();
    case 3:
        return -0.0f;
    case 4:
        return static_cast<float>(random.below(10000)) / 4.0f;
    default: {
        // Any bit pattern of a finite float.
        const std::uint32_t bits = (random.below(0x10000) << 16) | random.below(0x10000);
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return std::isfinite(value) ? value : 1.5f;
    }
    }
}

// Free text with the characters XML escapes. Text of blanks only is left out: the parser
// reads an element holding only white space as empty (see LineFile).
std::string randomText(Range::RandomSource& random) {
    static const std::string letters = "abcXYZ <>&\"'/-09 ";
    std::string text;
    const std::uint32_t length = random.below(12);
    for (std::uint32_t i = 0; i < length; ++i)
        text += letters[random.below(static_cast<std::uint32_t>(letters.size()))];
    if (text.find_first_not_of(' ') == std::string::npos)
        text.clear();
    return text;
}

// A random subset of `range`'s combinations, as free text of single hands.
void randomSubrange(const Range::HandRange& range, Range::RandomSource& random,
                    Range::HandRange& target) {
    Range::HandRange subset;
    for (const Range::Element& element : range) {
        const unsigned int kept = element.suits & (random.below(0x10000) | random.below(0x10000));
        if (kept != 0 && random.below(3) == 0)
            subset.setSuits(element.values, element.suited, kept);
    }
    target = subset;
}

Line randomLine(Range::RandomSource& random, const Range::HandRange& full1,
                const Range::HandRange& full2) {
    const std::vector<std::string> names = LineFactory::allLineNames();
    Line line;
    line.name = names[random.below(static_cast<std::uint32_t>(names.size()))];
    line.street = static_cast<int>(random.below(4));
    const std::uint32_t variants = 1 + random.below(4);
    for (std::uint32_t v = 0; v < variants; ++v) {
        LineVariant variant = LineFactory::create(line.name, randomText(random),
                                                  random.below(2) ? "Player1" : "Player2");
        VariantRanges::assignFullRanges(variant, full1, full2);
        variant.deadmoney = randomNumber(random);
        variant.player1sEffectiveStackSize = randomNumber(random);
        variant.player2sEffectiveStackSize = randomNumber(random);
        variant.player1sLastInvestment = randomNumber(random);
        variant.player2sLastInvestment = randomNumber(random);
        variant.EV_P1 = randomNumber(random);
        variant.EV_P2 = randomNumber(random);
        variant.FE_P1 = randomNumber(random);
        variant.FE_P2 = randomNumber(random);
        for (LineAction& action : variant.actions) {
            float* numbers[] = {&action.equityP1,
                                &action.equityP2,
                                &action.EV_P1,
                                &action.EV_P2,
                                &action.deadmoney,
                                &action.rangePercentage,
                                &action.size,
                                &action.parentRangePercentage,
                                &action.player1sEffectiveStackSizeBeforeAction,
                                &action.player1sLastInvestmentBeforeAction,
                                &action.player2sEffectiveStackSizeBeforeAction,
                                &action.player2sLastInvestmentBeforeAction,
                                &action.previousMoney};
            for (float* number : numbers)
                *number = randomNumber(random);
            action.rangeCombinations = random.below(1327);
            action.addition = randomText(random);
            const bool first = action.firstToAct;
            randomSubrange(first == variant.isPlayer1FirstToAct() ? full1 : full2, random,
                           action.range->handRange);
        }
        line.variants.push_back(std::move(variant));
    }
    line.actionSequence = line.variants.front().kind;
    return line;
}

TEST(LineFile, RandomLinesSurviveWriteReadWrite) {
    Range::RandomSource random(20261122);
    const Range::HandRange full1 = SampleLines::player1FullRange();
    const Range::HandRange full2 = SampleLines::player2FullRange();
    int variants = 0;
    for (int round = 0; round < 250; ++round) {
        const Line line = randomLine(random, full1, full2);
        variants += static_cast<int>(line.variants.size());
        const std::string written = LineFile::lineText(line);
        LineFile::Problems problems;
        const std::optional<Line> read = LineFile::readLineText(written, full1, full2, problems);
        ASSERT_TRUE(read.has_value()) << written;
        EXPECT_TRUE(problems.empty()) << problems.front();
        const std::string again = LineFile::lineText(*read);
        const auto differ =
            std::mismatch(again.begin(), again.end(), written.begin(), written.end());
        ASSERT_EQ(again, written) << "round " << round << ", first difference at: "
                                  << std::string(differ.first, again.end()).substr(0, 200);
        ASSERT_EQ(read->variants.size(), line.variants.size());
    }
    EXPECT_GT(variants, 400);
}

// --- Codes ----------------------------------------------------------------------------------

TEST(LineFile, OldActionTextsReadAsTheirCodesAndWriteInTheNewForm) {
    LineFile::Problems problems;
    const std::string checkRaise = lineWithVariant(
        "Check/Raise", "<forPlayer>Player1</forPlayer>" + actions({"x", "xx", "xbr", "xbrc"}),
        "xr");
    std::optional<Line> line = LineFile::readLineText(checkRaise, SampleLines::player1FullRange(),
                                                      SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->variants.front().actions[2].action, ActionCode::CheckBetRaiseFold);
    EXPECT_NE(LineFile::lineText(*line).find("<LineAction action=\"xbrf\">"), std::string::npos);

    const std::string betShip = lineWithVariant(
        "Bet/Ship", "<forPlayer>Player1</forPlayer>" + actions({"b", "f", "c", "rsf", "rs"}));
    line = LineFile::readLineText(betShip, SampleLines::player1FullRange(),
                                  SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->variants.front().actions[4].action, ActionCode::RaiseShipCall);
    EXPECT_NE(LineFile::lineText(*line).find("<LineAction action=\"rsc\">"), std::string::npos);
    EXPECT_TRUE(problems.empty());
}

TEST(LineFile, RaiseFoldReadWithBetFoldKeepsKindThree) {
    LineFile::Problems problems;
    const std::string text =
        lineWithVariant("Raise/Fold",
                        "<forPlayer>Player2</forPlayer><actionSequence>bf</actionSequence>" +
                            actions({"b", "f", "c", "rf"}),
                        "bf");
    const std::optional<Line> line = LineFile::readLineText(
        text, SampleLines::player1FullRange(), SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->actionSequence, LineKind::BetFold);
    EXPECT_EQ(line->variants.front().kind, LineKind::BetFold);
    // Missing children take the values of the named line's tree.
    EXPECT_EQ(line->variants.front().actions[0].verb, "raise");
    EXPECT_FALSE(line->variants.front().actions[0].player1FirstToAct);
    EXPECT_TRUE(problems.empty());
}

// --- Bad input --------------------------------------------------------------------------------

TEST(LineFile, AnUnknownActionCodeSkipsItsVariantOnly) {
    LineFile::Problems problems;
    const std::string good = "<LineVariant name=\"good\"><forPlayer>Player1</forPlayer>" +
                             actions({"b", "f", "c", "rf"}) + "</LineVariant>";
    const std::string bad = "<LineVariant name=\"bad\"><forPlayer>Player1</forPlayer>" +
                            actions({"b", "f", "zz", "rf"}) + "</LineVariant>";
    const std::string text =
        "<Line name=\"Bet/Fold\"><forStreet>River</forStreet><actionSequence>bf</actionSequence>"
        "<LineVariants>" +
        bad + good + "</LineVariants></Line>";
    const std::optional<Line> line = LineFile::readLineText(
        text, SampleLines::player1FullRange(), SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    ASSERT_EQ(line->variants.size(), 1u);
    EXPECT_EQ(line->variants.front().name, "good");
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_TRUE(mentions(problems, "Unknown Action zz"));
    EXPECT_TRUE(mentions(problems, "variant \"bad\""));
}

TEST(LineFile, ALineWithoutReadableVariantIsSkipped) {
    LineFile::Problems problems;
    const std::string text =
        "<EV_FE_Lines>" +
        lineWithVariant("Bet/Fold",
                        "<forPlayer>Player3</forPlayer>" + actions({"b", "f", "c", "rf"}), "bf") +
        lineWithVariant("Bet/Call",
                        "<forPlayer>Player1</forPlayer>" + actions({"b", "f", "c", "rc"}), "bc") +
        "</EV_FE_Lines>";
    const LineList lines = readBack(text, problems);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines.front().name, "Bet/Call");
    EXPECT_TRUE(mentions(problems, "unknown first actor \"Player3\""));
    EXPECT_TRUE(mentions(problems, "Line \"Bet/Fold\" on the Flop has no variant"));
}

TEST(LineFile, ALineWithAnUnknownStreetOrWithoutNameIsSkipped) {
    LineFile::Problems problems;
    const std::string variant =
        "<LineVariants><LineVariant name=\"V\"><forPlayer>Player1</forPlayer>" +
        actions({"b", "f", "c", "rf"}) + "</LineVariant></LineVariants>";
    const std::string text =
        "<EV_FE_Lines><Line name=\"Bet/Fold\"><forStreet>Showdown</forStreet>" + variant +
        "</Line><Line><forStreet>Flop</forStreet>" + variant + "</Line><Line name=\"Bet/Fold\">" +
        variant + "</Line></EV_FE_Lines>";
    const LineList lines = readBack(text, problems);
    EXPECT_TRUE(lines.empty());
    EXPECT_TRUE(mentions(problems, "Unknown Street: Showdown"));
    EXPECT_TRUE(mentions(problems, "A line without a name is skipped."));
    EXPECT_TRUE(mentions(problems, "names no street"));
}

TEST(LineFile, ANonNumberKeepsTheDefaultAndIsNamed) {
    LineFile::Problems problems;
    const std::string text = lineWithVariant(
        "Bet/Fold",
        "<deadmoney>twelve</deadmoney><player1sEffectiveStackSize>55</player1sEffectiveStackSize>"
        "<forPlayer>Player1</forPlayer><LineActions>" +
            actionElement("b", "<size>1e</size><rangeCombinations>-4</rangeCombinations>") +
            actionElement("f") + actionElement("c") + actionElement("rf") + "</LineActions>",
        "bf");
    const std::optional<Line> line = LineFile::readLineText(
        text, SampleLines::player1FullRange(), SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    const LineVariant& variant = line->variants.front();
    EXPECT_EQ(variant.deadmoney, 0.0f);
    EXPECT_EQ(variant.player1sEffectiveStackSize, 55.0f);
    EXPECT_EQ(variant.player2sEffectiveStackSize, 100.0f); // missing: the default
    EXPECT_EQ(variant.actions[0].size, 0.0f);
    EXPECT_EQ(variant.actions[0].rangeCombinations, 0u);
    EXPECT_EQ(problems.size(), 3u);
    EXPECT_TRUE(mentions(problems, "deadmoney \"twelve\" is not a number"));
    EXPECT_TRUE(mentions(problems, "size \"1e\" is not a number"));
    EXPECT_TRUE(mentions(problems, "rangeCombinations \"-4\" is not a number"));
}

TEST(LineFile, NumberWordsReadInAnyCase) {
    LineFile::Problems problems;
    const std::string text = lineWithVariant(
        "Bet/Fold",
        "<EV_P1>INFINITY</EV_P1><EV_P2>-Infinity</EV_P2><FE_P1>NaN</FE_P1><FE_P2>nan</FE_P2>"
        "<forPlayer>Player1</forPlayer>" +
            actions({"b", "f", "c", "rf"}),
        "bf");
    const std::optional<Line> line = LineFile::readLineText(
        text, SampleLines::player1FullRange(), SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->variants.front().EV_P1, std::numeric_limits<float>::infinity());
    EXPECT_EQ(line->variants.front().EV_P2, -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(line->variants.front().FE_P1));
    EXPECT_TRUE(std::isnan(line->variants.front().FE_P2));
    EXPECT_TRUE(problems.empty());
}

TEST(LineFile, ActionsOfAnotherTreeAreReadAsThatTree) {
    LineFile::Problems problems;
    const std::string text = lineWithVariant(
        "Bet/Ship", "<actionSequence>xf</actionSequence><forPlayer>Player1</forPlayer>" +
                        actions({"b", "f", "c", "rsf", "rsc"}));
    const std::optional<Line> line = LineFile::readLineText(
        text, SampleLines::player1FullRange(), SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->variants.front().kind, LineKind::BetShip);
    EXPECT_TRUE(mentions(problems, "its actions are those of \"bs\", not of \"xf\""));
}

TEST(LineFile, ActionsThatMakeNoLineSkipTheVariant) {
    LineFile::Problems problems;
    for (const std::vector<std::string>& tree :
         {std::vector<std::string>{"b", "f", "c"}, std::vector<std::string>{},
          std::vector<std::string>{"c", "f", "b", "rf"},
          std::vector<std::string>{"b", "f", "c", "rf", "rf", "rf"}}) {
        problems.clear();
        const std::string text =
            lineWithVariant("Bet/Fold", "<forPlayer>Player1</forPlayer>" + actions(tree), "bf");
        EXPECT_FALSE(LineFile::readLineText(text, SampleLines::player1FullRange(),
                                            SampleLines::player2FullRange(), problems));
        EXPECT_TRUE(mentions(problems, "its actions make no line; the variant is skipped."));
    }
}

TEST(LineFile, TextThatIsNoXmlReadsNothing) {
    LineFile::Problems problems;
    EXPECT_TRUE(readBack("<EV_FE_Lines><Line name=\"x\"", problems).empty());
    EXPECT_TRUE(mentions(problems, "The text of the lines is no XML"));
    problems.clear();
    EXPECT_TRUE(readBack("", problems).empty());
    EXPECT_TRUE(mentions(problems, "The text of the lines holds no element."));
}

TEST(LineFile, ARangeOutsideItsParentIsKeptExactly) {
    LineFile::Problems problems;
    // 72o is in neither full range.
    const std::string text =
        lineWithVariant("Bet/Fold",
                        "<forPlayer>Player1</forPlayer><LineActions>" + actionElement("b") +
                            actionElement("f", "<range>72o,AA</range>") + actionElement("c") +
                            actionElement("rf") + "</LineActions>",
                        "bf");
    const std::optional<Line> line = LineFile::readLineText(
        text, SampleLines::player1FullRange(), SampleLines::player2FullRange(), problems);
    ASSERT_TRUE(line);
    const LineAction& fold = line->variants.front().actions[1];
    EXPECT_EQ(actionRangeText(fold), "AA,72o");
    EXPECT_FALSE(VariantRanges::isInsideParent(fold));
    EXPECT_TRUE(VariantRanges::isInsideParent(line->variants.front().actions[2]));
}

TEST(LineFile, LinesAreAppendedInFileOrder) {
    LineFile::Problems problems;
    const std::string text =
        "<EV_FE_Lines>" +
        lineWithVariant("Bet/Ship",
                        "<forPlayer>Player1</forPlayer>" + actions({"b", "f", "c", "rsf", "rsc"})) +
        lineWithVariant("Check/Fold",
                        "<forPlayer>Player1</forPlayer>" + actions({"x", "xx", "xbf"}), "xf") +
        "</EV_FE_Lines>";
    const LineList lines = readBack(text, problems);
    ASSERT_EQ(lines.size(), 2u);
    // Not re-sorted: "Check/..." would come first in display order.
    EXPECT_EQ(lines.front().name, "Bet/Ship");
    EXPECT_EQ(lines.back().name, "Check/Fold");
}

} // namespace
