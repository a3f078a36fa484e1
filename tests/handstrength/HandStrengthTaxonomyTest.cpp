// The taxonomy: key operators, the name table and its naming rule, selectable features and
// the selector enumerations.

#include "handstrength/HandStrengthMasks.h"
#include "handstrength/HandStrengthNames.h"
#include "handstrength/HandStrengthSelectorOptions.h"
#include "handstrength/SelectableFeatures.h"

#include <gtest/gtest.h>

#include <QMetaType>

#include <bitset>
#include <map>
#include <set>

namespace {

HandStrengthKey key(unsigned long long positive, unsigned long long exclusive = 0) {
    return HandStrengthKey(positive, exclusive);
}

int bits(unsigned long long word) {
    return static_cast<int>(std::bitset<64>(word).count());
}

} // namespace

// ---- HandStrengthKey operators -----------------------------------------------------------

TEST(HandStrengthKeyOperators, EqualWordsAreEqualWhateverTheDisplayName) {
    const HandStrengthKey named(0x280, 0, "My Top Pairs");
    EXPECT_TRUE(named == key(0x280));
    EXPECT_FALSE(named != key(0x280));
    EXPECT_FALSE(named < key(0x280));
    EXPECT_FALSE(key(0x280) < named);
    EXPECT_TRUE(key(0x280) != key(0x280, 0x40000));
    std::map<HandStrengthKey, int> lookup;
    lookup[named] = 7;
    EXPECT_EQ(lookup.count(key(0x280)), 1u);
    EXPECT_EQ(lookup[key(0x280)], 7);
}

TEST(HandStrengthKeyOperators, CombineWordByWord) {
    const HandStrengthKey a(0x80, 0x1C0000);
    const HandStrengthKey b(0x200, 0x40000);
    EXPECT_EQ((a | b), key(0x280, 0x1C0000));
    EXPECT_EQ((a & b), key(0, 0x40000));
    EXPECT_EQ(~a, key(~0x80ULL, ~0x1C0000ULL));
    HandStrengthKey c = a;
    c |= b;
    EXPECT_EQ(c, key(0x280, 0x1C0000));
    EXPECT_TRUE(key(0x80) < key(0x100));
    EXPECT_TRUE(key(0x80, 1) < key(0x80, 2));
}

// ---- The name table ------------------------------------------------------------------------

TEST(HandStrengthNameTable, Has179RowsInTheTablesOrder) {
    const auto rows = nameTableRows();
    ASSERT_EQ(rows.size(), 179u);
    HandStrengthKeyTableOrder before;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_TRUE(before(rows[i - 1].first, rows[i].first)) << i;
        EXPECT_GE(bits(rows[i - 1].first.positive), bits(rows[i].first.positive)) << i;
    }
    for (const auto& row : rows)
        EXPECT_FALSE(row.second.empty());
    // Most positive bits first: the three-bit rows lead, the single bits close the table.
    EXPECT_EQ(bits(rows.front().first.positive), 3);
    EXPECT_EQ(rows.back().first, key(0x1));
}

TEST(HandStrengthNameTable, OrderUsesPositiveCountThenPositiveThenExclusive) {
    HandStrengthKeyTableOrder before;
    EXPECT_TRUE(before(key(0x3), key(0x100)));           // two bits before one
    EXPECT_TRUE(before(key(0x100), key(0x80)));          // larger positive first
    EXPECT_TRUE(before(key(0x80, 0x2), key(0x80, 0x1))); // larger exclusive first
    EXPECT_FALSE(before(key(0x80), HandStrengthKey(0x80, 0, "x")));
    // The bit count of `exclusive` takes no part.
    EXPECT_TRUE(before(key(0x80, 0x4), key(0x80, 0x3)));
}

