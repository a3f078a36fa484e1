#include "Range/HandRangeElementConversion.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "RangeTestHelpers.h"
#include "support/AssertionRecorder.h"

#include <VelmaraEvaluatorBase.h>

#include <gtest/gtest.h>

#include <bitset>
#include <string>
#include <vector>

using namespace Range;

namespace {

Element pairElement(char value, unsigned int suits) {
    return makeElement(valueToBinaryMask(value), Pair, suits);
}

Element nonPairElement(char high, char low, int suitClass, unsigned int suits) {
    return makeElement(valueToBinaryMask(high) | valueToBinaryMask(low), suitClass, suits);
}

} // namespace

// --- Tables ------------------------------------------------------------------------------

TEST(HandRangeElementConversion, PopulationTableMatchesTheDefinition) {
    for (unsigned int mask = 0; mask < 8192; ++mask)
        ASSERT_EQ(valueBitCount(mask), std::bitset<13>(mask).count()) << mask;
}

TEST(HandRangeElementConversion, TopBitTableMatchesTheDefinition) {
    EXPECT_EQ(highestValueBit(0), 0u);
    for (unsigned int mask = 1; mask < 8192; ++mask) {
        unsigned int top = 1U << 12;
        while (!(mask & top))
            top >>= 1;
        ASSERT_EQ(highestValueBit(mask), top) << mask;
    }
}

TEST(HandRangeElementConversion, SuitBitCountIsExact) {
    for (unsigned int mask = 0; mask < 65536; ++mask)
        ASSERT_EQ(suitBitCount(mask), std::bitset<16>(mask).count()) << mask;
    EXPECT_EQ(suitBitCount(0xFFFFFFFFU), 32u);
}

// --- Values ------------------------------------------------------------------------------

TEST(HandRangeElementConversion, ValueBitsRiseWithTheCard) {
    const std::string values = "23456789TJQKA";
    for (unsigned int bit = 0; bit < 13; ++bit)
        EXPECT_EQ(valueToBinaryMask(values[bit]), 1U << bit) << values[bit];
    EXPECT_EQ(valueToBinaryMask('A'), 4096u);
    EXPECT_EQ(valueToBinaryMask('2'), 1u);
}

TEST(HandRangeElementConversion, WildcardHasNoValueBit) {
    AssertionRecorder recorder;
    EXPECT_EQ(valueToBinaryMask('X'), 0u);
    EXPECT_TRUE(recorder.saw("Value char not between 2 and A."));
    recorder.clear();
    EXPECT_EQ(valueToBinaryMask('a'), 0u);
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Value char not between 2 and A."});
}

TEST(HandRangeElementConversion, ValueTextIsHigherCardFirst) {
    EXPECT_EQ(valuesToText(6144), "AK");
    EXPECT_EQ(valuesToText(4096), "AA");
    EXPECT_EQ(valuesToText(1), "22");
    EXPECT_EQ(valuesToText(4097), "A2");
    EXPECT_EQ(valuesToText(0), "");
}

TEST(HandRangeElementConversion, ValuesToBinaryMasksReplicateInAllLanes) {
    const auto ak = valuesToBinaryMasks(6144);
    EXPECT_EQ(ak.first, cardsMask("AdAhAsAc"));
    EXPECT_EQ(ak.second, cardsMask("KdKhKsKc"));
    const auto pair = valuesToBinaryMasks(16);
    EXPECT_EQ(pair.first, cardsMask("6d6h6s6c"));
    EXPECT_EQ(pair.second, pair.first);
}

TEST(HandRangeElementConversion, ValuesToBinaryMasksOfNothingAsserts) {
    AssertionRecorder recorder;
    const auto masks = valuesToBinaryMasks(0);
    EXPECT_EQ(masks.first, 0u);
    EXPECT_EQ(masks.second, 0u);
    EXPECT_TRUE(recorder.saw("value in valuesToBinaryMasks does not contain a value."));
}

