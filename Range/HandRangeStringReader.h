#pragma once

#include <iosfwd>
#include <string>

namespace Range {

class HandRange;

// Reads a range as text. Holds the range by pointer; the range must outlive the reader.
// Each construction seeds the runtime's rand() with the current time (process-wide), so two
// random hands drawn within one second from an unchanged range are the same hand.
class HandRangeStringReader {
public:
    explicit HandRangeStringReader(const HandRange* range);
    explicit HandRangeStringReader(const HandRange& range);

    // The text of every element with suits, in container order, joined with `,`.
    std::string technicalText() const;
    // compact() of technicalText().
    std::string compactText() const;
    // One combination of the range at random, as a concrete hand ("AdKh"). The range must
    // not be empty: that asserts "Random hand of an empty range." and gives the dummy text.
    std::string randomHand() const;

protected:
    const HandRange* constRange;
};

// Writes compactText().
std::ostream& operator<<(std::ostream& stream, const HandRangeStringReader& reader);

} // namespace Range
