#include "PreflopDeadCards.h"

#include "HandRank.h"
#include "Platform.h"
#include "RankTables.h"
#include "SuitSymmetry.h"
#include "ValueClasses.h"

#include "VelmaraEvaluatorBase.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace qve {

namespace {

// ---------------------------------------------------------------------------------------
// The query: each range as its live hands per value class (grids of ValueClasses.h).

struct Query {
    std::uint16_t grid[2][valueClassCount] = {};
    std::uint8_t deadSuits[13] = {}; // per value, a bit per lane
};

Query prepareQuery(const Problem& p) {
    Query q;
    for (int r = 0; r < 2; ++r) {
        for (CardMask hand : r == 0 ? p.live1 : p.live2) {
            int first = lowestBit64(hand);
            int second = highestBit64(hand);
            // The higher value's card first; of a pair the card of the lower lane first.
            if (first % 13 < second % 13 || (first % 13 == second % 13 && first > second))
                std::swap(first, second);
            const int k = valueClassOf(first % 13, second % 13);
            q.grid[r][k] =
                static_cast<std::uint16_t>(q.grid[r][k] | (1u << ((first / 13) * 4 + second / 13)));
        }
    }
    for (CardMask rest = p.dead; rest; rest &= rest - 1) {
        const int card = lowestBit64(rest);
        q.deadSuits[card % 13] =
            static_cast<std::uint8_t>(q.deadSuits[card % 13] | (1u << (card / 13)));
    }
    return q;
}

std::int64_t choose(int n, int k) {
    static const std::int64_t table[5][5] = {
        {1, 0, 0, 0, 0}, {1, 1, 0, 0, 0}, {1, 2, 1, 0, 0}, {1, 3, 3, 1, 0}, {1, 4, 6, 4, 1}};
    if (n < 0 || k < 0 || k > n || n > 4)
        return 0;
    return table[n][k];
}

QVE_ALWAYS_INLINE int byteOf(std::uint32_t packed, int lane) {
    return int((packed >> (8 * lane)) & 0xFF);
}

QVE_ALWAYS_INLINE std::int64_t handsIn(std::uint32_t rows) {
    return std::int64_t((rows * 0x01010101u) >> 24);
}

// The value digit of one card of `value` in an incremental key.
std::uint64_t digitOf(const RankTables& t, int value) {
    return t.cardKey[value] & 0xFFFFFFFFull;
}

// Calls visit(values, counts) for every multiset of five card values, at most four of each.
template <typename Visit>
void forEachBoardValueSet(const Visit& visit) {
    int v[5];
    for (v[0] = 0; v[0] < 13; ++v[0])
        for (v[1] = v[0]; v[1] < 13; ++v[1])
            for (v[2] = v[1]; v[2] < 13; ++v[2])
                for (v[3] = v[2]; v[3] < 13; ++v[3])
                    for (v[4] = v[3]; v[4] < 13; ++v[4]) {
                        if (v[0] == v[4])
                            continue;
                        int counts[13] = {};
                        for (int value : v)
                            ++counts[value];
                        visit(counts);
                    }
}

ValueClassTables::Order orderOfCounts(const RankTables& t, const ValueClassTables& vt,
                                      const int counts[13]) {
    std::uint64_t key = 0;
    for (int value = 0; value < 13; ++value)
        key += std::uint64_t(counts[value]) * digitOf(t, value);
    return vt.orderOf(boardValueSet(t, key), key);
}

// ---------------------------------------------------------------------------------------
// The non-flush part.
//
// For the boards of value multiset V, a pair of hands (h1, h2) counts
//     N(h1, h2) = prod over the values x of V of r_x(c_x),  r_x(c) = C(A_x - c, m_x),
// times, with A_x the suits of x not dead, m_x the board's cards of value x and c_x the two
// hands' cards of value x. c_x is fixed by the two classes. With g_x(c) = r_x(c) / r_x(0):
//     N = R x prod_x g_x(c1x + c2x),  R = prod_x r_x(0),
// and for classes that share no value of V the product splits: phi(k1) x phi(k2), phi(k) the
// product of g_x over the values of k in V. Two distinct classes share at most one value x;
// then g_x(c1 + c2) = g_x(c1) g_x(c2) + Delta_x(c1, c2), and the pair adds
// Delta_x x phi without x (k1) x phi without x (k2). Every r_x(0) divides 12, so the scaled
// Phi = 144 phi, PhiNot = 12 phi without x and D = 144 Delta are integers; the sums are taken
// in those units and divided by 144 x 144 per V, exactly.

struct ValueSetWeights {
    int index[13];           // value -> position among V's distinct values, or -1
    std::int64_t h[5][5];    // 12 r_x(c) / r_x(0)
    std::int64_t d[5][3][3]; // 144 Delta_x(a, b), a and b the classes' cards of x (1 or 2)
    std::int64_t all = 1;    // R
};

// False when V cannot be dealt (too few live suits of one of its values).
bool weightsOf(const int counts[13], const std::uint8_t deadSuits[13], ValueSetWeights& w) {
    int n = 0;
    w.all = 1;
    std::int64_t r[5][5];
    for (int value = 0; value < 13; ++value) {
        w.index[value] = -1;
        if (!counts[value])
            continue;
        const int free = 4 - popcount64(deadSuits[value]);
        for (int c = 0; c <= 4; ++c)
            r[n][c] = choose(free - c, counts[value]);
        if (r[n][0] == 0)
            return false;
        w.all *= r[n][0];
        w.index[value] = n++;
    }
    for (int i = 0; i < n; ++i) {
        for (int c = 0; c <= 4; ++c)
            w.h[i][c] = 12 * r[i][c] / r[i][0];
        for (int a = 1; a <= 2; ++a)
            for (int b = 1; b <= 2; ++b)
                w.d[i][a][b] =
                    144 * (r[i][a + b] * r[i][0] - r[i][a] * r[i][b]) / (r[i][0] * r[i][0]);
    }
    return true;
}

// One class on one V, with its range counts.
struct ClassTerms {
    int high = 0;
    int low = 0;
    bool pair = false;
    std::int64_t phi = 0;
    int touched = 0;       // values of V in the class: 0, 1 or 2
    int at[2] = {0, 0};    // their positions in V
    int value[2] = {0, 0}; // the values
    int cards[2] = {0, 0}; // the class's cards of that value (1, or 2 for a pair)
    std::int64_t phiNot[2] = {0, 0};
    std::int64_t self = 0; // 144 x 144 x prod g_x(2 c_x): a pair of hands of this class
    std::uint32_t rows[2] = {0, 0};
    std::uint32_t columns[2] = {0, 0};
    std::int64_t n[2] = {0, 0};
    std::uint16_t grid[2] = {0, 0};

