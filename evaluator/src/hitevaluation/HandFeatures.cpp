#include "hitevaluation/HandFeatures.h"

#include "Platform.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace qve {

namespace {

// Ranks are value bits inside a lane: 0 is the deuce, 12 the ace. A rank set is a 13-bit
// word of them. A set of straight windows is a 13-bit word too, one bit per window at the
// rank of its highest card (3 is the wheel).
constexpr int Ace = 12;
constexpr unsigned AllRanks = 0x1FFF;
constexpr unsigned WheelRanks = 0x100F;
constexpr unsigned WheelWindow = 1U << 3;

// Inline bit tricks: without a hardware instruction in the target, the builtin popcount is a
// library call, and feature words are decided once per hand for every hit evaluation.
int bitCount(std::uint64_t x) {
    x = x - ((x >> 1) & 0x5555555555555555ULL);
    x = (x & 0x3333333333333333ULL) + ((x >> 2) & 0x3333333333333333ULL);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0FULL;
    return int((x * 0x0101010101010101ULL) >> 56);
}
// Count of a 13-bit rank set.
int rankCount(unsigned x) {
    x = x - ((x >> 1) & 0x5555U);
    x = (x & 0x3333U) + ((x >> 2) & 0x3333U);
    x = (x + (x >> 4)) & 0x0F0FU;
    return int((x + (x >> 8)) & 0x1FU);
}
bool severalBits(unsigned x) {
    return (x & (x - 1)) != 0;
}
int highestBit(unsigned x) {
    return highestBit64(x);
}
int lowestBit(unsigned x) {
    return lowestBit64(x);
}

unsigned laneOf(CardMask cards, int suit) {
    return unsigned(cards >> (13 * suit)) & AllRanks;
}

// The five ranks of the straight whose highest card is `top` (3 is the five of the wheel).
unsigned straightWindow(int top) {
    return top == 3 ? WheelRanks : (0x1FU << (top - 4));
}

// The windows that hold at least one rank of `ranks`.
unsigned windowsHolding(unsigned ranks) {
    const unsigned above =
        (ranks | (ranks << 1) | (ranks << 2) | (ranks << 3) | (ranks << 4)) & AllRanks & ~0xFU;
    return above | ((ranks & WheelRanks) ? WheelWindow : 0U);
}

// The union of the ranks of a set of windows.
unsigned ranksOfWindows(unsigned windows) {
    const unsigned below =
        windows | (windows >> 1) | (windows >> 2) | (windows >> 3) | (windows >> 4);
    return (below | ((windows & WheelWindow) ? (1U << Ace) : 0U)) & AllRanks;
}

// Per rank set, three tables over all 8192 sets:
// - `top`: highest card of the best straight, or -1;
// - `completing`: for a set without a straight, the windows that are the best straight of the
//   set plus one missing rank, for every missing rank that makes one. Each such window lacks
//   exactly its one rank, so a subset of them names its completing ranks by
//   ranksOfWindows(subset) & ~set. Meaningless for a set that holds a straight already.
// - `twoShort`: the windows that lack exactly two ranks of the set.
// And `windowRanks`, ranksOfWindows of every window set, indexed by the set shifted down by
// three (no window tops below the wheel's five).
struct StraightTable {
    std::array<signed char, 8192> top{};
    std::array<std::uint16_t, 8192> completing{};
    std::array<std::uint16_t, 8192> twoShort{};
    std::array<std::uint16_t, 1024> windowRanks{};
    StraightTable() {
        for (unsigned windows = 0; windows < 1024; ++windows)
            windowRanks[windows] = static_cast<std::uint16_t>(ranksOfWindows(windows << 3));
        for (unsigned ranks = 0; ranks < 8192; ++ranks) {
            top[ranks] = -1;
            unsigned windows = 0;
            for (int high = Ace; high >= 3; --high) {
                const unsigned window = straightWindow(high);
                if ((ranks & window) == window && top[ranks] < 0)
                    top[ranks] = static_cast<signed char>(high);
                if (rankCount(window & ~ranks) == 2)
                    windows |= 1U << high;
            }
            twoShort[ranks] = static_cast<std::uint16_t>(windows);
        }
        for (unsigned ranks = 0; ranks < 8192; ++ranks) {
            unsigned windows = 0;
            for (unsigned rest = AllRanks & ~ranks; rest; rest &= rest - 1) {
                const int best = top[ranks | (rest & (~rest + 1))];
                if (best >= 0)
                    windows |= 1U << best;
            }
            completing[ranks] = static_cast<std::uint16_t>(windows);
        }
    }
};

const StraightTable& straightTable() {
    static const StraightTable table;
    return table;
}

int straightTop(unsigned ranks) {
    return straightTable().top[ranks & AllRanks];
}

// Number of ranks above `rank` in `ranks`.
int ranksAbove(unsigned ranks, int rank) {
    return rankCount(ranks & (AllRanks << (rank + 1)) & AllRanks);
}

// The ranks that complete a straight whose best window holds at least one hole rank that is
// not on the board (`holeWindows` = windowsHolding of those ranks): a card of such a rank
// improves the hand to a straight that the board cannot give alone. `ranks` holds no straight.
unsigned straightOuts(const StraightTable& table, unsigned ranks, unsigned holeWindows) {
    return table.windowRanks[(table.completing[ranks] & holeWindows) >> 3] & ~ranks;
}

// Runner-runner straight potential on a flop: for each turn rank that is neither on the
// table nor an out already, the new outs that it opens. Entry t is that set of out ranks.
using BackdoorMap = std::array<unsigned, 13>;

// The backdoor entry of turn rank `t`, which is neither in `ranks` nor in `flopOuts`. No such
// turn completes a straight on a flop: any straight needs a hole rank off the board.
unsigned backdoorEntry(const StraightTable& table, unsigned ranks, unsigned holeWindows,
                       unsigned flopOuts, int t) {
    return straightOuts(table, ranks | (1U << t), holeWindows) & ~flopOuts;
}

// The turns whose backdoor entry may be non-empty; every other entry is empty. A new out r of
// turn t has a best window that holds a hole rank. Without t in it, that window would lack
// only r before the turn too and r would be an out already; so it lacks exactly t and r.
unsigned backdoorTurns(const StraightTable& table, unsigned ranks, unsigned holeWindows,
                       unsigned flopOuts) {
    return table.windowRanks[(table.twoShort[ranks] & holeWindows) >> 3] & ~ranks & ~flopOuts;
}

// Qualifier for the number of hole cards a made hand needs: none, one, two.
FeatureWord holeCardUse(int needed) {
    if (needed <= 0)
        return feature::MadeHandOnBoard;
    return needed == 1 ? feature::OneHoleCard : feature::TwoHoleCards;
}

// Rank bit 9 + index for an index of 0 to 4; nothing beyond.
FeatureWord rankBit(int index) {
    return index >= 0 && index <= 4 ? feature::FirstRank << index : 0;
}
FeatureWord kickerBit(int index) {
    return index >= 0 && index <= 2 ? feature::TopKicker << index : 0;
}
FeatureWord nutDrawBit(int index) {
    return index >= 0 && index <= 4 ? feature::NutFlushDraw << index : 0;
}

// Nut rank of a flush whose best hole card of the suit is `holeRank`: its place among the
// ranks of the suit that are not on the board.
int nutIndex(unsigned boardLane, int holeRank) {
    return ranksAbove(~boardLane & AllRanks, holeRank);
}

// Card counts per suit of a card mask, one 16-bit field per suit (d lowest).
std::uint64_t suitCounts(CardMask cards) {
    std::uint64_t x = (cards & 0x1FFFULL) | ((cards << 3) & (0x1FFFULL << 16)) |
                      ((cards << 6) & (0x1FFFULL << 32)) | ((cards << 9) & (0x1FFFULL << 48));
    x = x - ((x >> 1) & 0x5555555555555555ULL);
    x = (x & 0x3333333333333333ULL) + ((x >> 2) & 0x3333333333333333ULL);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0FULL;
    return (x + (x >> 8)) & 0x001F001F001F001FULL;
}
int countOfSuit(std::uint64_t counts, int suit) {
    return int((counts >> (16 * suit)) & 0x1F);
}

enum Category { HighCard, Pair, TwoPair, Trips, Straight, Flush, FullHouse, Quads, StraightFlush };

struct Hand {
    CardMask hand;
    CardMask board;
    CardMask all;
    unsigned allRanks; // ranks with at least one card, hole and board
    unsigned pairs;    // ranks with at least two cards
    unsigned trips;    // ranks with at least three cards
    unsigned quads;    // ranks with four cards
    unsigned boardRanks;
    unsigned boardPairs; // ranks with at least two board cards
    unsigned holeRanks;
    unsigned holeOnly; // hole ranks that are not on the board
    int holeRank1;     // ranks of the two hole cards
    int holeRank2;
    std::uint64_t suitCounts; // of all cards
    int flushSuit;            // suit with five or more cards, or -1

