#include "handhistory/HandHistoryNormalisation.h"

#include "handhistory/HandHistoryMarkers.h"
#include "handhistory/HandHistoryRecord.h"
#include "handhistory/HandHistoryStream.h"
#include "handhistory/ParseError.h"

#include <boost/regex.hpp>

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

// Every step is one pass over the text (or a bounded number of passes), building a new
// string where it changes more than single characters, so that even a pasted text of
// megabytes is rewritten in linear time.

namespace {

constexpr std::size_t npos = std::string::npos;
constexpr char pound = '\xA3';
constexpr char euro = '\x80';

bool isCurrency(char c) {
    return c == '$' || c == pound || c == euro;
}
bool isWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// std::string::find compares at every occurrence of the pattern's first character, and
// most patterns here begin with a blank; Horspool's skips make a pass over a hand several
// times quicker.
class Finder {
public:
    explicit Finder(std::string_view pattern)
        : pattern(pattern), searcher(pattern.begin(), pattern.end()) {}

    std::size_t in(const std::string& text, std::size_t from = 0) const {
        if (from > text.size())
            return npos;
        const auto found =
            std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), searcher);
        return found == text.end() && !pattern.empty()
                   ? npos
                   : static_cast<std::size_t>(found - text.begin());
    }
    std::size_t size() const { return pattern.size(); }

private:
    std::string_view pattern;
    std::boyer_moore_horspool_searcher<std::string_view::const_iterator> searcher;
};

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    const Finder finder(from);
    std::size_t found = finder.in(text);
    if (found == npos)
        return;
    std::string out;
    out.reserve(text.size());
    std::size_t copied = 0;
    while (found != npos) {
        out.append(text, copied, found - copied);
        out.append(to);
        copied = found + from.size();
        found = finder.in(text, copied);
    }
    out.append(text, copied, npos);
    text.swap(out);
}

void replaceFirst(std::string& text, std::string_view from, std::string_view to) {
    const std::size_t found = Finder(from).in(text);
    if (found != npos)
        text.replace(found, from.size(), to);
}

// Perl syntax; a dot never crosses a line, which changes nothing for these patterns (each
// ends its lazy group at the first newline) but keeps a failed match from scanning on to
// the end of a long text.
void regexReplace(std::string& text, const boost::regex& pattern, const char* format) {
    text = boost::regex_replace(text, pattern, format,
                                boost::match_default | boost::match_not_dot_newline |
                                    boost::format_perl);
}

std::size_t lineEndFrom(const std::string& text, std::size_t pos) {
    const std::size_t end = text.find('\n', pos);
    return end == npos ? text.size() : end;
}

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && isWhiteSpace(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && isWhiteSpace(s.back()))
        s.remove_suffix(1);
    return s;
}

// Step 1: word forms of the actions, dealing lines of one dialect, and clutter.
void rewriteWordForms(std::string& text) {
    text.erase(std::remove(text.begin(), text.end(), '\t'), text.end());

    static const std::pair<const char*, const char*> words[] = {
        {" raised ", " raises "},
        {" called ", " calls "},
        {" checked ", " checks "},
        {" folded ", " folds "},
        {" bet ", " bets "},
        {" raised\n", " raises\n"},
        {" called\n", " calls\n"},
        {" checked\n", " checks\n"},
        {" folded\n", " folds\n"},
        {" bet\n", " bets\n"},
        {" is all-In ", " raises "},
        {" went all-in ", " raises "},
        {": Raise (NF) Allin", ": Allin "},
        {" posted the ", " posts "},
        {": Post Ante", ": posts ante"},
        {": Post SB", ": posts small blind"},
        {": Post BB", ": posts big blind"},
    };
    for (const auto& [from, to] : words)
        replaceAll(text, from, to);

    static const boost::regex heroCards(R"(\*\* Dealing card to Hero: (.*?)\n)");
    static const boost::regex flop(R"(\*\* Dealing the flop: (.*?)\n)");
    static const boost::regex turn(R"(\*\* Dealing the turn: (.*?)\n)");
    static const boost::regex river(R"(\*\* Dealing the river: (.*?)\n)");
    // Every pattern begins with "** Dealing ": without it none can match.
    if (text.find("** Dealing ") != npos) {
        regexReplace(text, heroCards, "Dealt to Hero [$1]\n");
        regexReplace(text, flop, "** Dealing Flop ** [$1]\n");
        regexReplace(text, turn, "** Dealing Turn ** [$1]\n");
        regexReplace(text, river, "** Dealing River ** [$1]\n");
    }

    replaceAll(text, "*** ANTE/BLINDS ***\r\n", "");
    replaceAll(text, "*** ANTE/BLINDS ***\n", "");
    replaceAll(text, "\r\n\r\n", "\r\n");
    replaceAll(text, "\n\n", "\n");
    replaceAll(text, " USD", "");
    replaceAll(text, "- ", "");
}

