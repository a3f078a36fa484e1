#include "Range/RandomSource.h"

#include <chrono>

namespace Range {

RandomSource& RandomSource::shared() {
    static RandomSource source(
        static_cast<std::uint32_t>(std::chrono::system_clock::now().time_since_epoch().count()));
    return source;
}

std::uint32_t RandomSource::below(std::uint32_t bound) {
    if (bound <= 1)
        return 0;
    // Rejection of the top partial block keeps every result equally likely.
    const std::uint32_t limit = static_cast<std::uint32_t>(0x100000000ULL - 0x100000000ULL % bound);
    for (;;) {
        const std::uint32_t drawn = static_cast<std::uint32_t>(engine());
        if (limit == 0 || drawn < limit)
            return drawn % bound;
    }
}

} // namespace Range