TEST(HandStrengthNameTable, NamesRowsAsPrinted) {
    EXPECT_EQ(tableName(key(0x0004000000000000)), "Custom Sum");
    EXPECT_EQ(tableName(key(0x100)), "Highcard");
    EXPECT_EQ(tableName(key(0x1)), "Straightflush");
    EXPECT_EQ(tableName(key(0x000000000C000000)), "Straightflushdraw with OESD");
    EXPECT_EQ(tableName(key(0x000000000C000000, 0x433E00)), "Straightflushdraw with OESD");
    EXPECT_EQ(tableName(key(0x0100000008000000, 0x433E00)), "Using Two Holecards");
    EXPECT_EQ(tableName(key(0x0040000084000000, 0x433E00)), "To Nutflush");
    EXPECT_EQ(tableName(key(0x0040000084000000)), "Nutflushdraw");
    EXPECT_EQ(tableName(key(0x0000000004200000)), "Using Two Hole Cards");
    EXPECT_EQ(tableName(key(0x0002400000000000, 0x433E00)), "With Ace");
    EXPECT_EQ(tableName(key(0x0000400000000000, 0x0002000000433E00)), "Without Ace");
    EXPECT_EQ(tableName(key(0x0100001040000000, 0x433E00)), "2 OESD, 2 Gutshotdraw");
    EXPECT_EQ(tableName(key(0x0080008040000000, 0x433E00)), "2 Gutshotdraw");
    EXPECT_EQ(tableName(key(0x4080)), "Boardpair Only");
    EXPECT_EQ(tableName(key(0x8080)), "Overpair");
    EXPECT_EQ(tableName(key(0x0008000000000000)), "PP between Top/2nd Pair");
    EXPECT_EQ(tableName(key(0x0008000000000080)), "PP between Top/2nd Pair");
    EXPECT_EQ(tableName(key(0x80, 0x003800000000CE00)), "Other non-PP");
    EXPECT_EQ(tableName(key(0x280, 0x1C0000)), "With Other Kicker");
    EXPECT_EQ(tableName(key(0x100880)), "With Third Kicker");
    EXPECT_EQ(tableName(key(0x4040)), "Board Twopair Only");
    EXPECT_EQ(tableName(key(0x408040)), "With Overpair to Board Pair");
    EXPECT_EQ(tableName(key(0x10040, 0xE00)), "Other");
    EXPECT_EQ(tableName(key(0x10040)), "Without Pocket Pair, Using Two Hole Cards");
    EXPECT_EQ(tableName(key(0x12040)), "5th Top One");
    EXPECT_EQ(tableName(key(0x10020)), "Set");
    EXPECT_EQ(tableName(key(0x20020)), "Trips");
    EXPECT_EQ(tableName(key(0x120020)), "With Third Kicker");
    EXPECT_EQ(tableName(key(0x4004)), "Board Only");
    EXPECT_EQ(tableName(key(0x0000400084000000)), "Nutflushdraw + Overcards");
    EXPECT_EQ(tableName(key(0x0000800000000000)), "One Overcard");
    EXPECT_EQ(tableName(key(0x0000000800000000)), "5th Nutflushdraw");
    EXPECT_EQ(tableName(key(0x2000)), "5th Top One");
    EXPECT_EQ(tableName(key(0x40000)), "Top Kicker");
    EXPECT_EQ(tableName(key(0x0100000000000000)), "Using Two Holecards for Straightdraws");
    EXPECT_EQ(tableName(key(0x1000000)), "Pocket Pair being Underpair");
    EXPECT_EQ(tableName(key(0x0000001000000000)), "2 x each BD Gutshot Draw/OESD");
    EXPECT_EQ(tableName(key(0x0002000000000000)), "With Ace Overcard");
    EXPECT_EQ(tableName(key(0x2000000)), "");  // bit 25 has no row
    EXPECT_EQ(tableName(key(0x280, 0x1)), ""); // no row for these words
}

TEST(HandStrengthNameTable, EveryFeatureBitTheSystemNamesHasARow) {
    const unsigned long long unnamed =
        (1ULL << 25) | (0x3FULL << 40) | (1ULL << 48) | (0x7FULL << 57);
    for (int b = 0; b < 64; ++b) {
        const unsigned long long single = 1ULL << b;
        EXPECT_EQ(tableName(key(single)).empty(), (single & unnamed) != 0) << b;
    }
}

// ---- handStrengthName ---------------------------------------------------------------------

TEST(HandStrengthName, DefaultKeyHasNoName) {
    EXPECT_EQ(handStrengthName(HandStrengthKey()), "");
}

TEST(HandStrengthName, DisplayNameWinsEvenOverTheTable) {
    EXPECT_EQ(handStrengthName(HandStrengthKey(0x280, 0, "Good Pairs")), "Good Pairs");
    EXPECT_EQ(handStrengthName(HandStrengthKey(0x4000E0000000, 0, "With Flushdraw to Nuts")),
              "With Flushdraw to Nuts");
}

TEST(HandStrengthName, TableRowsReadByTheirName) {
    EXPECT_EQ(handStrengthName(key(0x280)), "Top Pair");
    EXPECT_EQ(handStrengthName(key(0x808)), "3nd Nutflush"); // the table's spelling stands
    EXPECT_EQ(handStrengthName(key(0x100)), "Highcard");
    EXPECT_EQ(handStrengthName(key(0x1)), "Straightflush");
}

