#include "Range/HandRangeStringReader.h"

#include "Range/Assertion.h"
#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/RandomSource.h"
#include "Range/RangeStringOperations.h"

#include <ostream>

namespace Range {

HandRangeStringReader::HandRangeStringReader(const HandRange* range) : constRange(range) {}

HandRangeStringReader::HandRangeStringReader(const HandRange& range)
    : HandRangeStringReader(&range) {}

std::string HandRangeStringReader::technicalText() const {
    std::string text;
    text.reserve(1024);
    for (const Element& element : *constRange) {
        if (element.suits == 0)
            continue;
        if (!text.empty())
            text += ',';
        text += elementToText(element);
    }
    return text;
}

std::string HandRangeStringReader::compactText() const {
    return compact(technicalText());
}

std::string HandRangeStringReader::randomHand(RandomSource& random) const {
    static const char* const dummy = "dummy, so that warning disappears";
    const unsigned int count = constRange->combinationCount();
    if (count == 0) {
        QV_ASSERT(false, "Random hand of an empty range.");
        return dummy;
    }
    const unsigned int drawn = random.below(count);
    unsigned int sum = 0;
    for (const Element& element : *constRange) {
        const unsigned int combinations = suitBitCount(element.suits);
        if (sum + combinations > drawn) {
            const std::size_t place = 2 * (drawn - sum);
            const std::string suits = suitsToText(element.suits, true);
            const std::string values = valuesToText(element.values);
            return std::string{values[0], suits[place], values[1], suits[place + 1]};
        }
        sum += combinations;
    }
    return dummy;
}

std::ostream& operator<<(std::ostream& stream, const HandRangeStringReader& reader) {
    return stream << reader.compactText();
}

} // namespace Range