    // Hands of range r holding the card of `ofValue` (high or low) in lane `lane`.
    QVE_ALWAYS_INLINE std::int64_t cardCount(int r, bool ofHigh, int lane) const {
        if (pair)
            return byteOf(rows[r], lane) + byteOf(columns[r], lane);
        return ofHigh ? byteOf(rows[r], lane) : byteOf(columns[r], lane);
    }
};

ClassTerms termsOf(int k, const ValueClassTables& vt, const ValueSetWeights& w, const Query& q) {
    ClassTerms c;
    c.high = vt.highValue[k];
    c.low = vt.lowValue[k];
    c.pair = c.high == c.low;
    const int ih = w.index[c.high];
    const int il = w.index[c.low];
    const auto h = [&w](int i, int cards) { return i >= 0 ? w.h[i][cards] : std::int64_t(12); };
    if (c.pair) {
        c.phi = 12 * h(ih, 2);
        c.self = 144 * 12 * h(ih, 4);
        if (ih >= 0) {
            c.touched = 1;
            c.at[0] = ih;
            c.value[0] = c.high;
            c.cards[0] = 2;
            c.phiNot[0] = 12;
        }
    } else {
        c.phi = h(ih, 1) * h(il, 1);
        c.self = 144 * h(ih, 2) * h(il, 2);
        if (ih >= 0) {
            c.at[c.touched] = ih;
            c.value[c.touched] = c.high;
            c.cards[c.touched] = 1;
            c.phiNot[c.touched] = h(il, 1);
            ++c.touched;
        }
        if (il >= 0) {
            c.at[c.touched] = il;
            c.value[c.touched] = c.low;
            c.cards[c.touched] = 1;
            c.phiNot[c.touched] = h(ih, 1);
            ++c.touched;
        }
    }
    const ValueClassTables& tables = vt;
    for (int r = 0; r < 2; ++r) {
        c.grid[r] = q.grid[r][k];
        c.rows[r] = tables.rowCounts[c.grid[r]];
        c.columns[r] = tables.columnCounts[c.grid[r]];
        c.n[r] = handsIn(c.rows[r]);
    }
    return c;
}

// Range 2's classes seen so far, weighted: sum of Phi x n, per card sum of Phi x n(card), and
// per value of V and card count the same with PhiNot.
struct NonFlushCounters {
    std::int64_t sum = 0;
    std::int64_t card[52] = {};
    std::int64_t sumAt[5][3] = {};
    std::int64_t cardAt[5][3][4] = {};

    void clear() { *this = NonFlushCounters(); }

