#include "handhistory/CanonicalHandText.h"
#include "handhistory/HandHistoryAmount.h"
#include "handhistory/HandHistoryCards.h"
#include "handhistory/HandHistoryDialects.h"
#include "handhistory/ParseError.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>
#include <vector>

namespace HandHistoryDialects {

namespace {

constexpr std::size_t npos = std::string::npos;
constexpr std::size_t maximumSeats = 23;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string lower(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool startsWith(std::string_view s, std::string_view prefix) {
    return s.substr(0, prefix.size()) == prefix;
}

// The marker some sites put behind the name of the player whose history it is.
constexpr std::string_view meMarker = " [ME]";

// Lines without '\r', runs of blanks made one blank, trimmed, and without the marker of
// the hero's name (`marked` tells which lines had it).
std::vector<std::string> tidyLines(const std::string& text, std::vector<bool>& marked) {
    std::vector<std::string> lines;
    std::string current;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const char c = i < text.size() ? text[i] : '\n';
        if (c == '\n') {
            while (!current.empty() && current.back() == ' ')
                current.pop_back();
            const std::size_t me = current.find(meMarker);
            marked.push_back(me != npos);
            if (me != npos)
                current.erase(me, meMarker.size());
            lines.push_back(std::move(current));
            current.clear();
        } else if (isBlank(c)) {
            if (!current.empty() && current.back() != ' ')
                current.push_back(' ');
        } else {
            current.push_back(c);
        }
    }
    return lines;
}

char currencyOfWords(std::string_view text) {
    if (const char sign = HandHistoryAmount::currencyIn(text))
        return sign;
    if (text.find("USD") != npos)
        return '$';
    if (text.find("EUR") != npos)
        return '\x80';
    if (text.find("GBP") != npos)
        return '\xA3';
    return 0;
}

struct SeatLine {
    int seat = 0;
    std::string name;
    double stack = 0.0;
    char currency = 0;
};

// "Seat 3: name ( $8.54 USD )", "Seat 1: name (67.80€)", "Seat 1: name (159.21).",
// "Seat 7: name ($15.58), is sitting out", "Seat 2: name ($1,000 in chips)".
std::optional<SeatLine> seatLineOf(std::string_view line) {
    if (!startsWith(line, "Seat "))
        return std::nullopt;
    std::size_t at = 5;
    if (at < line.size() && line[at] == '#')
        ++at;
    SeatLine seat;
    const std::size_t digits = at;
    while (at < line.size() && isDigit(line[at]) && at - digits < 4)
        seat.seat = seat.seat * 10 + (line[at++] - '0');
    if (at == digits || at >= line.size() || line[at] != ':')
        return std::nullopt;
    const std::string_view rest = line.substr(at + 1);
    // The stack stands in the first round bracket that begins with money.
    for (std::size_t open = rest.find('('); open != npos; open = rest.find('(', open + 1)) {
        std::size_t inside = open + 1;
        while (inside < rest.size() && rest[inside] == ' ')
            ++inside;
        if (inside >= rest.size())
            break;
        const char c = rest[inside];
        if (!isDigit(c) && c != '.' && !HandHistoryAmount::currencyIn(std::string(1, c)))
            continue;
        const std::size_t close = rest.find(')', inside);
        const std::string_view money =
            rest.substr(inside, (close == npos ? rest.size() : close) - inside);
        const std::vector<double> amounts = HandHistoryAmount::amountsIn(money);
        if (amounts.empty())
            continue;
        std::string_view name = rest.substr(0, open);
        while (!name.empty() && name.front() == ' ')
            name.remove_prefix(1);
        while (!name.empty() && name.back() == ' ')
            name.remove_suffix(1);
        if (name.empty())
            return std::nullopt;
        seat.name = std::string(name);
        seat.stack = amounts.front();
        seat.currency = currencyOfWords(money);
        return seat;
    }
    return std::nullopt;
}

// The button's seat from "Seat 4 is the button", "Seat #4 is the button", "Button: seat 3",
// "The button is in seat #6"; 0 when the line names none.
int buttonOf(std::string_view line) {
    const std::string low = lower(line);
    std::size_t at = npos;
    if (const std::size_t is = low.find(" is the button"); is != npos) {
        const std::size_t seat = low.rfind("seat ", is);
        if (seat != npos)
            at = seat + 5;
    } else if (const std::size_t b = low.find("button: seat "); b != npos) {
        at = b + 13;
    } else if (const std::size_t b2 = low.find("button is in seat "); b2 != npos) {
        at = b2 + 18;
    }
    if (at == npos)
        return 0;
    if (at < low.size() && low[at] == '#')
        ++at;
    int seat = 0;
    const std::size_t start = at;
    while (at < low.size() && isDigit(low[at]) && at - start < 4)
        seat = seat * 10 + (low[at++] - '0');
    return seat;
}

struct Phrase {
    std::string verb;
    std::string blind;
    double amount = 0.0;
    CanonicalHandText::Amount kind = CanonicalHandText::Amount::Adds;
};

double firstOr(const std::vector<double>& amounts, double otherwise) {
    return amounts.empty() ? otherwise : amounts.front();
}

// What stands behind a player's name: "raises [$2.50]", "raises 2€ to 2.50€", "raises to
// $0.40", "calls (2)", "is all-In [$4.90 USD]", "allin (64.07)", "posts the small blind of
// $0.05", "has big blind (4)". Anything else (shows, mucks, wins, chat) is no action.
std::optional<Phrase> phraseOf(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == ':'))
        text.remove_prefix(1);
    const std::string low = lower(text);
    Phrase phrase;
    const auto word = [&low](std::string_view w) {
        return startsWith(low, w) &&
               (low.size() == w.size() || low[w.size()] == ' ' || low[w.size()] == '(' ||
                low[w.size()] == '[' || low[w.size()] == ':');
    };
    const std::size_t to = low.find(" to ");
    const auto totalBehindTo = [&]() -> std::optional<double> {
        if (to == npos)
            return std::nullopt;
        const std::vector<double> behind = HandHistoryAmount::amountsIn(text.substr(to + 4));
        if (behind.empty())
            return std::nullopt;
        return behind.front();
    };
    if (word("folds") || word("fold") || word("folded")) {
        phrase.verb = "fold";
    } else if (word("checks") || word("check") || word("checked")) {
        phrase.verb = "check";
    } else if (word("calls") || word("call") || word("called")) {
        const std::vector<double> amounts = HandHistoryAmount::amountsIn(text);
        if (amounts.empty())
            return std::nullopt;
        phrase.verb = "call";
        phrase.amount = amounts.front();
    } else if (word("bets") || word("bet")) {
        const std::vector<double> amounts = HandHistoryAmount::amountsIn(text);
        if (amounts.empty())
            return std::nullopt;
        phrase.verb = "bet";
        phrase.amount = amounts.front();
    } else if (word("raises") || word("raise") || word("raised")) {
        phrase.verb = "raise";
        if (const std::optional<double> total = totalBehindTo()) {
            phrase.amount = *total;
            phrase.kind = CanonicalHandText::Amount::Total;
        } else {
            const std::vector<double> amounts = HandHistoryAmount::amountsIn(text);
            if (amounts.empty())
                return std::nullopt;
            phrase.amount = amounts.front();
        }
    } else if (word("allin") || word("all-in") || word("is all-in") || word("goes all-in") ||
               word("all-in(raise)") || word("all-in(bet)") || startsWith(low, "all-in(")) {
        phrase.verb = "allin";
        if (const std::optional<double> total = totalBehindTo()) {
            phrase.amount = *total;
            phrase.kind = CanonicalHandText::Amount::Total;
        } else {
            phrase.amount = firstOr(HandHistoryAmount::amountsIn(text), 0.0);
        }
    } else if (word("posts") || word("posted") || word("has small blind") ||
               word("has big blind") || word("small blind") || word("big blind") || word("ante")) {
        const std::vector<double> amounts = HandHistoryAmount::amountsIn(text);
        if (amounts.empty())
            return std::nullopt;
        phrase.verb = "post";
        phrase.amount = amounts.back();
        const bool small = low.find("small") != npos;
        const bool big = low.find("big") != npos;
        if (low.find("ante") != npos)
            phrase.blind = "ante";
        else if (small && !big)
            phrase.blind = "small blind";
        else if (big && !small && low.find("dead") == npos)
            phrase.blind = "big blind";
    } else {
        return std::nullopt;
    }
    return phrase;
}