// --- Suits -------------------------------------------------------------------------------

TEST(HandRangeElementConversion, PossibleSuitsOfTheClasses) {
    EXPECT_EQ(possibleSuits(0), 31710u);
    EXPECT_EQ(possibleSuits(1), 33825u);
    EXPECT_EQ(possibleSuits(2), 2254u);
    EXPECT_EQ(suitBitCount(possibleSuits(0)), 12u);
    EXPECT_EQ(suitBitCount(possibleSuits(1)), 4u);
    EXPECT_EQ(suitBitCount(possibleSuits(2)), 6u);
}

TEST(HandRangeElementConversion, PossibleSuitsOfABadClassAsserts) {
    AssertionRecorder recorder;
    EXPECT_EQ(possibleSuits(3), 0u);
    EXPECT_EQ(possibleSuits(-1), 0u);
    EXPECT_EQ(recorder.messages().size(), 2u);
    EXPECT_TRUE(recorder.saw("Suit char not o or s."));
}

TEST(HandRangeElementConversion, SuitClassCharacters) {
    EXPECT_EQ(suitClassFromChar('o'), 0);
    EXPECT_EQ(suitClassFromChar('s'), 1);
    EXPECT_EQ(suitClassFromChar('p'), 2);
    AssertionRecorder recorder;
    EXPECT_EQ(suitClassFromChar('O'), 0);
    EXPECT_TRUE(recorder.saw("suit class invalid."));
}

TEST(HandRangeElementConversion, SuitPairBitsFollowTheTable) {
    const std::string order = "dddhdsdchdhhhshcsdshsssccdchcscc";
    for (unsigned int bit = 0; bit < 16; ++bit)
        EXPECT_EQ(suitPairToBit(order[2 * bit], order[2 * bit + 1]), 1U << bit) << bit;
    EXPECT_EQ(suitPairToBit('h', 'd'), 16u);
    EXPECT_EQ(suitPairToBit('c', 'c'), 32768u);
}

TEST(HandRangeElementConversion, SuitPairToBitOfBadSuitsAsserts) {
    AssertionRecorder recorder;
    EXPECT_EQ(suitPairToBit('x', 'd'), 0u);
    EXPECT_EQ(suitPairToBit('d', 'S'), 0u);
    EXPECT_EQ(recorder.messages(), (std::vector<std::string>{"suits invalid.", "suits invalid."}));
}

TEST(HandRangeElementConversion, SuitPairsToMask) {
    EXPECT_EQ(suitPairsToMask(""), 0u);
    EXPECT_EQ(suitPairsToMask("dd"), 1u);
    EXPECT_EQ(suitPairsToMask("ddhhsscc"), 33825u);
    EXPECT_EQ(suitPairsToMask("dhdsdchshcsc"), 2254u);
    EXPECT_EQ(suitPairsToMask("dhdh"), 2u);
}

TEST(HandRangeElementConversion, SuitsToTextShortFormsAndLists) {
    EXPECT_EQ(suitsToText(0x7BDE), "o");
    EXPECT_EQ(suitsToText(0x8421), "s");
    EXPECT_EQ(suitsToText(0x08CE), "");
    EXPECT_EQ(suitsToText(0), "");
    EXPECT_EQ(suitsToText(1 | 16), "ddhd");
    EXPECT_EQ(suitsToText(0x8421, true), "ddhhsscc");
    EXPECT_EQ(suitsToText(0x08CE, true), "dhdsdchshcsc");
    EXPECT_EQ(suitsToText(0x7BDE, true), "dhdsdchdhshcsdshsccdchcs");
    EXPECT_EQ(suitsToText(0xFFFF, true).size(), 32u);
}

