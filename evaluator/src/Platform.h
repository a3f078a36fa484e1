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

// Number of set bits. Compiles to one instruction where the target has it (the build
// option QUORVANE_EVALUATOR_NATIVE), to a short bit trick otherwise; the hot loops of the
// library do not depend on it.
QVE_ALWAYS_INLINE int popcount64(std::uint64_t x) {
#if defined(__GNUC__) || defined(__clang__)
    return __builtin_popcountll(x);
#else
    int n = 0;
    for (; x; x &= x - 1)
        ++n;
    return n;
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
