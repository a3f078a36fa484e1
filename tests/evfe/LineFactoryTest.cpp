#include "evfe/LineFactory.h"

#include "Range/TreeRangeNode.h"
#include "evfe/Street.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

struct ExpectedAction {
    std::string verb;
    ActionCode action;
    bool needsOwnSize;
};

// The skeleton trees, written out independently of the factory.
std::vector<ExpectedAction> expectedTree(LineKind kind) {
    using A = ActionCode;
    switch (kind) {
    case LineKind::CheckFold:
        return {{"check", A::Check, false},
                {"check", A::CheckCheck, false},
                {"bet", A::CheckBetFold, false}};
    case LineKind::CheckCall:
        return {{"check", A::Check, false},
                {"check", A::CheckCheck, false},
                {"bet", A::CheckBetCall, true}};
    case LineKind::CheckRaise:
        return {{"check/raise", A::Check, true},
                {"check", A::CheckCheck, false},
                {"bet/fold", A::CheckBetRaiseFold, true},
                {"bet/call", A::CheckBetRaiseCall, false}};
    case LineKind::BetFold:
        return {{"bet", A::Bet, true},
                {"fold", A::Fold, false},
                {"call", A::Call, false},
                {"raise", A::RaiseFold, false}};
    case LineKind::BetCall:
        return {{"bet", A::Bet, true},
                {"fold", A::Fold, false},
                {"call", A::Call, false},
                {"raise", A::RaiseCall, true}};
    case LineKind::BetShip:
        return {{"bet", A::Bet, true},
                {"fold", A::Fold, false},
                {"call", A::Call, false},
                {"raise/fold", A::RaiseShipFold, true},
                {"raise/call", A::RaiseShipCall, false}};
    }
    return {};
}

struct LineRow {
    std::string name;
    LineKind kind;
    std::string prefixVerb; // empty: skeleton verbs
    std::string raiseVerb;
};

std::vector<LineRow> allLines() {
    std::vector<LineRow> rows = {
        {"Check/Fold", LineKind::CheckFold, "", ""},   {"Check/Call", LineKind::CheckCall, "", ""},
        {"Check/Raise", LineKind::CheckRaise, "", ""}, {"Bet/Fold", LineKind::BetFold, "", ""},
        {"Bet/Call", LineKind::BetCall, "", ""},       {"Bet/Ship", LineKind::BetShip, "", ""}};
    const std::vector<std::pair<std::string, std::pair<std::string, std::string>>> prefixes = {
        {"Raise", {"raise", "3-bet"}}, {"3-Bet", {"3-bet", "4-bet"}},
        {"4-Bet", {"4-bet", "5-bet"}}, {"5-Bet", {"5-bet", "6-bet"}},
        {"6-Bet", {"6-bet", "7-bet"}}, {"7-Bet", {"7-bet", "8-bet"}}};
    for (const auto& prefix : prefixes) {
        rows.push_back(
            {prefix.first + "/Fold", LineKind::BetFold, prefix.second.first, prefix.second.second});
        rows.push_back(
            {prefix.first + "/Call", LineKind::BetCall, prefix.second.first, prefix.second.second});
        rows.push_back(
            {prefix.first + "/Ship", LineKind::BetShip, prefix.second.first, prefix.second.second});
    }
    return rows;
}

