#pragma once

namespace Range {

// One hand class of a range with the combinations of it that the range holds.
//
// `values`        value mask (bit 0 the deuce ... bit 12 the ace): one bit for a pair,
//                 two bits otherwise.
// `suits`         suit-pair mask of the combinations in the range; always a subset of
//                 `possibleSuits`.
// `possibleSuits` suit-pair mask of every combination of the class: 31710 offsuit,
//                 33825 suited, 2254 pair.
// `suitClass`     0 offsuit, 1 suited, 2 pair.
// `suited`        true for the suited class; with `values` the key of the class.
struct Element {
    unsigned int values = 0;
    unsigned int suits = 0;
    unsigned int possibleSuits = 0;
    int suitClass = 0;
    bool suited = false;

    // The other fields follow from these two.
    bool operator==(const Element& other) const {
        return values == other.values && suits == other.suits;
    }
    bool operator!=(const Element& other) const { return !(*this == other); }
};

} // namespace Range