bool isSummary(const std::string& low) {
    return low.find("summary") != npos;
}

bool hasWord(std::string_view text, std::string_view word) {
    for (std::size_t at = text.find(word); at != npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool wordStart = at == 0 || !std::isalpha(static_cast<unsigned char>(text[at - 1]));
        const bool wordEnd =
            end >= text.size() || !std::isalpha(static_cast<unsigned char>(text[end]));
        if (wordStart && wordEnd)
            return true;
    }
    return false;
}

// 1, 2, 3 for a line that deals the flop, turn or river; 0 otherwise. The street's name
// stands before the cards.
int streetOf(const std::string& low) {
    const std::size_t cards = low.find('[');
    if (cards == npos)
        return 0;
    const std::string_view head = std::string_view(low).substr(0, cards);
    if (hasWord(head, "river"))
        return 3;
    if (hasWord(head, "turn"))
        return 2;
    if (hasWord(head, "flop"))
        return 1;
    return 0;
}

class PlainDialectReader {
public:
    explicit PlainDialectReader(const std::string& text) : lines(tidyLines(text, marked)) {}

    bool recognised() {
        for (const std::string& line : lines) {
            if (const std::optional<SeatLine> seat = seatLineOf(line)) {
                // No table has more seats; a paste of endless seat lines is no hand.
                if (seats.size() >= maximumSeats)
                    return false;
                if (std::find_if(seats.begin(), seats.end(), [&](const SeatLine& s) {
                        return s.name == seat->name;
                    }) == seats.end())
                    seats.push_back(*seat);
                continue;
            }
            // The seats are one block; "Seat" lines of a summary are no seats.
            if (!seats.empty() && !startsWith(line, "Seat "))
                break;
        }
        if (seats.empty())
            return false;
        // Longer names first, so that "Ann Lee" is not read as "Ann".
        for (const SeatLine& seat : seats)
            names.push_back(seat.name);
        std::sort(names.begin(), names.end(),
                  [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
        int actionLines = 0;
        for (const std::string& line : lines) {
            const auto [player, at] = playerOf(line);
            if (at == npos)
                continue;
            // "name: verb" is the canonical dialect, read by the fixed steps.
            if (at < line.size() && line[at] == ':')
                return false;
            if (phraseOf(std::string_view(line).substr(at)))
                ++actionLines;
        }
        return actionLines > 0;
    }

    std::string rewrite() {
        char currency = 0;
        for (const SeatLine& seat : seats)
            if (seat.currency != 0)
                currency = seat.currency;
        CanonicalHandText out(currency);
        for (const SeatLine& seat : seats)
            out.addSeat(seat.seat, seat.name, seat.stack);

        std::string board;
        bool heroFound = false;
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const std::string& line = lines[index];
            const std::string low = lower(line);
            if (isSummary(low))
                break;
            if (const int button = buttonOf(line); button != 0 && !seatLineOf(line))
                out.setButton(button);
            if (!heroFound && startsWith(line, "Dealt to ")) {
                const auto [player, at] = playerOf(line.substr(9));
                const std::string cards =
                    at == npos ? std::string() : HandHistoryCards::cardsIn(line.substr(9 + at));
                if (cards.size() > 4)
                    throw HandHistory::ParseError("more than two hole cards: not No Limit Hold'em",
                                                  true);
                if (cards.size() == 4) {
                    out.setHero(player, cards);
                    heroFound = true;
                }
                continue;
            }
            const auto [player, at] = playerOf(line);
            if (at == npos) {
                const int street = streetOf(low);
                if (street != 0) {
                    std::string cards = HandHistoryCards::cardsOfLastBrackets(line);
                    // Some write the whole board so far: keep the new cards only.
                    if (cards.size() > 2 && cards.size() == board.size() + (street == 1 ? 6 : 2) &&
                        cards.compare(0, board.size(), board) == 0)
                        cards.erase(0, board.size());
                    board += cards;
                    out.startStreet(street, cards);
                }
                continue;
            }
            if (low.find("card dealt to a spot") != npos) {
                const std::string cards = HandHistoryCards::cardsOfLastBrackets(line);
                if (!heroFound && cards.size() == 4 && marked[index]) {
                    out.setHero(player, cards);
                    heroFound = true;
                }
                continue;
            }
            const std::optional<Phrase> phrase = phraseOf(std::string_view(line).substr(at));
            if (!phrase)
                continue;
            if (phrase->verb == "post")
                out.post(player, phrase->blind, phrase->amount);
            else
                out.act(player, phrase->verb, phrase->amount, phrase->kind);
        }
        return out.text();
    }

private:
    // The seated player a line begins with (after an optional "Player "), and where the
    // rest of the line starts; npos when it begins with no player and a blank or colon.
    std::pair<std::string, std::size_t> playerOf(std::string_view line) const {
        std::size_t skip = 0;
        if (startsWith(line, "Player "))
            skip = 7;
        for (const std::size_t from : {skip, std::size_t(0)}) {
            const std::string_view rest = line.substr(from);
            for (const std::string& name : names) {
                if (startsWith(rest, name) &&
                    (rest.size() == name.size() || rest[name.size()] == ' ' ||
                     rest[name.size()] == ':'))
                    return {name, from + name.size()};
            }
            if (from == 0)
                break;
        }
        return {std::string(), npos};
    }

    std::vector<bool> marked;
    std::vector<std::string> lines;
    std::vector<SeatLine> seats;
    std::vector<std::string> names;
};

} // namespace