void expectLineShape(const LineRow& row, const LineVariant& variant, bool player1First) {
    SCOPED_TRACE(row.name + " for " + variant.forPlayer);
    EXPECT_EQ(variant.kind, row.kind);
    std::vector<ExpectedAction> tree = expectedTree(row.kind);
    if (!row.prefixVerb.empty()) {
        tree[0].verb = row.prefixVerb;
        if (row.kind == LineKind::BetShip) {
            tree[3].verb = row.raiseVerb + "/fold";
            tree[4].verb = row.raiseVerb + "/call";
        } else {
            tree[3].verb = row.raiseVerb;
        }
    }
    ASSERT_EQ(variant.actions.size(), tree.size());
    ASSERT_EQ(variant.firstActorRanges.count(), 2u);
    ASSERT_EQ(variant.secondActorRanges.count(), tree.size());

    // Group 0 of each set: the full range, no parent, no name.
    for (const RangeGroupSet* set : {&variant.firstActorRanges, &variant.secondActorRanges}) {
        EXPECT_EQ(set->group(0)->parent, RangeGroupSet::noGroup);
        EXPECT_EQ(set->group(0)->name, "");
        EXPECT_TRUE(set->group(0)->handRange.isEmpty());
    }
    for (std::size_t i = 0; i < tree.size(); ++i) {
        SCOPED_TRACE("action " + std::to_string(i));
        const LineAction& action = variant.actions[i];
        EXPECT_EQ(action.verb, tree[i].verb);
        EXPECT_EQ(action.action, tree[i].action);
        EXPECT_EQ(action.needsOwnSize, tree[i].needsOwnSize);
        EXPECT_EQ(action.firstToAct, i == 0);
        EXPECT_EQ(action.player1FirstToAct, player1First);
        EXPECT_EQ(action.size, 0.0f);
        EXPECT_EQ(action.addition, "");
        // The first action's group is group 1 of the first actor's set, reaction i is group
        // i of the other's; all are children of group 0 without a name.
        const RangeGroupSet& set = i == 0 ? variant.firstActorRanges : variant.secondActorRanges;
        const unsigned int expectedIndex = i == 0 ? 1u : static_cast<unsigned int>(i);
        ASSERT_NE(action.range, nullptr);
        EXPECT_EQ(set.indexOf(action.range), expectedIndex);
        EXPECT_EQ(action.range->parent, 0u);
        EXPECT_EQ(action.range->name, "");
    }
    EXPECT_EQ(variant.firstActorRanges.group(0)->children, std::vector<unsigned int>{1u});
}

TEST(LineFactoryTest, EveryLineHasItsKindVerbsCodesAndGroups) {
    for (const LineRow& row : allLines()) {
        const LineVariant variant = LineFactory::create(row.name, "Main Variant", "Player1");
        EXPECT_EQ(variant.name, "Main Variant");
        EXPECT_EQ(variant.forPlayer, "Player1");
        expectLineShape(row, variant, true);
    }
}

TEST(LineFactoryTest, NewVariantHasDefaultMoneyAndNoResults) {
    const LineVariant variant = LineFactory::create("4-Bet/Ship", "Deep", "Player2");
    EXPECT_EQ(variant.deadmoney, 0.0f);
    EXPECT_EQ(variant.player1sEffectiveStackSize, 100.0f);
    EXPECT_EQ(variant.player2sEffectiveStackSize, 100.0f);
    EXPECT_EQ(variant.player1sLastInvestment, 0.0f);
    EXPECT_EQ(variant.player2sLastInvestment, 0.0f);
    EXPECT_EQ(variant.FE_P1, 0.0f);
    EXPECT_EQ(variant.FE_P2, 0.0f);
    EXPECT_EQ(variant.EV_P1, 0.0f);
    EXPECT_EQ(variant.EV_P2, 0.0f);
    EXPECT_EQ(variant.explanation, "");
}

TEST(LineFactoryTest, Player2AsFirstActorOnlyFlipsTheFlag) {
    for (const LineRow& row : allLines()) {
        const LineVariant variant = LineFactory::create(row.name, "Main Variant", "Player2");
        expectLineShape(row, variant, false);
    }
}

TEST(LineFactoryTest, CheckFoldAndCheckCallDifferOnlyInTheBet) {
    const LineVariant fold = LineFactory::create("Check/Fold", "v", "Player1");
    const LineVariant call = LineFactory::create("Check/Call", "v", "Player1");
    ASSERT_EQ(fold.actions.size(), call.actions.size());
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(fold.actions[i].verb, call.actions[i].verb);
        EXPECT_EQ(fold.actions[i].action, call.actions[i].action);
        EXPECT_EQ(fold.actions[i].needsOwnSize, call.actions[i].needsOwnSize);
    }
    EXPECT_EQ(fold.actions[2].verb, call.actions[2].verb);
    EXPECT_EQ(fold.actions[2].action, ActionCode::CheckBetFold);
    EXPECT_EQ(call.actions[2].action, ActionCode::CheckBetCall);
    EXPECT_FALSE(fold.actions[2].needsOwnSize);
    EXPECT_TRUE(call.actions[2].needsOwnSize);
}