    int holeCount(int rank) const { return (holeRank1 == rank) + (holeRank2 == rank); }
    int boardCount(int rank) const {
        return int(((board >> rank) & 1) + ((board >> (13 + rank)) & 1) +
                   ((board >> (26 + rank)) & 1) + ((board >> (39 + rank)) & 1));
    }
};

FeatureWord madeHand(const Hand& h, Category& category) {
    if (h.flushSuit >= 0) {
        const unsigned lane = laneOf(h.all, h.flushSuit);
        const int top = straightTop(lane);
        if (top >= 0) {
            category = StraightFlush;
            const unsigned window = straightWindow(top);
            return feature::StraightFlush |
                   holeCardUse(rankCount(window & ~laneOf(h.board, h.flushSuit)));
        }
    }
    if (h.quads) {
        category = Quads;
        // All four cards of the rank play; the board lacks exactly the hole cards of it.
        return feature::FourOfAKind | holeCardUse(h.holeCount(highestBit(h.quads)));
    }
    const int trips = h.trips ? highestBit(h.trips) : -1;
    if (trips >= 0) {
        const unsigned otherPairs = h.pairs & ~(1U << trips);
        if (otherPairs) {
            const int pair = highestBit(otherPairs);
            category = FullHouse;
            const int needed =
                (3 - std::min(3, h.boardCount(trips))) + (2 - std::min(2, h.boardCount(pair)));
            return feature::FullHouse | holeCardUse(needed);
        }
    }
    if (h.flushSuit >= 0) {
        category = Flush;
        unsigned best = laneOf(h.all, h.flushSuit);
        for (int extra = countOfSuit(h.suitCounts, h.flushSuit) - 5; extra > 0; --extra)
            best &= best - 1; // drop the lowest card
        const unsigned holeLane = laneOf(h.hand, h.flushSuit) & best;
        if (!holeLane)
            return feature::Flush | feature::MadeHandOnBoard;
        return feature::Flush | holeCardUse(rankCount(holeLane)) |
               rankBit(nutIndex(laneOf(h.board, h.flushSuit), highestBit(holeLane)));
    }
    const int straight = straightTop(h.allRanks);
    if (straight >= 0) {
        category = Straight;
        return feature::Straight | holeCardUse(rankCount(straightWindow(straight) & ~h.boardRanks));
    }
    if (trips >= 0) {
        category = Trips;
        const int fromHole = h.holeCount(trips);
        if (fromHole == 0)
            return feature::ThreeOfAKind | feature::MadeHandOnBoard;
        if (fromHole == 2)
            return feature::ThreeOfAKind | feature::TwoHoleCards;
        const int kicker = highestBit(h.holeRanks & ~(1U << trips));
        return feature::ThreeOfAKind | feature::OneHoleCard |
               kickerBit(ranksAbove(~h.boardRanks & AllRanks, kicker));
    }
    const int high = h.pairs ? highestBit(h.pairs) : -1;
    const unsigned lowerPairs = high >= 0 ? h.pairs & ((1U << high) - 1) : 0U;
    if (lowerPairs) {
        const int low = highestBit(lowerPairs);
        category = TwoPair;
        const int holeHigh = h.holeCount(high);
        const int holeLow = h.holeCount(low);
        if (holeHigh + holeLow == 0)
            return feature::TwoPair | feature::MadeHandOnBoard;
        if (holeHigh == 2 || holeLow == 2) {
            const int pocket = holeHigh == 2 ? high : low;
            const int lowestBoardPair = h.boardPairs ? lowestBit(h.boardPairs) : 13;
            FeatureWord word = feature::TwoPair | feature::TwoPairWithPocketPair;
            if (pocket > highestBit(h.boardRanks))
                word |= feature::Overpair;
            else if (pocket < lowestBoardPair)
                word |= feature::PocketPairUnder;
            else
                word |= feature::PocketPairMiddle;
            return word;
        }
        // One or two hole cards each pair a board card; the rank is that of the better one.
        const int better = holeHigh ? high : low;
        return feature::TwoPair | holeCardUse(holeHigh + holeLow) |
               rankBit(ranksAbove(h.boardRanks, better));
    }
    if (high >= 0) {
        category = Pair;
        const int fromHole = h.holeCount(high);
        if (fromHole == 0)
            return feature::Pair | feature::MadeHandOnBoard;
        if (fromHole == 2) {
            const int above = ranksAbove(h.boardRanks, high);
            static constexpr FeatureWord positions[] = {
                feature::Overpair, feature::PocketPairBetweenTopAndSecond,
                feature::PocketPairBetweenSecondAndThird, feature::PocketPairBelowThird};
            return feature::Pair | positions[std::min(above, 3)];
        }
        const int kicker = highestBit(h.holeRanks & ~(1U << high));
        return feature::Pair | feature::OneHoleCard | rankBit(ranksAbove(h.boardRanks, high)) |
               kickerBit(ranksAbove(~h.boardRanks & AllRanks, kicker));
    }
    category = HighCard;
    return feature::HighCard;
}

FeatureWord flushDraws(const Hand& h, int boardCount) {
    for (int suit = 0; suit < 4; ++suit) {
        const unsigned holeLane = laneOf(h.hand, suit);
        if (!holeLane)
            continue;
        const int total = countOfSuit(h.suitCounts, suit);
        FeatureWord kind = 0;
        if (total == 4)
            kind = feature::FlushDraw;
        else if (total == 3 && boardCount == 3)
            kind = feature::BackdoorFlushDraw;
        if (!kind)
            continue;
        return kind |
               (severalBits(holeLane) ? feature::FlushDrawTwoHoleCards
                                      : feature::FlushDrawOneHoleCard) |
               nutDrawBit(nutIndex(laneOf(h.board, suit), highestBit(holeLane)));
    }
    return 0;
}

// The straight potential of a hand: its one-card outs and, on a flop with fewer than two outs,
// its runner-runner map (all empty otherwise). Two hands' potentials are equal when outs and
// maps are; `opening` holds the turns with a non-empty entry.
struct StraightPotential {
    unsigned outs = 0;
    BackdoorMap backdoor{};
    unsigned opening = 0;
};

StraightPotential straightPotential(const StraightTable& table, unsigned allRanks,
                                    unsigned holeOnly, bool flop) {
    const unsigned holeWindows = windowsHolding(holeOnly);
    StraightPotential p;
    p.outs = straightOuts(table, allRanks, holeWindows);
    if (!flop || severalBits(p.outs))
        return p;
    for (unsigned rest = backdoorTurns(table, allRanks, holeWindows, p.outs); rest;
         rest &= rest - 1) {
        const int t = lowestBit(rest);
        p.backdoor[t] = backdoorEntry(table, allRanks, holeWindows, p.outs, t);
        if (p.backdoor[t])
            p.opening |= 1U << t;
    }
    return p;
}

// Whether the potential of (`allRanks`, `holeOnly`) equals `full`, leaving at the first
// difference.
bool samePotential(const StraightTable& table, const StraightPotential& full, unsigned allRanks,
                   unsigned holeOnly, bool flop) {
    const unsigned holeWindows = windowsHolding(holeOnly);
    const unsigned outs = straightOuts(table, allRanks, holeWindows);
    if (outs != full.outs)
        return false;
    if (!flop || severalBits(outs))
        return true; // no runner-runner map on either side
    // Entries outside `turns` are empty here, so `full` may open nothing outside them.
    const unsigned turns = backdoorTurns(table, allRanks, holeWindows, outs);
    if (full.opening & ~turns)
        return false;
    for (unsigned rest = turns; rest; rest &= rest - 1) {
        const int t = lowestBit(rest);
        if (backdoorEntry(table, allRanks, holeWindows, outs, t) != full.backdoor[t])
            return false;
    }
    return true;
}

FeatureWord straightDraws(const Hand& h, int boardCount) {
    const StraightTable& table = straightTable();
    const bool flop = boardCount == 3;
    const StraightPotential full = straightPotential(table, h.allRanks, h.holeOnly, flop);
    FeatureWord word = 0;
    if (severalBits(full.outs))
        word |= feature::Oesd;
    else if (full.outs)
        word |= feature::Gutshot;
    int oesdTurns = 0;
    int gutshotTurns = 0;
    for (unsigned newOuts : full.backdoor) {
        if (severalBits(newOuts))
            ++oesdTurns;
        else if (newOuts)
            ++gutshotTurns;
    }
    if (oesdTurns + gutshotTurns > 0) {
        word |= feature::BackdoorStraightDraw;
        if (oesdTurns >= 2)
            word |= feature::BackdoorTwoOesdTwoGutshots;
        else if (oesdTurns == 1)
            word |= feature::BackdoorOneOesdTwoGutshots;
        else if (gutshotTurns >= 4)
            word |= feature::BackdoorFourGutshots;
        else
            word |= feature::BackdoorTwoGutshots;
    }
    if (!word)
        return 0;
    // A hole rank contributes when the potential changes without it. Two contributing ranks
    // make a draw with two hole cards; otherwise the draw rests on one hole card. So with a
    // single hole rank off the board there is nothing to compare, and once one rank is found
    // not to contribute the other is moot.
    bool bothContribute = severalBits(h.holeOnly);
    for (unsigned rest = h.holeOnly; bothContribute && rest; rest &= rest - 1) {
        const unsigned card = rest & (~rest + 1);
        bothContribute = !samePotential(table, full, h.allRanks & ~card, h.holeOnly & ~card, flop);
    }
    return word |
           (bothContribute ? feature::StraightDrawTwoHoleCards : feature::StraightDrawOneHoleCard);
}

FeatureWord overcards(const Hand& h) {
    if (!severalBits(h.holeRanks) || (h.holeRanks & h.boardRanks))
        return 0;
    const int highHole = highestBit(h.holeRanks);
    const int maxBoard = highestBit(h.boardRanks);
    const int lowHole = lowestBit(h.holeRanks);
    const int over = (highHole > maxBoard) + (lowHole > maxBoard);
    if (over == 0)
        return 0;
    return (over == 2 ? feature::TwoOvercards : feature::OneOvercard) |
           (highHole == Ace ? feature::AceOvercard : 0);
}

} // namespace