// Step 2: "A of h, 10 of d" becomes "Ah Td".
void rewriteCardsInWords(std::string& text) {
    static const boost::regex card(R"(([AKQJT98765432]) of ([hcds]),?)");
    static const boost::regex ten(R"(10 of ([hcds]),?)");
    // Both patterns need " of " between a rank (or the 0 of 10) and a suit; a hand's
    // "full of Jacks" does not bring the regular expressions into play.
    bool possible = false;
    for (std::size_t of = text.find(" of ", 1); of != npos && !possible;
         of = text.find(" of ", of + 1))
        possible = of + 4 < text.size() &&
                   std::string_view("AKQJT98765432"
                                    "0")
                           .find(text[of - 1]) != npos &&
                   std::string_view("hcds").find(text[of + 4]) != npos;
    if (!possible)
        return;
    regexReplace(text, card, "$1$2");
    regexReplace(text, ten, "T$1");
}

// Step 3: "$0.50/$1" in the first line. Silent when anything does not read.
void readBlindsFromHead(const std::string& text, HandHistoryRecord& hand) {
    const std::size_t sign = text.find_first_of("$\xA3\x80");
    if (sign == npos || sign >= lineEndFrom(text, 0))
        return;
    HandHistoryStream stream(text);
    stream.seek(sign + 1);
    float small = 0.0f;
    float big = 0.0f;
    if (!stream.readNumber(small) || !stream.consume("/") ||
        !stream.consume(std::string_view(&text[sign], 1)) || !stream.readNumber(big))
        return;
    hand.smallBlind = small;
    hand.bigBlind = big;
}

// Step 4: "1,000" becomes "1000"; a comma after white space, "(" or "[", or before white
// space, stays. Only the neighbours decide: the walks over digits and currency signs on
// either side end right beside the comma exactly when that neighbour is not one of them.
void removeThousandsSeparators(std::string& text) {
    if (text.find(',', 1) == npos)
        return;
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ',' && i >= 1) {
            const char left = out.back();
            const char right = i + 1 < text.size() ? text[i + 1] : '\0';
            const bool keep =
                isWhiteSpace(left) || left == '(' || left == '[' || isWhiteSpace(right);
            if (!keep)
                continue;
        }
        out.push_back(c);
    }
    text.swap(out);
}

// Step 5: a comma outside all brackets ends the line.
void splitListsIntoLines(std::string& text) {
    int round = 0;
    int square = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        switch (text[i]) {
        case '(':
            ++round;
            break;
        case ')':
            --round;
            break;
        case '[':
            ++square;
            break;
        case ']':
            --square;
            break;
        case ',':
            if (round == 0 && square == 0) {
                text[i] = '\n';
                std::size_t next = i + 1;
                while (next < text.size() && text[next] == ' ')
                    ++next;
                i = next - 1;
            }
            break;
        default:
            break;
        }
    }
}

