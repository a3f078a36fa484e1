#include "ValueClasses.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace qve {

ValueClassTables::ValueClassTables()
    : order(std::size_t(boardValueSets) * valueClassCount),
      strength(std::size_t(boardValueSets) * valueClassCount), rowCounts(1 << 16),
      columnCounts(1 << 16) {
    const RankTables& t = rankTables();
    for (int high = 0; high < 13; ++high) {
        for (int low = 0; low <= high; ++low) {
            highValue[valueClassOf(high, low)] = static_cast<std::uint8_t>(high);
            lowValue[valueClassOf(high, low)] = static_cast<std::uint8_t>(low);
        }
    }
    // One card of each value, suit d: its key is the value's base-5 digit.
    std::uint64_t digit[13];
    for (int value = 0; value < 13; ++value)
        digit[value] = t.cardKey[value] & 0xFFFFFFFFull;

    std::vector<bool> seen(boardValueSets, false);
    int counts[13] = {};
    // Every multiset of five values: v0 <= v1 <= ... <= v4.
    int v[5];
    for (v[0] = 0; v[0] < 13; ++v[0])
        for (v[1] = v[0]; v[1] < 13; ++v[1])
            for (v[2] = v[1]; v[2] < 13; ++v[2])
                for (v[3] = v[2]; v[3] < 13; ++v[3])
                    for (v[4] = v[3]; v[4] < 13; ++v[4]) {
                        std::fill(counts, counts + 13, 0);
                        std::uint64_t key = 0;
                        bool possible = true;
                        for (int value : v) {
                            possible = possible && ++counts[value] <= 4;
                            key += digit[value];
                        }
                        if (!possible)
                            continue;
                        const int set = boardValueSet(t, key);
                        if (set < 0 || set >= boardValueSets || seen[set])
                            throw std::logic_error("Board value sets are not numbered densely.");
                        seen[set] = true;
                        std::pair<Strength, std::uint8_t> ranked[valueClassCount];
                        for (int k = 0; k < valueClassCount; ++k) {
                            const int a = highValue[k];
                            const int b = lowValue[k];
                            Strength s = 0;
                            if (counts[a] + 1 + (a == b) <= 4 && counts[b] + 1 <= 4) {
                                const std::uint64_t seven = key + digit[a] + digit[b];
                                s = t.nonFlush[t.highBase[2][(seven >> 17) & 0x3FFF] +
                                               t.lowIndex[seven & 0x1FFFF]];
                            }
                            ranked[k] = {s, static_cast<std::uint8_t>(k)};
                        }
                        std::sort(ranked, ranked + valueClassCount);
                        for (int i = 0; i < valueClassCount; ++i) {
                            order[std::size_t(set) * valueClassCount + i] = ranked[i].second;
                            strength[std::size_t(set) * valueClassCount + i] = ranked[i].first;
                        }
                    }

    for (unsigned grid = 0; grid < (1u << 16); ++grid) {
        std::uint32_t rows = 0;
        std::uint32_t columns = 0;
        for (int bit = 0; bit < 16; ++bit) {
            if (grid & (1u << bit)) {
                rows += 1u << (8 * (bit / 4));
                columns += 1u << (8 * (bit % 4));
            }
        }
        rowCounts[grid] = rows;
        columnCounts[grid] = columns;
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

const ValueClassTables& valueClassTables() {
    static const std::unique_ptr<ValueClassTables> tables = std::make_unique<ValueClassTables>();
    return *tables;
}

} // namespace qve
