#pragma once

// A slow, obvious Hold'em reference for the tests: cards as (rank, suit) pairs, every
// five-card subset valued by counting, the best one kept. Independent of the library.

#include <cstdint>
#include <string>
#include <vector>

namespace naive {

struct Card {
    int rank; // 0 = deuce ... 12 = ace
    int suit; // 0 d, 1 h, 2 s, 3 c (the library's lanes)
};

// Categories in ascending strength: 0 high card ... 8 straight flush.
enum Category { HighCard, Pair, TwoPair, Trips, Straight, Flush, FullHouse, Quads, StraightFlush };

std::vector<Card> cardsOf(const std::string& text); // "AhKd2c"
std::vector<Card> cardsOfMask(std::uint64_t mask);  // library card mask
std::uint64_t maskOf(const std::vector<Card>& cards);

// Value of the best five of 5 to 7 cards; greater is stronger. Category in the top digits.
std::uint64_t bestValue(const std::vector<Card>& cards);
int categoryOf(std::uint64_t value);

// Every concrete hand as technical range text: all 169 classes ("AA,AKs,AKo,...").
std::string fullRange();

} // namespace naive