// Step 6: "posts SB" wording, and amounts in big blinds ("2.5 BB") of the same dialect.
void rewriteBlindWording(std::string& text) {
    const bool shortForms = text.find("posts SB") != npos || text.find("posts BB") != npos;
    replaceAll(text, "posts (SB)", "posts small blind");
    replaceAll(text, "posts (BB)", "posts big blind");
    replaceAll(text, "posts SB", "posts small blind");
    replaceAll(text, "posts BB", "posts big blind");
    if (!shortForms || text.find(" BB") == npos)
        return;

    // `runStart` is where the run of digits and '.' that ends `out` begins (npos: `out`
    // does not end in one), so that each " BB" sees the text as rewritten so far.
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    std::size_t runStart = npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (runStart != npos && runStart > 0 && text.compare(i, 3, " BB") == 0) {
            const char before = out[runStart - 1];
            if (isWhiteSpace(before) || before == '(') {
                out.insert(runStart, 1, '$');
                ++runStart;
                i += 2;
                continue;
            }
        }
        const char c = text[i];
        out.push_back(c);
        if (isDigit(c) || c == '.') {
            if (runStart == npos)
                runStart = out.size() - 1;
        } else {
            runStart = npos;
        }
    }
    text.swap(out);
}

struct MarkerRule {
    std::vector<std::string> patterns;
    const char* marker;
};

// Step 7: street markers of all dialects. A canonical text gets "*** *** RIVER *** ***"
// here (the bare word is found inside the marker); the parser looks for the marker inside
// a line, so that is harmless.
void rewriteStreetMarkers(std::string& text) {
    static const std::string down = "** Dealing down cards **\n";
    static const std::string downCrLf = "** Dealing down cards **\r\n";
    std::size_t length = 0;
    do {
        length = text.size();
        replaceAll(text, down + down, down);
        replaceAll(text, downCrLf + downCrLf, downCrLf);
    } while (text.size() != length);

    static const std::vector<MarkerRule> rules = {
        {{"RIVER", "River:", "** Dealing river **", "** Dealing River **"},
         HandHistoryMarkers::river},
        {{"TURN", "Turn:", "** Dealing turn **", "** Dealing Turn **"}, HandHistoryMarkers::turn},
        {{"FLOP", "Flop:", "** Dealing flop **", "** Dealing Flop **"}, HandHistoryMarkers::flop},
        {{"Preflop:", "** Dealing down cards **", "*** PRE-FLOP ***", "Pre Flop:"},
         HandHistoryMarkers::holeCards},
    };
    for (const MarkerRule& rule : rules)
        for (const std::string& pattern : rule.patterns)
            replaceFirst(text, pattern, rule.marker);
}

bool isRankForSuitFirst(char c) {
    return std::string_view("AKQJT98765432"
                            "1")
               .find(c) != std::string_view::npos;
}

// Step 8: "[HA, S10]" becomes "[AhTs]". A bracket from which no card comes stays, and so
// does every bracket nested in it (its content is a tail of the same characters), which is
// why the scan may go on behind the closing bracket.
void rewriteUpperCaseCards(std::string& text) {
    std::string out;
    std::size_t copied = 0;
    std::size_t open = text.find('[', 1);
    while (open != npos) {
        const std::size_t close = text.find(']', open + 1);
        if (close == npos)
            break;
        std::string cards;
        for (std::size_t k = open + 1; k < close; ++k) {
            const char suit = text[k];
            if ((suit == 'D' || suit == 'H' || suit == 'S' || suit == 'C') && k + 1 < close &&
                isRankForSuitFirst(text[k + 1])) {
                char rank = text[k + 1];
                if (rank == '1') {
                    rank = 'T';
                    k += 2;
                } else {
                    k += 1;
                }
                cards.push_back(rank);
                cards.push_back(static_cast<char>(suit - 'A' + 'a'));
            }
        }
        if (!cards.empty()) {
            out.append(text, copied, open + 1 - copied);
            out.append(cards);
            copied = close;
        }
        open = text.find('[', close + 1);
    }
    if (copied == 0)
        return;
    out.append(text, copied, npos);
    text.swap(out);
}

