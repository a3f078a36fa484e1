#include "handhistory/HandHistoryParser.h"

#include "Range/CardText.h"
#include "handhistory/HandHistoryAmount.h"
#include "handhistory/HandHistoryDialects.h"
#include "handhistory/HandHistoryMarkers.h"
#include "handhistory/HandHistoryNormalisation.h"
#include "handhistory/HandHistoryStream.h"
#include "handhistory/HandHistoryText.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

constexpr std::string_view streetMarkers[] = {HandHistoryMarkers::flop, HandHistoryMarkers::turn,
                                              HandHistoryMarkers::river};

bool isWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

std::string trimmedCopy(std::string_view s) {
    while (!s.empty() && isWhiteSpace(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && isWhiteSpace(s.back()))
        s.remove_suffix(1);
    return std::string(s);
}

bool has(std::string_view line, std::string_view word) {
    return line.find(word) != std::string_view::npos;
}

// 1 flop, 2 turn, 3 river for a line that holds a street marker, else 0.
int streetOfLine(std::string_view line) {
    for (int street = 3; street >= 1; --street)
        if (has(line, streetMarkers[street - 1]))
            return street;
    return 0;
}

// Lines at which the lines of seats, and then those of posts, end.
bool endsPosts(std::string_view line) {
    return has(line, HandHistoryMarkers::holeCards) || has(line, "Dealt to ") ||
           has(line, HandHistoryMarkers::summary) || streetOfLine(line) != 0;
}

bool endsSeats(std::string_view line) {
    return endsPosts(line) || has(line, "posts") || has(line, "Blinds(") ||
           has(line, "Blinds-Antes(");
}

// Rank order A, K, Q, ... 2, X: a smaller index is the higher rank.
int rankIndex(char rank) {
    static constexpr std::string_view ranks = "AKQJT98765432X";
    const std::size_t at = ranks.find(rank);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

// Suit order c, s, h, d, x.
int suitIndex(char suit) {
    static constexpr std::string_view suits = "cshdx";
    const std::size_t at = suits.find(suit);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

std::string withoutCharacters(std::string_view text, std::string_view drop) {
    std::string out;
    for (const char c : text)
        if (drop.find(c) == std::string_view::npos)
            out.push_back(c);
    return out;
}

// The cards of a street marker line: what stands between its last "[" and the next "]".
std::string boardOfLine(std::string_view line) {
    const std::size_t open = line.rfind('[');
    if (open == std::string_view::npos)
        return {};
    std::size_t close = line.find(']', open);
    if (close == std::string_view::npos)
        close = line.size();
    return withoutCharacters(line.substr(open + 1, close - open - 1), "[] ,\r");
}

} // namespace

HandHistoryParser::HandHistoryParser(std::string text) {
    // A "\r" alone ends a line too, and NUL bytes (from text that was UTF-16) are nothing.
    if (text.find('\0') != std::string::npos || text.find('\r') != std::string::npos)
        text = HandHistoryText::withLineEnds(text);
    // The further dialects are rewritten whole into the canonical text, which the fixed
    // steps of `normalise` would only damage (they delete "- " inside names, for one).
    if (!HandHistoryDialects::rewriteXmlDialect(text)) {
        if (const std::string refusal = HandHistoryDialects::gameRefusal(text); !refusal.empty())
            throw ParseError(refusal, true);
        if (!HandHistoryDialects::rewritePlainActionDialect(text)) {
            refuseTextWithoutAnyHand(text);
            normalise(text, hand);
        }
    }
    HandHistoryStream stream(text);
    readSeats(stream);
    readBlindsAndPosts(stream);
    readHoleCards(stream);
    readStreets(stream);
    checkCards();
}

// What `normalise` would end in after all its steps, found before them: a text without
// seat lines, position lines or "Game#" (as the first step leaves it, without tabs and
// "- ") is no hand history. Saves the steps on every piece of a long paste of junk.
void HandHistoryParser::refuseTextWithoutAnyHand(const std::string& text) {
    std::string probe;
    probe.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\t' || (text[i] == '-' && i + 1 < text.size() && text[i + 1] == ' ')) {
            i += text[i] == '-' ? 1 : 0;
            continue;
        }
        probe.push_back(text[i]);
    }
    for (const char* marker :
         {"Seat ", " sitting in seat ", "Game#", "SB:", "BB:", "UTG:", "MP:", "CO:", "BU:", "BTN:"})
        if (probe.find(marker) != std::string::npos)
            return;
    throw ParseError{"no seat lines, no position lines and no \"Game#\": not a hand history"};
}