TEST(HandRangeElementConversion, ElementSuitsToTextUsesTheClassMask) {
    EXPECT_EQ(elementSuitsToText(0x8421, 0x8421, Suited), "s");
    EXPECT_EQ(elementSuitsToText(0x7BDE, 0x7BDE, Offsuit), "o");
    EXPECT_EQ(elementSuitsToText(0x08CE, 0x08CE, Pair), "");
    // The class decides: a suited mask of an offsuit class is listed.
    EXPECT_EQ(elementSuitsToText(0x0021, 0x0021, Offsuit), "ddhh");
    // Short form when the mask equals the possible suits within the class mask.
    EXPECT_EQ(elementSuitsToText(0x0021, 0x0021, Suited), "s");
    EXPECT_EQ(elementSuitsToText(0x0002, 0x08CE, Pair), "dh");
    EXPECT_EQ(elementSuitsToText(0, 0x08CE, Pair), "");
    // An offsuit class holding exactly the six pair bits is listed, not written as a pair.
    EXPECT_EQ(elementSuitsToText(0x08CE, 0x7BDE, Offsuit), "dhdsdchshcsc");
}

TEST(HandRangeElementConversion, SuitToBinaryMaskGivesTheTwoLanes) {
    const auto dh = suitToBinaryMask(2);
    EXPECT_EQ(dh.first, laneMasks[0]);
    EXPECT_EQ(dh.second, laneMasks[1]);
    const auto cs = suitToBinaryMask(16384);
    EXPECT_EQ(cs.first, 0xFFF8000000000ULL);
    EXPECT_EQ(cs.second, 0x7FFC000000ULL);
    EXPECT_EQ(laneMasks[0], 0x1FFFULL);
    EXPECT_EQ(laneMasks[1], 0x3FFE000ULL);
}

TEST(HandRangeElementConversion, SuitToBinaryMaskNeedsExactlyOneBit) {
    AssertionRecorder recorder;
    for (unsigned int bad : {0u, 3u, 65536u, 0x8421u}) {
        const auto masks = suitToBinaryMask(bad);
        EXPECT_EQ(masks.first, 0u) << bad;
        EXPECT_EQ(masks.second, 0u) << bad;
    }
    EXPECT_EQ(recorder.messages().size(), 4u);
    EXPECT_TRUE(recorder.saw("Invalid value in suitToBinaryMask."));
}

// --- Hands -------------------------------------------------------------------------------

TEST(HandRangeElementConversion, HandsOfElementOnePerSuitBitFromBitZero) {
    std::vector<CardMask> hands;
    handsOfElement(6144, 0x8421, hands);
    EXPECT_EQ(hands, (std::vector<CardMask>{cardsMask("AdKd"), cardsMask("AhKh"), cardsMask("AsKs"),
                                            cardsMask("AcKc")}));
    hands.clear();
    handsOfElement(valueToBinaryMask('Q'), 0x08CE, hands);
    EXPECT_EQ(hands,
              (std::vector<CardMask>{cardsMask("QdQh"), cardsMask("QdQs"), cardsMask("QdQc"),
                                     cardsMask("QhQs"), cardsMask("QhQc"), cardsMask("QsQc")}));
    hands.clear();
    handsOfElement(6144, 16 | 2, hands); // dh then hd: first card is the ace
    EXPECT_EQ(hands, (std::vector<CardMask>{cardsMask("AdKh"), cardsMask("AhKd")}));
}

TEST(HandRangeElementConversion, HandsOfElementAppends) {
    std::vector<CardMask> hands{42};
    handsOfElement(3, 0x7BDE, hands);
    EXPECT_EQ(hands.size(), 13u);
    EXPECT_EQ(hands.front(), 42u);
}

TEST(HandRangeElementConversion, SuitPairOfAhAdIsDh) {
    EXPECT_EQ(suitPairOfHand(cardMask("Ah") | cardMask("Ad")), 2u);
    EXPECT_EQ(suitPairOfHand(cardMask("Ad") | cardMask("Ah")), 2u);
    // Through the evaluator's card indices, in either order of the text.
    EXPECT_EQ(suitPairOfHand(maskOfText("AhAd")), 2u);
    EXPECT_EQ(suitPairOfHand(maskOfText("AdAh")), 2u);
}

