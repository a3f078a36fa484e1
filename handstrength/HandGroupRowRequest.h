#pragma once

#include <VelmaraEvaluatorBase.h>

#include <cstdint>

// A request to add one row to a HandGroup: the new row's key, the key of its parent row
// (the default key for a root row) and the counts it starts with.
struct HandGroupRowRequest {
    HandStrengthKey key;
    HandStrengthKey parentKey;
    std::uint32_t combinations1 = 0;
    std::uint32_t combinations2 = 0;

    HandGroupRowRequest() = default;
    HandGroupRowRequest(const HandStrengthKey& key, const HandStrengthKey& parentKey,
                        std::uint32_t combinations1 = 0, std::uint32_t combinations2 = 0)
        : key(key), parentKey(parentKey), combinations1(combinations1),
          combinations2(combinations2) {}
};
