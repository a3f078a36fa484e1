// The ranking tables from the rules of the game: run by the table generator at build time
// (the library itself only reads the generated constant data) and by the tests.

#include "RankTables.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace qve {

namespace {

constexpr HandRank categoryBits(HandCategory category) {
    return static_cast<HandRank>(category) << 28;
}

// Up to `count` highest value bits of `mask`, packed 4 bits each from bit 16 down.
HandRank packHighest(unsigned mask, int count, int shift = 16) {
    HandRank packed = 0;
    for (int value = 12; value >= 0 && count > 0; --value) {
        if (mask & (1u << value)) {
            packed |= HandRank(value) << shift;
            shift -= 4;
            --count;
        }
    }
    return packed;
}

// Value bit of the top card of the highest straight in `mask`, or -1. The wheel
// A-2-3-4-5 tops at the five (value bit 3).
int straightTop(unsigned mask) {
    for (int top = 12; top >= 4; --top) {
        const unsigned run = 0x1Fu << (top - 4);
        if ((mask & run) == run)
            return top;
    }
    const unsigned wheel = 0x100Fu;
    return (mask & wheel) == wheel ? 3 : -1;
}

// Rank of a lane of 5 or more cards of one suit.
HandRank rankOfFlushLane(unsigned lane) {
    const int top = straightTop(lane);
    if (top >= 0)
        return categoryBits(HandCategory::StraightFlush) | HandRank(top) << 16;
    return categoryBits(HandCategory::Flush) | packHighest(lane, 5);
}

// Rank of 5 to 7 cards without a flush, from the number of cards of each value.
HandRank rankOfCounts(const int counts[13]) {
    unsigned present = 0;
    int quads = -1;
    int trips[2] = {-1, -1};
    int pairs[3] = {-1, -1, -1};
    int tripCount = 0;
    int pairCount = 0;
    for (int value = 12; value >= 0; --value) {
        const int n = counts[value];
        if (n > 0)
            present |= 1u << value;
        if (n == 4)
            quads = value;
        else if (n == 3 && tripCount < 2)
            trips[tripCount++] = value;
        else if (n == 2 && pairCount < 3)
            pairs[pairCount++] = value;
    }
    if (quads >= 0)
        return categoryBits(HandCategory::FourOfAKind) | HandRank(quads) << 16 |
               packHighest(present & ~(1u << quads), 1, 12);
    if (tripCount > 0 && (tripCount > 1 || pairCount > 0)) {
        int pair = tripCount > 1 ? trips[1] : -1;
        if (pairCount > 0 && pairs[0] > pair)
            pair = pairs[0];
        return categoryBits(HandCategory::FullHouse) | HandRank(trips[0]) << 16 |
               HandRank(pair) << 12;
    }
    const int top = straightTop(present);
    if (top >= 0)
        return categoryBits(HandCategory::Straight) | HandRank(top) << 16;
    if (tripCount > 0)
        return categoryBits(HandCategory::ThreeOfAKind) | HandRank(trips[0]) << 16 |
               packHighest(present & ~(1u << trips[0]), 2, 12);
    if (pairCount > 1)
        return categoryBits(HandCategory::TwoPair) | HandRank(pairs[0]) << 16 |
               HandRank(pairs[1]) << 12 |
               packHighest(present & ~(1u << pairs[0]) & ~(1u << pairs[1]), 1, 8);
    if (pairCount > 0)
        return categoryBits(HandCategory::Pair) | HandRank(pairs[0]) << 16 |
               packHighest(present & ~(1u << pairs[0]), 3, 12);
    return categoryBits(HandCategory::HighCard) | packHighest(present, 5);
}

int digitSum(int number) {
    int sum = 0;
    for (; number; number /= 5)
        sum += number % 5;
    return sum;
}

} // namespace