    void add(const ClassTerms& c) {
        sum += c.phi * c.n[1];
        for (int lane = 0; lane < 4; ++lane) {
            card[13 * lane + c.high] += c.phi * c.cardCount(1, true, lane);
            if (!c.pair)
                card[13 * lane + c.low] += c.phi * c.cardCount(1, false, lane);
        }
        for (int a = 0; a < c.touched; ++a) {
            const bool ofHigh = c.value[a] == c.high;
            sumAt[c.at[a]][c.cards[a]] += c.phiNot[a] * c.n[1];
            for (int lane = 0; lane < 4; ++lane)
                cardAt[c.at[a]][c.cards[a]][lane] += c.phiNot[a] * c.cardCount(1, ofHigh, lane);
        }
    }
};

// Range 1's hands of class c against the range 2 hands in `o`, weighted, in units of 144^2.
std::int64_t pairsAgainst(const ClassTerms& c, const NonFlushCounters& o,
                          const ValueSetWeights& w) {
    std::int64_t shared = 0;
    for (int lane = 0; lane < 4; ++lane) {
        shared += c.cardCount(0, true, lane) * o.card[13 * lane + c.high];
        if (!c.pair)
            shared += c.cardCount(0, false, lane) * o.card[13 * lane + c.low];
    }
    std::int64_t result = c.phi * (c.n[0] * o.sum - shared);
    for (int a = 0; a < c.touched; ++a) {
        const bool ofHigh = c.value[a] == c.high;
        const int i = c.at[a];
        for (int j = 1; j <= 2; ++j) {
            std::int64_t inner = c.n[0] * o.sumAt[i][j];
            for (int lane = 0; lane < 4; ++lane)
                inner -= c.cardCount(0, ofHigh, lane) * o.cardAt[i][j][lane];
            result += c.phiNot[a] * w.d[i][c.cards[a]][j] * inner;
        }
    }
    return result;
}

// What pairsAgainst counts for the class against itself as if it were another class, and the
// true count of its pairs, both in units of 144^2.
void selfTerms(const ClassTerms& c, const ValueSetWeights& w, std::int64_t& counted,
               std::int64_t& exact) {
    std::int64_t shared = 0;
    for (int lane = 0; lane < 4; ++lane) {
        shared += c.cardCount(0, true, lane) * c.cardCount(1, true, lane);
        if (!c.pair)
            shared += c.cardCount(0, false, lane) * c.cardCount(1, false, lane);
    }
    const std::int64_t pairs = c.n[0] * c.n[1] - shared;
    counted = c.phi * c.phi * pairs;
    for (int a = 0; a < c.touched; ++a) {
        const bool ofHigh = c.value[a] == c.high;
        std::int64_t sharedAt = 0;
        for (int lane = 0; lane < 4; ++lane)
            sharedAt += c.cardCount(0, ofHigh, lane) * c.cardCount(1, ofHigh, lane);
        counted += c.phiNot[a] * c.phiNot[a] * w.d[c.at[a]][c.cards[a]][c.cards[a]] *
                   (c.n[0] * c.n[1] - sharedAt);
    }
    // A hand in both ranges shares both its cards with itself: counted twice above.
    exact = c.self * (pairs + popcount64(c.grid[0] & c.grid[1]));
}

PreflopCounts nonFlushPart(const Query& q, const volatile bool& stop) {
    const RankTables& t = rankTables();
    const ValueClassTables& vt = valueClassTables();
    PreflopCounts total;
    std::vector<ClassTerms> level;
    level.reserve(valueClassCount);
    NonFlushCounters below;
    NonFlushCounters equal;
    forEachBoardValueSet([&](const int counts[13]) {
        if (stopRequested(stop))
            throw TerminationOccured();
        ValueSetWeights w;
        if (!weightsOf(counts, q.deadSuits, w))
            return;
        const ValueClassTables::Order order = orderOfCounts(t, vt, counts);
        below.clear();
        std::int64_t wins = 0;
        std::int64_t ties = 0;
        int i = 0;
        while (i < valueClassCount) {
            int end = i + 1;
            while (end < valueClassCount && order.strengths[end] == order.strengths[i])
                ++end;
            level.clear();
            for (int j = i; j < end; ++j) {
                const int k = order.classes[j];
                if (q.grid[0][k] | q.grid[1][k])
                    level.push_back(termsOf(k, vt, w, q));
            }
            i = end;
            if (level.empty())
                continue;
            if (level.size() == 1) {
                // A class alone at its strength ties only with itself.
                const ClassTerms& c = level.front();
                if (c.n[0] != 0) {
                    wins += pairsAgainst(c, below, w);
                    std::int64_t counted = 0;
                    std::int64_t exact = 0;
                    selfTerms(c, w, counted, exact);
                    ties += exact;
                }
                below.add(c);
                continue;
            }
            equal.clear();
            for (const ClassTerms& c : level)
                equal.add(c);
            for (const ClassTerms& c : level) {
                if (c.n[0] == 0)
                    continue;
                wins += pairsAgainst(c, below, w);
                std::int64_t counted = 0;
                std::int64_t exact = 0;
                selfTerms(c, w, counted, exact);
                ties += pairsAgainst(c, equal, w) - counted + exact;
            }
            for (const ClassTerms& c : level)
                below.add(c);
        }
        constexpr std::int64_t unit = 144 * 144;
        if ((wins * w.all) % unit != 0 || (ties * w.all) % unit != 0)
            throw std::logic_error("preflop counts per value set are not whole");
        total.wins += wins * w.all / unit;
        total.ties += ties * w.all / unit;
    });
    return total;
}

// ---------------------------------------------------------------------------------------
// The flush correction.
//
// A board with three or more cards of suit s is one of the family (U, W): U the values of its
// s-cards, W the values of its other cards. In the family a hand holding an s-card of a value
// in U cannot be dealt; of the others, a hand makes a flush (F) when |U| plus its s-cards
// reach five, and otherwise not (N). A pair of hands counts once for each way of giving W its
// suits (not s) that avoids the two hands and the dead cards. With t the strength that
// counts (the flush's for F, the values' for N) and n that of the non-flush part, the family
// adds, over its pairs of hands without a common card,
//     [t1 > t2] - [n1 > n2]   to the wins and   [t1 == t2] - [n1 == n2]   to the ties,
// which is 0 unless a hand is F. With at least three s-cards on the board an F hand never has
// a full house or four of a kind, so t is its flush, which beats every N hand except those
// with a full house or four of a kind ("big"), unless the flush is straight.

// The live hands of each class by the suit s: pattern bit 0 the high card is of suit s, bit 1
// the low card; of a pair, pattern 1 holds the hands with one card of suit s.
struct SuitData {
    std::uint16_t grid[2][valueClassCount]; // the live hands of the class, all patterns
    std::uint16_t part[2][valueClassCount][4];
    std::int32_t count[2][valueClassCount][4];
    std::uint8_t high[valueClassCount];
    std::uint8_t low[valueClassCount];
    std::uint8_t classesOf[13][13]; // the 13 classes holding each value
};

void suitDataOf(const Query& q, int suit, const ValueClassTables& vt, SuitData& d) {
    const unsigned rows = 0xFu << (4 * suit);
    const unsigned columns = 0x1111u << suit;
    int filled[13] = {};
    for (int k = 0; k < valueClassCount; ++k) {
        d.high[k] = vt.highValue[k];
        d.low[k] = vt.lowValue[k];
        d.classesOf[d.high[k]][filled[d.high[k]]++] = std::uint8_t(k);
        if (d.high[k] != d.low[k])
            d.classesOf[d.low[k]][filled[d.low[k]]++] = std::uint8_t(k);
        for (int r = 0; r < 2; ++r) {
            const unsigned g = q.grid[r][k];
            d.grid[r][k] = std::uint16_t(g);
            std::uint16_t* part = d.part[r][k];
            if (d.high[k] == d.low[k]) {
                part[0] = std::uint16_t(g & ~(rows | columns));
                part[1] = std::uint16_t(g & (rows | columns));
                part[2] = 0;
                part[3] = 0;
            } else {
                part[0] = std::uint16_t(g & ~rows & ~columns);
                part[1] = std::uint16_t(g & rows & ~columns);
                part[2] = std::uint16_t(g & ~rows & columns);
                part[3] = std::uint16_t(g & rows & columns);
            }
            for (int p = 0; p < 4; ++p)
                d.count[r][k][p] = popcount16(part[p]);
        }
    }
}

// Every full house or four of a kind beats every flush but a straight flush.
Strength firstFullHouse(const RankTables& t) {
    Strength s = 0;
    while (s < strengthCount && categoryOf(t.rankOfStrength[s]) < HandCategory::FullHouse)
        ++s;
    return s;
}

bool straightFlush(const RankTables& t, Strength s) {
    return categoryOf(t.rankOfStrength[s]) == HandCategory::StraightFlush;
}

// Suits other than s of a value that are not dead.
int freeOtherSuits(const Query& q, int value, int suit) {
    return popcount16(~unsigned(q.deadSuits[value]) & 0xFu & ~(1u << suit));
}

// --- Three cards of the suit -------------------------------------------------------------
//
// The F hands hold both cards in suit s: the one s-suited hand of a class whose values are
// not in U. A pair with an F hand counts as often as the other hand alone allows, since an F
// hand holds no card that W could take, and it shares a card with another hand only through
// the s-cards of its two values. Against an F hand:
//     an N hand of the other range at or above its strength is beaten by the flush instead of
//     winning or tying, unless it is big and the flush not straight;
//     another F hand is compared by flushes instead of by values.
// So per family one walk over the classes from the weakest up, with the F classes of each
// range seen so far counted in all and per value (the s-cards they hold), takes every class's
// N hands against those counts. The F classes, their flushes and the flush against flush
// counts are the same in every family of U. Classes without a value of W weigh every hand
// alike (all the ways of W).

// The s-suited hands of both ranges that make a flush with U, counted in all and per value.
struct FlushCounts {
    std::int64_t all = 0;
    std::int64_t of[13] = {};