int plainPositionNumber(std::string_view position) {
    static const std::pair<const char*, int> numbers[] = {
        {"SB", 1},    {"BB", 2}, {"UTG", 3}, {"UTG1", 3}, {"UTG+1", 4}, {"UTG2", 4},
        {"UTG+2", 5}, {"MP", 6}, {"MP1", 6}, {"MP+1", 7}, {"MP2", 7},   {"MP+2", 8},
        {"MP3", 8},   {"CO", 9}, {"BU", 10}, {"BTN", 10},
    };
    for (const auto& [name, number] : numbers)
        if (position == name)
            return number;
    return 0;
}

// "Hero (BB)": the position in round brackets behind "Hero"; empty when not of that form.
std::string_view heroPosition(std::string_view name) {
    if (name.substr(0, 4) != "Hero")
        return {};
    const std::size_t open = name.find('(', 4);
    if (open == std::string_view::npos || name.back() != ')')
        return {};
    if (!trimmed(name.substr(4, open - 4)).empty())
        return {};
    return trimmed(name.substr(open + 1, name.size() - open - 2));
}

int positionNumber(std::string_view position) {
    const std::string_view ofHero = heroPosition(position);
    return plainPositionNumber(ofHero.empty() ? position : ofHero);
}

// Splits a text into its lines; each piece keeps its newline.
std::vector<std::string_view> linesOf(const std::string& text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        const std::size_t next = end == npos ? text.size() : end + 1;
        lines.emplace_back(text.data() + start, next - start);
        start = next;
    }
    return lines;
}

// A line without its newline and '\r', and that ending.
std::pair<std::string_view, std::string_view> splitEnding(std::string_view line) {
    std::size_t body = line.size();
    if (body > 0 && line[body - 1] == '\n')
        --body;
    if (body > 0 && line[body - 1] == '\r')
        --body;
    return {line.substr(0, body), line.substr(body)};
}

// Dialect 1: "NAME sitting in seat N with STACK ..." becomes "Seat N: NAME (STACK)".
void rewriteSittingInSeatLines(std::string& text) {
    static const std::string_view key = " sitting in seat ";
    std::string out;
    out.reserve(text.size());
    for (std::string_view line : linesOf(text)) {
        const auto [body, ending] = splitEnding(line);
        const std::size_t at = body.find(key);
        bool rewritten = false;
        if (at != std::string_view::npos) {
            std::size_t k = at + key.size();
            const std::size_t numberStart = k;
            while (k < body.size() && isDigit(body[k]))
                ++k;
            const std::string_view number = body.substr(numberStart, k - numberStart);
            const std::size_t with = body.find(" with ", k);
            if (!number.empty() && with != std::string_view::npos) {
                std::size_t stackStart = with + 6;
                while (stackStart < body.size() && body[stackStart] == ' ')
                    ++stackStart;
                std::size_t stackEnd = stackStart;
                while (stackEnd < body.size() && !isWhiteSpace(body[stackEnd]))
                    ++stackEnd;
                const std::string_view stack = body.substr(stackStart, stackEnd - stackStart);
                if (!stack.empty()) {
                    out.append("Seat ").append(number).append(": ");
                    out.append(body.substr(0, at)).append(" (").append(stack).append(")");
                    out.append(ending);
                    rewritten = true;
                }
            }
        }
        if (!rewritten)
            out.append(line);
    }
    text.swap(out);
}

bool isBlankLine(std::string_view line) {
    return trimmed(line).empty();
}