// Cards that no deck deals refuse the hand: a card twice, a street with the wrong number of
// cards, a card that is unknown.
void HandHistoryParser::checkCards() const {
    unsigned long long seen = 0;
    const auto take = [&seen](const std::string& cards, const char* where) {
        for (std::size_t i = 0; i + 1 < cards.size(); i += 2) {
            const unsigned long long card = Range::CardText::cardOf(cards[i], cards[i + 1]);
            if (card == 0)
                throw ParseError("the " + std::string(where) + " holds the unknown card " +
                                     cards.substr(i, 2),
                                 true);
            if ((seen & card) != 0)
                throw ParseError("the card " + cards.substr(i, 2) + " is dealt twice", true);
            seen |= card;
        }
    };
    take(hand.holeCards, "hero's hand");
    const std::pair<const std::string*, std::size_t> streets[] = {
        {&hand.flop, 3}, {&hand.turn, 1}, {&hand.river, 1}};
    const char* const names[] = {"flop", "turn", "river"};
    for (int i = 0; i < 3; ++i) {
        // A street of another number of cards stays out of the board (and so out of this
        // check), as the parser has always read it.
        const std::string& cards = *streets[i].first;
        if (cards.size() == 2 * streets[i].second)
            take(cards, names[i]);
    }
}

// Stage 1. The seat lines run from the first line that begins with "Seat " to the first
// line that belongs to the posts or the hand itself; other lines among them ("Total number
// of players", " is sitting out") are passed over. The summary's "Seat" lines are never
// reached.
void HandHistoryParser::readSeats(HandHistoryStream& stream) {
    while (!stream.atEnd() && !stream.restOfLineBegins("Seat "))
        stream.skipLine();
    if (stream.atEnd())
        throw ParseError{"no line begins with \"Seat \""};

    const bool addSeats = hand.seats.empty();
    int button = 0;
    while (!stream.atEnd()) {
        if (stream.restOfLineBegins("Seat "))
            readSeatLine(stream, addSeats, button);
        else if (endsSeats(stream.restOfLine()))
            break;
        else
            stream.skipLine();
    }

    std::stable_sort(
        hand.seats.begin(), hand.seats.end(),
        [](const HandHistorySeat& a, const HandHistorySeat& b) { return a.seat < b.seat; });
    // The two seats after the button post the blinds, walking round the table; with two
    // seats that makes the button the big blind, as the heads-up rules would not have it.
    // Kept so, since the import depends only on the posts that the text itself shows.
    const auto buttonSeat =
        std::find_if(hand.seats.begin(), hand.seats.end(),
                     [button](const HandHistorySeat& seat) { return seat.seat == button; });
    if (buttonSeat != hand.seats.end()) {
        const std::size_t count = hand.seats.size();
        const std::size_t at = static_cast<std::size_t>(buttonSeat - hand.seats.begin());
        hand.seats[(at + 1) % count].positionKind = 0;
        hand.seats[(at + 2) % count].positionKind = 1;
    }
}

void HandHistoryParser::readSeatLine(HandHistoryStream& stream, bool addSeats, int& button) {
    const std::string line(stream.restOfLineTrimmed());
    stream.lineBegins("Seat ");
    int number = 0;
    if (!stream.readInteger(number))
        throw ParseError{"seat line without seat number: " + line};
    if (!stream.consume(":")) {
        if (stream.lineHas("is the button")) {
            button = number;
            stream.skipLine();
        }
        return;
    }
    std::string name;
    if (!stream.readUpTo('(', name))
        throw ParseError{"seat line without \"(\" before the stack: " + line};
    name = trimmedCopy(name);
    char sign = 0;
    if (!stream.peekChar(sign))
        throw ParseError{"seat line without stack: " + line};
    if ((sign < '0' || sign > '9') && sign != '.') {
        hand.currency = sign;
        stream.seek(stream.position() + 1);
    } else {
        hand.currency = 0;
    }
    float stack = 0.0f;
    if (!readPlainNumber(stream, stack, line))
        throw ParseError{"seat line with unreadable stack: " + line};
    stream.skipLine();
    if (addSeats)
        hand.seats.push_back(HandHistorySeat{name, number, 2});
    hand.stacksAtStart[name] = stack;
}