TEST(HandStrengthName, ComposesSingleBitNamesFromTheLowBits) {
    EXPECT_EQ(handStrengthName(key(0x4000008)), "Flush + Flushdraw");
    EXPECT_EQ(handStrengthName(key(0x4000080)), "Pair + Flushdraw");
    EXPECT_EQ(handStrengthName(key(0x400060000000)),
              "Backdoor-Flushdraw + Backdoor-Straightdraw + Overcards");
    EXPECT_EQ(handStrengthName(key(0x84000080)), "Pair + Flushdraw + Nutflushdraw");
    EXPECT_EQ(handStrengthName(key(0x2000080)), "Pair + Unknown");
    EXPECT_EQ(handStrengthName(key(0x2000000)), "Unknown");
}

TEST(HandStrengthName, ExclusiveWordWithoutRowReadsOther) {
    EXPECT_EQ(handStrengthName(key(0x8, 0x7E00)), "Other");
    EXPECT_EQ(handStrengthName(key(0x4000080, 0x80000000)), "Other");
    EXPECT_EQ(handStrengthName(key(0, 0x1)), "Other");
}

TEST(SplitIntoNames, FromTheHighestBitToTheLowest) {
    const auto parts = splitIntoNames(0x0040000084000000ULL);
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0].first, key(0x0040000000000000));
    EXPECT_EQ(parts[0].second, "Using Two Holecards for Flushdraws");
    EXPECT_EQ(parts[1].first, key(0x80000000));
    EXPECT_EQ(parts[1].second, "Nutflushdraw");
    EXPECT_EQ(parts[2].first, key(0x4000000));
    EXPECT_EQ(parts[2].second, "Flushdraw");
    EXPECT_TRUE(splitIntoNames(0).empty());
    const auto unknown = splitIntoNames(0x2000000ULL);
    ASSERT_EQ(unknown.size(), 1u);
    EXPECT_EQ(unknown[0].second, "");
}

// ---- Named masks ----------------------------------------------------------------------------

TEST(HandStrengthMasks, HoldTheirBits) {
    EXPECT_EQ(handValueMask, 0x1FFULL);
    EXPECT_EQ(madeHandWithHoleCardsMask,
              (0x1FULL << 9) | (1ULL << 16) | (1ULL << 17) | (1ULL << 22));
    EXPECT_EQ(nutRankMask, 0x1FULL << 31);
    EXPECT_EQ(kickerMask, 0x7ULL << 18);
    EXPECT_EQ(topThreeRanksMask, 0x7ULL << 9);
    EXPECT_EQ(otherFlushMask, 0x3FULL << 9);
    EXPECT_EQ(weakerFlushMask, 0x1FULL << 9);
    EXPECT_EQ(otherPairMask, (1ULL << 9) | (1ULL << 10) | (1ULL << 11) | (1ULL << 14) |
                                 (1ULL << 15) | (1ULL << 51) | (1ULL << 52) | (1ULL << 53));
    EXPECT_EQ(overcardMask, (1ULL << 46) | (1ULL << 47));
    EXPECT_EQ(baseSelectableMask, 0x1FFULL | (0x1FULL << 26) | (1ULL << 46) | (1ULL << 47));
}

// ---- selectableFeatures ---------------------------------------------------------------------

TEST(SelectableFeatures, TablesHaveTheirRows) {
    EXPECT_EQ(enablingFeatureRows().size(), 21u);
    EXPECT_EQ(disablingFeatureRows().size(), 45u);
}

TEST(SelectableFeatures, DefaultKeyOffersTheBase) {
    EXPECT_EQ(selectableFeatures(HandStrengthKey()), baseSelectableMask);
}

TEST(SelectableFeatures, PairOffersPairKindsThenKickers) {
    const unsigned long long pair = selectableFeatures(key(0x80));
    EXPECT_EQ(pair & handValueMask, 0u) << "no other hand value";
    EXPECT_EQ(pair & otherPairMask, otherPairMask);
    EXPECT_EQ(pair & kickerMask, 0u);
    const unsigned long long topPair = selectableFeatures(key(0x280));
    EXPECT_EQ(topPair & kickerMask, kickerMask);
    EXPECT_EQ(topPair & otherPairMask, 0u) << "the other pair kinds are gone";
    // Draws and overcards stay on offer beside a pair.
    EXPECT_EQ(topPair & 0x7C000000ULL, 0x7C000000ULL);
}