FeatureWord handFeatures(CardMask hand, CardMask board) {
    const int boardCount = bitCount(board);
    if (bitCount(hand) != 2 || boardCount < 3 || boardCount > 5 || (hand & board) ||
        ((hand | board) >> 52))
        throw std::invalid_argument("A hand needs two cards and a board of 3 to 5 other cards");
    Hand h;
    h.hand = hand;
    h.board = board;
    h.all = hand | board;

    const unsigned d = laneOf(h.all, 0), e = laneOf(h.all, 1), s = laneOf(h.all, 2),
                   c = laneOf(h.all, 3);
    h.allRanks = d | e | s | c;
    h.pairs = (d & e) | (s & c) | ((d | e) & (s | c));
    h.trips = (d & e & (s | c)) | (s & c & (d | e));
    h.quads = d & e & s & c;
    const unsigned bd = laneOf(board, 0), be = laneOf(board, 1), bs = laneOf(board, 2),
                   bc = laneOf(board, 3);
    h.boardRanks = bd | be | bs | bc;
    h.boardPairs = (bd & be) | (bs & bc) | ((bd | be) & (bs | bc));

    const int card1 = lowestBit64(hand);
    const int card2 = highestBit64(hand);
    h.holeRank1 = card1 % 13;
    h.holeRank2 = card2 % 13;
    h.holeRanks = (1U << h.holeRank1) | (1U << h.holeRank2);
    h.holeOnly = h.holeRanks & ~h.boardRanks;

    // Seven cards at most: one suit at most reaches five.
    h.suitCounts = suitCounts(h.all);
    const std::uint64_t fives = (h.suitCounts + 0x000B000B000B000BULL) & 0x0010001000100010ULL;
    h.flushSuit = fives ? lowestBit64(fives) / 16 : -1;

    Category category = HighCard;
    FeatureWord word = madeHand(h, category);
    if (boardCount < 5) {
        if (category < Flush)
            word |= flushDraws(h, boardCount);
        if (category < Straight)
            word |= straightDraws(h, boardCount);
    }
    if (category <= Trips && (category == HighCard || (word & feature::MadeHandOnBoard)))
        word |= overcards(h);
    return word;
}

} // namespace qve