void buildRankTables(RankTables& t) {
    int power[13];
    for (int value = 0; value < 13; ++value)
        power[value] = value < 7 ? (value == 0 ? 1 : power[value - 1] * 5)
                                 : (value == 7 ? 1 : power[value - 1] * 5);
    for (unsigned lane = 0; lane < 8192; ++lane) {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        int cards = 0;
        for (int value = 0; value < 13; ++value) {
            if (lane & (1u << value)) {
                ++cards;
                (value < 7 ? low : high) += power[value];
            }
        }
        t.laneKey[lane] = low | high << 17 | (cards >= 5 ? RankTables::flushFlag : 0);
    }
    for (int card = 0; card < 52; ++card) {
        const int value = card % 13;
        const int lane = card / 13;
        const std::uint64_t digit =
            value < 7 ? std::uint64_t(power[value]) : std::uint64_t(power[value]) << 17;
        t.cardKey[card] = digit + (std::uint64_t(1) << (32 + 4 * lane));
    }

    // Low multisets by size, numbered within their size.
    std::vector<HandRank> ranks; // nonFlush as ranks first, turned into strengths below
    std::vector<int> lowsOfSize[8];
    for (int number = 0; number < RankTables::lowNumbers; ++number) {
        const int size = digitSum(number);
        t.lowIndex[number] = 0;
        if (size <= 7) {
            t.lowIndex[number] = static_cast<std::uint16_t>(lowsOfSize[size].size());
            lowsOfSize[size].push_back(number);
        }
    }
    for (int cards = 5; cards <= 7; ++cards) {
        for (int high = 0; high < RankTables::highNumbers; ++high) {
            t.highBase[cards - 5][high] = 0;
            const int highSize = digitSum(high);
            if (highSize > cards)
                continue;
            t.highBase[cards - 5][high] = static_cast<std::uint32_t>(ranks.size());
            int counts[13];
            for (int value = 7, rest = high; value < 13; ++value, rest /= 5)
                counts[value] = rest % 5;
            for (int low : lowsOfSize[cards - highSize]) {
                for (int value = 0, rest = low; value < 7; ++value, rest /= 5)
                    counts[value] = rest % 5;
                ranks.push_back(rankOfCounts(counts));
            }
        }
    }

    // Number the distinct ranks: every five-card rank occurs in some table entry.
    std::vector<HandRank> flushRanks(8192, 0);
    for (unsigned lane = 0; lane < 8192; ++lane)
        if (t.laneKey[lane] & RankTables::flushFlag)
            flushRanks[lane] = rankOfFlushLane(lane);
    std::vector<HandRank> distinct = ranks;
    for (unsigned lane = 0; lane < 8192; ++lane)
        if (flushRanks[lane])
            distinct.push_back(flushRanks[lane]);
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    if (distinct.size() != std::size_t(strengthCount) ||
        ranks.size() != std::size_t(RankTables::nonFlushEntries))
        throw std::logic_error("The ranking tables do not have their expected sizes.");
    std::copy(distinct.begin(), distinct.end(), t.rankOfStrength);
    const auto strengthOf = [&distinct](HandRank rank) {
        return static_cast<Strength>(std::lower_bound(distinct.begin(), distinct.end(), rank) -
                                     distinct.begin());
    };
    for (unsigned lane = 0; lane < 8192; ++lane)
        t.flush[lane] = flushRanks[lane] ? strengthOf(flushRanks[lane]) : 0;
    for (std::size_t i = 0; i < ranks.size(); ++i)
        t.nonFlush[i] = strengthOf(ranks[i]);
    for (unsigned lane = 0; lane < 8192; ++lane)
        t.flushRank[lane] = flushRanks[lane];

    // rankCards' blocks: one per high number, over the low multisets in size order.
    int lowStart[9] = {};
    for (int size = 0; size < 8; ++size)
        lowStart[size + 1] = lowStart[size] + static_cast<int>(lowsOfSize[size].size());
    for (int number = 0; number < RankTables::lowNumbers; ++number) {
        const int size = digitSum(number);
        t.lowPosition[number] =
            size <= 7 ? static_cast<std::uint32_t>(lowStart[size] + t.lowIndex[number])
                      : RankTables::noLowPosition;
    }
    std::vector<HandRank> valueRanks;
    for (int high = 0; high < RankTables::highNumbers; ++high) {
        const int highSize = digitSum(high);
        const auto start = static_cast<std::uint32_t>(valueRanks.size());
        if (highSize > 7) {
            t.highBlock[high] = start; // empty block
            continue;
        }
        const int length = lowStart[8 - highSize];
        t.highBlock[high] = start | std::uint32_t(length) << RankTables::blockShift;
        int counts[13];
        for (int value = 7, rest = high; value < 13; ++value, rest /= 5)
            counts[value] = rest % 5;
        for (int lowSize = 0; lowSize <= 7 - highSize; ++lowSize) {
            for (int low : lowsOfSize[lowSize]) {
                if (lowSize + highSize < 5) {
                    valueRanks.push_back(0);
                    continue;
                }
                for (int value = 0, rest = low; value < 7; ++value, rest /= 5)
                    counts[value] = rest % 5;
                valueRanks.push_back(rankOfCounts(counts));
            }
        }
    }
    if (valueRanks.size() != std::size_t(RankTables::valueRankEntries) ||
        valueRanks.size() >= (std::size_t(1) << RankTables::blockShift) ||
        lowStart[8] >= RankTables::noLowPosition)
        throw std::logic_error("The rankCards blocks outgrew their encoding.");
    std::copy(valueRanks.begin(), valueRanks.end(), t.valueRank);
}

} // namespace qve
