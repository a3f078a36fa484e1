#include "Range/RangeStringOperations.h"

#include "Range/Assertion.h"
#include "Range/CardConversion.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <unordered_set>
#include <vector>

namespace Range {
namespace {

using Tokens = std::vector<std::string>;

Tokens splitTokens(const std::string& text) {
    Tokens tokens;
    tokens.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), ',')) + 1);
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* start = begin;
    for (const char* c = begin; c != end; ++c) {
        if (*c == ',') {
            tokens.emplace_back(start, c);
            start = c + 1;
        }
    }
    tokens.emplace_back(start, end);
    return tokens;
}

bool holds(const std::string& token, char c) {
    for (char t : token)
        if (t == c)
            return true;
    return false;
}

// The white space of isspace in the "C" locale.
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

std::string joinTokens(const Tokens& tokens) {
    std::string text;
    std::size_t length = 0;
    for (const std::string& token : tokens)
        length += token.size() + 1;
    text.reserve(length);
    for (const std::string& token : tokens) {
        if (!text.empty())
            text += ',';
        text += token;
    }
    return text;
}

// Value number of a canonical value character (A 0 ... 2 12, X 13); anything else 14, so
// that sorting never throws.
int rank(char value) {
    const int number = valueNumberOf(value);
    return number < 0 ? 14 : number;
}

// ASCII only, independent of the locale.
char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A value letter of either case, wildcard excluded.
bool isValueLetter(char c) {
    const char u = upper(c);
    return (u >= '2' && u <= '9') || u == 'T' || u == 'J' || u == 'Q' || u == 'K' || u == 'A';
}

bool isClassLetter(char c) {
    return c == 's' || c == 'o' || c == 'S' || c == 'O';
}

bool isSuitLetter(char c) {
    const char l = lower(c);
    return l == 'd' || l == 'h' || l == 's' || l == 'c';
}

// Place of a canonical suit character in the order x, d, h, s, c; anything else 5.
int suitRank(char suit) {
    if (suit == 'x')
        return 0;
    const int lane = suitLaneOf(suit);
    return lane < 0 ? 5 : lane + 1;
}

bool higher(char a, char b) {
    return rank(a) < rank(b);
}

bool isPairToken(const std::string& token) {
    return token.size() == 2 && token[0] == token[1];
}

bool isConcreteToken(const std::string& token) {
    return token.size() == 4 && !holds(token, '+');
}

enum class Verdict { Valid, Drop, Again, Split };

// --- normalize, one rule per token shape ----------------------------------------------------

// A part of a span: two value letters and, with three characters, a class letter. Brings it
// into canonical spelling; returns false when it cannot be a part.
bool repairSpanPart(std::string& part, bool& repaired) {
    if (part.size() != 2 && part.size() != 3)
        return false;
    if (!isValueLetter(part[0]) || !isValueLetter(part[1]))
        return false;
    if (part.size() == 3 && !isClassLetter(part[2]))
        return false;
    std::string canonical = part;
    canonical[0] = upper(canonical[0]);
    canonical[1] = upper(canonical[1]);
    if (canonical.size() == 3)
        canonical[2] = lower(canonical[2]);
    if (higher(canonical[1], canonical[0]))
        std::swap(canonical[0], canonical[1]);
    if (canonical != part) {
        part = canonical;
        repaired = true;
    }
    return true;
}

Verdict judgeSpan(std::string& token, Tokens& extra) {
    const std::size_t dash = token.find('-');
    if (dash == std::string::npos || token.find('-', dash + 1) != std::string::npos)
        return Verdict::Drop;
    std::string first = token.substr(0, dash);
    std::string second = token.substr(dash + 1);
    bool repaired = false;
    if (!repairSpanPart(first, repaired) || !repairSpanPart(second, repaired))
        return Verdict::Drop;
    if (repaired) {
        token = first + "-" + second;
        return Verdict::Again;
    }
    if (first == second) {
        token = first;
        return Verdict::Again;
    }
    if (first.size() != second.size() || (first.size() == 3 && first[2] != second[2]))
        return Verdict::Drop;
    const bool firstIsPair = first[0] == first[1];
    const bool secondIsPair = second[0] == second[1];
    // A pair with a class letter, or a pair against a non-pair, spans nothing sensible.
    if ((first.size() == 3 && (firstIsPair || secondIsPair)) || firstIsPair != secondIsPair)
        return Verdict::Drop;
    if (first[0] != second[0] && !(firstIsPair && secondIsPair))
        return Verdict::Drop;
    if (higher(first[1], second[1])) {
        if (firstIsPair)
            std::swap(first, second);
        else
            std::swap(first[1], second[1]);
        token = first + "-" + second;
        return Verdict::Again;
    }
    if (first.size() == 2 && !firstIsPair) {
        extra.push_back(first + "s-" + second + "s");
        extra.push_back(first + "o-" + second + "o");
        return Verdict::Split;
    }
    return Verdict::Valid;
}

