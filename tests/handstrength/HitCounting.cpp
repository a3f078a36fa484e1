#include "HitCounting.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace HitCounting {
namespace {

const std::string ranks = "23456789TJQKA";
const std::string suits = "dhsc";

int rankOf(char c) {
    const std::size_t at = ranks.find(c);
    if (at == std::string::npos)
        throw std::invalid_argument(std::string("bad rank ") + c);
    return static_cast<int>(at);
}

int suitOf(char c) {
    const std::size_t at = suits.find(c);
    if (at == std::string::npos)
        throw std::invalid_argument(std::string("bad suit ") + c);
    return static_cast<int>(at);
}

bool hasStraight(const std::set<int>& present) {
    // The wheel counts the ace as the lowest card.
    std::set<int> withLowAce = present;
    if (present.count(12))
        withLowAce.insert(-1);
    int run = 0;
    int previous = -3;
    for (int rank : withLowAce) {
        run = rank == previous + 1 ? run + 1 : 1;
        previous = rank;
        if (run >= 5)
            return true;
    }
    return false;
}

} // namespace

std::vector<Card> cardsOf(const std::string& text) {
    std::vector<Card> cards;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        cards.push_back({rankOf(text[i]), suitOf(text[i + 1])});
    return cards;
}

unsigned long long maskOf(const Card& card) {
    return 1ULL << (card.suit * 13 + card.rank);
}

unsigned long long maskOf(const Hand& hand) {
    return maskOf(hand.first) | maskOf(hand.second);
}

std::vector<Hand> handsOf(const std::string& technicalRange, const std::vector<Card>& blocked) {
    unsigned long long blockedMask = 0;
    for (const Card& card : blocked)
        blockedMask |= maskOf(card);
    std::set<unsigned long long> seen;
    std::vector<Hand> hands;
    auto take = [&](const Card& a, const Card& b) {
        const Hand hand{a, b};
        const unsigned long long mask = maskOf(hand);
        if ((mask & blockedMask) != 0 || !seen.insert(mask).second)
            return;
        hands.push_back(hand);
    };

    std::size_t start = 0;
    while (start <= technicalRange.size()) {
        std::size_t end = technicalRange.find(',', start);
        if (end == std::string::npos)
            end = technicalRange.size();
        const std::string token = technicalRange.substr(start, end - start);
        start = end + 1;
        if (token.empty())
            continue;
        if (token.size() == 4) {
            take({rankOf(token[0]), suitOf(token[1])}, {rankOf(token[2]), suitOf(token[3])});
            continue;
        }
        const int r1 = rankOf(token[0]);
        const int r2 = rankOf(token[1]);
        const char kind = token.size() == 3 ? token[2] : ' ';
        for (int s1 = 0; s1 < 4; ++s1) {
            for (int s2 = 0; s2 < 4; ++s2) {
                if (r1 == r2 && s2 <= s1)
                    continue;
                if (kind == 's' && s1 != s2)
                    continue;
                if (kind == 'o' && s1 == s2)
                    continue;
                take({r1, s1}, {r2, s2});
            }
        }
    }
    return hands;
}

Category categoryOf(const Hand& hand, const std::vector<Card>& board) {
    std::vector<Card> cards = board;
    cards.push_back(hand.first);
    cards.push_back(hand.second);

    int rankCount[13] = {};
    std::set<int> bySuit[4];
    std::set<int> present;
    for (const Card& card : cards) {
        ++rankCount[card.rank];
        bySuit[card.suit].insert(card.rank);
        present.insert(card.rank);
    }
    for (const std::set<int>& suited : bySuit) {
        if (suited.size() >= 5 && hasStraight(suited))
            return StraightFlush;
    }
    int quads = 0, trips = 0, pairs = 0;
    for (int count : rankCount) {
        quads += count == 4;
        trips += count == 3;
        pairs += count == 2;
    }
    if (quads)
        return FourOfAKind;
    if (trips >= 2 || (trips == 1 && pairs >= 1))
        return FullHouse;
    for (const std::set<int>& suited : bySuit) {
        if (suited.size() >= 5)
            return Flush;
    }
    if (hasStraight(present))
        return Straight;
    if (trips)
        return ThreeOfAKind;
    if (pairs >= 2)
        return TwoPair;
    if (pairs == 1)
        return OnePair;
    return HighCard;
}

int topRank(const std::vector<Card>& board) {
    int top = -1;
    for (const Card& card : board)
        top = std::max(top, card.rank);
    return top;
}

std::vector<int> kickerLadder(const std::vector<Card>& board) {
    std::vector<int> ladder;
    for (int rank = 12; rank >= 0; --rank) {
        const bool onBoard = std::any_of(board.begin(), board.end(),
                                         [rank](const Card& c) { return c.rank == rank; });
        if (!onBoard)
            ladder.push_back(rank);
    }
    return ladder;
}

} // namespace HitCounting
