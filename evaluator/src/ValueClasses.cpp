#include "ValueClasses.h"

#include <algorithm>
#include <utility>

namespace qve {

namespace {

// The value digit of a card of `value` in an incremental key (one card of suit d).
std::uint64_t digitOf(const RankTables& t, int value) {
    return t.cardKey[value] & 0xFFFFFFFFull;
}

} // namespace

ValueClassTables::ValueClassTables()
    : rowCounts(1 << 16), columnCounts(1 << 16),
      order(new std::uint8_t[std::size_t(boardValueSets) * valueClassCount]),
      strength(new Strength[std::size_t(boardValueSets) * valueClassCount]),
      ranked(new std::atomic<bool>[boardValueSets]) {
    for (int set = 0; set < boardValueSets; ++set)
        ranked[set].store(false, std::memory_order_relaxed);
    for (int high = 0; high < 13; ++high) {
        for (int low = 0; low <= high; ++low) {
            highValue[valueClassOf(high, low)] = static_cast<std::uint8_t>(high);
            lowValue[valueClassOf(high, low)] = static_cast<std::uint8_t>(low);
        }
    }
    // Each grid adds its lowest hand to the grid without it.
    rowCounts[0] = 0;
    columnCounts[0] = 0;
    for (unsigned grid = 1; grid < (1u << 16); ++grid) {
        const int bit = lowestBit64(grid);
        rowCounts[grid] = rowCounts[grid & (grid - 1)] + (1u << (8 * (bit / 4)));
        columnCounts[grid] = columnCounts[grid & (grid - 1)] + (1u << (8 * (bit % 4)));
    }
    for (unsigned suits = 0; suits < 16; ++suits) {
        rowsOfSuits[suits] = 0;
        columnsOfSuits[suits] = 0;
        for (int suit = 0; suit < 4; ++suit) {
            if (suits & (1u << suit)) {
                rowsOfSuits[suits] |= static_cast<std::uint16_t>(0xFu << (4 * suit));
                columnsOfSuits[suits] |= static_cast<std::uint16_t>(0x1111u << suit);
            }
        }
    }
}

void ValueClassTables::rankValueSet(int set, std::uint64_t boardKey) const {
    const std::lock_guard<std::mutex> lock(ranking);
    if (ranked[set].load(std::memory_order_relaxed))
        return;
    const RankTables& t = rankTables();
    // The board's values from the two base-5 numbers of its key.
    const std::uint64_t key = boardKey & 0xFFFFFFFFull;
    int counts[13];
    std::uint32_t low = std::uint32_t(key & 0x1FFFF);
    std::uint32_t high = std::uint32_t((key >> 17) & 0x3FFF);
    for (int value = 0; value < 7; ++value, low /= 5)
        counts[value] = int(low % 5);
    for (int value = 7; value < 13; ++value, high /= 5)
        counts[value] = int(high % 5);

    std::pair<Strength, std::uint8_t> classes[valueClassCount];
    for (int k = 0; k < valueClassCount; ++k) {
        const int a = highValue[k];
        const int b = lowValue[k];
        Strength s = 0;
        if (counts[a] + 1 + (a == b) <= 4 && counts[b] + 1 <= 4) {
            const std::uint64_t seven = key + digitOf(t, a) + digitOf(t, b);
            s = t.nonFlush[t.highBase[2][(seven >> 17) & 0x3FFF] + t.lowIndex[seven & 0x1FFFF]];
        }
        classes[k] = {s, static_cast<std::uint8_t>(k)};
    }
    std::sort(classes, classes + valueClassCount);
    std::uint8_t* setOrder = order.get() + std::size_t(set) * valueClassCount;
    Strength* setStrength = strength.get() + std::size_t(set) * valueClassCount;
    for (int i = 0; i < valueClassCount; ++i) {
        setOrder[i] = classes[i].second;
        setStrength[i] = classes[i].first;
    }
    ranked[set].store(true, std::memory_order_release);
}

void ValueClassTables::rankAllValueSets() const {
    const RankTables& t = rankTables();
    // Every multiset of five values: v0 <= v1 <= ... <= v4, at most four of a value.
    int v[5];
    for (v[0] = 0; v[0] < 13; ++v[0])
        for (v[1] = v[0]; v[1] < 13; ++v[1])
            for (v[2] = v[1]; v[2] < 13; ++v[2])
                for (v[3] = v[2]; v[3] < 13; ++v[3])
                    for (v[4] = v[3]; v[4] < 13; ++v[4]) {
                        if (v[0] == v[4])
                            continue;
                        std::uint64_t key = 0;
                        for (int value : v)
                            key += digitOf(t, value);
                        orderOf(boardValueSet(t, key), key);
                    }
}

const ValueClassTables& valueClassTables() {
    static const std::unique_ptr<ValueClassTables> tables = std::make_unique<ValueClassTables>();
    return *tables;
}

} // namespace qve
