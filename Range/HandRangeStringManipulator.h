#pragma once

#include "Range/HandRangeStringReader.h"

#include <iosfwd>
#include <string>

namespace Range {

// Sets and extends a range from text. Every change ends in one HandRange::assign, so all
// new suits pass the range's `suitFilter` at once and `changeNotifier` runs once. The one
// exception is an empty text, which resets the range in both modes without notification
// (adding an empty text to a range therefore empties it).
class HandRangeStringManipulator : public HandRangeStringReader {
public:
    explicit HandRangeStringManipulator(HandRange* range);
    explicit HandRangeStringManipulator(HandRange& range);

    // The basic entry: technical text replaces (`overwrite`) or extends the range. Tokens
    // in the wrong order or of a wrong length are programming faults and assert.
    void Insert(const std::string& technical, bool overwrite);
    // Technical text.
    void set(const std::string& technical) { Insert(technical, true); }
    void add(const std::string& technical) { Insert(technical, false); }
    // Free text: normalize a copy, expand, Insert.
    void setFree(const std::string& text);
    void addFree(const std::string& text);
    // Normal text: expand, Insert.
    void setNormal(const std::string& normalText, bool overwrite);

    // Replaces the range with one token of free text read up to white space; the notifier
    // runs once even when the text is empty.
    void readFrom(std::istream& stream);

private:
    HandRange* range;
};

std::istream& operator>>(std::istream& stream, HandRangeStringManipulator& manipulator);
std::istream& operator>>(std::istream& stream, HandRangeStringManipulator&& manipulator);

} // namespace Range