// Stage 2.
void HandHistoryParser::readBlindsAndPosts(HandHistoryStream& stream) {
    stacks = hand.stacksAtStart;
    hand.stacksPreflop = hand.stacksAtStart;

    while (!stream.atEnd()) {
        const std::string_view line = stream.restOfLine();
        if (has(line, "posts") || endsPosts(line))
            break;
        if (has(line, "Blinds-Antes(") || has(line, "Blinds(")) {
            const std::size_t lineStart = stream.position();
            float small = 0.0f;
            float big = 0.0f;
            std::string skipped;
            if (stream.readUpTo('(', skipped) && stream.readNumber(small) && stream.consume("/") &&
                stream.readNumber(big)) {
                hand.smallBlind = small;
                hand.bigBlind = big;
            }
            stream.seek(lineStart);
        }
        stream.skipLine();
    }

    float pot = 0.0f;
    // A post goes into the pot out of the poster's stack, and the poster has acted.
    const auto book = [this, &pot](HandHistoryAction post) {
        pot += post.amount;
        const auto stack = stacks.find(post.player);
        if (stack != stacks.end())
            stack->second -= post.amount;
        currentPlayer = post.player;
        hand.postActions.push_back(std::move(post));
    };
    while (!stream.atEnd()) {
        const std::string_view line = stream.restOfLine();
        if (endsPosts(line))
            break;
        if (has(line, "posts") && !has(line, "is sitting out")) {
            HandHistoryAction post = parseActionLine(line);
            if (post.verb == "post")
                book(std::move(post));
        }
        stream.skipLine();
    }

    const auto postOf = [this](const char* blind) {
        return std::find_if(hand.postActions.begin(), hand.postActions.end(),
                            [blind](const HandHistoryAction& a) { return a.blind == blind; });
    };
    const auto small = postOf("small blind");
    const auto big = postOf("big blind");
    if (small != hand.postActions.end())
        hand.smallBlind = small->amount;
    if (big != hand.postActions.end())
        hand.bigBlind = big->amount;
    if (small == hand.postActions.end() && big == hand.postActions.end()) {
        if (hand.smallBlind <= 0.0f || hand.bigBlind <= 0.0f || hand.smallBlind > hand.bigBlind)
            throw ParseError{"no blinds: neither posts nor the head line give them"};
        for (const int kind : {0, 1}) {
            for (const HandHistorySeat& seat : hand.seats) {
                if (seat.positionKind != kind)
                    continue;
                HandHistoryAction post;
                post.player = seat.name;
                post.verb = "post";
                post.blind = kind == 0 ? "small blind" : "big blind";
                post.amount = kind == 0 ? hand.smallBlind : hand.bigBlind;
                book(std::move(post));
            }
        }
    }
    hand.potPreflop = pot;

    if (!stream.atEnd() && has(stream.restOfLine(), HandHistoryMarkers::holeCards))
        stream.skipLine();
}

