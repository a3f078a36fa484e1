#pragma once

#include <string>
#include <utility>
#include <vector>

#include "evfe/LineVariant.h"

enum class Street : int;

// Builds the variants of the 24 lines. Each line is one of six action tree skeletons with
// the verbs of its prefix: for a prefix P and its next raise Q the first action reads P and
// the other player's raise reads Q ("/Fold" and "/Call" lines) or Q + "/fold" and Q + "/call"
// ("/Ship" lines). "Check/..." and "Bet/..." lines are the skeletons themselves.
//
// A built variant has the default money, group 0 (no parent, empty name) in both range
// group sets, the first action's group below it in `firstActorRanges` and one group per
// reaction below it in `secondActorRanges`, in tree order. For `forPlayer` "Player2" every
// action has `player1FirstToAct` false.
class LineFactory {
public:
    // The skeletons. `forPlayer` is the first actor, "Player1" or "Player2".
    static LineVariant checkFold(const std::string& variantName, const std::string& forPlayer);
    static LineVariant checkCall(const std::string& variantName, const std::string& forPlayer);
    static LineVariant checkRaise(const std::string& variantName, const std::string& forPlayer);
    static LineVariant betFold(const std::string& variantName, const std::string& forPlayer);
    static LineVariant betCall(const std::string& variantName, const std::string& forPlayer);
    static LineVariant betShip(const std::string& variantName, const std::string& forPlayer);

    // The variant of the named line. A name that is not one of the 24 gives a variant with
    // the default money, kind CheckFold, no actions and empty group sets.
    static LineVariant create(const std::string& lineName, const std::string& variantName,
                              const std::string& forPlayer);

    // The same line for both first actors: first "Player1", then "Player2", same name.
    static std::pair<LineVariant, LineVariant> createForBothPlayers(const std::string& lineName,
                                                                    const std::string& variantName);

    // Whether `lineName` is one of the 24 names.
    static bool isKnownLine(const std::string& lineName);

    // All 24 names in the order in which they are offered: "Check/Fold", "Check/Call",
    // "Check/Raise", then the prefixes "Bet", "Raise", "3-Bet" to "7-Bet", each with "Fold",
    // "Call", "Ship".
    static std::vector<std::string> allLineNames();

    // The names that may be added on `street`, in offered order, without those already
    // shown. Preflop offers no "Check/..." and no "Bet/..." line.
    static std::vector<std::string> availableLineNames(Street street,
                                                       const std::vector<std::string>& shown);
};
