#pragma once

#include <iosfwd>
#include <string>

namespace Range {

class HandRange;
class RandomSource;

// Reads a range as text. Holds the range by pointer; the range must outlive the reader.
class HandRangeStringReader {
public:
    explicit HandRangeStringReader(const HandRange* range);
    explicit HandRangeStringReader(const HandRange& range);

    // The text of every element with suits, in container order, joined with `,`.
    std::string technicalText() const;
    // compact() of technicalText().
    std::string compactText() const;
    // One combination of the range, drawn from `random` with every combination equally
    // likely, as a concrete hand ("AdKh"). The range must not be empty: that asserts
    // "Random hand of an empty range." and gives the dummy text.
    std::string randomHand(RandomSource& random) const;

protected:
    const HandRange* constRange;
};

// Writes compactText().
std::ostream& operator<<(std::ostream& stream, const HandRangeStringReader& reader);

} // namespace Range