TEST(SelectableFeatures, StraightAndFlushRemoveTheirDraws) {
    EXPECT_EQ(selectableFeatures(key(0x10)) & 0x58000000ULL, 0u);
    EXPECT_EQ(selectableFeatures(key(0x10)) & 0x24000000ULL, 0x24000000ULL);
    EXPECT_EQ(selectableFeatures(key(0x8)) & 0x24000000ULL, 0u);
    EXPECT_EQ(selectableFeatures(key(0x8)) & otherFlushMask, otherFlushMask);
}

TEST(SelectableFeatures, ExclusiveBitsAreNeverOfferedAgain) {
    EXPECT_EQ(selectableFeatures(key(0x80, 0x200)) & 0x200, 0u);
    EXPECT_EQ(selectableFeatures(key(0x280, 0x40000)) & 0x40000, 0u);
    EXPECT_EQ(selectableFeatures(key(0, 0x80)) & 0x80, 0u);
}

TEST(SelectableFeatures, TwoBitTriggersNeverFireButSingleBitsDo) {
    // 0x40 enables 0x434000; 0x400000 (single) enables the pocket pair positions.
    const unsigned long long twoPair = selectableFeatures(key(0x40));
    EXPECT_EQ(twoPair & 0x434000ULL, 0x434000ULL);
    EXPECT_EQ(twoPair & 0x1808000ULL, 0u);
    EXPECT_EQ(selectableFeatures(key(0x400040)) & 0x1808000ULL, 0x1808000ULL);
    EXPECT_EQ(selectableFeatures(key(0x10040)) & 0xE00ULL, 0xE00ULL);
}

TEST(SelectableFeatures, FlushDrawOffersHoleCardsAndNutRanks) {
    const unsigned long long fd = selectableFeatures(key(0x4000000));
    EXPECT_EQ(fd & 0x0040000F80200000ULL, 0x0040000F80200000ULL);
    EXPECT_EQ(fd & 0x20000000ULL, 0u) << "no backdoor beside a flush draw";
    const unsigned long long nut = selectableFeatures(key(0x84000000));
    EXPECT_EQ(nut & nutRankMask, 0u);
    // The fifth nut rank also takes the kicker bits away.
    EXPECT_EQ(selectableFeatures(key(0x800000280)) & kickerMask, 0u);
    const unsigned long long bd = selectableFeatures(key(0x40000000));
    EXPECT_EQ(bd & 0x018000F000000000ULL, 0x018000F000000000ULL);
    EXPECT_EQ(bd & 0x8000000ULL, 0u);
}

TEST(SelectableFeatures, StraightFlushLeavesNothingButExtras) {
    EXPECT_EQ(selectableFeatures(key(0x1)) & baseSelectableMask, 0u);
}

// ---- Selector enumerations ------------------------------------------------------------------

using namespace HandStrengthSelectorOptions;

TEST(HandStrengthSelectorOptions, HandValueKeysAndLabels) {
    EXPECT_EQ(enumKey(HandValue::Any), HandStrengthKey());
    EXPECT_EQ(enumKey(HandValue::Highcards), key(0x100));
    EXPECT_STREQ(enumLabel(HandValue::Highcards), "Highcards");          // table says "Highcard"
    EXPECT_STREQ(enumLabel(HandValue::StraightFlush), "Straight Flush"); // table: "Straightflush"
    EXPECT_EQ(enumKey(HandValue::StraightFlush), key(0x1));
    HandValue v = HandValue::Any;
    unsigned long long expected = 0x100;
    for (int i = 1; i <= 9; ++i) {
        ++v;
        EXPECT_EQ(static_cast<int>(v), i);
        EXPECT_EQ(enumKey(v), key(expected));
        expected >>= 1;
    }
    ++v;
    EXPECT_EQ(static_cast<int>(v), 10) << "one past the last value";
    EXPECT_EQ(enumKey(v), HandStrengthKey());
}

