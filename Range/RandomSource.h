#pragma once

#include <cstdint>
#include <random>

namespace Range {

// The program's one source of randomness: random hands of a range, shuffled board cards,
// random cards of the card table, the training's deals. It is handed to whatever draws, so
// that a test fixes the seed and replays every draw; the program itself draws from
// `shared()`, seeded once from the clock at start.
//
// Draws are uniform (no modulo bias) and the same on every platform for the same seed:
// std::mt19937 is fully specified, and the bounded draw below does not use the library's
// unspecified distributions.
//
// Not thread-safe: draws happen on the main thread only.
class RandomSource {
public:
    explicit RandomSource(std::uint32_t seed) : engine(seed) {}

    // The instance the program draws from unless it is given another.
    static RandomSource& shared();

    void reseed(std::uint32_t seed) { engine.seed(seed); }
    // A number in [0, bound); `bound` must be at least 1 (0 gives 0).
    std::uint32_t below(std::uint32_t bound);

private:
    std::mt19937 engine;
};

} // namespace Range