// Stage 3. Of several "Dealt to" lines in a row the first with cards names the hero.
void HandHistoryParser::readHoleCards(HandHistoryStream& stream) {
    while (!stream.atEnd() && stream.restOfLineHas("Dealt to ")) {
        if (!hand.hero.empty() || !stream.restOfLineHas("[")) {
            stream.skipLine();
            continue;
        }
        stream.lineHas("Dealt to ");
        std::string name;
        stream.readUpTo('[', name);
        std::string_view rest = stream.restOfLineTrimmed();
        const std::size_t close = rest.find(']');
        if (close != std::string_view::npos)
            rest = rest.substr(0, close);
        std::string cards = withoutCharacters(rest, " ,[]");
        if (cards.size() < 4)
            throw ParseError{"hole cards shorter than four characters"};
        cards.resize(4);
        if (rankIndex(cards[0]) < 0 || suitIndex(cards[1]) < 0 || rankIndex(cards[2]) < 0 ||
            suitIndex(cards[3]) < 0)
            throw ParseError{"hole cards unreadable: " + cards};
        if (Range::CardText::cardOf(cards[0], cards[1]) == 0 ||
            Range::CardText::cardOf(cards[2], cards[3]) == 0)
            throw ParseError("the hero's hand holds an unknown card: " + cards, true);
        if (rankIndex(cards[2]) < rankIndex(cards[0])) {
            std::swap(cards[0], cards[2]);
            std::swap(cards[1], cards[3]);
        } else if (cards[0] == cards[2] && suitIndex(cards[1]) < suitIndex(cards[3])) {
            std::swap(cards[1], cards[3]);
        }
        hand.hero = trimmedCopy(name);
        hand.holeCards = cards;
        stream.skipLine();
    }
}

// Stage 4.
void HandHistoryParser::readStreets(HandHistoryStream& stream) {
    std::vector<HandHistoryAction>* actions[] = {&hand.postActions, &hand.flopActions,
                                                 &hand.turnActions, &hand.riverActions};
    float* pots[] = {&hand.potPreflop, &hand.potFlop, &hand.potTurn, &hand.potRiver};
    HandHistoryRecord::Stacks* streetStacks[] = {&hand.stacksPreflop, &hand.stacksFlop,
                                                 &hand.stacksTurn, &hand.stacksRiver};
    std::string* boards[] = {nullptr, &hand.flop, &hand.turn, &hand.river};

    // Money each player has in on the current street; preflop starts with the blinds
    // (antes are dead money and do not count towards a raise).
    std::map<std::string, float> invested;
    for (const HandHistoryAction& post : hand.postActions)
        if (post.blind != "ante")
            invested[post.player] += post.amount;
    float collected = 0.0f;
    int street = 0;

    for (const HandHistorySeat& seat : hand.seats) {
        if (turnIndex.count(seat.name) != 0)
            continue;
        turnIndex.emplace(seat.name, turnOrder.size());
        if (stacks.count(seat.name) != 0)
            stillIn.insert(turnOrder.size());
        turnOrder.push_back(seat.name);
    }

    const auto take = [this, &collected](const std::string& player, float amount) {
        collected += amount;
        const auto stack = stacks.find(player);
        if (stack != stacks.end())
            stack->second -= amount;
    };

    try {
        for (;;) {
            if (stream.atEnd())
                throw PrematureEnd{};
            const std::string_view line = stream.restOfLine();
            if (has(line, HandHistoryMarkers::summary))
                break;
            const int marker = streetOfLine(line);
            if (marker > street) {
                for (int next = street + 1; next <= marker; ++next) {
                    *pots[next] = *pots[next - 1] + collected;
                    *streetStacks[next] = stacks;
                    collected = 0.0f;
                }
                invested.clear();
                street = marker;
                *boards[street] = boardOfLine(line);
                if (Range::CardText::isCards(*boards[street], street == 1 ? 3 : 1))
                    hand.board += *boards[street];
                stream.skipLine();
                continue;
            }
            if (marker != 0) {
                stream.skipLine();
                continue;
            }
            HandHistoryAction action;
            try {
                action = parseActionLine(line);
            } catch (const ParseError& error) {
                if (error.refusesHand)
                    throw;
                stream.skipLine();
                continue;
            }
            stream.skipLine();
            if (!action.sane || action.verb.empty())
                continue;
            if (action.verb == "fold") {
                stacks.erase(action.player);
                const auto index = turnIndex.find(action.player);
                if (index != turnIndex.end())
                    stillIn.erase(index->second);
            } else if (action.verb == "call") {
                invested[action.player] += action.amount;
                take(action.player, action.amount);
            } else if (action.verb == "raise" || action.verb == "bet") {
                float& in = invested[action.player];
                take(action.player, action.amount - in);
                in = action.amount;
            } else if (action.verb == "post") {
                if (action.blind != "ante")
                    invested[action.player] += action.amount;
                take(action.player, action.amount);
            }
            currentPlayer = action.player;
            actions[street]->push_back(std::move(action));
        }
    } catch (const PrematureEnd&) {
        // A hand cut off before its summary stands as far as it was read.
    }
}

