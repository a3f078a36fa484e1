#include "hitevaluation/HandFeatures.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace qve {

namespace {

// Ranks are value bits inside a lane: 0 is the deuce, 12 the ace. A rank set is a 13-bit
// word of them.
constexpr int Ace = 12;
constexpr unsigned AllRanks = 0x1FFF;

// Inline bit trick: without a hardware instruction in the target, the builtin is a library
// call, and feature words are decided once per hand for every showdown evaluation.
int bitCount(std::uint64_t x) {
    x = x - ((x >> 1) & 0x5555555555555555ULL);
    x = (x & 0x3333333333333333ULL) + ((x >> 2) & 0x3333333333333333ULL);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0FULL;
    return int((x * 0x0101010101010101ULL) >> 56);
}
int highestBit(unsigned x) {
    return 31 - __builtin_clz(x);
}

unsigned laneOf(CardMask cards, int suit) {
    return unsigned(cards >> (13 * suit)) & AllRanks;
}

unsigned ranksOf(CardMask cards) {
    return laneOf(cards, 0) | laneOf(cards, 1) | laneOf(cards, 2) | laneOf(cards, 3);
}

// The five ranks of the straight whose highest card is `top` (3 is the five of the wheel).
unsigned straightWindow(int top) {
    return top == 3 ? 0x100FU : (0x1FU << (top - 4));
}

// Highest card of the best straight in a rank set, or -1; a table over all 8192 sets.
struct StraightTable {
    std::array<signed char, 8192> top{};
    StraightTable() {
        for (unsigned ranks = 0; ranks < 8192; ++ranks) {
            top[ranks] = -1;
            for (int high = Ace; high >= 3; --high) {
                const unsigned window = straightWindow(high);
                if ((ranks & window) == window) {
                    top[ranks] = static_cast<signed char>(high);
                    break;
                }
            }
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
    return bitCount(ranks & (AllRanks << (rank + 1)) & AllRanks);
}

// The ranks that complete a straight whose best window holds at least one of `holeOnly` (hole
// ranks that are not on the board): a card of such a rank improves the hand to a straight that
// the board cannot give alone. `ranks` holds no straight.
unsigned straightOuts(unsigned ranks, unsigned holeOnly) {
    // The table once per call: the backdoor map asks this 13 x 13 times per hand.
    const StraightTable& table = straightTable();
    unsigned outs = 0;
    for (int r = 0; r <= Ace; ++r) {
        const unsigned card = 1U << r;
        if (ranks & card)
            continue;
        const int top = table.top[(ranks | card) & AllRanks];
        if (top >= 0 && (straightWindow(top) & holeOnly))
            outs |= card;
    }
    return outs;
}

// Runner-runner straight potential on a flop: for each turn rank that is neither on the
// table nor an out already, the new outs that it opens. Entry t is that set of out ranks.
using BackdoorMap = std::array<unsigned, 13>;

BackdoorMap backdoorOuts(unsigned ranks, unsigned holeOnly, unsigned flopOuts) {
    BackdoorMap map{};
    for (int t = 0; t <= Ace; ++t) {
        const unsigned turn = 1U << t;
        if ((ranks & turn) || (flopOuts & turn))
            continue;
        map[t] = straightOuts(ranks | turn, holeOnly) & ~flopOuts;
    }
    return map;
}

// The hand's rank counts over all cards, with the board's counts beside them.
struct RankCounts {
    std::array<int, 13> all{};
    std::array<int, 13> board{};
    std::array<int, 13> hole{};
};

RankCounts countRanks(CardMask hand, CardMask board) {
    RankCounts counts;
    for (int suit = 0; suit < 4; ++suit) {
        const unsigned b = laneOf(board, suit);
        const unsigned h = laneOf(hand, suit);
        for (int r = 0; r <= Ace; ++r) {
            counts.board[r] += (b >> r) & 1;
            counts.hole[r] += (h >> r) & 1;
        }
    }
    for (int r = 0; r <= Ace; ++r)
        counts.all[r] = counts.board[r] + counts.hole[r];
    return counts;
}

// Highest rank with at least `n` cards below rank `below` (exclusive), or -1.
int highestWithCount(const std::array<int, 13>& counts, int n, int below = 13, int skip = -1) {
    for (int r = below - 1; r >= 0; --r)
        if (r != skip && counts[r] >= n)
            return r;
    return -1;
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

enum Category { HighCard, Pair, TwoPair, Trips, Straight, Flush, FullHouse, Quads, StraightFlush };

struct Hand {
    CardMask hand;
    CardMask board;
    CardMask all;
    unsigned allRanks;
    unsigned boardRanks;
    unsigned holeRanks;
    unsigned holeOnly; // hole ranks that are not on the board
    int flushSuit;     // suit with five or more cards, or -1
    RankCounts counts;
};

FeatureWord madeHand(const Hand& h, Category& category) {
    const RankCounts& c = h.counts;
    if (h.flushSuit >= 0) {
        const unsigned lane = laneOf(h.all, h.flushSuit);
        const int top = straightTop(lane);
        if (top >= 0) {
            category = StraightFlush;
            const unsigned window = straightWindow(top);
            return feature::StraightFlush |
                   holeCardUse(bitCount(window & ~laneOf(h.board, h.flushSuit)));
        }
    }
    const int quads = highestWithCount(c.all, 4);
    if (quads >= 0) {
        category = Quads;
        return feature::FourOfAKind | holeCardUse(4 - c.board[quads]);
    }
    const int trips = highestWithCount(c.all, 3);
    if (trips >= 0) {
        const int pair = highestWithCount(c.all, 2, 13, trips);
        if (pair >= 0) {
            category = FullHouse;
            const int needed = (3 - std::min(3, c.board[trips])) + (2 - std::min(2, c.board[pair]));
            return feature::FullHouse | holeCardUse(needed);
        }
    }
    if (h.flushSuit >= 0) {
        category = Flush;
        const unsigned lane = laneOf(h.all, h.flushSuit);
        unsigned best = lane;
        while (bitCount(best) > 5)
            best &= best - 1; // drop the lowest card
        const unsigned holeLane = laneOf(h.hand, h.flushSuit) & best;
        const int used = bitCount(holeLane);
        if (used == 0)
            return feature::Flush | feature::MadeHandOnBoard;
        return feature::Flush | holeCardUse(used) |
               rankBit(nutIndex(laneOf(h.board, h.flushSuit), highestBit(holeLane)));
    }
    const int straight = straightTop(h.allRanks);
    if (straight >= 0) {
        category = Straight;
        return feature::Straight | holeCardUse(bitCount(straightWindow(straight) & ~h.boardRanks));
    }
    if (trips >= 0) {
        category = Trips;
        const int fromHole = c.hole[trips];
        if (fromHole == 0)
            return feature::ThreeOfAKind | feature::MadeHandOnBoard;
        if (fromHole == 2)
            return feature::ThreeOfAKind | feature::TwoHoleCards;
        const int kicker = highestBit(h.holeRanks & ~(1U << trips));
        return feature::ThreeOfAKind | feature::OneHoleCard |
               kickerBit(ranksAbove(~h.boardRanks & AllRanks, kicker));
    }
    const int high = highestWithCount(c.all, 2);
    const int low = high >= 0 ? highestWithCount(c.all, 2, high) : -1;
    if (low >= 0) {
        category = TwoPair;
        const int used = c.hole[high] + c.hole[low];
        if (used == 0)
            return feature::TwoPair | feature::MadeHandOnBoard;
        const int maxBoard = highestBit(h.boardRanks);
        if (c.hole[high] == 2 || c.hole[low] == 2) {
            const int pocket = c.hole[high] == 2 ? high : low;
            FeatureWord word = feature::TwoPair | feature::TwoPairWithPocketPair;
            int lowestBoardPair = 13;
            for (int r = 0; r <= Ace; ++r)
                if (c.board[r] >= 2) {
                    lowestBoardPair = r;
                    break;
                }
            if (pocket > maxBoard)
                word |= feature::Overpair;
            else if (pocket < lowestBoardPair)
                word |= feature::PocketPairUnder;
            else
                word |= feature::PocketPairMiddle;
            return word;
        }
        // One or two hole cards each pair a board card; the rank is that of the better one.
        const int better = c.hole[high] ? high : low;
        return feature::TwoPair | holeCardUse(used) | rankBit(ranksAbove(h.boardRanks, better));
    }
    if (high >= 0) {
        category = Pair;
        if (c.hole[high] == 0)
            return feature::Pair | feature::MadeHandOnBoard;
        if (c.hole[high] == 2) {
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
        const unsigned boardLane = laneOf(h.board, suit);
        const int total = bitCount(holeLane) + bitCount(boardLane);
        FeatureWord kind = 0;
        if (total == 4)
            kind = feature::FlushDraw;
        else if (total == 3 && boardCount == 3)
            kind = feature::BackdoorFlushDraw;
        if (!kind)
            continue;
        return kind |
               (bitCount(holeLane) == 2 ? feature::FlushDrawTwoHoleCards
                                        : feature::FlushDrawOneHoleCard) |
               nutDrawBit(nutIndex(boardLane, highestBit(holeLane)));
    }
    return 0;
}

// The straight potential of a hand as one comparable value: its one-card outs and, on a flop,
// its runner-runner map.
struct StraightPotential {
    unsigned outs = 0;
    BackdoorMap backdoor{};
    bool operator==(const StraightPotential& o) const {
        return outs == o.outs && backdoor == o.backdoor;
    }
};

StraightPotential straightPotential(unsigned allRanks, unsigned holeOnly, bool flop) {
    StraightPotential p;
    p.outs = straightOuts(allRanks, holeOnly);
    if (flop && bitCount(p.outs) < 2)
        p.backdoor = backdoorOuts(allRanks, holeOnly, p.outs);
    return p;
}

FeatureWord straightDraws(const Hand& h, int boardCount) {
    const bool flop = boardCount == 3;
    const StraightPotential full = straightPotential(h.allRanks, h.holeOnly, flop);
    FeatureWord word = 0;
    const int outCount = bitCount(full.outs);
    if (outCount >= 2)
        word |= feature::Oesd;
    else if (outCount == 1)
        word |= feature::Gutshot;
    int oesdTurns = 0;
    int gutshotTurns = 0;
    for (unsigned newOuts : full.backdoor) {
        const int n = bitCount(newOuts);
        if (n >= 2)
            ++oesdTurns;
        else if (n == 1)
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
    // A hole rank contributes when the potential shrinks without it. Two contributing ranks
    // make a draw with two hole cards; otherwise the draw rests on one hole card.
    int contributing = 0;
    for (unsigned rest = h.holeOnly; rest; rest &= rest - 1) {
        const unsigned card = rest & (~rest + 1);
        const StraightPotential without =
            straightPotential(h.allRanks & ~card, h.holeOnly & ~card, flop);
        if (!(without == full))
            ++contributing;
    }
    return word | (contributing >= 2 ? feature::StraightDrawTwoHoleCards
                                     : feature::StraightDrawOneHoleCard);
}

FeatureWord overcards(const Hand& h) {
    const int highHole = highestBit(h.holeRanks);
    if (bitCount(h.holeRanks) != 2 || (h.holeRanks & h.boardRanks))
        return 0;
    const int maxBoard = highestBit(h.boardRanks);
    const int lowHole = highestBit(h.holeRanks & ~(1U << highHole));
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
    h.allRanks = ranksOf(h.all);
    h.boardRanks = ranksOf(board);
    h.holeRanks = ranksOf(hand);
    h.holeOnly = h.holeRanks & ~h.boardRanks;
    h.flushSuit = -1;
    for (int suit = 0; suit < 4; ++suit)
        if (bitCount(laneOf(h.all, suit)) >= 5)
            h.flushSuit = suit;
    h.counts = countRanks(hand, board);

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
