#include "BruteForce.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

namespace bruteforce {

namespace {

const std::string valueCharacters = "23456789TJQKA";
const std::string suitCharacters = "dhsc";

bool sameHand(const Hand& a, const Hand& b) {
    return a.first == b.first && a.second == b.second;
}

bool shareCard(const Hand& a, const Hand& b) {
    return a.first == b.first || a.first == b.second || a.second == b.first || a.second == b.second;
}

bool handUses(const Hand& hand, const std::vector<int>& cards) {
    for (int card : cards)
        if (hand.first == card || hand.second == card)
            return true;
    return false;
}

void addHand(std::vector<Hand>& hands, int a, int b) {
    if (a == b)
        return;
    Hand hand{std::min(a, b), std::max(a, b)};
    for (const Hand& known : hands)
        if (sameHand(known, hand))
            return;
    hands.push_back(hand);
}

// Every way of adding `count` cards from `deck` (from index `from` on) to `board`.
void forEachBoard(const std::vector<int>& deck, std::size_t from, int count,
                  std::vector<int>& board, const std::vector<Hand>& hands1,
                  const std::vector<Hand>& hands2,
                  const std::vector<std::pair<std::size_t, std::size_t>>& pairs,
                  std::vector<Counters>& perHand1) {
    if (count == 0) {
        // Rank every hand once on this board, then play all pairs.
        std::vector<long> rank1(hands1.size());
        std::vector<long> rank2(hands2.size());
        auto rankOf = [&](const Hand& hand) {
            int cards[7] = {hand.first, hand.second, board[0], board[1],
                            board[2],   board[3],    board[4]};
            return rankSeven(cards);
        };
        for (std::size_t i = 0; i < hands1.size(); ++i)
            if (!handUses(hands1[i], board))
                rank1[i] = rankOf(hands1[i]);
        for (std::size_t j = 0; j < hands2.size(); ++j)
            if (!handUses(hands2[j], board))
                rank2[j] = rankOf(hands2[j]);
        for (const auto& pair : pairs) {
            if (handUses(hands1[pair.first], board) || handUses(hands2[pair.second], board))
                continue;
            Counters& c = perHand1[pair.first];
            ++c.total;
            const long a = rank1[pair.first];
            const long b = rank2[pair.second];
            if (a > b)
                ++c.wins1;
            else if (b > a)
                ++c.wins2;
            else
                ++c.ties;
        }
        return;
    }
    for (std::size_t i = from; i < deck.size(); ++i) {
        board.push_back(deck[i]);
        forEachBoard(deck, i + 1, count - 1, board, hands1, hands2, pairs, perHand1);
        board.pop_back();
    }
}

} // namespace

long rankFive(const int cards[5]) {
    int values[5];
    bool flush = true;
    for (int i = 0; i < 5; ++i) {
        values[i] = cards[i] % 13;
        if (cards[i] / 13 != cards[0] / 13)
            flush = false;
    }
    std::sort(values, values + 5, [](int a, int b) { return a > b; });
    // Groups of equal values: (size, value), biggest group first, then higher value first.
    std::pair<int, int> groups[5];
    int groupCount = 0;
    for (int value = 12; value >= 0; --value) {
        const int n = static_cast<int>(std::count(values, values + 5, value));
        if (n > 0)
            groups[groupCount++] = {n, value};
    }
    std::stable_sort(groups, groups + groupCount,
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    int straightTop = -1;
    if (groupCount == 5) {
        if (values[0] - values[4] == 4)
            straightTop = values[0];
        else if (values[0] == 12 && values[1] == 3) // A-5-4-3-2
            straightTop = 3;
    }
    // Category, then up to five deciding values, written as digits of base 16.
    auto make = [](int category, std::initializer_list<int> deciding) {
        long rank = category;
        int digits = 0;
        for (int value : deciding) {
            rank = rank * 16 + value;
            ++digits;
        }
        for (; digits < 5; ++digits)
            rank *= 16;
        return rank;
    };
    if (straightTop >= 0 && flush)
        return make(8, {straightTop});
    if (groups[0].first == 4)
        return make(7, {groups[0].second, groups[1].second});
    if (groups[0].first == 3 && groups[1].first == 2)
        return make(6, {groups[0].second, groups[1].second});
    if (flush)
        return make(5, {values[0], values[1], values[2], values[3], values[4]});
    if (straightTop >= 0)
        return make(4, {straightTop});
    int category = 0;
    if (groups[0].first == 3)
        category = 3;
    else if (groups[0].first == 2 && groups[1].first == 2)
        category = 2;
    else if (groups[0].first == 2)
        category = 1;
    long rank = category;
    for (int g = 0; g < 5; ++g)
        rank = rank * 16 + (g < groupCount ? groups[g].second : 0);
    return rank;
}

long rankSeven(const int cards[7]) {
    long best = -1;
    for (int skip1 = 0; skip1 < 7; ++skip1) {
        for (int skip2 = skip1 + 1; skip2 < 7; ++skip2) {
            int five[5];
            int n = 0;
            for (int i = 0; i < 7; ++i)
                if (i != skip1 && i != skip2)
                    five[n++] = cards[i];
            best = std::max(best, rankFive(five));
        }
    }
    return best;
}

int cardOfText(const std::string& text) {
    const auto value = valueCharacters.find(text.at(0));
    const auto suit = suitCharacters.find(text.at(1));
    if (text.size() != 2 || value == std::string::npos || suit == std::string::npos)
        throw std::invalid_argument("bad card " + text);
    return static_cast<int>(suit * 13 + value);
}

std::string textOfCard(int card) {
    return std::string{valueCharacters[card % 13], suitCharacters[card / 13]};
}

std::vector<int> cardsOfText(const std::string& text) {
    std::vector<int> cards;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        cards.push_back(cardOfText(text.substr(i, 2)));
    return cards;
}

std::vector<Hand> handsOfText(const std::string& range) {
    std::vector<Hand> hands;
    std::size_t start = 0;
    while (start < range.size()) {
        std::size_t end = range.find(',', start);
        if (end == std::string::npos)
            end = range.size();
        const std::string token = range.substr(start, end - start);
        start = end + 1;
        if (token.size() == 4) {
            addHand(hands, cardOfText(token.substr(0, 2)), cardOfText(token.substr(2, 2)));
            continue;
        }
        const int v1 = static_cast<int>(valueCharacters.find(token.at(0)));
        const int v2 = static_cast<int>(valueCharacters.find(token.at(1)));
        const bool suitedOnly = token.size() == 3 && token[2] == 's';
        const bool offsuitOnly = token.size() == 3 && token[2] == 'o';
        for (int s1 = 0; s1 < 4; ++s1) {
            for (int s2 = 0; s2 < 4; ++s2) {
                if (v1 != v2 && suitedOnly && s1 != s2)
                    continue;
                if (v1 != v2 && offsuitOnly && s1 == s2)
                    continue;
                addHand(hands, s1 * 13 + v1, s2 * 13 + v2);
            }
        }
    }
    return hands;
}

std::vector<Counters> equityByHand(const std::vector<Hand>& hands1, const std::vector<Hand>& hands2,
                                   const std::vector<int>& board, const std::vector<int>& dead) {
    std::vector<int> known = board;
    known.insert(known.end(), dead.begin(), dead.end());
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    for (std::size_t i = 0; i < hands1.size(); ++i)
        for (std::size_t j = 0; j < hands2.size(); ++j)
            if (!shareCard(hands1[i], hands2[j]) && !handUses(hands1[i], known) &&
                !handUses(hands2[j], known))
                pairs.push_back({i, j});
    std::vector<int> deck;
    for (int card = 0; card < 52; ++card)
        if (std::find(known.begin(), known.end(), card) == known.end())
            deck.push_back(card);
    std::vector<Counters> perHand1(hands1.size());
    std::vector<int> fullBoard = board;
    forEachBoard(deck, 0, 5 - static_cast<int>(board.size()), fullBoard, hands1, hands2, pairs,
                 perHand1);
    return perHand1;
}

Counters equity(const std::vector<Hand>& hands1, const std::vector<Hand>& hands2,
                const std::vector<int>& board, const std::vector<int>& dead) {
    Counters sum;
    for (const Counters& c : equityByHand(hands1, hands2, board, dead)) {
        sum.total += c.total;
        sum.wins1 += c.wins1;
        sum.wins2 += c.wins2;
        sum.ties += c.ties;
    }
    return sum;
}

} // namespace bruteforce
