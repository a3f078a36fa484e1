#pragma once

#include <string>
#include <vector>

// A small, slow and obviously correct card model for the tests of hand group schemas: it
// enumerates the combinations of a technical range text and decides the few hand strength
// features the tests count, independently of the evaluator library.
namespace HitCounting {

struct Card {
    int rank; // 0 deuce .. 12 ace
    int suit; // 0 d, 1 h, 2 s, 3 c (the lanes of a card mask)
};

struct Hand {
    Card first;
    Card second;
};

// The hand values in the bit order of the hand strength keys: 0 straight flush .. 8 high card.
enum Category {
    StraightFlush = 0,
    FourOfAKind,
    FullHouse,
    Flush,
    Straight,
    ThreeOfAKind,
    TwoPair,
    OnePair,
    HighCard
};

// "Ks7d2c" -> three cards.
std::vector<Card> cardsOf(const std::string& text);
// The one-bit card mask of a card, and the two-bit mask of a hand.
unsigned long long maskOf(const Card& card);
unsigned long long maskOf(const Hand& hand);
// All combinations of the range text (tokens "QQ", "AK", "AKs", "AKo", "AdKh") that share no
// card with `blocked`, each once.
std::vector<Hand> handsOf(const std::string& technicalRange, const std::vector<Card>& blocked);
// The best hand value of the hand with the board (3 to 5 cards).
Category categoryOf(const Hand& hand, const std::vector<Card>& board);
// The highest rank of the board.
int topRank(const std::vector<Card>& board);
// Ranks from the ace down that are not on the board, as the kicker ladder: index 0 is the
// top kicker.
std::vector<int> kickerLadder(const std::vector<Card>& board);

} // namespace HitCounting