TEST(HandRangeElementConversion, SuitPairOf2dAhIsHd) {
    EXPECT_EQ(suitPairOfHand(cardsMask("2dAh")), 16u);
    const Element element = elementOfHand(cardsMask("2dAh"));
    EXPECT_EQ(element.values, 4097u);
    EXPECT_EQ(element.suits, 16u);
    EXPECT_EQ(element.suitClass, Offsuit);
}

TEST(HandRangeElementConversion, SuitPairOfHandEveryLaneCombination) {
    EXPECT_EQ(suitPairOfHand(cardsMask("AdKd")), 1u);
    EXPECT_EQ(suitPairOfHand(cardsMask("AhKh")), 32u);
    EXPECT_EQ(suitPairOfHand(cardsMask("AsKs")), 1024u);
    EXPECT_EQ(suitPairOfHand(cardsMask("AcKc")), 32768u);
    EXPECT_EQ(suitPairOfHand(cardsMask("2dAh")), 16u);
    EXPECT_EQ(suitPairOfHand(cardsMask("Ad2h")), 2u);
    EXPECT_EQ(suitPairOfHand(cardsMask("2dAs")), 256u);
    EXPECT_EQ(suitPairOfHand(cardsMask("Ad2s")), 4u);
    EXPECT_EQ(suitPairOfHand(cardsMask("2dAc")), 4096u);
    EXPECT_EQ(suitPairOfHand(cardsMask("Ad2c")), 8u);
    EXPECT_EQ(suitPairOfHand(cardsMask("2hAs")), 512u);
    EXPECT_EQ(suitPairOfHand(cardsMask("Ah2s")), 64u);
    EXPECT_EQ(suitPairOfHand(cardsMask("2hAc")), 8192u);
    EXPECT_EQ(suitPairOfHand(cardsMask("Ah2c")), 128u);
    EXPECT_EQ(suitPairOfHand(cardsMask("2sAc")), 16384u);
    EXPECT_EQ(suitPairOfHand(cardsMask("As2c")), 2048u);
    // Pairs take the upper triangle.
    EXPECT_EQ(suitPairOfHand(cardsMask("7s7h")), 64u);
    EXPECT_EQ(suitPairOfHand(cardsMask("7c7d")), 8u);
}

TEST(HandRangeElementConversion, SuitPairOfHandRefusesOtherShapes) {
    AssertionRecorder recorder;
    EXPECT_EQ(suitPairOfHand(0), 0u);
    EXPECT_EQ(suitPairOfHand(cardMask("Ad")), 0u);
    EXPECT_EQ(suitPairOfHand(cardsMask("AdKdQd")), 0u);
    EXPECT_EQ(suitPairOfHand(cardsMask("AdKhQs")), 0u);
    EXPECT_EQ(suitPairOfHand(cardMask("Ad") | (1ULL << 60)), 0u);
    EXPECT_EQ(recorder.messages(), std::vector<std::string>(5, "Invalid suits."));
}

TEST(HandRangeElementConversion, ElementOfHandGivesTheClass) {
    const Element suited = elementOfHand(cardsMask("KhQh"));
    EXPECT_EQ(suited.values, 2048u | 1024u);
    EXPECT_EQ(suited.suits, 32u);
    EXPECT_EQ(suited.possibleSuits, 0x8421u);
    EXPECT_EQ(suited.suitClass, Suited);
    EXPECT_TRUE(suited.suited);

    const Element pair = elementOfHand(cardsMask("9c9s"));
    EXPECT_EQ(pair.values, 128u);
    EXPECT_EQ(pair.suits, 2048u);
    EXPECT_EQ(pair.possibleSuits, 2254u);
    EXPECT_EQ(pair.suitClass, Pair);
    EXPECT_FALSE(pair.suited);

    const Element offsuit = elementOfHand(cardsMask("Kc3d"));
    EXPECT_EQ(offsuit.values, 2048u | 2u);
    EXPECT_EQ(offsuit.suits, 4096u);
    EXPECT_EQ(offsuit.possibleSuits, 31710u);
    EXPECT_EQ(offsuit.suitClass, Offsuit);
    EXPECT_FALSE(offsuit.suited);
}