    QVE_ALWAYS_INLINE void add(int high, int low) {
        ++all;
        ++of[high];
        ++of[low];
    }
    QVE_ALWAYS_INLINE void add(const FlushCounts& other) {
        all += other.all;
        for (int v = 0; v < 13; ++v)
            of[v] += other.of[v];
    }
    // Flush hands sharing no card with one holding the s-cards of a and b.
    QVE_ALWAYS_INLINE std::int64_t apart(int a, int b) const { return all - of[a] - of[b]; }
};

// A class's weighted N hands per range: all of them, those holding the s-card of the high
// value and those holding that of the low value.
struct ThreeWeights {
    std::int64_t n[2];
    std::int64_t high[2];
    std::int64_t low[2];
};

PreflopCounts familiesOfThree(const Query& q, int suit, unsigned u, const SuitData& sd,
                              const RankTables& t, const ValueClassTables& vt, Strength fullHouse) {
    PreflopCounts delta;
    // Unweighted N hands per class, and the F classes.
    std::int32_t none[2][valueClassCount];
    ThreeWeights base[valueClassCount];
    std::uint8_t flushOf[valueClassCount];
    Strength flushStrength[valueClassCount];
    FlushCounts notStraight[2]; // F classes whose flush is not straight
    int flushClasses[2][valueClassCount];
    int flushCount[2] = {0, 0};
    // Classes without hands of either range add nothing: the walks pass them by.
    bool occupied[valueClassCount];
    for (int k = 0; k < valueClassCount; ++k) {
        const int high = sd.high[k];
        const int low = sd.low[k];
        const bool highInU = (u >> high) & 1;
        const bool lowInU = (u >> low) & 1;
        flushOf[k] = 0;
        for (int r = 0; r < 2; ++r) {
            const std::int32_t* count = sd.count[r][k];
            none[r][k] = count[0];
            base[k].high[r] = highInU ? 0 : count[1];
            base[k].low[r] = high == low || lowInU ? 0 : count[2];
            base[k].n[r] = count[0] + base[k].high[r] + base[k].low[r];
            if (high != low && !highInU && !lowInU && count[3] != 0) {
                flushOf[k] = std::uint8_t(flushOf[k] | (1u << r));
                flushClasses[r][flushCount[r]++] = k;
            }
        }
        occupied[k] = flushOf[k] || base[k].n[0] || base[k].n[1];
        if (flushOf[k]) {
            flushStrength[k] = t.flush[u | (1u << high) | (1u << low)];
            if (!straightFlush(t, flushStrength[k]))
                for (int r = 0; r < 2; ++r)
                    if ((flushOf[k] >> r) & 1)
                        notStraight[r].add(high, low);
        }
    }
    if (flushCount[0] == 0 && flushCount[1] == 0)
        return delta;
    // Flush against flush: the same in every family of U. Two s-suited hands share a card
    // when their classes share a value.
    std::int64_t flushWins = 0;
    std::int64_t flushTies = 0;
    for (int i = 0; i < flushCount[0]; ++i) {
        const int a = flushClasses[0][i];
        const unsigned aValues = (1u << sd.high[a]) | (1u << sd.low[a]);
        for (int j = 0; j < flushCount[1]; ++j) {
            const int b = flushClasses[1][j];
            if (aValues & ((1u << sd.high[b]) | (1u << sd.low[b])))
                continue;
            flushWins += flushStrength[a] > flushStrength[b];
            flushTies += flushStrength[a] == flushStrength[b];
        }
    }

    ThreeWeights w[valueClassCount];
    int heldClasses[valueClassCount];
    Strength heldStrengths[valueClassCount];
    int weighted[valueClassCount] = {};
    int stamp = 0;
    for (int y1 = 0; y1 < 13; ++y1) {
        const int free1 = freeOtherSuits(q, y1, suit);
        for (int y2 = y1; y2 < 13; ++y2) {
            const int free2 = freeOtherSuits(q, y2, suit);
            // Ways for the W cards to take their suits avoiding a hand with b1 other-suit
            // cards of value y1 and b2 of value y2.
            const auto ways = [&](int b1, int b2) -> std::int64_t {
                if (y1 == y2)
                    return choose(free1 - b1 - b2, 2);
                return choose(free1 - b1, 1) * choose(free2 - b2, 1);
            };
            const std::int64_t all = ways(0, 0);
            if (all == 0)
                continue;
            int counts[13] = {};
            for (int value = 0; value < 13; ++value)
                counts[value] = int((u >> value) & 1);
            ++counts[y1];
            ++counts[y2];
            const ValueClassTables::Order order = orderOfCounts(t, vt, counts);

            // The classes of W's values, weighted by their other-suit cards of y1 and y2; the
            // others weigh every hand alike (all the ways of W), taken out of the walk's sums.
            ++stamp;
            for (int side = 0; side < (y1 == y2 ? 1 : 2); ++side) {
                const int y = side ? y2 : y1;
                for (int m = 0; m < 13; ++m) {
                    const int k = sd.classesOf[y][m];
                    const int high = sd.high[k];
                    const int low = sd.low[k];
                    if ((side == 1 && (high == y1 || low == y1)) || !occupied[k])
                        continue; // done with y1, or nothing to weigh
                    weighted[k] = stamp;
                    // b1, b2 of a hand whose high (low) card is of another suit or not.
                    const auto weight = [&](int highOther, int lowOther) {
                        const int b1 = (high == y1 ? highOther : 0) + (low == y1 ? lowOther : 0);
                        const int b2 =
                            y1 == y2 ? 0
                                     : (high == y2 ? highOther : 0) + (low == y2 ? lowOther : 0);
                        return ways(b1, b2);
                    };
                    for (int r = 0; r < 2; ++r) {
                        if (high == low) {
                            w[k].high[r] = base[k].high[r] * weight(1, 0);
                            w[k].low[r] = 0;
                            w[k].n[r] = none[r][k] * weight(2, 0) + w[k].high[r];
                        } else {
                            w[k].high[r] = base[k].high[r] * weight(0, 1);
                            w[k].low[r] = base[k].low[r] * weight(1, 0);
                            w[k].n[r] = none[r][k] * weight(1, 1) + w[k].high[r] + w[k].low[r];
                        }
                    }
                }
            }

            // From the weakest class up: range1's F classes at or below the level, range2's
            // strictly below, and both ranges' in the level.
            FlushCounts atOrBelow1;
            FlushCounts below2;
            FlushCounts equal[2];
            std::int64_t wins = 0;
            std::int64_t ties = 0;
            std::int64_t winsOfAll = 0; // the same for the classes weighted by `all`
            std::int64_t tiesOfAll = 0;
            std::int64_t valueWins = 0; // F against F by values
            std::int64_t valueTies = 0;
            int held = 0;
            for (int j = 0; j < valueClassCount; ++j) {
                const int k = order.classes[j];
                if (occupied[k]) {
                    heldClasses[held] = k;
                    heldStrengths[held++] = order.strengths[j];
                }
            }
            int i = 0;
            while (i < held) {
                int end = i + 1;
                while (end < held && heldStrengths[end] == heldStrengths[i])
                    ++end;
                bool anyFlush = false;
                for (int j = i; j < end; ++j) {
                    const int k = heldClasses[j];
                    if (!flushOf[k])
                        continue;
                    for (int r = 0; r < 2; ++r) {
                        if ((flushOf[k] >> r) & 1) {
                            equal[r].add(sd.high[k], sd.low[k]);
                            anyFlush = true;
                        }
                    }
                }
                if (anyFlush)
                    atOrBelow1.add(equal[0]);
                const bool big = heldStrengths[i] >= fullHouse;
                for (int j = i; j < end; ++j) {
                    const int k = heldClasses[j];
                    const int high = sd.high[k];
                    const int low = sd.low[k];
                    const bool own = weighted[k] == stamp;
                    const ThreeWeights& c = own ? w[k] : base[k];
                    std::int64_t& classWins = own ? wins : winsOfAll;
                    std::int64_t& classTies = own ? ties : tiesOfAll;
                    // This class's N hands of range r against the F hands counted in f.
                    const auto against = [&](const FlushCounts& f, int r) {
                        return c.n[r] * f.all - c.high[r] * f.of[high] - c.low[r] * f.of[low];
                    };
                    // Against range1's F at or below: won instead of lost or tied; against
                    // range2's F below: lost instead of won.
                    classWins += against(atOrBelow1, 1) - against(below2, 0);
                    if (anyFlush) {
                        // At the level: no longer tied.
                        classTies -= against(equal[0], 1) + against(equal[1], 0);
                        if (flushOf[k] & 1) {
                            valueWins += below2.apart(high, low);
                            // The same hand in both ranges shares both its cards: no pair.
                            valueTies += equal[1].apart(high, low) + (flushOf[k] >> 1);
                        }
                    }
                    if (big) {
                        // Big N hands beat the flushes that are not straight.
                        classWins += against(notStraight[1], 0) - against(notStraight[0], 1);
                    }
                }
                if (anyFlush) {
                    below2.add(equal[1]);
                    equal[0] = FlushCounts();
                    equal[1] = FlushCounts();
                }
                i = end;
            }
            delta.wins += wins + all * (winsOfAll + flushWins - valueWins);
            delta.ties += ties + all * (tiesOfAll + flushTies - valueTies);
        }
    }
    return delta;
}

// --- Four or five cards of the suit ------------------------------------------------------
//
// Every hand with an s-card (of a value outside U) makes a flush; with five, every hand. At
// most one board card is of another suit (value y), so a pair of hands counts
//     A - b1 - b2
// times, A the free suits of y and b a hand's other-suit cards of value y (with five cards of
// the suit: once). Over the pairs without a common card the family adds
//     F1 x N2, won instead of compared by values, less big N2 against F1 flushes that are not
//     straight; big N1 against F2 flushes that are not straight, won by range1;
//     F1 x F2 by flushes;
//     less what the non-flush part counted for every pair with an F hand:
// the first ones from sums per card (the same for every y but for the other-suit cards of y),
// the flush comparison by a walk over the F hands in the order of their flushes (decided by
// their s-cards alone, so the same for every y), the last by a walk over the classes in the
// order of V. A - b1 - b2 is the number of free suits of y whose card neither hand holds, so
// for the flush comparison the pairs with a hand holding a card of y are counted per card
// and taken off.

// The s-cards of an F hand: none (index 0, with five of the suit), one of value x (1 + x), or
// two of values x < x' (14 + the pair's number).
QVE_ALWAYS_INLINE int contentOfPair(int x, int xx) {
    const int high = std::max(x, xx);
    const int low = std::min(x, xx);
    return 14 + high * (high - 1) / 2 + low;
}
constexpr int contentCount = 14 + 78;

// An F hand: its content and its cards (the card of another suit, if it has one, or 52), and
// whether the other range holds it too.
struct FlushHand {
    std::uint8_t content;
    std::uint8_t card1;
    std::uint8_t card2;
    std::uint8_t other;
    std::uint8_t inBoth;
};

// The F hands of both ranges by their s-cards.
struct FlushContents {
    std::int32_t count[2][contentCount] = {};
    // Hands with one s-card: per s-card value and card of another suit.
    std::int32_t single[2][13][52] = {};
    Strength flush[contentCount] = {};
    bool straight[contentCount] = {};
    bool used[contentCount] = {};
    FlushHand hands[2][1326];
    int handCount[2] = {0, 0};

