#include "Enumeration.h"

#include "VelmaraEvaluatorBase.h"

#include <algorithm>
#include <cstring>

namespace qve {

namespace {

constexpr std::uint64_t in1Bit = 1u << 12;
constexpr std::uint64_t in2Bit = 1u << 13;

QVE_ALWAYS_INLINE int card1Of(std::uint64_t entry) {
    return int(entry & 63);
}
QVE_ALWAYS_INLINE int card2Of(std::uint64_t entry) {
    return int((entry >> 6) & 63);
}
QVE_ALWAYS_INLINE int slotOf(std::uint64_t entry) {
    return int((entry >> 16) & 0xFFFF);
}
QVE_ALWAYS_INLINE unsigned strengthOf(std::uint64_t entry) {
    return unsigned(entry >> 32);
}

// Sorts by strength (bits 32-44) in two stable counting passes of 7 and 6 bits.
void sortByStrength(std::uint64_t* entries, std::uint64_t* spare, std::size_t n) {
    std::uint32_t low[128];
    std::uint32_t high[64];
    std::memset(low, 0, sizeof low);
    std::memset(high, 0, sizeof high);
    for (std::size_t i = 0; i < n; ++i) {
        ++low[(entries[i] >> 32) & 127];
        ++high[(entries[i] >> 39) & 63];
    }
    // Running sums in a register: a chain through memory would cost a store-to-load
    // round trip per bucket.
    std::uint32_t sum = 0;
    for (int b = 0; b < 128; ++b) {
        const std::uint32_t count = low[b];
        low[b] = sum;
        sum += count;
    }
    sum = 0;
    for (int b = 0; b < 64; ++b) {
        const std::uint32_t count = high[b];
        high[b] = sum;
        sum += count;
    }
    for (std::size_t i = 0; i < n; ++i)
        spare[low[(entries[i] >> 32) & 127]++] = entries[i];
    for (std::size_t i = 0; i < n; ++i)
        entries[high[(spare[i] >> 39) & 63]++] = spare[i];
}

// One level of hands ranked one by one, entries [first, last) of one strength, in a walk up
// the strengths: `below` counts the range2 hands passed, `belowCard` those holding each card,
// and `equalCard` (all 0 between levels) those of the level holding each card. Each range1
// hand wins against the range2 hands below and ties with those of its level, less those
// sharing a card (and plus itself when range2 holds it, as it shares both). `perHand(entry,
// wins, ties)` receives each range1 hand's counts; then the level's range2 hands join those
// below.
template <typename PerHand>
QVE_ALWAYS_INLINE void walkLevel(const std::uint64_t* first, const std::uint64_t* last,
                                 std::int32_t& below, std::int32_t* belowCard,
                                 std::int32_t* equalCard, std::int64_t& wins, std::int64_t& ties,
                                 const PerHand& perHand) {
    if (last - first == 1) {
        // Alone at its strength, the common case: nothing to tie with.
        const std::uint64_t e = *first;
        const int c1 = card1Of(e);
        const int c2 = card2Of(e);
        if (e & in1Bit) {
            const std::int32_t win = below - belowCard[c1] - belowCard[c2];
            wins += win;
            perHand(e, win, 0);
        }
        if (e & in2Bit) {
            ++below;
            ++belowCard[c1];
            ++belowCard[c2];
        }
        return;
    }
    std::int32_t equal = 0;
    for (const std::uint64_t* k = first; k != last; ++k) {
        if (*k & in2Bit) {
            ++equal;
            ++equalCard[card1Of(*k)];
            ++equalCard[card2Of(*k)];
        }
    }
    for (const std::uint64_t* k = first; k != last; ++k) {
        const std::uint64_t e = *k;
        if (!(e & in1Bit))
            continue;
        const int c1 = card1Of(e);
        const int c2 = card2Of(e);
        const std::int32_t win = below - belowCard[c1] - belowCard[c2];
        const std::int32_t tie = equal - equalCard[c1] - equalCard[c2] + ((e & in2Bit) ? 1 : 0);
        wins += win;
        ties += tie;
        perHand(e, win, tie);
    }
    for (const std::uint64_t* k = first; k != last; ++k) {
        if (*k & in2Bit) {
            const int c1 = card1Of(*k);
            const int c2 = card2Of(*k);
            ++below;
            ++belowCard[c1];
            ++belowCard[c2];
            equalCard[c1] = 0;
            equalCard[c2] = 0;
        }
    }
}

} // namespace

std::uint64_t binomial(int n, int k) {
    if (k < 0 || n < k)
        return 0;
    std::uint64_t result = 1;
    for (int i = 1; i <= k; ++i)
        result = result * std::uint64_t(n - k + i) / std::uint64_t(i);
    return result;
}

struct LiveClass {
    Strength strength;
    std::uint16_t live1; // grids of the live hands
    std::uint16_t live2;
    std::uint8_t high;
    std::uint8_t low;
    std::uint8_t klass; // value class, for the per-hand slots
};

struct BoardEnumeration::Scratch {
    LiveClass liveClasses[valueClassCount];
    std::vector<std::uint64_t> entries;
    std::uint64_t flushHands[80]; // at most C(13, 2) hands of one suit
    std::vector<std::uint64_t> spare;
    std::int64_t wins = 0; // of the boards counted so far, weighted
    std::int64_t ties = 0;
    std::vector<std::int64_t> handWins;
    std::vector<std::int64_t> handTies;
    // Per-hand counters of the walk per value class: wins in the low 32 bits, ties in the
    // high ones. addBoards packs only when no counter can reach 2^32.
    std::vector<std::uint64_t> handPacked;
    // Per value class whose range1 hands are all live on a board: the weighted sums of its
    // four row parts, four column parts and of the weights (ties of a hand with itself),
    // spread over the class's hands once at the end.
    std::vector<std::uint64_t> classParts;
    std::vector<std::int64_t> groupWins; // by-group mode, weighted
    std::vector<std::int64_t> groupTies;
};

constexpr int classPartCount = 9;

namespace {

QVE_ALWAYS_INLINE std::uint64_t packed(std::int32_t wins, std::int32_t ties) {
    return std::uint64_t(std::uint32_t(wins)) | std::uint64_t(std::uint32_t(ties)) << 32;
}

} // namespace

// Ranges of fewer hands than this are counted per hand: a board then costs less than the
// walk over the 91 value classes.
constexpr std::size_t valueClassThreshold = 100;

BoardEnumeration::BoardEnumeration(const std::vector<CardMask>& hands1Given,
                                   const std::vector<CardMask>& hands2, bool byHand, Method method)
    : tables(rankTables()), byHand(byHand), count1(hands1Given.size()), slotOfHand(handCount, -1),
      hands1(hands1Given) {
    prepare(hands2, method);
}

BoardEnumeration::BoardEnumeration(const std::vector<CardMask>& hands1Given,
                                   const std::vector<CardMask>& hands2,
                                   const std::vector<std::uint32_t>& groupOfHand,
                                   std::size_t groupCount, Method method)
    : tables(rankTables()), byHand(false), byGroup(true), count1(hands1Given.size()),
      slotOfHand(handCount, -1), hands1(hands1Given), groupOfSlot(groupOfHand),
      groupCount(groupCount) {
    groupOfSlot.resize(count1, 0);
    prepare(hands2, method);
    for (int k = 0; k < valueClassCount; ++k) {
        const std::size_t begin = groupParts.size();
        groupPartBegin[k] = static_cast<std::uint16_t>(begin);
        for (unsigned bits = grid1[k]; bits; bits &= bits - 1) {
            const int bit = lowestBit64(bits);
            const std::uint32_t group = groupOfSlot[slotOfGrid[k][bit]];
            std::size_t part = begin;
            while (part < groupParts.size() && groupParts[part].group != group)
                ++part;
            if (part == groupParts.size())
                groupParts.push_back({0, group});
            groupParts[part].grid = static_cast<std::uint16_t>(groupParts[part].grid | (1u << bit));
        }
        std::stable_sort(groupParts.begin() + std::ptrdiff_t(begin), groupParts.end(),
                         [](const GroupPart& a, const GroupPart& b) {
                             return popcount64(a.grid) > popcount64(b.grid);
                         });
    }
    groupPartBegin[valueClassCount] = static_cast<std::uint16_t>(groupParts.size());
}

void BoardEnumeration::prepare(const std::vector<CardMask>& hands2, Method method) {
    std::vector<std::uint64_t> flags(handCount, 0);
    for (std::size_t i = 0; i < hands1.size(); ++i) {
        const int index = handIndex(hands1[i]);
        flags[index] |= in1Bit;
        slotOfHand[index] = static_cast<int>(i);
    }
    for (CardMask hand : hands2)
        flags[handIndex(hand)] |= in2Bit;
    // In ascending index order, as handOfIndex would give them, without its search.
    for (int c2 = 1; c2 < 52; ++c2) {
        for (int c1 = 0; c1 < c2; ++c1) {
            const int index = handIndexOfCards(c1, c2);
            if (!flags[index])
                continue;
            const CardMask hand = (CardMask(1) << c1) | (CardMask(1) << c2);
            const std::uint64_t slot =
                slotOfHand[index] >= 0 ? std::uint64_t(slotOfHand[index]) : 0;
            hands.push_back(
                {hand, tables.cardKey[c1] + tables.cardKey[c2],
                 std::uint64_t(c1) | std::uint64_t(c2) << 6 | flags[index] | slot << 16});
        }
    }
    byValueClass = method == Method::perValueClass ||
                   (method == Method::automatic && hands.size() >= valueClassThreshold);
    if (!byValueClass)
        return;
    valueClassTables();
    for (const Entry& e : hands) {
        // c1 < c2 as mask bits; the grid wants the higher value's suit first.
        int first = card1Of(e.info);
        int second = card2Of(e.info);
        if (first % 13 < second % 13 || (first % 13 == second % 13 && first > second))
            std::swap(first, second);
        const int high = first % 13;
        const int low = second % 13;
        const int bit = (first / 13) * 4 + second / 13;
        const int k = valueClassOf(high, low);
        if (e.info & in1Bit) {
            grid1[k] |= static_cast<std::uint16_t>(1u << bit);
            slotOfGrid[k][bit] = static_cast<std::uint16_t>(slotOf(e.info));
        }
        if (e.info & in2Bit)
            grid2[k] |= static_cast<std::uint16_t>(1u << bit);
        if (first / 13 == second / 13)
            suited[first / 13].push_back(e);
    }
}

namespace {

// Sum over the eight cards of a class (row r: card v of suit r, column c: card w of suit c)
// of the hand counts times `perCard`.
QVE_ALWAYS_INLINE std::int64_t cardSum(std::uint32_t rows, std::uint32_t columns, int high, int low,
                                       const std::int32_t* perCard) {
    std::int64_t sum = 0;
    for (int suit = 0; suit < 4; ++suit) {
        sum += std::int64_t((rows >> (8 * suit)) & 0xFF) * perCard[13 * suit + high];
        sum += std::int64_t((columns >> (8 * suit)) & 0xFF) * perCard[13 * suit + low];
    }
    return sum;
}

QVE_ALWAYS_INLINE void addCards(std::uint32_t rows, std::uint32_t columns, int high, int low,
                                std::int32_t* perCard) {
    for (int suit = 0; suit < 4; ++suit) {
        perCard[13 * suit + high] += std::int32_t((rows >> (8 * suit)) & 0xFF);
        perCard[13 * suit + low] += std::int32_t((columns >> (8 * suit)) & 0xFF);
    }
}

QVE_ALWAYS_INLINE std::int32_t handsOf(std::uint32_t rows) {
    return std::int32_t((rows * 0x01010101u) >> 24);
}

// Pairs of one hand of grid 1 and one of grid 2 of the same class sharing a card, counting
// a hand in both grids twice: sum over the eight cards of n1(c) x n2(c).
template <typename Class>
QVE_ALWAYS_INLINE std::int64_t sharedCards(std::uint32_t rows1, std::uint32_t columns1,
                                           std::uint32_t rows2, std::uint32_t columns2,
                                           const Class& c) {
    std::int64_t sum = 0;
    for (int suit = 0; suit < 4; ++suit) {
        const int shift = 8 * suit;
        sum += std::int64_t((rows1 >> shift) & 0xFF) * ((rows2 >> shift) & 0xFF) +
               std::int64_t((columns1 >> shift) & 0xFF) * ((columns2 >> shift) & 0xFF);
    }
    if (c.high == c.low) {
        // A pair's card of suit s is in row s and in column s: add the cross terms.
        for (int suit = 0; suit < 4; ++suit) {
            const int shift = 8 * suit;
            sum += std::int64_t((rows1 >> shift) & 0xFF) * ((columns2 >> shift) & 0xFF) +
                   std::int64_t((columns1 >> shift) & 0xFF) * ((rows2 >> shift) & 0xFF);
        }
    }
    return sum;
}

} // namespace

namespace {

QVE_ALWAYS_INLINE int bitCount16(unsigned x) {
    x = x - ((x >> 1) & 0x5555u);
    x = (x & 0x3333u) + ((x >> 2) & 0x3333u);
    x = (x + (x >> 4)) & 0x0F0Fu;
    return int((x + (x >> 8)) & 0x1Fu);
}

QVE_ALWAYS_INLINE void addClassParts(int klass, const std::uint64_t* rowPart,
                                     const std::uint64_t* columnPart, std::uint64_t factor,
                                     BoardEnumeration::Scratch& s) {
    std::uint64_t* parts = s.classParts.data() + classPartCount * klass;
    for (int suit = 0; suit < 4; ++suit) {
        parts[suit] += factor * rowPart[suit];
        parts[4 + suit] += factor * columnPart[suit];
    }
    parts[8] += factor;
}

} // namespace

// Per-hand counters of the range1 hands of a class at the current point of the walk: the
// same arithmetic as the class totals, one grid bit at a time.
void BoardEnumeration::addHandsOfClass(const LiveClass& c, std::int32_t below,
                                       const std::int32_t* belowCard, std::int32_t equal,
                                       const std::int32_t* equalCard, std::int64_t weight,
                                       Scratch& s) const {
    // As in addHandsOfLoneClass: a packed row part of the high card minus a packed column
    // part of the low card (for a pair both are cards of the one value).
    std::uint64_t rowPart[4];
    std::uint64_t columnPart[4];
    for (int suit = 0; suit < 4; ++suit) {
        const int high = 13 * suit + c.high;
        const int low = 13 * suit + c.low;
        rowPart[suit] = packed(below - belowCard[high], equal - equalCard[high]);
        columnPart[suit] = packed(belowCard[low], equalCard[low]);
    }
    const std::uint64_t factor = std::uint64_t(weight);
    addHandParts(c, rowPart, columnPart, factor, s);
}

// Adds factor x (row part - column part + a tie with itself) to each live range1 hand of the
// class. When most of the class's range1 hands are live, the whole grid goes to the class
// sums (spread at the end of addBoards) and the hands that are not live are taken back
// one by one, with the self-tie of the full grid2: all of it is arithmetic modulo 2^64 on
// words whose two fields are each >= 0, so the taking back is exact.
void BoardEnumeration::addHandParts(const LiveClass& c, const std::uint64_t* rowPart,
                                    const std::uint64_t* columnPart, std::uint64_t factor,
                                    Scratch& s) const {
    const std::uint16_t* slots = slotOfGrid[c.klass];
    const unsigned missing = grid1[c.klass] & ~unsigned(c.live1);
    if (bitCount16(missing) < bitCount16(c.live1)) {
        addClassParts(c.klass, rowPart, columnPart, factor, s);
        for (unsigned bits = missing; bits; bits &= bits - 1) {
            const int bit = lowestBit64(bits);
            const std::uint64_t both = rowPart[bit >> 2] - columnPart[bit & 3] +
                                       (std::uint64_t((grid2[c.klass] >> bit) & 1) << 32);
            s.handPacked[slots[bit]] -= factor * both;
        }
        return;
    }
    for (unsigned bits = c.live1; bits; bits &= bits - 1) {
        const int bit = lowestBit64(bits);
        const std::uint64_t both =
            rowPart[bit >> 2] - columnPart[bit & 3] + (std::uint64_t((c.live2 >> bit) & 1) << 32);
        s.handPacked[slots[bit]] += factor * both;
    }
}

// The same for a class alone at its strength: its ties are with its own range2 hands, whose
// per-card counts come from the row and column counts of its grid. A pair's card of suit s
// is in row s and in column s.
void BoardEnumeration::addHandsOfLoneClass(const LiveClass& c, std::uint32_t rows2,
                                           std::uint32_t columns2, std::int32_t below,
                                           const std::int32_t* belowCard, std::int64_t weight,
                                           Scratch& s) const {
    const std::uint64_t factor = std::uint64_t(weight);
    const std::uint16_t* slots = slotOfGrid[c.klass];
    if (!c.live2 && bitCount16(grid1[c.klass] & ~unsigned(c.live1)) >= bitCount16(c.live1)) {
        // No range2 hand in the class: no ties, wins only.
        for (unsigned bits = c.live1; bits; bits &= bits - 1) {
            const int bit = lowestBit64(bits);
            const std::int32_t win =
                below - belowCard[13 * (bit >> 2) + c.high] - belowCard[13 * (bit & 3) + c.low];
            s.handPacked[slots[bit]] += factor * std::uint32_t(win);
        }
        return;
    }
    // Both counters of a hand as one packed word: (row part of its high card) - (column part
    // of its low card) + (1 tie with itself). The wins never go below 0, so no borrow crosses
    // into the ties; the ties may pass through -1 modulo 2^64 and come back.
    std::uint64_t rowPart[4];
    std::uint64_t columnPart[4];
    const std::int32_t equal = handsOf(rows2);
    for (int suit = 0; suit < 4; ++suit) {
        const std::int32_t row = std::int32_t((rows2 >> (8 * suit)) & 0xFF);
        const std::int32_t column = std::int32_t((columns2 >> (8 * suit)) & 0xFF);
        const std::int32_t equalHigh = c.high == c.low ? row + column : row;
        const std::int32_t equalLow = c.high == c.low ? row + column : column;
        rowPart[suit] = packed(below - belowCard[13 * suit + c.high], equal - equalHigh);
        columnPart[suit] = packed(belowCard[13 * suit + c.low], equalLow);
    }
    addHandParts(c, rowPart, columnPart, factor, s);
}

// Classes of up to this many groups take the class formula once per group but the first;
// beyond, the per-hand counters cost less.
constexpr int groupPartsByFormula = 3;

template <typename PartCounts>
QVE_ALWAYS_INLINE bool
BoardEnumeration::addGroupParts(int klass, unsigned live1, std::int64_t classWins,
                                std::int64_t classTies, std::int64_t weight, Scratch& s,
                                const PartCounts& partCounts) const {
    const GroupPart* const first = groupParts.data() + groupPartBegin[klass];
    const GroupPart* const end = groupParts.data() + groupPartBegin[klass + 1];
    if (end - first > groupPartsByFormula)
        return false;
    // The class formula is linear in the grid's row and column counts, so the parts' counters
    // add up to the class's, and the first part takes what the others leave.
    for (const GroupPart* part = first + 1; part < end; ++part) {
        const unsigned live = part->grid & live1;
        if (!live)
            continue;
        const auto [wins, ties] = partCounts(live);
        s.groupWins[part->group] += weight * wins;
        s.groupTies[part->group] += weight * ties;
        classWins -= wins;
        classTies -= ties;
    }
    s.groupWins[first->group] += weight * classWins;
    s.groupTies[first->group] += weight * classTies;
    return true;
}

bool BoardEnumeration::countBoardByValueClass(CardMask board, std::int64_t weight,
                                              Scratch& s) const {
    const RankTables& t = tables;
    const ValueClassTables& v = valueClassTables();
    const std::uint64_t boardKey = keyOfCards(t, board);
    // Suit counters start at 3: 6 is three cards of the suit, 7 or more four or five.
    int flushSuit = -1;
    for (int suit = 0; suit < 4; ++suit) {
        const unsigned counter = unsigned(boardKey >> (32 + 4 * suit)) & 0xF;
        if (counter >= 7)
            return false;
        if (counter == 6)
            flushSuit = suit;
    }
    // Suits of the board cards of each value: the grid rows and columns they block.
    std::uint8_t boardSuits[13] = {};
    for (CardMask rest = board; rest; rest &= rest - 1) {
        const int card = lowestBit64(rest);
        boardSuits[card % 13] |= static_cast<std::uint8_t>(1u << (card / 13));
    }
    // Hands that make a flush: ranked one by one, in ascending strength.
    std::size_t flushCount = 0;
    std::uint16_t suitedBit = 0;
    if (flushSuit >= 0) {
        suitedBit = static_cast<std::uint16_t>(1u << (5 * flushSuit));
        for (const Entry& e : suited[flushSuit]) {
            if (e.mask & board)
                continue;
            const std::uint64_t item =
                e.info | std::uint64_t(strengthSevenOfKey(t, boardKey + e.key, board | e.mask))
                             << 32;
            std::size_t i = flushCount++;
            for (; i > 0 && s.flushHands[i - 1] > item; --i)
                s.flushHands[i] = s.flushHands[i - 1];
            s.flushHands[i] = item;
        }
    }

    // The classes with a live hand, in ascending strength.
    const ValueClassTables::Order ranked = v.orderOf(boardValueSet(t, boardKey), boardKey);
    const std::uint8_t* order = ranked.classes;
    const Strength* strength = ranked.strengths;
    LiveClass* live = s.liveClasses;
    int liveCount = 0;
    for (int j = 0; j < valueClassCount; ++j) {
        const int k = order[j];
        if (!(grid1[k] | grid2[k]))
            continue;
        const int high = v.highValue[k];
        const int low = v.lowValue[k];
        const std::uint16_t blocked = v.rowsOfSuits[boardSuits[high]] |
                                      v.columnsOfSuits[boardSuits[low]] |
                                      (high != low ? suitedBit : 0);
        const std::uint16_t live1 = grid1[k] & ~blocked;
        const std::uint16_t live2 = grid2[k] & ~blocked;
        if (live1 | live2)
            live[liveCount++] = {strength[j],       live1,          live2, std::uint8_t(high),
                                 std::uint8_t(low), std::uint8_t(k)};
    }

    std::int32_t below = 0;
    std::int32_t belowCard[52] = {};
    std::int32_t equalCard[52] = {};
    std::int64_t wins = 0;
    std::int64_t ties = 0;
    std::size_t f = 0;
    int i = 0;
    while (i < liveCount || f < flushCount) {
        if (f < flushCount && (i == liveCount || strengthOf(s.flushHands[f]) < live[i].strength)) {
            // Hands of one flush strength, as in countBoard.
            const unsigned level = strengthOf(s.flushHands[f]);
            std::size_t end = f + 1;
            while (end < flushCount && strengthOf(s.flushHands[end]) == level)
                ++end;
            walkLevel(s.flushHands + f, s.flushHands + end, below, belowCard, equalCard, wins, ties,
                      [&](std::uint64_t e, std::int32_t win, std::int32_t tie) {
                          if (byHand || byGroup)
                              s.handPacked[slotOf(e)] += std::uint64_t(weight) * packed(win, tie);
                      });
            f = end;
            continue;
        }
        const LiveClass& c = live[i];
        if (i + 1 == liveCount || live[i + 1].strength != c.strength) {
            // A class alone at its strength, the common case: its ties are with its own
            // range2 hands, counted from the two grids without the per-card array.
            const std::uint32_t rows2 = v.rowCounts[c.live2];
            const std::uint32_t columns2 = v.columnCounts[c.live2];
            if (c.live1) {
                // Wins and ties of the range1 hands of any part of the grid.
                const auto partCounts = [&](unsigned live) {
                    const std::uint32_t rows = v.rowCounts[live];
                    const std::uint32_t columns = v.columnCounts[live];
                    const std::int64_t n = handsOf(rows);
                    return std::pair<std::int64_t, std::int64_t>{
                        n * below - cardSum(rows, columns, c.high, c.low, belowCard),
                        n * handsOf(rows2) - sharedCards(rows, columns, rows2, columns2, c) +
                            handsOf(v.rowCounts[live & c.live2])};
                };
                const auto [classWins, classTies] = partCounts(c.live1);
                wins += classWins;
                ties += classTies;
                if (byHand || (byGroup && !addGroupParts(c.klass, c.live1, classWins, classTies,
                                                         weight, s, partCounts)))
                    addHandsOfLoneClass(c, rows2, columns2, below, belowCard, weight, s);
            }
            below += handsOf(rows2);
            addCards(rows2, columns2, c.high, c.low, belowCard);
            ++i;
            continue;
        }
        // Several classes of one strength.
        int end = i + 1;
        while (end < liveCount && live[end].strength == c.strength)
            ++end;
        std::int32_t equal = 0;
        for (int j = i; j < end; ++j) {
            const std::uint32_t rows = v.rowCounts[live[j].live2];
            equal += handsOf(rows);
            addCards(rows, v.columnCounts[live[j].live2], live[j].high, live[j].low, equalCard);
        }
        for (int j = i; j < end; ++j) {
            const LiveClass& d = live[j];
            if (!d.live1)
                continue;
            const auto partCounts = [&](unsigned live) {
                const std::uint32_t rows = v.rowCounts[live];
                const std::uint32_t columns = v.columnCounts[live];
                const std::int64_t n = handsOf(rows);
                return std::pair<std::int64_t, std::int64_t>{
                    n * below - cardSum(rows, columns, d.high, d.low, belowCard),
                    n * equal - cardSum(rows, columns, d.high, d.low, equalCard) +
                        handsOf(v.rowCounts[live & d.live2])};
            };
            const auto [classWins, classTies] = partCounts(d.live1);
            wins += classWins;
            ties += classTies;
            if (byHand || (byGroup && !addGroupParts(d.klass, d.live1, classWins, classTies, weight,
                                                     s, partCounts)))
                addHandsOfClass(d, below, belowCard, equal, equalCard, weight, s);
        }
        for (int j = i; j < end; ++j) {
            const LiveClass& d = live[j];
            const std::uint32_t rows = v.rowCounts[d.live2];
            below += handsOf(rows);
            addCards(rows, v.columnCounts[d.live2], d.high, d.low, belowCard);
            for (int suit = 0; suit < 4; ++suit) {
                equalCard[13 * suit + d.high] = 0;
                equalCard[13 * suit + d.low] = 0;
            }
        }
        i = end;
    }
    s.wins += weight * wins;
    s.ties += weight * ties;
    return true;
}

void BoardEnumeration::countBoard(CardMask board, std::int64_t weight, Scratch& s) const {
    const RankTables& t = tables;
    std::uint64_t* QVE_RESTRICT entries = s.entries.data();
    const Entry* QVE_RESTRICT hand = hands.data();
    const Entry* const end = hand + hands.size();
    const std::uint64_t boardKey = keyOfCards(t, board);
    std::size_t n = 0;
    for (; hand != end; ++hand) {
        if (hand->mask & board)
            continue;
        const Strength strength = strengthSevenOfKey(t, boardKey + hand->key, board | hand->mask);
        entries[n++] = hand->info | std::uint64_t(strength) << 32;
    }
    sortByStrength(entries, s.spare.data(), n);

    std::int32_t below = 0;
    std::int32_t belowCard[52] = {};
    std::int32_t equalCard[52] = {};
    std::int64_t wins = 0;
    std::int64_t ties = 0;
    std::size_t i = 0;
    while (i < n) {
        const unsigned strength = strengthOf(entries[i]);
        std::size_t j = i + 1;
        while (j < n && strengthOf(entries[j]) == strength)
            ++j;
        walkLevel(entries + i, entries + j, below, belowCard, equalCard, wins, ties,
                  [&](std::uint64_t e, std::int32_t win, std::int32_t tie) {
                      if (byHand || byGroup) {
                          s.handWins[slotOf(e)] += weight * win;
                          s.handTies[slotOf(e)] += weight * tie;
                      }
                  });
        i = j;
    }
    s.wins += weight * wins;
    s.ties += weight * ties;
}

bool BoardEnumeration::groupsKeptBy(const std::vector<SuitPermutation>& symmetries) const {
    for (std::size_t g = 1; g < symmetries.size(); ++g) {
        for (std::size_t slot = 0; slot < count1; ++slot) {
            const int image = slotOfHand[handIndex(permuteCards(hands1[slot], symmetries[g]))];
            if (image < 0 || groupOfSlot[std::size_t(image)] != groupOfSlot[slot])
                return false;
        }
    }
    return true;
}

void BoardEnumeration::addBoards(CardMask fixed, CardMask excluded, int count,
                                 const std::vector<SuitPermutation>& symmetriesGiven,
                                 std::int64_t sign, Tally& tally, const volatile bool& stop) const {
    Scratch s;
    s.entries.resize(hands.size() + 1);
    s.spare.resize(hands.size() + 1);
    if (byHand || byGroup) {
        s.handWins.assign(count1, 0);
        s.handTies.assign(count1, 0);
        s.handPacked.assign(count1, 0);
        s.classParts.assign(std::size_t(classPartCount) * valueClassCount, 0);
    }
    if (byGroup) {
        s.groupWins.assign(groupCount, 0);
        s.groupTies.assign(groupCount, 0);
    }
    // Groups that some symmetry splits would need the per-hand folding: count those without.
    const std::vector<SuitPermutation> identity(
        symmetriesGiven.begin(), symmetriesGiven.begin() + (symmetriesGiven.empty() ? 0 : 1));
    const std::vector<SuitPermutation>& symmetries =
        byGroup && !groupsKeptBy(symmetriesGiven) ? identity : symmetriesGiven;
    int deck[52];
    int deckSize = 0;
    for (int card = 0; card < 52; ++card)
        if (!((excluded >> card) & 1))
            deck[deckSize++] = card;
    const std::int64_t symmetryCount = static_cast<std::int64_t>(symmetries.size());
    // A hand's weighted counter is at most (boards) x (hands of range2); the walk per value
    // class packs two counters in a word when that stays below 2^32 (always, in practice:
    // the largest case, preflop with six dead cards, stays below 2^30).
    const bool classWalk =
        byValueClass &&
        (!(byHand || byGroup) ||
         binomial(deckSize, count) * std::uint64_t(hands.size()) < (std::uint64_t(1) << 32));

    // Iterates the `count`-subsets of the deck in lexicographic order of positions.
    int position[5] = {0, 1, 2, 3, 4};
    if (count > deckSize || count < 0 || count > 5)
        return;
    while (true) {
        if (stopRequested(stop))
            throw TerminationOccured();
        CardMask added = 0;
        for (int k = 0; k < count; ++k)
            added |= CardMask(1) << deck[position[k]];
        std::int64_t stabiliser = 1;
        bool smallest = true;
        for (std::size_t g = 1; g < symmetries.size(); ++g) {
            const CardMask image = permuteCards(added, symmetries[g]);
            if (image < added) {
                smallest = false;
                break;
            }
            stabiliser += image == added;
        }
        if (smallest) {
            const CardMask board = fixed | added;
            const std::int64_t weight = symmetryCount / stabiliser;
            if (!classWalk || !countBoardByValueClass(board, weight, s))
                countBoard(board, weight, s);
        }
        // Next subset.
        int k = count - 1;
        while (k >= 0 && position[k] == deckSize - count + k)
            --k;
        if (k < 0)
            break;
        ++position[k];
        for (int m = k + 1; m < count; ++m)
            position[m] = position[m - 1] + 1;
    }

    tally.wins += sign * s.wins;
    tally.ties += sign * s.ties;
    if (!byHand && !byGroup)
        return;
    if (classWalk) {
        for (int k = 0; k < valueClassCount; ++k) {
            const std::uint64_t* parts = s.classParts.data() + classPartCount * k;
            for (unsigned bits = grid1[k]; bits; bits &= bits - 1) {
                const int bit = lowestBit64(bits);
                s.handPacked[slotOfGrid[k][bit]] += parts[bit >> 2] - parts[4 + (bit & 3)] +
                                                    (((grid2[k] >> bit) & 1) ? parts[8] << 32 : 0);
            }
        }
    }
    for (std::size_t slot = 0; slot < count1; ++slot) {
        s.handWins[slot] += std::int64_t(s.handPacked[slot] & 0xFFFFFFFFu);
        s.handTies[slot] += std::int64_t(s.handPacked[slot] >> 32);
    }
    if (byGroup) {
        // Orbit-weighted counters summed over a group that is a union of orbits are exact.
        for (std::size_t slot = 0; slot < count1; ++slot) {
            s.groupWins[groupOfSlot[slot]] += s.handWins[slot];
            s.groupTies[groupOfSlot[slot]] += s.handTies[slot];
        }
        if (tally.groupWins.size() != groupCount) {
            tally.groupWins.assign(groupCount, 0);
            tally.groupTies.assign(groupCount, 0);
        }
        for (std::size_t g = 0; g < groupCount; ++g) {
            tally.groupWins[g] += sign * s.groupWins[g];
            tally.groupTies[g] += sign * s.groupTies[g];
        }
        return;
    }
    if (tally.handWins.size() != count1) {
        tally.handWins.assign(count1, 0);
        tally.handTies.assign(count1, 0);
    }
    // Fold the orbit-weighted counters over the symmetries: the exact counter of a hand is the
    // mean of the weighted counters of its images.
    for (std::size_t slot = 0; slot < count1; ++slot) {
        std::int64_t w = 0;
        std::int64_t t = 0;
        for (const SuitPermutation& perm : symmetries) {
            const int image = slotOfHand[handIndex(permuteCards(hands1[slot], perm))];
            w += s.handWins[image];
            t += s.handTies[image];
        }
        tally.handWins[slot] += sign * (w / symmetryCount);
        tally.handTies[slot] += sign * (t / symmetryCount);
    }
}

} // namespace qve