TEST(HandRangeElementConversion, EveryHandOfEveryClassRoundTrips) {
    const HandRange full(true);
    unsigned int hands = 0;
    for (const Element& element : full) {
        std::vector<CardMask> masks;
        handsOfElement(element.values, element.suits, masks);
        for (CardMask hand : masks) {
            ++hands;
            ASSERT_EQ(std::bitset<64>(hand).count(), 2u);
            const Element back = elementOfHand(hand);
            ASSERT_EQ(back.values, element.values);
            ASSERT_EQ(back.suited, element.suited);
            ASSERT_EQ(back.possibleSuits, element.possibleSuits);
            ASSERT_EQ(back.suits & element.possibleSuits, back.suits);
        }
    }
    EXPECT_EQ(hands, 1326u);
}

// --- Blocked suits -----------------------------------------------------------------------

TEST(HandRangeElementConversion, CardOutsideTheValuesBlocksNothing) {
    const Element ak = nonPairElement('A', 'K', Offsuit, 0x7BDE);
    for (const char* card : {"Qd", "Qh", "Qs", "Qc", "2d", "Tc"})
        EXPECT_EQ(blockedSuits(ak, cardMask(card)), 0u) << card;
    EXPECT_EQ(blockedSuits(pairElement('7', 0x08CE), cardMask("8s")), 0u);
}

TEST(HandRangeElementConversion, FirstCardBlocksItsRowSecondCardItsColumn) {
    const Element ak = nonPairElement('A', 'K', Offsuit, 0x7BDE);
    EXPECT_EQ(blockedSuits(ak, cardMask("Ad")), 0x7BDEu & 0x000Fu);
    EXPECT_EQ(blockedSuits(ak, cardMask("Ah")), 0x7BDEu & 0x00F0u);
    EXPECT_EQ(blockedSuits(ak, cardMask("As")), 0x7BDEu & 0x0F00u);
    EXPECT_EQ(blockedSuits(ak, cardMask("Ac")), 0x7BDEu & 0xF000u);
    EXPECT_EQ(blockedSuits(ak, cardMask("Kd")), 0x7BDEu & 0x1111u);
    EXPECT_EQ(blockedSuits(ak, cardMask("Kh")), 0x7BDEu & 0x2222u);
    EXPECT_EQ(blockedSuits(ak, cardMask("Ks")), 0x7BDEu & 0x4444u);
    EXPECT_EQ(blockedSuits(ak, cardMask("Kc")), 0x7BDEu & 0x8888u);
    const Element aks = nonPairElement('A', 'K', Suited, 0x8421);
    EXPECT_EQ(blockedSuits(aks, cardMask("Kh")), 32u);
    // Blocked bits come from the possible suits, whatever the element holds now.
    const Element empty = nonPairElement('A', 'K', Suited, 0);
    EXPECT_EQ(blockedSuits(empty, cardMask("Kh")), 32u);
}

