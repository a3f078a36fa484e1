#include "PreflopMatchupNumbering.h"
#include "SuitSymmetry.h"

#include <algorithm>

namespace qve {

PreflopMatchupNumbering::PreflopMatchupNumbering() : table(handCount * handCount, -1) {
    const auto& perms = allSuitPermutations();
    std::vector<std::uint16_t> image(24 * handCount);
    std::vector<CardMask> hands(handCount);
    for (int h = 0; h < handCount; ++h) {
        hands[h] = handOfIndex(h);
        for (int p = 0; p < 24; ++p)
            image[p * handCount + h] =
                static_cast<std::uint16_t>(handIndex(permuteCards(hands[h], perms[p])));
    }
    // First pass: the smallest key and the seat order that reaches it.
    std::vector<bool> used(handCount * handCount, false);
    for (int i = 0; i < handCount; ++i) {
        for (int j = 0; j < handCount; ++j) {
            if (hands[i] & hands[j])
                continue;
            std::int32_t straight = handCount * handCount;
            std::int32_t swapped = handCount * handCount;
            for (int p = 0; p < 24; ++p) {
                const std::int32_t a = image[p * handCount + i];
                const std::int32_t b = image[p * handCount + j];
                straight = std::min(straight, a * handCount + b);
                swapped = std::min(swapped, b * handCount + a);
            }
            const std::int32_t key = std::min(straight, swapped);
            used[key] = true;
            table[i * handCount + j] = key * 2 + (swapped < straight ? 1 : 0);
        }
    }
    // Second pass: dense class numbers by ascending key.
    std::vector<std::int32_t> classOfKey(handCount * handCount, -1);
    for (std::int32_t key = 0; key < handCount * handCount; ++key) {
        if (used[key]) {
            classOfKey[key] = static_cast<std::int32_t>(keys.size());
            keys.push_back(key);
        }
    }
    for (std::int32_t& entry : table)
        if (entry >= 0)
            entry = classOfKey[entry / 2] * 2 + (entry & 1);
}

} // namespace qve