// One repair step of a token whose places 0 and 1 are value letters: first the spelling
// (`canonical` is the token with each letter in its canonical case), then the order of the
// two values, the higher first. True when the token changed, so that it is judged again.
bool respell(std::string& token, const std::string& canonical) {
    if (canonical != token) {
        token = canonical;
        return true;
    }
    if (higher(token[1], token[0])) {
        std::swap(token[0], token[1]);
        return true;
    }
    return false;
}

Verdict judgeClassPlus(std::string& token) {
    if (token[3] != '+')
        return Verdict::Drop;
    if (!isValueLetter(token[0]) || !isValueLetter(token[1]) || upper(token[0]) == upper(token[1]))
        return Verdict::Drop;
    if (!isClassLetter(token[2]))
        return Verdict::Drop;
    const std::string canonical{upper(token[0]), upper(token[1]), lower(token[2]), '+'};
    return respell(token, canonical) ? Verdict::Again : Verdict::Valid;
}

Verdict judgeConcrete(std::string& token) {
    for (int place = 0; place < 4; place += 2)
        if (!isValueLetter(token[place]) && upper(token[place]) != 'X')
            return Verdict::Drop;
    for (int place = 1; place < 4; place += 2)
        if (!isSuitLetter(token[place]) && lower(token[place]) != 'x')
            return Verdict::Drop;
    const std::string canonical{upper(token[0]), lower(token[1]), upper(token[2]), lower(token[3])};
    if (canonical != token) {
        token = canonical;
        return Verdict::Again;
    }
    if (higher(token[2], token[0])) {
        token = token.substr(2, 2) + token.substr(0, 2);
        return Verdict::Again;
    }
    if (token[0] == token[2] && suitRank(token[1]) > suitRank(token[3])) {
        std::swap(token[1], token[3]);
        return Verdict::Again;
    }
    // One card twice can never be dealt: it is no hand, and a wildcard that can only mean
    // the same card twice is none either.
    if (token[0] == token[2] && token[1] == token[3] && token[0] != 'X' && token[1] != 'x')
        return Verdict::Drop;
    return Verdict::Valid;
}

Verdict judgeClass(std::string& token) {
    if (!isValueLetter(token[0]) || !isValueLetter(token[1]) || upper(token[0]) == upper(token[1]))
        return Verdict::Drop;
    if (!isClassLetter(token[2]))
        return Verdict::Drop;
    const std::string canonical{upper(token[0]), upper(token[1]), lower(token[2])};
    return respell(token, canonical) ? Verdict::Again : Verdict::Valid;
}

Verdict judgeUnqualifiedPlus(std::string& token, Tokens& extra) {
    if (token[2] != '+' || !isValueLetter(token[0]) || !isValueLetter(token[1]))
        return Verdict::Drop;
    const std::string canonical{upper(token[0]), upper(token[1]), '+'};
    if (respell(token, canonical))
        return Verdict::Again;
    if (token[0] == token[1])
        return Verdict::Valid;
    extra.push_back(token.substr(0, 2) + "s+");
    extra.push_back(token.substr(0, 2) + "o+");
    return Verdict::Split;
}

Verdict judgeTwo(std::string& token) {
    if (!isValueLetter(token[0]) || !isValueLetter(token[1]))
        return Verdict::Drop;
    const std::string canonical{upper(token[0]), upper(token[1])};
    return respell(token, canonical) ? Verdict::Again : Verdict::Valid;
}

Verdict judge(std::string& token, Tokens& extra) {
    const std::size_t length = token.size();
    if (length < 2 || length > 7)
        return Verdict::Drop;
    if (length >= 5)
        return judgeSpan(token, extra);
    const bool plus = holds(token, '+');
    if (length == 4)
        return plus ? judgeClassPlus(token) : judgeConcrete(token);
    if (length == 3)
        return plus ? judgeUnqualifiedPlus(token, extra) : judgeClass(token);
    return judgeTwo(token);
}

// --- Orders ---------------------------------------------------------------------------------

// Sort keys: a token's place in an order as one number, so that sorting moves numbers
// rather than strings. Ties keep the order of the input.

