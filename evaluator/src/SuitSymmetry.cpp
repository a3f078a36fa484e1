#include "SuitSymmetry.h"

#include <algorithm>

namespace qve {

CardMask handOfIndex(int index) {
    int high = 1;
    while ((high + 1) * high / 2 <= index)
        ++high;
    const int low = index - high * (high - 1) / 2;
    return (CardMask(1) << low) | (CardMask(1) << high);
}

const std::array<SuitPermutation, 24>& allSuitPermutations() {
    static const std::array<SuitPermutation, 24> perms = [] {
        std::array<SuitPermutation, 24> result{};
        SuitPermutation perm = {0, 1, 2, 3};
        int i = 0;
        do {
            result[i++] = perm;
        } while (std::next_permutation(perm.begin(), perm.end()));
        return result;
    }();
    return perms;
}

HandSet handSetOf(const std::vector<CardMask>& hands) {
    HandSet set(handCount, false);
    for (CardMask hand : hands)
        set[handIndex(hand)] = true;
    return set;
}

std::vector<SuitPermutation>
suitSymmetries(const std::vector<CardMask>& cardSets,
               const std::vector<const std::vector<CardMask>*>& handSets) {
    std::vector<HandSet> sets;
    for (const auto* hands : handSets)
        sets.push_back(handSetOf(*hands));
    std::vector<SuitPermutation> result;
    for (const SuitPermutation& perm : allSuitPermutations()) {
        bool keeps = true;
        for (CardMask cards : cardSets)
            keeps = keeps && permuteCards(cards, perm) == cards;
        for (std::size_t s = 0; keeps && s < sets.size(); ++s)
            for (CardMask hand : *handSets[s])
                if (!sets[s][handIndex(permuteCards(hand, perm))]) {
                    keeps = false;
                    break;
                }
        if (keeps)
            result.push_back(perm);
    }
    return result;
}

} // namespace qve
