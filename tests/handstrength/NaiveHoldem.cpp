#include "NaiveHoldem.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace naive {

namespace {

const std::string rankChars = "23456789TJQKA";
const std::string suitChars = "dhsc";

// Value of exactly five cards: category, then the ranks that decide ties, four bits each.
std::uint64_t fiveValue(const std::array<Card, 5>& five) {
    std::array<int, 13> count{};
    bool flush = true;
    for (const Card& c : five) {
        ++count[c.rank];
        flush = flush && c.suit == five[0].suit;
    }
    // Ranks ordered by (count, rank) descending.
    std::vector<std::pair<int, int>> groups;
    for (int r = 12; r >= 0; --r)
        if (count[r])
            groups.push_back({count[r], r});
    std::stable_sort(groups.begin(), groups.end(),
                     [](auto a, auto b) { return a.first > b.first; });
    int straightHigh = -1;
    if (groups.size() == 5) {
        if (groups[0].second - groups[4].second == 4)
            straightHigh = groups[0].second;
        else if (groups[0].second == 12 && groups[1].second == 3)
            straightHigh = 3; // the wheel
    }
    int category;
    if (straightHigh >= 0 && flush)
        category = StraightFlush;
    else if (groups[0].first == 4)
        category = Quads;
    else if (groups[0].first == 3 && groups[1].first == 2)
        category = FullHouse;
    else if (flush)
        category = Flush;
    else if (straightHigh >= 0)
        category = Straight;
    else if (groups[0].first == 3)
        category = Trips;
    else if (groups[0].first == 2 && groups[1].first == 2)
        category = TwoPair;
    else if (groups[0].first == 2)
        category = Pair;
    else
        category = HighCard;
    std::uint64_t value = std::uint64_t(category);
    if (straightHigh >= 0) {
        value = value << 4 | std::uint64_t(straightHigh);
        return value << 16;
    }
    for (const auto& g : groups)
        value = value << 4 | std::uint64_t(g.second);
    for (std::size_t i = groups.size(); i < 5; ++i)
        value <<= 4;
    return value;
}

} // namespace

std::vector<Card> cardsOf(const std::string& text) {
    std::vector<Card> cards;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const auto r = rankChars.find(text[i]);
        const auto s = suitChars.find(text[i + 1]);
        if (r == std::string::npos || s == std::string::npos)
            throw std::invalid_argument("bad card " + text.substr(i, 2));
        cards.push_back({int(r), int(s)});
    }
    return cards;
}

std::vector<Card> cardsOfMask(std::uint64_t mask) {
    std::vector<Card> cards;
    for (int b = 0; b < 52; ++b)
        if (mask >> b & 1)
            cards.push_back({b % 13, b / 13});
    return cards;
}

std::uint64_t maskOf(const std::vector<Card>& cards) {
    std::uint64_t mask = 0;
    for (const Card& c : cards)
        mask |= 1ULL << (13 * c.suit + c.rank);
    return mask;
}

std::uint64_t bestValue(const std::vector<Card>& cards) {
    const std::size_t n = cards.size();
    std::uint64_t best = 0;
    std::array<Card, 5> five{};
    for (std::size_t a = 0; a < n; ++a)
        for (std::size_t b = a + 1; b < n; ++b)
            for (std::size_t c = b + 1; c < n; ++c)
                for (std::size_t d = c + 1; d < n; ++d)
                    for (std::size_t e = d + 1; e < n; ++e) {
                        five = {cards[a], cards[b], cards[c], cards[d], cards[e]};
                        best = std::max(best, fiveValue(five));
                    }
    return best;
}

int categoryOf(std::uint64_t value) {
    return int(value >> 20);
}

std::string fullRange() {
    std::string text;
    for (int high = 12; high >= 0; --high) {
        for (int low = high; low >= 0; --low) {
            const std::string pair = std::string(1, rankChars[high]) + rankChars[low];
            if (high == low) {
                text += (text.empty() ? "" : ",") + pair;
            } else {
                text += "," + pair + "s," + pair + "o";
            }
        }
    }
    return text;
}

} // namespace naive