// Group of a token in normal order: pairs, other two-character tokens, longer tokens that
// are not concrete hands, concrete hands.
int normalGroup(const std::string& token) {
    if (token.size() == 2)
        return token[0] == token[1] ? 0 : 1;
    return isConcreteToken(token) ? 3 : 2;
}

// The character at `place`, or 0 past the end (technical text from outside may be short).
char charAt(const std::string& token, std::size_t place) {
    return place < token.size() ? token[place] : '\0';
}

unsigned int key(int group, int first, int second, int third) {
    return static_cast<unsigned int>(group) << 24 | static_cast<unsigned int>(first) << 16 |
           static_cast<unsigned int>(second) << 8 | static_cast<unsigned int>(third);
}

// Pairs by value, the ace first; other two-character tokens by both values; longer tokens by
// both values and `s` before `o`; concrete hands by the values at places 1 and 3.
unsigned int normalKey(const std::string& token) {
    switch (normalGroup(token)) {
    case 0:
        return key(0, rank(token[0]), 0, 0);
    case 1:
        return key(1, rank(token[0]), rank(token[1]), 0);
    case 2:
        return key(2, rank(token[0]), rank(charAt(token, 1)), charAt(token, 2) == 'o' ? 1 : 0);
    default:
        return key(3, rank(token[0]), rank(token[2]), 0);
    }
}

// As normal order, but the suited block of the longer tokens stands before the offsuit one.
unsigned int compactKey(const std::string& token) {
    switch (normalGroup(token)) {
    case 0:
        return key(0, rank(token[0]), 0, 0);
    case 1:
        return key(1, rank(token[0]), rank(token[1]), 0);
    case 2: {
        const char third = charAt(token, 2);
        const int block = third == 's' ? 2 : (third == 'o' ? 4 : 3);
        return key(block, rank(token[0]), rank(charAt(token, 1)), 0);
    }
    default:
        return key(5, rank(token[0]), rank(token[2]), 0);
    }
}

// Stable sort of `tokens` by `keyOf`.
template <typename KeyOf>
void sortTokens(Tokens& tokens, KeyOf keyOf) {
    std::vector<unsigned long long> order;
    order.reserve(tokens.size());
    for (std::size_t i = 0; i < tokens.size(); ++i)
        order.push_back(static_cast<unsigned long long>(keyOf(tokens[i])) << 32 | i);
    std::sort(order.begin(), order.end());
    Tokens sorted;
    sorted.reserve(tokens.size());
    for (unsigned long long entry : order)
        sorted.push_back(std::move(tokens[entry & 0xFFFFFFFFULL]));
    tokens.swap(sorted);
}

bool nextLower(char lowerValue, char higherValue) {
    return rank(lowerValue) == rank(higherValue) + 1 && rank(lowerValue) <= 12;
}

void flushPairs(std::string& out, const std::string& first, const std::string& last) {
    if (first == last)
        out += first;
    else if (first == "AA")
        out += last + "+";
    else
        out += last + "-" + first;
    out += ',';
}

void flushOthers(std::string& out, const std::string& first, const std::string& last) {
    if (first == last)
        out += first;
    else if (nextLower(first[1], first[0]))
        out += last + "+";
    else
        out += last + "-" + first;
    out += ',';
}

// --- expand -------------------------------------------------------------------------------

// Which technical tokens the text has listed already. A token listed twice says nothing new,
// and a pasted text may repeat one thousands of times: each is spelled out once, so that the
// work after expand stays within the 169 classes and 1326 hands however long the text is.
class SeenTokens {
public:
    // True when `token` was not listed before.
    bool insert(const std::string& token) {
        const int index = indexOf(token);
        if (index < 0)
            return others.insert(token).second;
        return insert(index);
    }
    // The same for the concrete hand of two cards (lane * 13 + value number), spelled in
    // this order.
    bool insertHand(int first, int second) { return insert(classTokens + first * 52 + second); }
    // True the first time a wildcard token is met: its hands need listing once only.
    bool firstWildcard(const std::string& token) { return wildcards.insert(token).second; }

private:
    static constexpr int classTokens = 13 * 13 * 3;

    bool insert(int index) {
        if (seen[static_cast<std::size_t>(index)])
            return false;
        seen[static_cast<std::size_t>(index)] = true;
        return true;
    }

    static int cardOf(char value, char suit) {
        const int number = valueNumberOf(value);
        const int lane = suitLaneOf(suit);
        return number < 0 || number > 12 || lane < 0 ? -1 : lane * 13 + number;
    }

