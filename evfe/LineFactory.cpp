#include "evfe/LineFactory.h"

#include "evfe/Street.h"

#include <algorithm>

namespace {

struct ActionTemplate {
    const char* verb;
    ActionCode action;
    bool needsOwnSize;
};

// The six action trees, in vector order. Index 0 belongs to the first actor.
std::vector<ActionTemplate> skeleton(LineKind kind) {
    switch (kind) {
    case LineKind::CheckFold:
        return {{"check", ActionCode::Check, false},
                {"check", ActionCode::CheckCheck, false},
                {"bet", ActionCode::CheckBetFold, false}};
    case LineKind::CheckCall:
        return {{"check", ActionCode::Check, false},
                {"check", ActionCode::CheckCheck, false},
                {"bet", ActionCode::CheckBetCall, true}};
    case LineKind::CheckRaise:
        return {{"check/raise", ActionCode::Check, true},
                {"check", ActionCode::CheckCheck, false},
                {"bet/fold", ActionCode::CheckBetRaiseFold, true},
                {"bet/call", ActionCode::CheckBetRaiseCall, false}};
    case LineKind::BetFold:
        return {{"bet", ActionCode::Bet, true},
                {"fold", ActionCode::Fold, false},
                {"call", ActionCode::Call, false},
                {"raise", ActionCode::RaiseFold, false}};
    case LineKind::BetCall:
        return {{"bet", ActionCode::Bet, true},
                {"fold", ActionCode::Fold, false},
                {"call", ActionCode::Call, false},
                {"raise", ActionCode::RaiseCall, true}};
    case LineKind::BetShip:
        return {{"bet", ActionCode::Bet, true},
                {"fold", ActionCode::Fold, false},
                {"call", ActionCode::Call, false},
                {"raise/fold", ActionCode::RaiseShipFold, true},
                {"raise/call", ActionCode::RaiseShipCall, false}};
    }
    return {};
}

LineVariant buildSkeleton(LineKind kind, const std::string& variantName,
                          const std::string& forPlayer) {
    LineVariant variant(forPlayer, variantName, kind);
    const bool player1First = variant.isPlayer1FirstToAct();
    const unsigned int fullRange = 0;
    variant.firstActorRanges.addGroup(RangeGroupSet::noGroup, std::string());
    variant.secondActorRanges.addGroup(RangeGroupSet::noGroup, std::string());

    const std::vector<ActionTemplate> tree = skeleton(kind);
    variant.actions.reserve(tree.size());
    for (std::size_t i = 0; i < tree.size(); ++i) {
        LineAction action;
        action.firstToAct = i == 0;
        action.player1FirstToAct = player1First;
        action.needsOwnSize = tree[i].needsOwnSize;
        action.verb = tree[i].verb;
        action.action = tree[i].action;
        RangeGroupSet& groups = i == 0 ? variant.firstActorRanges : variant.secondActorRanges;
        action.range = groups.addGroup(fullRange, std::string());
        variant.actions.push_back(action);
    }
    return variant;
}

// One of the 24 lines: its skeleton, the prefix verb P of the first action and the verb Q
// of the other player's raise. Empty P and Q keep the skeleton's verbs.
struct LineRecipe {
    const char* name;
    LineKind kind;
    const char* firstVerb;
    const char* raiseVerb;
};

const LineRecipe recipes[] = {
    {"Check/Fold", LineKind::CheckFold, "", ""},
    {"Check/Call", LineKind::CheckCall, "", ""},
    {"Check/Raise", LineKind::CheckRaise, "", ""},
    {"Bet/Fold", LineKind::BetFold, "", ""},
    {"Bet/Call", LineKind::BetCall, "", ""},
    {"Bet/Ship", LineKind::BetShip, "", ""},
    {"Raise/Fold", LineKind::BetFold, "raise", "3-bet"},
    {"Raise/Call", LineKind::BetCall, "raise", "3-bet"},
    {"Raise/Ship", LineKind::BetShip, "raise", "3-bet"},
    {"3-Bet/Fold", LineKind::BetFold, "3-bet", "4-bet"},
    {"3-Bet/Call", LineKind::BetCall, "3-bet", "4-bet"},
    {"3-Bet/Ship", LineKind::BetShip, "3-bet", "4-bet"},
    {"4-Bet/Fold", LineKind::BetFold, "4-bet", "5-bet"},
    {"4-Bet/Call", LineKind::BetCall, "4-bet", "5-bet"},
    {"4-Bet/Ship", LineKind::BetShip, "4-bet", "5-bet"},
    {"5-Bet/Fold", LineKind::BetFold, "5-bet", "6-bet"},
    {"5-Bet/Call", LineKind::BetCall, "5-bet", "6-bet"},
    {"5-Bet/Ship", LineKind::BetShip, "5-bet", "6-bet"},
    {"6-Bet/Fold", LineKind::BetFold, "6-bet", "7-bet"},
    {"6-Bet/Call", LineKind::BetCall, "6-bet", "7-bet"},
    {"6-Bet/Ship", LineKind::BetShip, "6-bet", "7-bet"},
    {"7-Bet/Fold", LineKind::BetFold, "7-bet", "8-bet"},
    {"7-Bet/Call", LineKind::BetCall, "7-bet", "8-bet"},
    {"7-Bet/Ship", LineKind::BetShip, "7-bet", "8-bet"},
};

const LineRecipe* findRecipe(const std::string& lineName) {
    for (const LineRecipe& recipe : recipes) {
        if (lineName == recipe.name)
            return &recipe;
    }
    return nullptr;
}

LineVariant buildLine(const LineRecipe& recipe, const std::string& variantName,
                      const std::string& forPlayer) {
    LineVariant variant = buildSkeleton(recipe.kind, variantName, forPlayer);
    const std::string first = recipe.firstVerb;
    if (first.empty())
        return variant;
    const std::string raise = recipe.raiseVerb;
    std::vector<LineAction>& actions = variant.actions;
    actions[0].verb = first;
    if (recipe.kind == LineKind::BetShip) {
        actions[3].verb = raise + "/fold";
        if (actions.size() > 4)
            actions[4].verb = raise + "/call";
    } else {
        actions[3].verb = raise;
        if (actions.size() > 4)
            actions[4].verb = std::string();
    }
    return variant;
}

} // namespace

