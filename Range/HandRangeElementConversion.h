#pragma once

#include "Range/Element.h"

#include <string>
#include <utility>
#include <vector>

// The bit encodings of hands and hand classes, and conversions between them.
//
// Value mask: 13 bits, bit 0 the deuce ... bit 12 the ace.
// Suit-pair mask: 16 bits over the ordered pairs (suit of the first card, suit of the
// second card) in the order dd dh ds dc hd hh hs hc sd sh ss sc cd ch cs cc (bit 0 to 15).
// The first card of a hand is the higher one; of a pair, the one earlier in d, h, s, c.
// Card mask: 64 bits, four 13-bit lanes d (bits 0-12), h (13-25), s (26-38), c (39-51),
// each lane laid out as a value mask. This layout is shared with the evaluator library.
//
// Faults the caller must rule out are reported by QV_ASSERT; the function then goes on and
// yields 0 (or all-zero masks).

namespace Range {

class HandRange;

using CardMask = unsigned long long;

enum SuitClass : int { Offsuit = 0, Suited = 1, Pair = 2 };

// Possible-suits masks of the three classes.
constexpr unsigned int offsuitSuits = 0x7BDE; // 31710, 12 combinations
constexpr unsigned int suitedSuits = 0x8421;  // 33825, 4 combinations
constexpr unsigned int pairSuits = 0x08CE;    // 2254, 6 combinations (upper triangle)

// Lane masks of the card mask, by lane d, h, s, c.
constexpr CardMask laneMasks[4] = {0x1FFFULL, 0x3FFE000ULL, 0x7FFC000000ULL, 0xFFF8000000000ULL};

// Character orders with their own meaning; each stays as it is.
constexpr const char* valueAxis = "23456789TJQKA";       // the 169-class matrix, `X` expansion
constexpr const char* suitWildcardOrder = "dhcs";        // expansion of `x`
constexpr const char* boardValueOrder = "AKQJT98765432"; // board and dead card text
constexpr const char* boardSuitOrder = "dhsc";           // board and dead card text
constexpr const char* suitPairOrder = "dddhdsdchdhhhshcsdshsssccdchcscc"; // suit-pair bits

// --- Population and top-bit tables ----------------------------------------------------
// Number of set bits of a 13-bit value mask (table look-up).
unsigned int valueBitCount(unsigned int values);
// Highest set bit of a 13-bit value mask, as a one-bit mask; 0 for 0 (table look-up).
unsigned int highestValueBit(unsigned int values);
// Exact number of set bits of a suit-pair mask (parallel bit count).
unsigned int suitBitCount(unsigned int suits);

// --- Values ------------------------------------------------------------------------------
// Bit of a value character `2`..`A`; asserts "Value char not between 2 and A." otherwise.
unsigned int valueToBinaryMask(char value);
// The characters of the set bits from the highest down; one bit gives its character twice
// (4096 -> "AA", 6144 -> "AK").
std::string valuesToText(unsigned int values);
// For a value mask of one or two bits: the higher value's bit in all four lanes, and the
// lower value's bit in all four lanes (equal for one bit). An empty mask asserts
// "value in valuesToBinaryMasks does not contain a value." and gives two zeros.
std::pair<CardMask, CardMask> valuesToBinaryMasks(unsigned int values);

// --- Suits -------------------------------------------------------------------------------
// Possible-suits mask of a suit class; asserts "Suit char not o or s." outside 0..2.
unsigned int possibleSuits(int suitClass);
// `o` 0, `s` 1, `p` 2; asserts "suit class invalid." otherwise.
int suitClassFromChar(char classCharacter);
// Bit of the ordered pair of two suit characters d, h, s, c; asserts "suits invalid.".
unsigned int suitPairToBit(char first, char second);
// Or of the bits of each two-character piece; "" gives 0.
unsigned int suitPairsToMask(const std::string& suitPairs);
// Without `listAlways`: exactly 0x7BDE gives "o", 0x8421 "s", 0x08CE "". Otherwise the
// pairs of the set bits from bit 0 up, with nothing between them ("dhhd").
std::string suitsToText(unsigned int suits, bool listAlways = false);
// The short form of a class ("o", "s", or "" for a pair) only when `suits` is not 0, the
// class is the form's class and `suits` equals `possible` and'ed with the class mask;
// otherwise the listed pairs. Unlike suitsToText an offsuit class holding exactly the six
// pair bits is listed, so that the text never claims combinations the element lacks.
std::string elementSuitsToText(unsigned int suits, unsigned int possible, int suitClass);
// For a one-bit suit-pair mask: the lane mask of the first suit and of the second suit.
// Anything else asserts "Invalid value in suitToBinaryMask." and gives two zeros.
std::pair<CardMask, CardMask> suitToBinaryMask(unsigned int suitPair);

// --- Hands and elements ------------------------------------------------------------------
// Appends one two-bit card mask per set bit of `suits`, from bit 0 up.
void handsOfElement(unsigned int values, unsigned int suits, std::vector<CardMask>& hands);
// One-bit suit-pair mask of a two-bit card mask; asserts "Invalid suits." for any other
// shape and gives 0.
unsigned int suitPairOfHand(CardMask hand);
// The element of the hand's class holding just the hand's suit bit.
Element elementOfHand(CardMask hand);
// The element of a class with the given suits: its possible suits, class and key filled.
Element makeElement(unsigned int values, int suitClass, unsigned int suits);
// The part of the element's possible suits whose combinations hold `card` (one bit).
unsigned int blockedSuits(const Element& element, CardMask card);

// --- Board and dead cards against ranges ------------------------------------------------
// One card mask per two-character card of `cards` ("AhKd2c"), through the evaluator's
// getIndexByCards. With a range, the cards held by every hand of the range follow, in bit
// order (they are as good as dead for the opponent); an empty range adds nothing.
std::vector<CardMask> cardsOfText(const std::string& cards, const HandRange* range = nullptr);
// Or of cardsOfText.
CardMask maskOfText(const std::string& cards, const HandRange* range = nullptr);
// Current combinations of `element` that hold none of `cards` (one-bit masks).
unsigned int availableCombinations(const Element& element, const std::vector<CardMask>& cards);
// Hands of the whole range that share no card with any of `cards` (masks of any width).
unsigned int availableCombinations(const HandRange& range, const std::vector<CardMask>& cards);

// --- Element text --------------------------------------------------------------------------
// Technical text of an element: "" for no suits (unless `asClass`), "AA", "AKs", "AKo" for
// a full class, otherwise the concrete hands joined with `,` ("AdKd,AhKh"). With `asClass`
// the class is written whatever the element holds.
std::string elementToText(const Element& element, bool asClass = false);
// Hover text: "AKs (4)", "AA (6)", or each concrete hand with " (1)", joined by ", ".
std::string elementToHoverText(const Element& element);
// As the hover text without the counts, joined with `,`.
std::string elementToList(const Element& element);

} // namespace Range