TEST(LineFactoryTest, RaiseHasASizeBoxInBetCallButNotInBetFold) {
    const LineVariant fold = LineFactory::create("Bet/Fold", "v", "Player1");
    const LineVariant call = LineFactory::create("Bet/Call", "v", "Player1");
    EXPECT_EQ(fold.actions[3].verb, "raise");
    EXPECT_FALSE(fold.actions[3].needsOwnSize);
    EXPECT_EQ(call.actions[3].verb, "raise");
    EXPECT_TRUE(call.actions[3].needsOwnSize);
}

TEST(LineFactoryTest, SkeletonFactoriesBuildTheBetAndCheckLines) {
    const std::vector<std::pair<LineVariant, LineKind>> built = {
        {LineFactory::checkFold("a", "Player1"), LineKind::CheckFold},
        {LineFactory::checkCall("a", "Player1"), LineKind::CheckCall},
        {LineFactory::checkRaise("a", "Player1"), LineKind::CheckRaise},
        {LineFactory::betFold("a", "Player1"), LineKind::BetFold},
        {LineFactory::betCall("a", "Player1"), LineKind::BetCall},
        {LineFactory::betShip("a", "Player1"), LineKind::BetShip}};
    const std::vector<LineRow> rows = allLines();
    for (std::size_t i = 0; i < built.size(); ++i) {
        EXPECT_EQ(built[i].first.kind, built[i].second);
        expectLineShape(rows[i], built[i].first, true);
    }
}

TEST(LineFactoryTest, CompanionBuildsBothFirstActorsWithOneName) {
    const std::pair<LineVariant, LineVariant> both =
        LineFactory::createForBothPlayers("3-Bet/Call", "From Hand History");
    EXPECT_EQ(both.first.forPlayer, "Player1");
    EXPECT_EQ(both.second.forPlayer, "Player2");
    EXPECT_EQ(both.first.name, "From Hand History");
    EXPECT_EQ(both.second.name, "From Hand History");
    const LineRow row{"3-Bet/Call", LineKind::BetCall, "3-bet", "4-bet"};
    expectLineShape(row, both.first, true);
    expectLineShape(row, both.second, false);
}

TEST(LineFactoryTest, UnknownNameBuildsAVariantWithoutActions) {
    EXPECT_FALSE(LineFactory::isKnownLine("8-Bet/Fold"));
    EXPECT_TRUE(LineFactory::isKnownLine("7-Bet/Ship"));
    const LineVariant variant = LineFactory::create("8-Bet/Fold", "Main Variant", "Player1");
    EXPECT_TRUE(variant.actions.empty());
    EXPECT_EQ(variant.forPlayer, "Player1");
    EXPECT_EQ(variant.name, "Main Variant");
    EXPECT_EQ(variant.firstActorRanges.count(), 0u);
    EXPECT_EQ(variant.secondActorRanges.count(), 0u);
}

TEST(LineFactoryTest, CopyIsDeepAndPointsAtItsOwnGroups) {
    LineVariant original = LineFactory::create("Bet/Ship", "Main Variant", "Player1");
    original.actions[2].size = 7.0f;
    original.deadmoney = 12.0f;
    original.actions[3].range->name = "shove";
    // Plain assignment bypasses the group filter; the copy must still hold exactly this.
    original.actions[3].range->handRange = Range::HandRange(true);

    LineVariant copy(original);
    ASSERT_EQ(copy.actions.size(), 5u);
    EXPECT_EQ(copy.deadmoney, 12.0f);
    EXPECT_EQ(copy.actions[2].size, 7.0f);
    for (std::size_t i = 0; i < copy.actions.size(); ++i) {
        EXPECT_NE(copy.actions[i].range, original.actions[i].range);
        const RangeGroupSet& set = i == 0 ? copy.firstActorRanges : copy.secondActorRanges;
        EXPECT_NE(set.indexOf(copy.actions[i].range), RangeGroupSet::noGroup);
    }
    EXPECT_EQ(copy.actions[3].range->name, "shove");
    EXPECT_EQ(copy.actions[3].range->handRange.combinationCount(), 1326u);

    // Changing the copy leaves the original alone.
    copy.actions[3].range->handRange.reset();
    copy.actions[3].range->name = "changed";
    EXPECT_EQ(original.actions[3].range->name, "shove");
    EXPECT_EQ(original.actions[3].range->handRange.combinationCount(), 1326u);

    // Assignment is as deep.
    LineVariant assigned = LineFactory::create("Check/Fold", "other", "Player2");
    assigned = original;
    EXPECT_EQ(assigned.kind, LineKind::BetShip);
    EXPECT_EQ(assigned.secondActorRanges.indexOf(assigned.actions[4].range), 4u);
    EXPECT_EQ(original.secondActorRanges.indexOf(assigned.actions[4].range),
              RangeGroupSet::noGroup);
}