std::string gameRefusal(std::string_view text) {
    const std::size_t seat = text.find("Seat ");
    const std::string head =
        lower(text.substr(0, std::min(seat, std::min<std::size_t>(text.size(), 2000))));
    static const std::pair<const char*, const char*> games[] = {
        {"omaha", "Omaha"},
        {"stud", "Stud"},
        {"razz", "Razz"},
        {"badugi", "Badugi"},
        {"triple draw", "a draw game"},
        {"5 card draw", "a draw game"},
        {"five card draw", "a draw game"},
        {"courchevel", "Courchevel"},
        {"plo", "Omaha"},
    };
    for (const auto& [word, name] : games) {
        const std::size_t at = head.find(word);
        if (at == npos)
            continue;
        const std::size_t end = at + std::string_view(word).size();
        const bool wordStart = at == 0 || !std::isalnum(static_cast<unsigned char>(head[at - 1]));
        const bool wordEnd =
            end >= head.size() || !std::isalpha(static_cast<unsigned char>(head[end]));
        if (wordStart && wordEnd)
            return std::string("the game is ") + name + ", not No Limit Hold'em";
    }
    for (std::size_t at = head.find("limit"); at != npos; at = head.find("limit", at + 1)) {
        std::size_t before = at;
        while (before > 0 &&
               (head[before - 1] == ' ' || head[before - 1] == '-' || head[before - 1] == '_'))
            --before;
        if (before >= 2 && head.compare(before - 2, 2, "no") == 0)
            continue;
        return "the game is a limit game, not No Limit Hold'em";
    }
    for (const char* token : {"pl", "fl", "lhe"}) {
        for (std::size_t at = head.find(token); at != npos; at = head.find(token, at + 1)) {
            const std::size_t end = at + std::string_view(token).size();
            const bool wordStart = at == 0 || head[at - 1] == ' ' || head[at - 1] == '(';
            const bool wordEnd = end >= head.size() || head[end] == ' ' || head[end] == ')';
            if (wordStart && wordEnd)
                return "the game is a limit game, not No Limit Hold'em";
        }
    }
    return {};
}

bool rewritePlainActionDialect(std::string& text) {
    PlainDialectReader reader(text);
    if (!reader.recognised())
        return false;
    text = reader.rewrite();
    return true;
}

} // namespace HandHistoryDialects
