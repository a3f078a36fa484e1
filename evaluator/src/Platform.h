#pragma once

// The one place for compiler and processor specifics of the evaluator. Everything else
// in the library is portable C++17 and goes through these names.

#include <cstdint>

#if defined(__GNUC__) || defined(__clang__)
#define QVE_LIKELY(x) __builtin_expect(!!(x), 1)
#define QVE_UNLIKELY(x) __builtin_expect(!!(x), 0)
#define QVE_ALWAYS_INLINE inline __attribute__((always_inline))
#define QVE_NOINLINE __attribute__((noinline))
#define QVE_RESTRICT __restrict__
#else
#define QVE_LIKELY(x) (x)
#define QVE_UNLIKELY(x) (x)
#define QVE_ALWAYS_INLINE inline
#define QVE_NOINLINE
#define QVE_RESTRICT
#endif

namespace qve {

// Number of set bits. One instruction where the target has it (the build option
// QUORVANE_EVALUATOR_NATIVE); otherwise a short bit trick inline, since the compiler's own
// fallback is a call into its runtime library.
QVE_ALWAYS_INLINE int popcount64(std::uint64_t x) {
#if (defined(__GNUC__) || defined(__clang__)) && defined(__POPCNT__)
    return __builtin_popcountll(x);
#else
    x = x - ((x >> 1) & 0x5555555555555555ull);
    x = (x & 0x3333333333333333ull) + ((x >> 2) & 0x3333333333333333ull);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0Full;
    return int((x * 0x0101010101010101ull) >> 56);
#endif
}

// The same for a 16-bit word (a grid of ValueClasses.h).
QVE_ALWAYS_INLINE int popcount16(unsigned x) {
#if (defined(__GNUC__) || defined(__clang__)) && defined(__POPCNT__)
    return __builtin_popcount(x & 0xFFFFu);
#else
    x &= 0xFFFFu;
    x = x - ((x >> 1) & 0x5555u);
    x = (x & 0x3333u) + ((x >> 2) & 0x3333u);
    x = (x + (x >> 4)) & 0x0F0Fu;
    return int((x + (x >> 8)) & 0x1Fu);
#endif
}

// Index of the lowest set bit; x must not be 0.
QVE_ALWAYS_INLINE int lowestBit64(std::uint64_t x) {
#if defined(__GNUC__) || defined(__clang__)
    return __builtin_ctzll(x);
#else
    int n = 0;
    while (!(x & 1)) {
        x >>= 1;
        ++n;
    }
    return n;
#endif
}

// Index of the highest set bit; x must not be 0.
QVE_ALWAYS_INLINE int highestBit64(std::uint64_t x) {
#if defined(__GNUC__) || defined(__clang__)
    return 63 - __builtin_clzll(x);
#else
    int n = 0;
    while (x >>= 1)
        ++n;
    return n;
#endif
}

// Reads the caller's stop flag. The flag is written by another thread without a lock; the
// volatile access is what keeps the compiler from hoisting the read out of a loop.
QVE_ALWAYS_INLINE bool stopRequested(const volatile bool& stop) {
    return stop;
}

} // namespace qve
