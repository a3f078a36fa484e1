#pragma once

// Board-by-board counting of range against range.
//
// For one complete board every hand of both ranges that the board leaves possible is ranked
// once; the hands are then sorted by strength and walked from the weakest up. A hand of
// range1 beats every range2 hand already passed, except those sharing one of its cards:
//     wins(h) = below - below[c1] - below[c2]
// where below counts the passed range2 hands and below[c] those holding card c (a hand
// holding both c1 and c2 is h itself, which is never strictly below h). Ties work the same
// inside a group of equal strength, adding h back once when range2 holds h itself. So a
// board costs one ranking per hand and a linear walk, never a loop over pairs of hands.
//
// Large ranges are counted per value class instead (ValueClasses.h): on a board where no hand can
// make a flush, all hands of a value class have one strength, and the order of the 91 classes is
// tabulated per board value set. The walk is then per class, with the same arithmetic over the
// class's eight cards:
//     wins(class) = n x below - sum over its cards c of n(c) x below[c]
// (n hands of range1 in the class, n(c) of them holding c). On a board of three cards of a
// suit the suited hands of that suit can make a flush: they are ranked one by one and merged
// into the walk (a flush never ties a hand without one). Boards of four or five cards of a
// suit are counted per hand.
// Per-hand counters come out of the same walk: when it reaches a class, each range1 hand of
// the class takes below - below[c1] - below[c2] (and the same for ties) from the running
// per-card counts, so no hand is ranked and nothing is sorted; only the arithmetic is per
// hand.
// Per-group counters (range1 split into groups by the caller, say by the hand's features on
// the board) need not even that: the class formula holds for any subset of a class's grid, so
// each class adds one term per group it meets, usually one.
//
// Boards are enumerated as a fixed part plus every set of `count` further cards. Suit
// permutations that leave the fixed cards, the excluded cards and both ranges unchanged map
// boards onto boards with the same counts; only the smallest board mask of each orbit is
// counted, weighted by the orbit's size. Per-hand counters are folded back over the same
// permutations at the end, which makes them exact again. Per-group counters need no folding
// when every group is a union of orbits of hands (true of groups decided by the hand and the
// fixed board alone): a board and its image then give each group the same sum. Groups that
// are not are counted without symmetries.

#include "Cards.h"
#include "RankTables.h"
#include "SuitSymmetry.h"
#include "ValueClasses.h"

#include <cstdint>
#include <vector>

namespace qve {

struct LiveClass;

// Signed, since inclusion-exclusion subtracts whole enumerations.
struct Tally {
    std::int64_t wins = 0; // matchups won by range1, one unit per matchup per board
    std::int64_t ties = 0;
    std::vector<std::int64_t> handWins; // per hand of range1 (in the order given), by-hand mode
    std::vector<std::int64_t> handTies;
    std::vector<std::int64_t> groupWins; // per group of range1, by-group mode
    std::vector<std::int64_t> groupTies;
};

class BoardEnumeration {
public:
    // `hands1` and `hands2` must avoid every card that will be fixed or excluded for good;
    // hands are kept in the order given, and per-hand counters follow that order.
    // How a board is counted. Automatic picks per value class for large ranges; the others
    // are for tests and measurements.
    enum class Method { automatic, perHand, perValueClass };

    BoardEnumeration(const std::vector<CardMask>& hands1, const std::vector<CardMask>& hands2,
                     bool byHand, Method method = Method::automatic);
    // By-group mode: `groupOfHand[i]` (below `groupCount`) is the group of hands1[i]; the
    // tally's group counters sum the per-hand counters of each group.
    BoardEnumeration(const std::vector<CardMask>& hands1, const std::vector<CardMask>& hands2,
                     const std::vector<std::uint32_t>& groupOfHand, std::size_t groupCount,
                     Method method = Method::automatic);

    // Adds sign x the counts of every board `fixed` + C, C any `count` cards outside
    // `excluded` (which must contain `fixed`). `symmetries` must keep `fixed`, `excluded`
    // and both ranges; the identity comes first. Throws TerminationOccured when `stop`
    // turns true.
    void addBoards(CardMask fixed, CardMask excluded, int count,
                   const std::vector<SuitPermutation>& symmetries, std::int64_t sign, Tally& tally,
                   const volatile bool& stop) const;

    std::size_t handCount1() const { return count1; }

    struct Scratch; // per addBoards call

private:
    void countBoard(CardMask board, std::int64_t weight, Scratch& scratch) const;
    // False, counting nothing, on a board of four or five cards of one suit.
    bool countBoardByValueClass(CardMask board, std::int64_t weight, Scratch& scratch) const;
    void addHandsOfClass(const LiveClass& c, std::int32_t below, const std::int32_t* belowCard,
                         std::int32_t equal, const std::int32_t* equalCard, std::int64_t weight,
                         Scratch& scratch) const;
    void addHandsOfLoneClass(const LiveClass& c, std::uint32_t rows2, std::uint32_t columns2,
                             std::int32_t below, const std::int32_t* belowCard, std::int64_t weight,
                             Scratch& scratch) const;
    void addHandParts(const LiveClass& c, const std::uint64_t* rowPart,
                      const std::uint64_t* columnPart, std::uint64_t factor,
                      Scratch& scratch) const;
    // By-group mode: adds a class's counters to its groups when the class has few enough
    // groups; false when its hands must go through the per-hand counters instead.
    // `partCounts(grid)` gives the {wins, ties} of the range1 hands of a part of the grid.
    template <typename PartCounts>
    bool addGroupParts(int klass, unsigned live1, std::int64_t classWins, std::int64_t classTies,
                       std::int64_t weight, Scratch& scratch, const PartCounts& partCounts) const;
    // Whether every symmetry maps each hand of range1 to a hand of the same group.
    bool groupsKeptBy(const std::vector<SuitPermutation>& symmetries) const;
    void prepare(const std::vector<CardMask>& hands2, Method method);

    const RankTables& tables;
    bool byHand;
    bool byGroup = false;
    std::size_t count1 = 0;
    // The union of both ranges, each hand once.
    struct Entry {
        CardMask mask;
        std::uint64_t key;  // sum of the two cards' incremental keys
        std::uint64_t info; // card1 | card2 << 6 | in1 << 12 | in2 << 13 | slot << 16
    };
    std::vector<Entry> hands;
    // Per value class: the hands of range1 and range2 on the grid of ValueClasses.h.
    bool byValueClass = false;
    std::uint16_t grid1[valueClassCount] = {};
    std::uint16_t grid2[valueClassCount] = {};
    std::uint16_t slotOfGrid[valueClassCount][16] = {}; // range1 hand -> position in hands1
    std::vector<Entry> suited[4]; // hands (of either range) with both cards of one suit
    std::vector<int> slotOfHand;  // hand index -> position in hands1, or -1
    std::vector<CardMask> hands1;
    // By-group mode: the group of each hand of hands1, and per class its range1 hands split by
    // group, the largest part first: the parts of class k are
    // groupParts[groupPartBegin[k] .. groupPartBegin[k + 1]). A class of one group adds its
    // totals to the group, one of a few groups the class formula over all parts but the first,
    // which takes the rest; the hands of a class of more groups go through the per-hand
    // counters, summed per group at the end.
    struct GroupPart {
        std::uint16_t grid;
        std::uint32_t group;
    };
    std::vector<std::uint32_t> groupOfSlot;
    std::size_t groupCount = 0;
    std::vector<GroupPart> groupParts;
    std::uint16_t groupPartBegin[valueClassCount + 1] = {};
};

std::uint64_t binomial(int n, int k);

} // namespace qve