LineVariant LineFactory::checkFold(const std::string& variantName, const std::string& forPlayer) {
    return buildSkeleton(LineKind::CheckFold, variantName, forPlayer);
}

LineVariant LineFactory::checkCall(const std::string& variantName, const std::string& forPlayer) {
    return buildSkeleton(LineKind::CheckCall, variantName, forPlayer);
}

LineVariant LineFactory::checkRaise(const std::string& variantName, const std::string& forPlayer) {
    return buildSkeleton(LineKind::CheckRaise, variantName, forPlayer);
}

LineVariant LineFactory::betFold(const std::string& variantName, const std::string& forPlayer) {
    return buildSkeleton(LineKind::BetFold, variantName, forPlayer);
}

LineVariant LineFactory::betCall(const std::string& variantName, const std::string& forPlayer) {
    return buildSkeleton(LineKind::BetCall, variantName, forPlayer);
}

LineVariant LineFactory::betShip(const std::string& variantName, const std::string& forPlayer) {
    return buildSkeleton(LineKind::BetShip, variantName, forPlayer);
}

LineVariant LineFactory::create(const std::string& lineName, const std::string& variantName,
                                const std::string& forPlayer) {
    const LineRecipe* recipe = findRecipe(lineName);
    if (recipe == nullptr)
        return LineVariant(forPlayer, variantName, LineKind::CheckFold);
    return buildLine(*recipe, variantName, forPlayer);
}

std::pair<LineVariant, LineVariant>
LineFactory::createForBothPlayers(const std::string& lineName, const std::string& variantName) {
    return std::make_pair(create(lineName, variantName, "Player1"),
                          create(lineName, variantName, "Player2"));
}

bool LineFactory::isKnownLine(const std::string& lineName) {
    return findRecipe(lineName) != nullptr;
}

std::vector<std::string> LineFactory::allLineNames() {
    std::vector<std::string> names;
    for (const LineRecipe& recipe : recipes)
        names.emplace_back(recipe.name);
    return names;
}

std::vector<std::string> LineFactory::availableLineNames(Street street,
                                                         const std::vector<std::string>& shown) {
    std::vector<std::string> names;
    for (const LineRecipe& recipe : recipes) {
        const std::string name = recipe.name;
        if (street == Street::Preflop &&
            (name.compare(0, 6, "Check/") == 0 || name.compare(0, 4, "Bet/") == 0))
            continue;
        if (std::find(shown.begin(), shown.end(), name) != shown.end())
            continue;
        names.push_back(name);
    }
    return names;
}