// Dialect 2: the lines behind "Game#" up to the first post are the players, in seat order;
// the hole cards follow the two lines of posts.
void rewritePlayerListAfterGameNumber(std::string& text) {
    const std::size_t game = text.find("Game#");
    if (game == npos)
        throw HandHistory::ParseError{
            "no seat lines, no position lines and no \"Game#\": not a hand history"};
    const std::size_t gameLineEnd = text.find('\n', game);
    if (gameLineEnd == npos)
        return;

    std::string out(text, 0, gameLineEnd + 1);
    const std::string rest = text.substr(gameLineEnd + 1);
    const std::vector<std::string_view> lines = linesOf(rest);
    std::size_t i = 0;
    while (i < lines.size() && isBlankLine(lines[i]))
        out.append(lines[i++]);
    int seat = 1;
    while (i < lines.size() && lines[i].find(" posts ") == std::string_view::npos) {
        out.append("Seat ").append(std::to_string(seat++)).append(":").append(lines[i++]);
    }
    for (std::size_t k = 0; i < lines.size(); ++i, ++k) {
        if (k == 2)
            out.append(HandHistoryMarkers::holeCards).append("\n");
        out.append(lines[i]);
    }
    text.swap(out);
}

bool isStackText(std::string_view s) {
    bool digit = false;
    for (const char c : s) {
        if (isDigit(c))
            digit = true;
        else if (!isWhiteSpace(c) && c != '.' && !isCurrency(c))
            return false;
    }
    return digit;
}

// Dialect 3: "POSITION: STACK" lines before the hole cards become seat lines, numbered by
// position, and the seats are recorded with their blind positions.
void rewritePositionLines(std::string& text, HandHistoryRecord& hand) {
    const std::size_t holeCards = text.find(HandHistoryMarkers::holeCards);
    std::string out;
    out.reserve(text.size() + 256);
    std::size_t offset = 0;
    for (std::string_view line : linesOf(text)) {
        const std::size_t lineStart = offset;
        offset += line.size();
        const auto [body, ending] = splitEnding(line);
        const std::size_t colon = body.find(':');
        const bool beforeHoleCards = holeCards == npos || lineStart + body.size() <= holeCards;
        if (!beforeHoleCards || colon == std::string_view::npos ||
            !isStackText(body.substr(colon + 1))) {
            out.append(line);
            continue;
        }
        std::string_view name = body.substr(0, colon);
        const int number = positionNumber(trimmed(name));
        if (!heroPosition(trimmed(name)).empty())
            name = "Hero";
        const std::string_view stack = body.substr(colon + 1);
        const std::size_t amountStart = stack.find_first_not_of(" \t\r\v\f\n");
        const std::size_t amountEnd = stack.find_last_not_of(" \t\r\v\f\n") + 1;
        out.append("Seat ").append(std::to_string(number)).append(":").append(name);
        out.append(stack.substr(0, amountStart)).append("(");
        out.append(stack.substr(amountStart, amountEnd - amountStart)).append(")");
        out.append(stack.substr(amountEnd)).append(ending);
        hand.seats.push_back(HandHistorySeat{std::string(trimmed(name)), number,
                                             number == 1   ? 0
                                             : number == 2 ? 1
                                                           : 2});
    }
    text.swap(out);
    std::stable_sort(
        hand.seats.begin(), hand.seats.end(),
        [](const HandHistorySeat& a, const HandHistorySeat& b) { return a.seat < b.seat; });
}

// Step 9: seat lines for the dialects that have none.
void rewriteSeatLines(std::string& text, HandHistoryRecord& hand) {
    if (text.find("Seat ") != npos)
        return;
    if (text.find(" sitting in seat ") != npos) {
        rewriteSittingInSeatLines(text);
        return;
    }
    static const char* const positions[] = {"SB:", "BB:", "UTG:", "MP:", "CO:", "BU:", "BTN:"};
    const bool anyPosition = std::any_of(std::begin(positions), std::end(positions),
                                         [&](const char* p) { return text.find(p) != npos; });
    if (!anyPosition)
        rewritePlayerListAfterGameNumber(text);
    else
        rewritePositionLines(text, hand);
}