    // Two- and three-character tokens by their values and class, concrete hands by their two
    // cards as spelled; -1 for anything else.
    static int indexOf(const std::string& token) {
        if (token.size() == 2 || token.size() == 3) {
            const int first = valueNumberOf(token[0]);
            const int second = valueNumberOf(token[1]);
            if (first < 0 || first > 12 || second < 0 || second > 12)
                return -1;
            if (token.size() == 3 && token[2] != 's' && token[2] != 'o')
                return -1;
            const int kind = token.size() == 2 ? 0 : (token[2] == 's' ? 1 : 2);
            return (first * 13 + second) * 3 + kind;
        }
        if (token.size() == 4) {
            const int first = cardOf(token[0], token[1]);
            const int second = cardOf(token[2], token[3]);
            return first < 0 || second < 0 ? -1 : classTokens + first * 52 + second;
        }
        return -1;
    }

    std::vector<bool> seen = std::vector<bool>(classTokens + 52 * 52, false);
    std::unordered_set<std::string> others;
    std::unordered_set<std::string> wildcards;
};

// The cards a place of a wildcard token allows, as lane * 13 + value number (the ace 0):
// a value character or `X` for all, a suit character or `x` for all. The order is that of
// the expansion's loops: values 2 up to A, suits d, h, c, s.
std::vector<int> cardsOfPlace(char value, char suit) {
    static constexpr const char* values = "23456789TJQKA";
    static constexpr const char* suits = "dhcs";
    std::vector<int> cards;
    for (int v = 0; v < 13; ++v) {
        if (value != 'X' && value != values[v])
            continue;
        for (int s = 0; s < 4; ++s)
            if (suit == 'x' || suit == suits[s])
                cards.push_back(suitLaneOf(suits[s]) * 13 + valueNumberOf(values[v]));
    }
    return cards;
}

// A wildcard token is every two-card hand whose two cards fit its two places, in either
// order, and never a hand holding one card twice. Each hand is spelled canonically: the higher
// value first, and of two equal values the suit first that comes first in d, h, s, c, so that
// a pair's combination is always one its class holds.
void expandWildcard(const std::string& token, Tokens& out, SeenTokens& seen) {
    if (token.size() != 4 || !seen.firstWildcard(token))
        return;
    static constexpr const char* valueOfNumber = "AKQJT98765432";
    static constexpr const char* suitOfLane = "dhsc";
    for (const int first : cardsOfPlace(token[0], token[1])) {
        for (const int second : cardsOfPlace(token[2], token[3])) {
            if (first == second)
                continue;
            // A smaller value number is the higher card; a smaller lane the earlier suit.
            const bool swap =
                second % 13 < first % 13 || (second % 13 == first % 13 && second / 13 < first / 13);
            const int high = swap ? second : first;
            const int low = swap ? first : second;
            if (seen.insertHand(high, low))
                out.push_back(std::string{valueOfNumber[high % 13], suitOfLane[high / 13],
                                          valueOfNumber[low % 13], suitOfLane[low / 13]});
        }
    }
}

// The tokens of a span or a `+` token, each handed to `emit`.
template <typename Emit>
void expandRun(const std::string& token, Emit emit) {
    if (holds(token, '-')) {
        if (token.size() == 5) {
            std::string current = token.substr(0, 2);
            while (true) {
                emit(current);
                if (current[0] == token[3])
                    break;
                current[0] = nextHigherValueChar(current[0]);
                current[1] = nextHigherValueChar(current[1]);
            }
        } else {
            const char end = token.size() > 5 ? token[5] : '\0';
            std::string current = token.substr(0, 3);
            while (true) {
                emit(current);
                if (current.size() < 2 || current[1] == end)
                    break;
                current[1] = nextHigherValueChar(current[1]);
            }
        }
    } else if (token.size() == 3) {
        std::string current = token.substr(0, 2);
        while (true) {
            emit(current);
            if (current[0] == 'A')
                break;
            current[0] = nextHigherValueChar(current[0]);
            current[1] = nextHigherValueChar(current[1]);
        }
    } else if (token.size() >= 2) {
        std::string current = token.substr(0, 3);
        while (true) {
            emit(current);
            current[1] = nextHigherValueChar(current[1]);
            if (current[1] == current[0])
                break;
        }
    }
}

} // namespace