    // All but the hands' records, which only the counts make valid.
    void clear() {
        std::fill(&count[0][0], &count[0][0] + 2 * contentCount, 0);
        std::fill(&single[0][0][0], &single[0][0][0] + 2 * 13 * 52, 0);
        std::fill(flush, flush + contentCount, Strength(0));
        std::fill(straight, straight + contentCount, false);
        std::fill(used, used + contentCount, false);
        handCount[0] = handCount[1] = 0;
    }
};

// Flush against flush over pairs without a common card, and per card the pairs in which a
// hand holds it as its card of another suit: a value y of the board takes a suit only in the
// pairs without that card.
struct WideFlush {
    std::int64_t wins = 0;
    std::int64_t ties = 0;
    std::int64_t winsHolding[52] = {};
    std::int64_t tiesHolding[52] = {};
};

// Range r's F hands sorted by flush, and where each level of equal flushes ends.
struct FlushLevels {
    const FlushHand* sorted[2][1326];
    int levelEnd[2][contentCount + 1];
    int levels = 0;
};

void flushLevelsOf(const FlushContents& fc, FlushLevels& l) {
    int order[contentCount];
    int n = 0;
    for (int c = 0; c < contentCount; ++c)
        if (fc.used[c] && (fc.count[0][c] || fc.count[1][c]))
            order[n++] = c;
    std::sort(order, order + n, [&fc](int a, int b) { return fc.flush[a] < fc.flush[b]; });
    int levelOf[contentCount];
    l.levels = 0;
    for (int i = 0; i < n; ++i) {
        if (i > 0 && fc.flush[order[i]] != fc.flush[order[i - 1]])
            ++l.levels;
        levelOf[order[i]] = l.levels;
    }
    if (n > 0)
        ++l.levels;
    for (int r = 0; r < 2; ++r) {
        int start[contentCount + 1] = {};
        for (int h = 0; h < fc.handCount[r]; ++h)
            ++start[levelOf[fc.hands[r][h].content] + 1];
        for (int level = 0; level < l.levels; ++level)
            start[level + 1] += start[level];
        for (int level = 0; level < l.levels; ++level)
            l.levelEnd[r][level] = start[level + 1];
        for (int h = 0; h < fc.handCount[r]; ++h)
            l.sorted[r][start[levelOf[fc.hands[r][h].content]]++] = &fc.hands[r][h];
    }
}

// Per card, the hands of one range in the levels passed that hold it.
struct HandsByCard {
    std::int64_t count = 0;
    std::int32_t card[53] = {};

