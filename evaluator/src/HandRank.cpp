#include "HandRank.h"
#include "RankTables.h"

namespace qve {

namespace {

// A lane of five or more cards. The value parts of the key are exact whatever the suits, so
// the block check of rankCards tells whether there are 5 to 7 cards; if so exactly one lane
// holds five or more, and the other lanes' entries are 0. Out of line: keeping it apart keeps
// the common path short.
QVE_NOINLINE HandRank rankFlush(const RankTables& t, std::uint32_t key, CardMask cards) {
    const std::uint32_t position = t.lowPosition[key & 0x1FFFF];
    const std::uint32_t block = t.highBlock[(key >> 17) & 0x3FFF];
    if (position >= block >> RankTables::blockShift)
        return 0;
    return t.flushRank[unsigned(cards) & 0x1FFF] | t.flushRank[unsigned(cards >> 13) & 0x1FFF] |
           t.flushRank[unsigned(cards >> 26) & 0x1FFF] |
           t.flushRank[unsigned(cards >> 39) & 0x1FFF];
}

} // namespace

HandRank rankCards(CardMask cards) {
    const RankTables& t = generatedRankTables;
    const unsigned a = unsigned(cards) & 0x1FFF;
    const unsigned b = unsigned(cards >> 13) & 0x1FFF;
    const unsigned c = unsigned(cards >> 26) & 0x1FFF;
    const unsigned d = unsigned(cards >> 39) & 0x1FFF;
    const std::uint32_t key = t.laneKey[a] + t.laneKey[b] + t.laneKey[c] + t.laneKey[d];
    if (QVE_UNLIKELY((key & RankTables::flushFlag) != 0))
        return rankFlush(t, key, cards);
    // The block of the high number holds every low multiset that keeps the hand at 7 cards
    // or fewer; fewer than 5 cards find 0 there. Eight or more cards may have two five-card
    // lanes whose flags carry out of the word: their digit sums leave the block all the same.
    const std::uint32_t position = t.lowPosition[key & 0x1FFFF];
    const std::uint32_t block = t.highBlock[(key >> 17) & 0x3FFF];
    if (QVE_UNLIKELY(position >= block >> RankTables::blockShift))
        return 0;
    return t.valueRank[(block & ((1u << RankTables::blockShift) - 1)) + position];
}

} // namespace qve
