#include "Range/HandRangeStringManipulator.h"

#include "Range/Assertion.h"
#include "Range/CardConversion.h"
#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/RangeStringOperations.h"

#include <istream>
#include <ostream>
#include <string_view>

namespace Range {
namespace {

const char* const wrongLengthTwo =
    "HandRangeStringManipulator::Insert(Element&) with wrong parameters.";
const char* const wrongParameters =
    "HandRangeStringManipulator::Insert(std::string, bool) with wrong parameters.";

// Inserts the elements of one technical token into `range` (adding to what it holds).
void insertToken(std::string_view hand, HandRange& range) {
    switch (hand.size()) {
    case 2: {
        QV_ASSERT(isHigherValueThan(hand[0], hand[1]) || hand[0] == hand[1], wrongLengthTwo);
        const unsigned int values = valueToBinaryMask(hand[0]) | valueToBinaryMask(hand[1]);
        if (hand[0] == hand[1]) {
            range.insert(makeElement(values, Pair, pairSuits), true);
        } else {
            range.insert(makeElement(values, Offsuit, offsuitSuits), true);
            range.insert(makeElement(values, Suited, suitedSuits), true);
        }
        break;
    }
    case 3: {
        QV_ASSERT(isHigherValueThan(hand[0], hand[1]), wrongParameters);
        const unsigned int values = valueToBinaryMask(hand[0]) | valueToBinaryMask(hand[1]);
        const int suitClass = suitClassFromChar(hand[2]);
        range.insert(makeElement(values, suitClass, possibleSuits(suitClass)), true);
        break;
    }
    case 4: {
        QV_ASSERT(isHigherValueThan(hand[0], hand[2]) || hand[0] == hand[2], wrongParameters);
        const unsigned int values = valueToBinaryMask(hand[0]) | valueToBinaryMask(hand[2]);
        const int suitClass = hand[0] == hand[2] ? Pair : (hand[1] == hand[3] ? Suited : Offsuit);
        range.insert(makeElement(values, suitClass, suitPairToBit(hand[1], hand[3])), true);
        break;
    }
    default:
        QV_ASSERT(false, "Part of technical range not really technical.");
        break;
    }
}

} // namespace

HandRangeStringManipulator::HandRangeStringManipulator(HandRange* range)
    : HandRangeStringReader(range), range(range) {}

HandRangeStringManipulator::HandRangeStringManipulator(HandRange& range)
    : HandRangeStringManipulator(&range) {}

void HandRangeStringManipulator::Insert(const std::string& technical, bool overwrite) {
    if (technical.empty()) {
        range->reset();
        return;
    }
    // Collect in a plain range first, so that the target's filter sees every class once.
    HandRange fresh;
    if (!overwrite)
        fresh = *range;
    const std::string_view text(technical);
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == ',') {
            insertToken(text.substr(start, i - start), fresh);
            start = i + 1;
        }
    }
    range->assign(fresh.elements());
}

void HandRangeStringManipulator::setFree(const std::string& text) {
    std::string normal = text;
    normalize(normal);
    Insert(expand(normal), true);
}

void HandRangeStringManipulator::addFree(const std::string& text) {
    std::string normal = text;
    normalize(normal);
    Insert(expand(normal), false);
}

void HandRangeStringManipulator::setNormal(const std::string& normalText, bool overwrite) {
    Insert(expand(normalText), overwrite);
}

void HandRangeStringManipulator::readFrom(std::istream& stream) {
    std::string text;
    stream >> text;
    normalize(text);
    const std::string technical = expand(text);
    if (technical.empty()) {
        range->reset();
        range->changeNotifier()();
        return;
    }
    Insert(technical, true);
}

std::istream& operator>>(std::istream& stream, HandRangeStringManipulator& manipulator) {
    manipulator.readFrom(stream);
    return stream;
}

std::istream& operator>>(std::istream& stream, HandRangeStringManipulator&& manipulator) {
    manipulator.readFrom(stream);
    return stream;
}

std::ostream& operator<<(std::ostream& stream, const HandRange& range) {
    return stream << HandRangeStringReader(range);
}

std::istream& operator>>(std::istream& stream, HandRange& range) {
    return stream >> HandRangeStringManipulator(range);
}

} // namespace Range