    QVE_ALWAYS_INLINE void add(const FlushHand& h) {
        ++count;
        ++card[h.card1];
        ++card[h.card2];
    }
    QVE_ALWAYS_INLINE std::int64_t apart(const FlushHand& h) const {
        return count - card[h.card1] - card[h.card2];
    }
};

// One range's F hands against the other's F hands of weaker flushes (wins) and of the same
// (ties): from the weakest up for range1, from the strongest down for range2.
void flushAgainstFlush(const FlushLevels& l, int r, bool holding, WideFlush& w) {
    HandsByCard passed;
    HandsByCard equal;
    const int o = 1 - r;
    for (int step = 0; step < l.levels; ++step) {
        const int level = r == 0 ? step : l.levels - 1 - step;
        const int oBegin = level == 0 ? 0 : l.levelEnd[o][level - 1];
        const int oEnd = l.levelEnd[o][level];
        const int begin = level == 0 ? 0 : l.levelEnd[r][level - 1];
        const int end = l.levelEnd[r][level];
        for (int h = oBegin; h < oEnd; ++h)
            equal.add(*l.sorted[o][h]);
        for (int h = begin; h < end; ++h) {
            const FlushHand& hand = *l.sorted[r][h];
            const std::int64_t won = passed.apart(hand);
            const std::int64_t tied = equal.apart(hand) + hand.inBoth;
            if (r == 0) {
                w.wins += won;
                w.ties += tied;
            }
            if (holding && hand.other < 52) {
                w.winsHolding[hand.other] += won;
                w.tiesHolding[hand.other] += tied;
            }
        }
        for (int h = oBegin; h < oEnd; ++h) {
            passed.add(*l.sorted[o][h]);
            --equal.card[l.sorted[o][h]->card1];
            --equal.card[l.sorted[o][h]->card2];
        }
        equal.count = 0;
    }
}

WideFlush wideFlushOf(const FlushContents& fc, bool five) {
    WideFlush w;
    FlushLevels levels;
    flushLevelsOf(fc, levels);
    flushAgainstFlush(levels, 0, !five, w);
    if (!five)
        flushAgainstFlush(levels, 1, true, w);
    return w;
}

// Range 2's hands of the classes passed: how many, their other-suit cards of value y, and
// the same per card.
struct WideCounters {
    std::int64_t count = 0;
    std::int64_t other = 0;
    std::int32_t card[52] = {};
    std::int32_t cardOther[52] = {};
};

QVE_ALWAYS_INLINE std::int64_t cardSumOf(const ValueClassTables& vt, unsigned grid, int high,
                                         int low, const std::int32_t* perCard) {
    const std::uint32_t rows = vt.rowCounts[grid];
    const std::uint32_t columns = vt.columnCounts[grid];
    std::int64_t sum = 0;
    if (high == low) {
        for (int lane = 0; lane < 4; ++lane)
            sum += std::int64_t(byteOf(rows, lane) + byteOf(columns, lane)) *
                   perCard[13 * lane + high];
    } else {
        for (int lane = 0; lane < 4; ++lane)
            sum += std::int64_t(byteOf(rows, lane)) * perCard[13 * lane + high] +
                   std::int64_t(byteOf(columns, lane)) * perCard[13 * lane + low];
    }
    return sum;
}

QVE_ALWAYS_INLINE void addGrid(const ValueClassTables& vt, unsigned grid, int high, int low,
                               int other, WideCounters& c) {
    const std::uint32_t rows = vt.rowCounts[grid];
    const std::uint32_t columns = vt.columnCounts[grid];
    const std::int64_t n = handsIn(rows);
    c.count += n;
    if (high == low) {
        for (int lane = 0; lane < 4; ++lane)
            c.card[13 * lane + high] += byteOf(rows, lane) + byteOf(columns, lane);
    } else {
        for (int lane = 0; lane < 4; ++lane) {
            c.card[13 * lane + high] += byteOf(rows, lane);
            c.card[13 * lane + low] += byteOf(columns, lane);
        }
    }
    if (other == 0)
        return;
    c.other += n * other;
    if (high == low) {
        for (int lane = 0; lane < 4; ++lane)
            c.cardOther[13 * lane + high] += (byteOf(rows, lane) + byteOf(columns, lane)) * other;
    } else {
        for (int lane = 0; lane < 4; ++lane) {
            c.cardOther[13 * lane + high] += byteOf(rows, lane) * other;
            c.cardOther[13 * lane + low] += byteOf(columns, lane) * other;
        }
    }
}

// Pairs of range1's hands of a grid (each with `other` other-suit cards of value y) with the
// hands of `c` without a common card, each counting A - b1 - b2.
QVE_ALWAYS_INLINE std::int64_t pairsOf(const ValueClassTables& vt, unsigned grid, int high, int low,
                                       int other, std::int64_t free, const WideCounters& c) {
    const std::int64_t n = handsIn(vt.rowCounts[grid]);
    const std::int64_t apart = n * c.count - cardSumOf(vt, grid, high, low, c.card);
    std::int64_t otherApart = 0;
    if (c.other)
        otherApart = n * c.other - cardSumOf(vt, grid, high, low, c.cardOther);
    return (free - other) * apart - otherApart;
}

// A class in a family of four or five s-cards: its unblocked hands by pattern.
struct WideClass {
    std::uint16_t grid[2][4];
    bool flush[4];
    std::uint8_t otherHigh[4]; // other-suit cards of the high value in a hand of the pattern
    std::uint8_t otherLow[4];
    std::uint16_t flushGrid[2]; // the patterns' grids joined
    std::uint16_t nonFlushGrid[2];
    std::uint16_t straightGrid[2];
    bool any;
    int patterns;
};

// Other-suit cards of value y in a hand of a pattern of a class.
QVE_ALWAYS_INLINE int otherOf(const WideClass& c, int p, int high, int low, int y) {
    return (high == y ? c.otherHigh[p] : 0) + (low == y && high != low ? c.otherLow[p] : 0);
}

PreflopCounts familiesWide(const Query& q, int suit, unsigned u, const SuitData& sd,
                           const RankTables& t, const ValueClassTables& vt, Strength fullHouse,
                           FlushContents& fc) {
    PreflopCounts delta;
    const bool five = popcount16(u) == 5;

    // The classes' unblocked hands by pattern, and the F hands by their s-cards.
    WideClass classes[valueClassCount];
    fc.clear();
    bool anyFlush = false;
    for (int k = 0; k < valueClassCount; ++k) {
        const int high = sd.high[k];
        const int low = sd.low[k];
        const bool pair = high == low;
        WideClass& c = classes[k];
        c.patterns = pair ? 2 : 4;
        for (int r = 0; r < 2; ++r)
            c.flushGrid[r] = c.nonFlushGrid[r] = c.straightGrid[r] = 0;
        c.any = (sd.grid[0][k] | sd.grid[1][k]) != 0;
        if (!c.any)
            continue; // no hands of either range: the walks pass the class by
        for (int p = 0; p < 4; ++p) {
            const bool highOfSuit = pair ? p == 1 : (p & 1) != 0;
            const bool lowOfSuit = !pair && (p & 2) != 0;
            const bool blocked = p >= c.patterns || (highOfSuit && ((u >> high) & 1)) ||
                                 (lowOfSuit && ((u >> low) & 1));
            c.flush[p] = five || highOfSuit || lowOfSuit;
            c.otherHigh[p] = std::uint8_t(pair ? (highOfSuit ? 1 : 2) : (highOfSuit ? 0 : 1));
            c.otherLow[p] = std::uint8_t(pair ? 0 : (lowOfSuit ? 0 : 1));
            const int content = !highOfSuit && !lowOfSuit ? 0
                                : highOfSuit && lowOfSuit ? contentOfPair(high, low)
                                                          : 1 + (highOfSuit ? high : low);
            bool straight = false;
            if (c.flush[p] && !blocked) {
                unsigned lane = u;
                if (highOfSuit)
                    lane |= 1u << high;
                if (lowOfSuit)
                    lane |= 1u << low;
                fc.flush[content] = t.flush[lane];
                fc.used[content] = true;
                straight = straightFlush(t, fc.flush[content]);
                fc.straight[content] = straight;
            }
            for (int r = 0; r < 2; ++r) {
                const std::uint16_t grid = blocked ? 0 : sd.part[r][k][p];
                c.grid[r][p] = grid;
                if (!grid)
                    continue;
                if (!c.flush[p]) {
                    c.nonFlushGrid[r] = std::uint16_t(c.nonFlushGrid[r] | grid);
                    continue;
                }
                anyFlush = true;
                c.flushGrid[r] = std::uint16_t(c.flushGrid[r] | grid);
                if (straight)
                    c.straightGrid[r] = std::uint16_t(c.straightGrid[r] | grid);
                fc.count[r][content] += popcount16(grid);
                for (unsigned bits = grid; bits; bits &= bits - 1) {
                    const int bit = lowestBit64(bits);
                    const int card1 = 13 * (bit >> 2) + high;
                    const int card2 = 13 * (bit & 3) + low;
                    // The card of another suit (of a pair, either lane may be s).
                    const int other = content == 0 || content >= 14 ? 52
                                      : card1 / 13 == suit          ? card2
                                                                    : card1;
                    if (other < 52)
                        ++fc.single[r][content - 1][other];
                    fc.hands[r][fc.handCount[r]++] = {
                        std::uint8_t(content), std::uint8_t(card1), std::uint8_t(card2),
                        std::uint8_t(other), std::uint8_t((sd.part[1 - r][k][p] >> bit) & 1)};
                }
            }
        }
        c.any = (c.flushGrid[0] | c.flushGrid[1] | c.nonFlushGrid[0] | c.nonFlushGrid[1]) != 0;
    }
    if (!anyFlush)
        return delta;
    const WideFlush byFlush = wideFlushOf(fc, five);

    // Totals per card of the F and N hands of each range, and of the straight flushes.
    WideCounters total[2][2]; // [range][F, N]
    WideCounters straights[2];
    for (int k = 0; k < valueClassCount; ++k) {
        if (!classes[k].any)
            continue;
        for (int r = 0; r < 2; ++r) {
            addGrid(vt, classes[k].flushGrid[r], sd.high[k], sd.low[k], 0, total[r][0]);
            addGrid(vt, classes[k].nonFlushGrid[r], sd.high[k], sd.low[k], 0, total[r][1]);
            addGrid(vt, classes[k].straightGrid[r], sd.high[k], sd.low[k], 0, straights[r]);
        }
    }
    // F1 x N2 without a common card, and per value y the other-suit cards of y in them: an F
    // hand's one card of another suit, an N hand's two.
    std::int64_t flushOverNonFlush = total[0][0].count * total[1][1].count;
    for (int card = 0; card < 52; ++card)
        flushOverNonFlush -= std::int64_t(total[0][0].card[card]) * total[1][1].card[card];
    std::int64_t flushOverNonFlushOther[13] = {};
    if (!five) {
        // An F1 hand with one s-card never shares it with an N2 hand.
        for (int x = 0; x < 13; ++x)
            for (int card = 0; card < 52; ++card)
                if (fc.single[0][x][card])
                    flushOverNonFlushOther[card % 13] +=
                        fc.single[0][x][card] * (total[1][1].count - total[1][1].card[card]);
        for (int k = 0; k < valueClassCount; ++k) {
            const int high = sd.high[k];
            const int low = sd.low[k];
            for (unsigned bits = classes[k].nonFlushGrid[1]; bits; bits &= bits - 1) {
                const int bit = lowestBit64(bits);
                const int card1 = 13 * (bit >> 2) + high;
                const int card2 = 13 * (bit & 3) + low;
                const std::int64_t apart =
                    total[0][0].count - total[0][0].card[card1] - total[0][0].card[card2];
                flushOverNonFlushOther[high] += apart;
                flushOverNonFlushOther[low] += apart;
            }
        }
    }

    WideCounters belowAll;
    WideCounters belowFlush;
    WideCounters bigFlushes[2];
    int heldClasses[valueClassCount];
    Strength heldStrengths[valueClassCount];
    for (int y = five ? -1 : 0; y < (five ? 0 : 13); ++y) {
        const std::int64_t free = five ? 1 : freeOtherSuits(q, y, suit);
        if (free == 0)
            continue;
        int counts[13] = {};
        for (int value = 0; value < 13; ++value)
            counts[value] = int((u >> value) & 1);
        if (!five)
            ++counts[y];
        const ValueClassTables::Order order = orderOfCounts(t, vt, counts);

        // The non-flush part's wins and ties of every pair with an F hand: range1's F hands
        // against all of range2's hands below (and of the level), range1's N hands against
        // range2's F hands. Classes without the value y have no other-suit card of y: their
        // patterns go together.
        belowAll = WideCounters();
        belowFlush = WideCounters();
        std::int64_t nonFlushWins = 0;
        std::int64_t nonFlushTies = 0;
        std::int64_t bigWins = 0;
        bool bigFlushesReady = false;
        const auto forParts = [&](int k, int r, const auto& visit) {
            const WideClass& c = classes[k];
            const int high = sd.high[k];
            const int low = sd.low[k];
            if (high != y && low != y) {
                if (c.flushGrid[r])
                    visit(unsigned(c.flushGrid[r]), true, 0);
                if (c.nonFlushGrid[r])
                    visit(unsigned(c.nonFlushGrid[r]), false, 0);
                return;
            }
            for (int p = 0; p < c.patterns; ++p)
                if (c.grid[r][p])
                    visit(unsigned(c.grid[r][p]), c.flush[p], otherOf(c, p, high, low, y));
        };
        // The classes with hands, in the order of V, and their strengths.
        int held = 0;
        for (int j = 0; j < valueClassCount; ++j) {
            const int k = order.classes[j];
            if (classes[k].any) {
                heldClasses[held] = k;
                heldStrengths[held++] = order.strengths[j];
            }
        }
        int i = 0;
        while (i < held) {
            int end = i + 1;
            while (end < held && heldStrengths[end] == heldStrengths[i])
                ++end;
            const int levelSize = end - i;
            const int* levelClasses = heldClasses + i;
            // Range1's hands of the level against range2's below: wins; against those at or
            // below, less the wins: ties.
            for (int m = 0; m < levelSize; ++m) {
                const int k = levelClasses[m];
                forParts(k, 0, [&](unsigned grid, bool flush, int other) {
                    const std::int64_t below = pairsOf(vt, grid, sd.high[k], sd.low[k], other, free,
                                                       flush ? belowAll : belowFlush);
                    nonFlushWins += below;
                    nonFlushTies -= below;
                });
            }
            for (int m = 0; m < levelSize; ++m) {
                const int k = levelClasses[m];
                forParts(k, 1, [&](unsigned grid, bool flush, int other) {
                    addGrid(vt, grid, sd.high[k], sd.low[k], other, belowAll);
                    if (flush)
                        addGrid(vt, grid, sd.high[k], sd.low[k], other, belowFlush);
                });
            }
            for (int m = 0; m < levelSize; ++m) {
                const int k = levelClasses[m];
                forParts(k, 0, [&](unsigned grid, bool flush, int other) {
                    nonFlushTies += pairsOf(vt, grid, sd.high[k], sd.low[k], other, free,
                                            flush ? belowAll : belowFlush);
                    // A hand in both ranges is no pair with itself: the sums took it twice off
                    // (once per card) and once on.
                    if (flush)
                        nonFlushTies +=
                            popcount16(grid & classes[k].flushGrid[1]) * (free - 2 * other);
                });
            }

            // Big N hands beat the flushes that are not straight: a big N2 hand keeps what F1
            // would have won, a big N1 hand wins against F2.
            if (heldStrengths[i] >= fullHouse) {
                if (!bigFlushesReady) {
                    // Per range, its flushes that are not straight, with their other-suit cards
                    // of y (an F hand with one s-card holds one card of another suit).
                    for (int o = 0; o < 2; ++o) {
                        WideCounters& flushes = bigFlushes[o];
                        flushes = WideCounters();
                        for (int x = 0; x < 13 && !five; ++x) {
                            if (!fc.used[1 + x] || fc.straight[1 + x])
                                continue;
                            for (int lane = 0; lane < 4; ++lane) {
                                const int card = 13 * lane + y;
                                const std::int32_t n = fc.single[o][x][card];
                                if (!n)
                                    continue;
                                flushes.other += n;
                                flushes.cardOther[card] += n;
                                flushes.cardOther[13 * suit + x] += n;
                            }
                        }
                        flushes.count = total[o][0].count - straights[o].count;
                        for (int card = 0; card < 52; ++card)
                            flushes.card[card] = total[o][0].card[card] - straights[o].card[card];
                    }
                    bigFlushesReady = true;
                }
                for (int m = 0; m < levelSize; ++m) {
                    const int k = levelClasses[m];
                    const int high = sd.high[k];
                    const int low = sd.low[k];
                    for (int r = 0; r < 2; ++r) {
                        const unsigned grid = classes[k].nonFlushGrid[r];
                        if (!grid)
                            continue;
                        const int other = high == low ? 2 * (high == y) : (high == y) + (low == y);
                        const std::int64_t w =
                            pairsOf(vt, grid, high, low, other, free, bigFlushes[1 - r]);
                        bigWins += r == 1 ? -w : w;
                    }
                }
            }
            i = end;
        }
        const int yy = five ? 0 : y;
        std::int64_t flushWins = free * byFlush.wins;
        std::int64_t flushTies = free * byFlush.ties;
        for (int lane = 0; !five && lane < 4; ++lane) {
            if (lane == suit)
                continue;
            flushWins -= byFlush.winsHolding[13 * lane + yy];
            flushTies -= byFlush.tiesHolding[13 * lane + yy];
        }
        const std::int64_t flushOverN =
            free * flushOverNonFlush - (five ? 0 : flushOverNonFlushOther[yy]);
        delta.wins += flushOverN + bigWins + flushWins - nonFlushWins;
        delta.ties += flushTies - nonFlushTies;
    }
    return delta;
}

// The flush correction of each suit; a suit that a suit symmetry of the ranges and the dead
// cards maps an earlier suit to has that suit's correction.
PreflopCounts flushCorrection(const Query& q, const std::vector<SuitPermutation>& symmetries,
                              const volatile bool& stop) {
    const RankTables& t = rankTables();
    const ValueClassTables& vt = valueClassTables();
    const Strength fullHouse = firstFullHouse(t);
    PreflopCounts total;
    PreflopCounts ofSuit[4];
    const auto sd = std::make_unique<SuitData>();
    const auto contents = std::make_unique<FlushContents>();
    for (int suit = 0; suit < 4; ++suit) {
        int image = -1;
        for (const SuitPermutation& perm : symmetries)
            for (int earlier = 0; earlier < suit && image < 0; ++earlier)
                if (perm[std::size_t(earlier)] == suit)
                    image = earlier;
        if (image >= 0) {
            ofSuit[suit] = ofSuit[image];
            total.wins += ofSuit[suit].wins;
            total.ties += ofSuit[suit].ties;
            continue;
        }
        suitDataOf(q, suit, vt, *sd);
        for (unsigned u = 0; u < (1u << 13); ++u) {
            const int size = popcount16(u);
            if (size < 3 || size > 5)
                continue;
            // The board's s-cards must be live.
            bool dead = false;
            for (unsigned rest = u; rest; rest &= rest - 1)
                dead = dead || ((q.deadSuits[lowestBit64(rest)] >> suit) & 1);
            if (dead)
                continue;
            if (stopRequested(stop))
                throw TerminationOccured();
            const PreflopCounts d =
                size == 3 ? familiesOfThree(q, suit, u, *sd, t, vt, fullHouse)
                          : familiesWide(q, suit, u, *sd, t, vt, fullHouse, *contents);
            ofSuit[suit].wins += d.wins;
            ofSuit[suit].ties += d.ties;
        }
        total.wins += ofSuit[suit].wins;
        total.ties += ofSuit[suit].ties;
    }
    return total;
}
} // namespace

PreflopCounts preflopNonFlushPart(const Problem& p, const volatile bool& stop) {
    return nonFlushPart(prepareQuery(p), stop);
}

PreflopCounts preflopFlushCorrection(const Problem& p, const volatile bool& stop) {
    return flushCorrection(prepareQuery(p), suitSymmetries({p.dead}, {&p.live1, &p.live2}), stop);
}

PreflopCounts preflopByValueSets(const Problem& p, const volatile bool& stop) {
    const PreflopCounts nonFlush = preflopNonFlushPart(p, stop);
    const PreflopCounts flush = preflopFlushCorrection(p, stop);
    return {nonFlush.wins + flush.wins, nonFlush.ties + flush.ties};
}

} // namespace qve