TEST(HandRangeElementConversion, PairCardBlocksThreeOfSixTwoCardsBlockFive) {
    const Element nines = pairElement('9', 0x08CE);
    for (const char* card : {"9d", "9h", "9s", "9c"})
        EXPECT_EQ(suitBitCount(blockedSuits(nines, cardMask(card))), 3u) << card;
    EXPECT_EQ(blockedSuits(nines, cardMask("9d")), 0x000Eu);
    EXPECT_EQ(blockedSuits(nines, cardMask("9h")), 0x00C2u);
    EXPECT_EQ(blockedSuits(nines, cardMask("9s")), 0x0844u);
    EXPECT_EQ(blockedSuits(nines, cardMask("9c")), 0x0888u);
    const unsigned int both =
        blockedSuits(nines, cardMask("9d")) | blockedSuits(nines, cardMask("9s"));
    EXPECT_EQ(suitBitCount(both), 5u);
    EXPECT_EQ(availableCombinations(nines, {cardMask("9d"), cardMask("9s")}), 1u);
}

// --- Available combinations ----------------------------------------------------------------

TEST(HandRangeElementConversion, AvailableCombinationsOfAnElement) {
    const Element ak = nonPairElement('A', 'K', Offsuit, 0x7BDE);
    EXPECT_EQ(availableCombinations(ak, {}), 12u);
    EXPECT_EQ(availableCombinations(ak, {cardMask("Ad")}), 9u);
    EXPECT_EQ(availableCombinations(ak, {cardMask("Ad"), cardMask("Kd")}), 6u);
    EXPECT_EQ(availableCombinations(ak, {cardMask("Ad"), cardMask("Kh")}), 7u);
    EXPECT_EQ(availableCombinations(ak, {cardMask("Qd"), cardMask("2c")}), 12u);
    // Only current suits count: the element holds dh and hd.
    const Element two = nonPairElement('A', 'K', Offsuit, 2 | 16);
    EXPECT_EQ(availableCombinations(two, {cardMask("As")}), 2u);
    EXPECT_EQ(availableCombinations(two, {cardMask("Ad")}), 1u);
    EXPECT_EQ(availableCombinations(two, {cardMask("Ad"), cardMask("Ah")}), 0u);
    EXPECT_EQ(availableCombinations(nonPairElement('A', 'K', Offsuit, 0), {cardMask("As")}), 0u);
}

TEST(HandRangeElementConversion, AvailableCombinationsOfAWholeRange) {
    HandRange range;
    HandRangeStringManipulator(range).setFree("AA,AKs,KQo");
    EXPECT_EQ(availableCombinations(range, {}), 6u + 4u + 12u);
    // Ad removes 3 of AA and AdKd.
    EXPECT_EQ(availableCombinations(range, {cardMask("Ad")}), 3u + 3u + 12u);
    // Ad and Kd: 3 AA, 3 AKs, KQo loses the three with Kd.
    EXPECT_EQ(availableCombinations(range, {cardMask("Ad"), cardMask("Kd")}), 3u + 3u + 9u);
    // A whole board mask in one word works as well.
    EXPECT_EQ(availableCombinations(range, {cardsMask("AdKd")}), 3u + 3u + 9u);
    EXPECT_EQ(availableCombinations(HandRange(true), {cardMask("2c")}), 1326u - 51u);
    EXPECT_EQ(availableCombinations(HandRange(true), {cardsMask("2c3c4c")}), 1176u);
}

// --- Board text ----------------------------------------------------------------------------

TEST(HandRangeElementConversion, CardsOfTextUsesTheEvaluatorIndices) {
    for (const char* card : {"Ad", "2d", "Ah", "Ks", "Tc", "2c"})
        EXPECT_EQ(getIndexByCards(card), cardMask(card)) << card;
    EXPECT_EQ(cardsOfText("AhKd2c"),
              (std::vector<CardMask>{cardMask("Ah"), cardMask("Kd"), cardMask("2c")}));
    EXPECT_EQ(maskOfText("AhKd2c"), cardsMask("AhKd2c"));
    EXPECT_TRUE(cardsOfText("").empty());
    EXPECT_EQ(maskOfText(""), 0u);
}

