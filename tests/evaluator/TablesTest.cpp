// The evaluator's constant tables (written at build time) against the same tables worked out
// at run time, and the value class orders that are ranked on first use against a plain
// ranking of every board value set.

#include "Cards.h"
#include "HandRank.h"
#include "PreflopMatchupIndex.h"
#include "PreflopMatchupNumbering.h"
#include "RankTables.h"
#include "SuitSymmetry.h"
#include "ValueClasses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>
#include <vector>

using namespace qve;

TEST(Tables, GeneratedRankTablesEqualTheTablesBuiltFromTheRules) {
    const auto built = std::make_unique<RankTables>();
    buildRankTables(*built);
    const RankTables& generated = rankTables();
    EXPECT_EQ(std::memcmp(built->laneKey, generated.laneKey, sizeof built->laneKey), 0);
    EXPECT_EQ(std::memcmp(built->flush, generated.flush, sizeof built->flush), 0);
    EXPECT_EQ(std::memcmp(built->lowIndex, generated.lowIndex, sizeof built->lowIndex), 0);
    EXPECT_EQ(std::memcmp(built->highBase, generated.highBase, sizeof built->highBase), 0);
    EXPECT_EQ(std::memcmp(built->nonFlush, generated.nonFlush, sizeof built->nonFlush), 0);
    EXPECT_EQ(
        std::memcmp(built->rankOfStrength, generated.rankOfStrength, sizeof built->rankOfStrength),
        0);
    EXPECT_EQ(std::memcmp(built->flushRank, generated.flushRank, sizeof built->flushRank), 0);
    EXPECT_EQ(std::memcmp(built->lowPosition, generated.lowPosition, sizeof built->lowPosition), 0);
    EXPECT_EQ(std::memcmp(built->highBlock, generated.highBlock, sizeof built->highBlock), 0);
    EXPECT_EQ(std::memcmp(built->valueRank, generated.valueRank, sizeof built->valueRank), 0);
    EXPECT_EQ(std::memcmp(built->cardKey, generated.cardKey, sizeof built->cardKey), 0);
    // Strengths are dense and ordered like the ranks they number.
    for (int s = 1; s < strengthCount; ++s)
        ASSERT_LT(generated.rankOfStrength[s - 1], generated.rankOfStrength[s]) << s;
}

TEST(Tables, CompactMatchupIndexGivesEveryPairItsClass) {
    const PreflopMatchupNumbering numbering;
    const PreflopMatchupIndex index;
    EXPECT_EQ(index.classCount(), numbering.classCount());
    EXPECT_EQ(index.classCount(), 47008);
    for (int h1 = 0; h1 < handCount; ++h1) {
        const PreflopMatchupIndex::Row row = index.row(h1);
        for (int h2 = 0; h2 < handCount; ++h2) {
            ASSERT_EQ(index.entry(h1, h2), numbering.entry(h1, h2)) << h1 << " " << h2;
            ASSERT_EQ(row.entry(h2), numbering.entry(h1, h2)) << h1 << " " << h2;
        }
    }
    // Sharing a card is -1, and a class seen from the other seat flips the seat bit.
    const int adah = handIndex(cardsOfText("AdAh"));
    const int adkd = handIndex(cardsOfText("AdKd"));
    const int kckh = handIndex(cardsOfText("KcKh"));
    EXPECT_EQ(index.entry(adah, adkd), -1);
    EXPECT_EQ(index.entry(adah, kckh) >> 1, index.entry(kckh, adah) >> 1);
    EXPECT_NE(index.entry(adah, kckh) & 1, index.entry(kckh, adah) & 1);
}

namespace {

// Seven cards of the given values laid out over the suits in turn, so that no suit holds more
// than three of them: no flush.
CardMask withoutFlush(const int* values, int count) {
    CardMask cards = 0;
    for (int i = 0; i < count; ++i) {
        int lane = i % 4;
        while ((cards >> (13 * lane + values[i])) & 1)
            lane = (lane + 1) % 4;
        cards |= CardMask(1) << (13 * lane + values[i]);
    }
    return cards;
}

} // namespace

// Every board value set, ranked on first use, holds the 91 classes once, in ascending
// strength, each with the strength that rankCards gives the board's values plus the class's
// two values (in suits that make no flush), or 0 when the values cannot be dealt.
TEST(Tables, ValueClassOrdersRankEveryBoardValueSet) {
    const ValueClassTables tables; // a fresh instance: every set is ranked in this test
    const RankTables& t = rankTables();
    std::set<int> sets;
    int v[7];
    for (v[0] = 0; v[0] < 13; ++v[0])
        for (v[1] = v[0]; v[1] < 13; ++v[1])
            for (v[2] = v[1]; v[2] < 13; ++v[2])
                for (v[3] = v[2]; v[3] < 13; ++v[3])
                    for (v[4] = v[3]; v[4] < 13; ++v[4]) {
                        if (v[0] == v[4])
                            continue;
                        int count[13] = {};
                        for (int i = 0; i < 5; ++i)
                            ++count[v[i]];
                        const std::uint64_t key = keyOfCards(t, withoutFlush(v, 5));
                        const int set = boardValueSet(t, key);
                        ASSERT_GE(set, 0);
                        ASSERT_LT(set, boardValueSets);
                        ASSERT_TRUE(sets.insert(set).second) << "set " << set << " twice";
                        const ValueClassTables::Order order = tables.orderOf(set, key);
                        std::vector<bool> seen(valueClassCount, false);
                        for (int i = 0; i < valueClassCount; ++i) {
                            const int k = order.classes[i];
                            ASSERT_FALSE(seen[k]);
                            seen[k] = true;
                            if (i > 0) {
                                ASSERT_LE(order.strengths[i - 1], order.strengths[i]);
                            }
                            const int high = tables.highValue[k];
                            const int low = tables.lowValue[k];
                            if (count[high] + 1 + (high == low) > 4 || count[low] + 1 > 4) {
                                EXPECT_EQ(order.strengths[i], 0);
                                continue;
                            }
                            v[5] = high;
                            v[6] = low;
                            EXPECT_EQ(t.rankOfStrength[order.strengths[i]],
                                      rankCards(withoutFlush(v, 7)));
                        }
                    }
    EXPECT_EQ(sets.size(), std::size_t(boardValueSets));
}