void normalize(std::string& text) {
    text.erase(std::remove_if(text.begin(), text.end(), isBlank), text.end());
    if (text.empty())
        return;
    Tokens tokens = splitTokens(text);
    Tokens kept;
    Tokens extra;
    kept.reserve(tokens.size());
    bool changed = false;
    for (std::string& token : tokens) {
        Verdict verdict;
        while ((verdict = judge(token, extra)) == Verdict::Again)
            changed = true;
        if (verdict == Verdict::Valid)
            kept.push_back(std::move(token));
        else
            changed = true;
    }
    if (!changed)
        return;
    for (std::string& token : extra)
        kept.push_back(std::move(token));
    sortTokens(kept, normalKey);
    text = joinTokens(kept);
}

std::string expand(const std::string& normalText) {
    if (normalText.empty())
        return std::string();
    QV_ASSERT(normalText.find("Group") == std::string::npos, "str is corrupted with a group.");
    Tokens remaining;
    Tokens collected;
    // Tokens that need no expansion come first: they take their place before any expanded
    // token repeats them.
    SeenTokens seen;
    const Tokens tokens = splitTokens(normalText);
    for (const std::string& token : tokens)
        if (!token.empty() && !holds(token, 'x') && !holds(token, 'X') && !holds(token, '-') &&
            !holds(token, '+') && seen.insert(token))
            remaining.push_back(token);
    for (const std::string& token : tokens) {
        if (holds(token, 'x') || holds(token, 'X')) {
            expandWildcard(token, collected, seen);
        } else if (holds(token, '-') || holds(token, '+')) {
            expandRun(token, [&](const std::string& expanded) {
                if (seen.insert(expanded))
                    collected.push_back(expanded);
            });
        }
    }
    for (std::string& token : collected)
        remaining.push_back(std::move(token));
    return joinTokens(remaining);
}

std::string compact(const std::string& technicalText) {
    if (technicalText.empty())
        return std::string();
    Tokens tokens;
    for (std::string& token : splitTokens(technicalText))
        if (!token.empty())
            tokens.push_back(std::move(token));
    if (tokens.empty())
        return std::string();
    sortTokens(tokens, compactKey);

    std::string out;
    out.reserve(technicalText.size());
    std::size_t firstIndex = 0;
    std::size_t lastIndex = 0;
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        const std::string& first = tokens[firstIndex];
        const std::string& last = tokens[lastIndex];
        const std::string& current = tokens[i];
        if (first.size() == 4) {
            // The rest are concrete hands; the run's first one goes to the very end.
            for (std::size_t j = i; j < tokens.size(); ++j)
                out += tokens[j] + ",";
            out += first + ",";
            out.pop_back();
            return out;
        }
        if (isPairToken(first)) {
            if (isPairToken(current) && nextLower(current[0], last[0])) {
                lastIndex = i;
                continue;
            }
            flushPairs(out, first, last);
        } else {
            if (isPairToken(current))
                throw std::runtime_error("String has to be sorted to be processed.");
            // Runs keep to one token shape and one class: the block border between suited
            // and offsuit tokens must not join a run.
            if (!isConcreteToken(current) && current.size() == last.size() &&
                (current.size() != 3 || current[2] == last[2]) && current[0] == last[0] &&
                nextLower(current[1], last[1])) {
                lastIndex = i;
                continue;
            }
            flushOthers(out, first, last);
        }
        firstIndex = lastIndex = i;
    }
    const std::string& first = tokens[firstIndex];
    const std::string& last = tokens[lastIndex];
    if (isPairToken(first))
        flushPairs(out, first, last);
    else
        flushOthers(out, first, last);
    out.pop_back();
    return out;
}

std::pair<unsigned int, float> countCombinations(const std::string& technicalText) {
    if (technicalText.empty())
        return {0, 0.0f};
    unsigned int count = 0;
    for (const std::string& token : splitTokens(technicalText)) {
        switch (token.size()) {
        case 4:
            count += 1;
            break;
        case 2:
            count += token[0] == token[1] ? 6 : 16;
            break;
        case 3:
            if (token[2] == 's')
                count += 4;
            else if (token[2] == 'o')
                count += 12;
            else
                QV_ASSERT(false, "false");
            break;
        default:
            QV_ASSERT(false, "false");
            break;
        }
    }
    return {count, static_cast<float>(count) / 1326.0f};
}

bool sharesSuitPair(const std::string& first, const std::string& second) {
    for (std::size_t i = 0; i + 1 < first.size(); i += 2)
        for (std::size_t j = 0; j + 1 < second.size(); j += 2)
            if (first[i] == second[j] && first[i + 1] == second[j + 1])
                return true;
    return false;
}

} // namespace Range