TEST(HandRangeElementConversion, CardsOfTextWithAnEmptyRangeAddsNothing) {
    const HandRange empty;
    EXPECT_EQ(cardsOfText("Ah", &empty), (std::vector<CardMask>{cardMask("Ah")}));
    EXPECT_TRUE(cardsOfText("", &empty).empty());
}

TEST(HandRangeElementConversion, CardsOfTextOfARangeWithOneHandAddsBothCards) {
    HandRange range;
    HandRangeStringManipulator(range).set("KhQc");
    EXPECT_EQ(cardsOfText("2d", &range),
              (std::vector<CardMask>{cardMask("2d"), cardMask("Kh"), cardMask("Qc")}));
    // In the order of their bits: Kh (lane h) before Qc (lane c).
    EXPECT_EQ(cardsOfText("", &range), (std::vector<CardMask>{cardMask("Kh"), cardMask("Qc")}));
    EXPECT_EQ(maskOfText("2d", &range), cardsMask("2dKhQc"));
}

TEST(HandRangeElementConversion, CardsOfTextAddsCardsCommonToEveryHand) {
    HandRange range;
    HandRangeStringManipulator(range).set("AhKd,AhQc,AhAs");
    EXPECT_EQ(cardsOfText("", &range), (std::vector<CardMask>{cardMask("Ah")}));
    HandRangeStringManipulator(range).set("AhKd,AsQc");
    EXPECT_TRUE(cardsOfText("", &range).empty());
    EXPECT_TRUE(cardsOfText("", nullptr).empty());
}

// --- Element text ----------------------------------------------------------------------------

TEST(HandRangeElementConversion, ElementToText) {
    EXPECT_EQ(elementToText(pairElement('A', 0x08CE)), "AA");
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Suited, 0x8421)), "AKs");
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Offsuit, 0x7BDE)), "AKo");
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Suited, 1 | 32)), "AdKd,AhKh");
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Offsuit, 16)), "AhKd");
    EXPECT_EQ(elementToText(pairElement('7', 2 | 2048)), "7d7h,7s7c");
    EXPECT_EQ(elementToText(pairElement('7', 0)), "");
    EXPECT_EQ(elementToText(pairElement('7', 0), true), "77");
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Suited, 1), true), "AKs");
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Offsuit, 0), true), "AKo");
    // The offsuit hands of the pair bits are six concrete hands, never "AK".
    EXPECT_EQ(elementToText(nonPairElement('A', 'K', Offsuit, 0x08CE)),
              "AdKh,AdKs,AdKc,AhKs,AhKc,AsKc");
    EXPECT_EQ(elementToHoverText(nonPairElement('A', 'K', Offsuit, 0x08CE)).substr(0, 16),
              "AdKh (1), AdKs (");
}

TEST(HandRangeElementConversion, ElementToHoverTextAndList) {
    EXPECT_EQ(elementToHoverText(nonPairElement('A', 'K', Suited, 0x8421)), "AKs (4)");
    EXPECT_EQ(elementToHoverText(pairElement('A', 0x08CE)), "AA (6)");
    EXPECT_EQ(elementToHoverText(nonPairElement('A', 'K', Offsuit, 0x7BDE)), "AKo (12)");
    EXPECT_EQ(elementToHoverText(nonPairElement('A', 'K', Suited, 1 | 32)), "AdKd (1), AhKh (1)");
    EXPECT_EQ(elementToHoverText(nonPairElement('A', 'K', Offsuit, 16)), "AhKd (1)");
    EXPECT_EQ(elementToHoverText(pairElement('A', 0)), "");
    EXPECT_EQ(elementToList(nonPairElement('A', 'K', Suited, 1 | 32)), "AdKd,AhKh");
    EXPECT_EQ(elementToList(nonPairElement('A', 'K', Suited, 0x8421)), "AKs");
    EXPECT_EQ(elementToList(pairElement('A', 0x08CE)), "AA");
    EXPECT_EQ(elementToList(pairElement('A', 0)), "");
}