// Step 10: "Hero is BB with Ah Kd" and "Hero has Ah Kd" become a line of their own,
// "Dealt to Hero [Ah Kd]"; the cards are what stands up to the end of the line, which
// must have one.
void rewriteHeroCardsInWords(std::string& text) {
    const std::size_t is = text.find("Hero is ");
    if (is != npos) {
        const std::size_t end = text.find('\n', is);
        const std::size_t with = text.find("with ", is);
        if (end != npos && with != npos && with < end) {
            std::size_t cardsEnd = end;
            if (cardsEnd > with + 5 && text[cardsEnd - 1] == '\r')
                --cardsEnd;
            const std::string cards = text.substr(with + 5, cardsEnd - (with + 5));
            text.replace(is, cardsEnd - is, "\nDealt to Hero [" + cards + "]");
        }
    }
    const std::size_t has = text.find("Hero has ");
    if (has != npos) {
        const std::size_t end = text.find('\n', has);
        if (end != npos) {
            std::size_t cardsEnd = end;
            if (cardsEnd > has + 9 && text[cardsEnd - 1] == '\r')
                --cardsEnd;
            const std::string cards = text.substr(has + 9, cardsEnd - (has + 9));
            text.replace(has, cardsEnd - has, "\nDealt to Hero [" + cards + "]");
        }
    }
}

// Step 11: "*** FLOP *** ($6) Ah Kd 2c (3 players)" gets its cards into square brackets.
void bracketBoardsAfterPots(std::string& text) {
    for (const char* marker :
         {HandHistoryMarkers::flop, HandHistoryMarkers::turn, HandHistoryMarkers::river}) {
        const std::size_t at = text.find(marker);
        if (at == npos)
            continue;
        std::size_t end = lineEndFrom(text, at);
        if (end > at && text[end - 1] == '\r')
            --end;
        const std::size_t close = text.find(") ", at);
        if (close == npos || close >= end)
            continue;
        const std::size_t start = close + 2;
        std::size_t stop = text.find(" (", start);
        if (stop == npos || stop > end)
            stop = end;
        text.insert(stop, "]");
        text.insert(start, "[");
    }
}

bool isMoneyCharacter(char c) {
    return isDigit(c) || c == '.' || isWhiteSpace(c) || isCurrency(c);
}

// Step 12: "[$0.50]" becomes "$0.50".
void unbracketMoney(std::string& text) {
    std::string out;
    std::size_t copied = 0;
    std::size_t open = text.find('[');
    while (open != npos) {
        std::size_t k = open + 1;
        while (k < text.size() && isMoneyCharacter(text[k]))
            ++k;
        if (k < text.size() && text[k] == ']') {
            out.append(text, copied, open - copied);
            out.append(text, open + 1, k - open - 1);
            copied = k + 1;
            open = text.find('[', k + 1);
        } else {
            open = text.find('[', k);
        }
    }
    if (copied == 0)
        return;
    out.append(text, copied, npos);
    text.swap(out);
}

// Step 13: a line "3 folds" becomes three lines "fold".
void expandCountedFolds(std::string& text) {
    static const std::string_view folds = "folds\n";
    std::size_t found = text.find(folds);
    if (found == npos)
        return;
    std::string out;
    std::size_t copied = 0;
    while (found != npos) {
        if (found > 2 && text[found - 1] == ' ' && text[found - 2] >= '1' &&
            text[found - 2] <= '9' && text[found - 3] == '\n') {
            const int count = text[found - 2] - '0';
            out.append(text, copied, found - 2 - copied);
            out.append("fold\n");
            for (int i = 1; i < count; ++i)
                out.append("fold\n");
            copied = found + folds.size();
        }
        found = text.find(folds, found + folds.size());
    }
    out.append(text, copied, npos);
    text.swap(out);
}

} // namespace

void normalise(std::string& text, HandHistoryRecord& hand) {
    rewriteWordForms(text);
    rewriteCardsInWords(text);
    readBlindsFromHead(text, hand);
    removeThousandsSeparators(text);
    splitListsIntoLines(text);
    rewriteBlindWording(text);
    rewriteStreetMarkers(text);
    rewriteUpperCaseCards(text);
    rewriteSeatLines(text, hand);
    rewriteHeroCardsInWords(text);
    bracketBoardsAfterPots(text);
    unbracketMoney(text);
    expandCountedFolds(text);
}