TEST(HandStrengthSelectorOptions, DetailKeys) {
    EXPECT_EQ(enumKey(HighcardValue::OtherHighcards), key(0, 0xC00000000000));
    EXPECT_EQ(enumKey(HighcardValue::OneOvercardWithoutAce), key(0x800000000000, 0x2000000000000));
    EXPECT_EQ(enumKey(HighcardValue::OvercardsWithAce), key(0x2400000000000));
    EXPECT_EQ(enumKey(PairValue::OtherNonPocketPair), key(0, 0x003800000000CE00));
    EXPECT_EQ(enumKey(PairValue::OtherPocketPair), key(0x20000000000000));
    EXPECT_STREQ(enumLabel(PairValue::OtherPocketPair), "Other PP");
    EXPECT_EQ(enumKey(PairValue::Overpair), key(0x8000));
    EXPECT_STREQ(enumLabel(PairValue::BetweenTopAndSecondPair), "Pair <Top and >2nd Pair");
    EXPECT_EQ(enumKey(KickerValue::OtherKicker), key(0, 0x1C0000));
    EXPECT_EQ(enumKey(KickerValue::TopKicker), key(0x40000));
    EXPECT_EQ(enumKey(TwopairValue::WithPocketPair), key(0x400000));
    EXPECT_EQ(enumKey(PocketPairTwopairValue::WithUnderpair), key(0x1000000));
    EXPECT_EQ(enumKey(TwoCardTwopairValue::OtherOne), key(0, 0xE00));
    EXPECT_EQ(enumKey(OneCardTwopairValue::TopOne), key(0x200));
    EXPECT_EQ(enumKey(TripsValue::Set), key(0x10000));
    EXPECT_EQ(enumKey(TripsTripsValue::WeakerKicker), key(0, 0x1C0000));
    EXPECT_EQ(enumKey(FlushValue::WeakerFlush), key(0, 0x3E00));
    EXPECT_STREQ(enumLabel(FlushValue::ThirdNutflush), "3rd Nutflush"); // table: "3nd Nutflush"
    EXPECT_EQ(enumKey(FlushValue::Nutflush), key(0x200));
    EXPECT_EQ(enumKey(FlushDrawValue::Flushdraw), key(0x4000000));
    EXPECT_EQ(enumKey(FlushDrawStrength::Weaker), key(0, 0xF80000000));
    EXPECT_EQ(enumKey(FlushDrawStrength::ToNuts), key(0x80000000));
    EXPECT_EQ(enumKey(FlushDrawCardNumberValue::WithTwoHoleCards), key(0x40000000000000));
    EXPECT_EQ(enumKey(StraightDrawValue::BackdoorTwoGutshots), key(0x8000000000));
    EXPECT_EQ(enumKey(StraightDrawValue::BackdoorTwoOesdTwoGutshots), key(0x1000000000));
    EXPECT_STREQ(enumLabel(StraightDrawValue::BackdoorTwoOesdOneGutshot), "Backdoor: 2xOESD, 1xGS");
    EXPECT_EQ(enumKey(StraightDrawValue::Oesd), key(0x8000000));
    EXPECT_EQ(enumKey(StraightDrawCardNumberValue::WithOneHoleCard), key(0x80000000000000));
    // Value 0 of every enumeration is no restriction.
    EXPECT_EQ(enumKey(PairValue::None), HandStrengthKey());
    EXPECT_EQ(enumKey(StraightDrawCardNumberValue::Any), HandStrengthKey());
    EXPECT_STREQ(enumLabel(PairValue::None), "-");
    EXPECT_STREQ(enumLabel(FlushDrawStrength::Any), "Any");
}

TEST(HandStrengthSelectorOptions, ComparatorLabels) {
    EXPECT_STREQ(enumLabel(Comparator::Exactly), "Exactly");
    EXPECT_STREQ(enumLabel(Comparator::OrBetter), "Or Better");
    EXPECT_STREQ(enumLabel(Comparator::OrWorse), "Or Worse");
    EXPECT_STREQ(enumLabel(Comparator::OrBetter, true), "Or Above");
    EXPECT_STREQ(enumLabel(Comparator::OrWorse, true), "Or Below");
    Comparator c = Comparator::Exactly;
    EXPECT_EQ(++c, Comparator::OrBetter);
}

TEST(HandStrengthSelectorOptions, RegisteredAsMetaTypesUnderPlainNames) {
    registerHandStrengthSelectorMetaTypes();
    for (const char* name :
         {"HandValue", "Comparator", "HighcardValue", "PairValue", "KickerValue", "TwopairValue",
          "PocketPairTwopairValue", "TwoCardTwopairValue", "OneCardTwopairValue", "TripsValue",
          "TripsTripsValue", "FlushValue", "FlushDrawValue", "FlushDrawStrength",
          "FlushDrawCardNumberValue", "StraightDrawValue", "StraightDrawCardNumberValue"})
        EXPECT_NE(QMetaType::type(name), 0) << name;
    EXPECT_EQ(QMetaType::type("PairValue"), qMetaTypeId<PairValue>());
}
