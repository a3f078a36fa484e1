#pragma once

// Hands by value class, for counting large ranges on a board.
//
// A value class is a pair of card values (v >= w): 13 pairs and 78 non-pairs, 91 classes.
// On a board where no hand can make a flush, every hand of a class has the same strength,
// that of the board's values plus v and w. So the order of the classes on a board depends
// only on the multiset of the board's five values (6,175 of them): it is ranked once per
// multiset, the first time a board of it is counted.
//
// Within a class a hand is one bit of a 16-bit grid: bit sHigh * 4 + sLow, the suits of its
// v card and of its w card (for a pair sHigh < sLow, both cards of value v). A row of the
// grid holds the hands of one v card, a column those of one w card, which is what the
// card-removal arithmetic of the enumeration needs: per class, the number of hands holding
// each of its eight cards.

#include "RankTables.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace qve {

constexpr int valueClassCount = 91;
constexpr int boardValueSets = 6175; // multisets of 5 values, at most 4 of each

QVE_ALWAYS_INLINE int valueClassOf(int high, int low) {
    return high * (high + 1) / 2 + low;
}

struct ValueClassTables {
    std::uint8_t highValue[valueClassCount];
    std::uint8_t lowValue[valueClassCount];
    // Per grid: the number of hands in each row and each column, one byte each.
    std::vector<std::uint32_t> rowCounts;
    std::vector<std::uint32_t> columnCounts;
    std::uint16_t rowsOfSuits[16];    // the grid rows of a 4-bit set of suits
    std::uint16_t columnsOfSuits[16]; // the grid columns of a 4-bit set of suits

    // The classes of one board value set in ascending strength, and their strengths. A class
    // that the board's values leave impossible (a fifth card of a value) comes first with
    // strength 0; no hand of it can be live on such a board.
    struct Order {
        const std::uint8_t* classes;
        const Strength* strengths;
    };

    ValueClassTables();

    // The order of the value set `set` of a five-card board whose incremental key
    // (keyOfCards) is `boardKey`: ranked on the first call for the set, under a lock, and
    // read without one afterwards.
    QVE_ALWAYS_INLINE Order orderOf(int set, std::uint64_t boardKey) const {
        if (QVE_UNLIKELY(!ranked[set].load(std::memory_order_acquire)))
            rankValueSet(set, boardKey);
        return {order.get() + std::size_t(set) * valueClassCount,
                strength.get() + std::size_t(set) * valueClassCount};
    }

    // Ranks every value set now (the one-time preparation of the library).
    void rankAllValueSets() const;

private:
    void rankValueSet(int set, std::uint64_t boardKey) const;

    std::unique_ptr<std::uint8_t[]> order;
    std::unique_ptr<Strength[]> strength;
    std::unique_ptr<std::atomic<bool>[]> ranked;
    mutable std::mutex ranking;
};

// Built on first use (thread-safe); the grid counts take about 0.5 MB and a millisecond,
// the value set orders (1.7 MB) are filled set by set as boards need them.
const ValueClassTables& valueClassTables();

// Number of the value multiset of a five-card board from its incremental key (keyOfCards).
QVE_ALWAYS_INLINE int boardValueSet(const RankTables& t, std::uint64_t boardKey) {
    return int(t.highBase[0][(boardKey >> 17) & 0x3FFF] + t.lowIndex[boardKey & 0x1FFFF]);
}

} // namespace qve