TEST(LineFactoryTest, MoveKeepsTheGroupsInPlace) {
    LineVariant original = LineFactory::create("Check/Raise", "Main Variant", "Player1");
    Range::TreeRangeNode* firstGroup = original.actions[0].range;
    Range::TreeRangeNode* lastGroup = original.actions[3].range;
    LineVariant moved(std::move(original));
    EXPECT_EQ(moved.actions[0].range, firstGroup);
    EXPECT_EQ(moved.actions[3].range, lastGroup);
    EXPECT_EQ(moved.firstActorRanges.indexOf(firstGroup), 1u);
    EXPECT_EQ(moved.secondActorRanges.indexOf(lastGroup), 3u);
}

TEST(RangeGroupSetTest, BadIndicesAssertAndGiveNothing) {
    RangeGroupSet set;
    AssertionRecorder recorder;
    EXPECT_EQ(set.group(0), nullptr);
    EXPECT_TRUE(recorder.saw("Group index out of range."));
    Range::TreeRangeNode* group = set.addGroup(3, "orphan");
    EXPECT_TRUE(recorder.saw("Parent group not found."));
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->parent, RangeGroupSet::noGroup);
    EXPECT_EQ(set.indexOf(nullptr), RangeGroupSet::noGroup);
}

TEST(LineFactoryTest, AllNamesInOfferedOrder) {
    const std::vector<std::string> expected = {
        "Check/Fold", "Check/Call", "Check/Raise", "Bet/Fold",   "Bet/Call",   "Bet/Ship",
        "Raise/Fold", "Raise/Call", "Raise/Ship",  "3-Bet/Fold", "3-Bet/Call", "3-Bet/Ship",
        "4-Bet/Fold", "4-Bet/Call", "4-Bet/Ship",  "5-Bet/Fold", "5-Bet/Call", "5-Bet/Ship",
        "6-Bet/Fold", "6-Bet/Call", "6-Bet/Ship",  "7-Bet/Fold", "7-Bet/Call", "7-Bet/Ship"};
    EXPECT_EQ(LineFactory::allLineNames(), expected);
    EXPECT_EQ(LineFactory::availableLineNames(Street::Flop, {}), expected);
    EXPECT_EQ(LineFactory::availableLineNames(Street::River, {}), expected);
}

TEST(LineFactoryTest, PreflopOffersNoCheckAndNoBetLines) {
    const std::vector<std::string> names = LineFactory::availableLineNames(Street::Preflop, {});
    ASSERT_EQ(names.size(), 18u);
    EXPECT_EQ(names.front(), "Raise/Fold");
    EXPECT_EQ(names.back(), "7-Bet/Ship");
    for (const std::string& name : names) {
        EXPECT_NE(name.rfind("Check/", 0), 0u) << name;
        EXPECT_NE(name.rfind("Bet/", 0), 0u) << name;
    }
}

TEST(LineFactoryTest, NamesAlreadyShownAreLeftOut) {
    const std::vector<std::string> names =
        LineFactory::availableLineNames(Street::Turn, {"Check/Call", "Bet/Ship", "7-Bet/Ship"});
    ASSERT_EQ(names.size(), 21u);
    EXPECT_EQ(names[0], "Check/Fold");
    EXPECT_EQ(names[1], "Check/Raise");
    EXPECT_EQ(names[2], "Bet/Fold");
    EXPECT_EQ(names[3], "Bet/Call");
    EXPECT_EQ(names[4], "Raise/Fold");
    EXPECT_EQ(names.back(), "7-Bet/Call");
}

} // namespace
