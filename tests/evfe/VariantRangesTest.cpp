#include "SampleLines.h"

#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"
#include "evfe/LineFactory.h"
#include "evfe/VariantRanges.h"

#include <gtest/gtest.h>

namespace {

std::string textOf(const Range::HandRange& range) {
    return Range::HandRangeStringReader(range).compactText();
}

TEST(VariantRanges, TheFirstActorsFullRangeGoesIntoTheFirstSet) {
    LineVariant variant = LineFactory::create("Bet/Call", "Main Variant", "Player2");
    VariantRanges::assignFullRanges(variant, SampleLines::rangeOf("AA"),
                                    SampleLines::rangeOf("KK"));
    EXPECT_EQ(textOf(variant.firstActorRanges.group(0)->handRange), "KK");
    EXPECT_EQ(textOf(variant.secondActorRanges.group(0)->handRange), "AA");
    LineVariant first = LineFactory::create("Bet/Call", "Main Variant", "Player1");
    VariantRanges::assignFullRanges(first, SampleLines::rangeOf("AA"), SampleLines::rangeOf("KK"));
    EXPECT_EQ(textOf(first.firstActorRanges.group(0)->handRange), "AA");
}

TEST(VariantRanges, ANarrowerFullRangeDoesNotCutTheActionGroups) {
    LineVariant variant = LineFactory::create("Bet/Call", "Main Variant", "Player1");
    VariantRanges::assignFullRanges(variant, SampleLines::rangeOf("QQ+"),
                                    SampleLines::rangeOf("22+"));
    SampleLines::setActionRange(variant, 0, "QQ+");
    SampleLines::setActionRange(variant, 1, "JJ+");
    EXPECT_TRUE(VariantRanges::isInsideParent(variant.actions[0]));
    EXPECT_TRUE(VariantRanges::isInsideParent(variant.actions[1]));
    VariantRanges::assignFullRanges(variant, SampleLines::rangeOf("AA"),
                                    SampleLines::rangeOf("KK+"));
    EXPECT_EQ(textOf(variant.actions[0].range->handRange), "QQ+");
    EXPECT_FALSE(VariantRanges::isInsideParent(variant.actions[0]));
    EXPECT_FALSE(VariantRanges::isInsideParent(variant.actions[1]));
    // Typing into the group applies its parent again.
    SampleLines::setActionRange(variant, 1, "JJ+");
    EXPECT_EQ(textOf(variant.actions[1].range->handRange), "KK+");
    EXPECT_TRUE(VariantRanges::isInsideParent(variant.actions[1]));
}

TEST(VariantRanges, AnActionWithoutGroupIsNotInsideAParent) {
    LineAction action;
    EXPECT_FALSE(VariantRanges::isInsideParent(action));
}

TEST(VariantRanges, TheRemainderIsTheParentWithoutTheOtherGroups) {
    LineVariant variant = LineFactory::create("Bet/Ship", "Main Variant", "Player1");
    VariantRanges::assignFullRanges(variant, SampleLines::rangeOf("AA-TT"),
                                    SampleLines::rangeOf("AA-22,AKs"));
    SampleLines::setActionRange(variant, 1, "22-66");
    SampleLines::setActionRange(variant, 2, "77-TT");
    SampleLines::setActionRange(variant, 4, "AA,AKs");
    SampleLines::setActionRange(variant, 3, "KK");
    EXPECT_EQ(textOf(VariantRanges::parentRemainder(variant, 3)), "JJ-KK");
    // What no group holds is left for each of them.
    EXPECT_EQ(textOf(VariantRanges::parentRemainder(variant, 1)), "JJ-QQ,22-66");
    // The first action is alone below its parent.
    EXPECT_EQ(textOf(VariantRanges::parentRemainder(variant, 0)), "TT+");
    EXPECT_TRUE(VariantRanges::parentRemainder(variant, 7).isEmpty());
}

} // namespace
