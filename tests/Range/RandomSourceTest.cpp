#include "Range/RandomSource.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

using Range::RandomSource;

TEST(RandomSource, TheSameSeedReplaysTheSameDraws) {
    RandomSource first(20261125);
    RandomSource second(20261125);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(first.below(52), second.below(52));
    second.reseed(7);
    RandomSource third(7);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(second.below(1326), third.below(1326));
}

TEST(RandomSource, DrawsStayBelowTheBoundAndCoverIt) {
    RandomSource random(3);
    EXPECT_EQ(random.below(0), 0u);
    EXPECT_EQ(random.below(1), 0u);
    std::vector<int> counts(13, 0);
    for (int i = 0; i < 13000; ++i) {
        const std::uint32_t drawn = random.below(13);
        ASSERT_LT(drawn, 13u);
        ++counts[drawn];
    }
    // 1000 expected per value; a fair draw stays far inside these bounds.
    for (int count : counts) {
        EXPECT_GT(count, 850);
        EXPECT_LT(count, 1150);
    }
}

TEST(RandomSource, LargeBoundsAreEquallyLikelyInBothHalves) {
    // For a bound of three quarters of 2^32 a plain modulo of the raw draw would give the
    // lowest quarter of 2^32 twice the weight: five eighths of the draws would land in the
    // lower half of the bound. Rejection keeps the halves even.
    RandomSource random(11);
    const std::uint32_t bound = 0xC0000001u;
    int lower = 0;
    for (int i = 0; i < 20000; ++i)
        lower += random.below(bound) < bound / 2 ? 1 : 0;
    EXPECT_GT(lower, 9400);
    EXPECT_LT(lower, 10600);
}

TEST(RandomSource, TheSharedSourceIsOneInstance) {
    EXPECT_EQ(&RandomSource::shared(), &RandomSource::shared());
}
