#pragma once

// A deliberately plain reference for the evaluator tests: cards as numbers 0-51 (value =
// card % 13 from the deuce up, suit = card / 13, the bits of the library's card mask), a
// five-card ranking that sorts and compares, the best of the 21 five-card subsets of seven
// cards, and loops over every board and every pair of hands. Slow, and meant to be obviously
// right; it shares no code with the library.

#include <cstdint>
#include <string>
#include <vector>

namespace bruteforce {

struct Hand {
    int first; // card numbers, first < second
    int second;
};

struct Counters {
    std::uint64_t total = 0;
    std::uint64_t wins1 = 0;
    std::uint64_t wins2 = 0;
    std::uint64_t ties = 0;
};

// Ranking of five or seven cards as a number that orders hands: the category (0 high card
// .. 8 straight flush) and then the deciding values as digits of base 16.
long rankFive(const int cards[5]);
long rankSeven(const int cards[7]);

// The card number of a text like "Ad", and the text of a card number.
int cardOfText(const std::string& text);
std::string textOfCard(int card);
std::vector<int> cardsOfText(const std::string& text);

// Expands technical range text ("QQ,AKs,AKo,AdKh") into hands, each once.
std::vector<Hand> handsOfText(const std::string& range);

// Every matchup on every completion of `board` avoiding board, dead cards and both hands.
// Hands touching board or dead cards take no part.
Counters equity(const std::vector<Hand>& hands1, const std::vector<Hand>& hands2,
                const std::vector<int>& board, const std::vector<int>& dead);

// The same per hand of hands1, in the order given.
std::vector<Counters> equityByHand(const std::vector<Hand>& hands1, const std::vector<Hand>& hands2,
                                   const std::vector<int>& board, const std::vector<int>& dead);

} // namespace bruteforce