HandHistoryAction HandHistoryParser::parseActionLine(std::string_view line) const {
    HandHistoryAction action;
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
        std::string_view whole = line;
        if (!whole.empty() && whole.back() == '\r')
            whole.remove_suffix(1);
        if (whole == "fold") {
            action.player = nextPlayerInTurn();
            if (!action.player.empty())
                action.verb = "fold";
        }
        return action;
    }

    action.player = trimmedCopy(line.substr(0, colon));
    HandHistoryStream stream(line);
    stream.seek(colon + 1);
    std::string verb = stream.readWord();
    if (!verb.empty() && verb[0] >= 'A' && verb[0] <= 'Z')
        verb[0] = static_cast<char>(verb[0] - 'A' + 'a');
    if (verb == "allin")
        verb = "raise";
    if (!verb.empty() && verb.back() == 's')
        verb.pop_back();
    action.verb = verb;

    if (verb != "bet" && verb != "raise" && verb != "post" && verb != "call") {
        action.sane = verb == "fold" || verb == "check";
        return action;
    }
    if (verb == "post") {
        static const std::pair<std::string_view, const char*> blinds[] = {
            {"small blind", "small blind"},
            {"big blind", "big blind"},
            {"Ante", "ante"},
            {"ante", "ante"},
        };
        const std::size_t afterVerb = stream.position();
        for (const auto& [word, blind] : blinds) {
            if (stream.lineHas(word)) {
                action.blind = blind;
                break;
            }
            stream.seek(afterVerb);
        }
    }
    const std::size_t beforeTo = stream.position();
    if (!stream.consume("to ")) {
        stream.seek(beforeTo);
    }
    if (!readAmount(stream, action.amount, line))
        throw ParseError{"action amount unreadable: " + std::string(line)};
    if (verb == "raise") {
        const std::size_t afterFirst = stream.position();
        if (stream.consume("to ")) {
            if (!readAmount(stream, action.amount, line))
                throw ParseError{"raise amount unreadable: " + std::string(line)};
        } else {
            stream.seek(afterFirst);
        }
    }
    return action;
}

bool HandHistoryParser::readAmount(HandHistoryStream& stream, float& amount,
                                   std::string_view line) const {
    if (hand.currency != 0) {
        char sign = 0;
        if (!stream.peekChar(sign))
            return false;
        if (sign == '-')
            throw ParseError("a negative amount: " + std::string(line), true);
        if (sign != hand.currency)
            return false;
        stream.seek(stream.position() + 1);
    }
    return readPlainNumber(stream, amount, line);
}

// A number where one must stand; what only looks like one ("-50", "1e308", 41 digits)
// refuses the hand rather than reading as a different amount or as none.
bool HandHistoryParser::readPlainNumber(HandHistoryStream& stream, float& amount,
                                        std::string_view line) {
    stream.skipBlanks();
    const std::string_view rest = stream.restOfLine();
    if (!rest.empty() && rest[0] == '-' && rest.size() > 1 &&
        ((rest[1] >= '0' && rest[1] <= '9') || rest[1] == '.'))
        throw ParseError("a negative amount: " + std::string(line), true);
    std::size_t digits = 0;
    while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9')
        ++digits;
    if (digits > 12)
        throw ParseError("an amount too large for any stake: " + std::string(line), true);
    if (!stream.readNumber(amount))
        return false;
    HandHistoryAmount::checkAmountEnd(stream.restOfLine(), line);
    if (!(amount <= static_cast<float>(HandHistoryAmount::largest)))
        throw ParseError("an amount too large for any stake: " + std::string(line), true);
    return true;
}

std::string HandHistoryParser::nextPlayerInTurn() const {
    const auto current = turnIndex.find(currentPlayer);
    if (current == turnIndex.end() || stillIn.empty())
        return {};
    auto next = stillIn.upper_bound(current->second);
    if (next == stillIn.end())
        next = stillIn.begin();
    if (*next == current->second)
        return {};
    return turnOrder[*next];
}
