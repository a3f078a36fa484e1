#include "handhistory/CanonicalHandText.h"
#include "handhistory/HandHistoryAmount.h"
#include "handhistory/HandHistoryCards.h"
#include "handhistory/HandHistoryDialects.h"
#include "handhistory/ParseError.h"

#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <cstring>
#include <map>
#include <string_view>
#include <vector>

// Three XML dialects, told apart by their elements: <game> with <general><players> and
// numbered <round>s of <action>s; <game> with <players dealer> and named <round>s of
// <event>s; <Game> with <Seats> and a <Gameplay> of <Action>s. Each is read into
// CanonicalHandText.

namespace HandHistoryDialects {

namespace {

using Node = rapidxml::xml_node<char>;
using Amount = CanonicalHandText::Amount;

std::string attribute(const Node* node, const char* name) {
    if (node == nullptr)
        return {};
    const rapidxml::xml_attribute<char>* a = node->first_attribute(name);
    return a == nullptr ? std::string() : std::string(a->value(), a->value_size());
}

std::string value(const Node* node) {
    return node == nullptr ? std::string() : std::string(node->value(), node->value_size());
}

double amountOf(const std::string& text) {
    const std::vector<double> amounts = HandHistoryAmount::amountsIn(text);
    return amounts.empty() ? 0.0 : amounts.front();
}

int integerOf(const std::string& text) {
    int n = 0;
    for (const char c : text) {
        if (c < '0' || c > '9' || n > 100000)
            break;
        n = n * 10 + (c - '0');
    }
    return n;
}

Node* findGame(Node* parent, int depth) {
    for (Node* child = parent->first_node(); child != nullptr; child = child->next_sibling()) {
        if (child->type() != rapidxml::node_element)
            continue;
        const std::string_view name(child->name(), child->name_size());
        if (name == "game" || name == "Game")
            return child;
        if (depth > 0)
            if (Node* found = findGame(child, depth - 1))
                return found;
    }
    return nullptr;
}

std::string refusalOf(const std::string& game) {
    std::string refusal = gameRefusal(game);
    return refusal;
}

// What an action type of a dialect means: a post of `blind`, or the action `verb` whose
// amount is what it adds or the total it makes.
struct ActionMeaning {
    const char* type;
    const char* verb;
    const char* blind;
    Amount kind;
};

// The three dialects name the same handful of actions; a raise's amount is its total in
// each, every other amount what the action adds.
const ActionMeaning numberedMeanings[] = {
    {"0", "fold", "", Amount::Adds},          {"1", "post", "small blind", Amount::Adds},
    {"2", "post", "big blind", Amount::Adds}, {"3", "call", "", Amount::Adds},
    {"4", "check", "", Amount::Adds},         {"5", "bet", "", Amount::Adds},
    {"7", "allin", "", Amount::Adds},         {"15", "post", "ante", Amount::Adds},
    {"23", "raise", "", Amount::Total}};
const ActionMeaning namedMeanings[] = {{"SMALL_BLIND", "post", "small blind", Amount::Adds},
                                       {"BIG_BLIND", "post", "big blind", Amount::Adds},
                                       {"ANTE", "post", "ante", Amount::Adds},
                                       {"FOLD", "fold", "", Amount::Adds},
                                       {"CHECK", "check", "", Amount::Adds},
                                       {"CALL", "call", "", Amount::Adds},
                                       {"BET", "bet", "", Amount::Adds},
                                       {"RAISE", "raise", "", Amount::Total},
                                       {"ALL_IN", "allin", "", Amount::Adds}};
const ActionMeaning gameplayMeanings[] = {{"SmallBlind", "post", "small blind", Amount::Adds},
                                          {"BigBlind", "post", "big blind", Amount::Adds},
                                          {"Ante", "post", "ante", Amount::Adds},
                                          {"Fold", "fold", "", Amount::Adds},
                                          {"Check", "check", "", Amount::Adds},
                                          {"Call", "call", "", Amount::Adds},
                                          {"Bet", "bet", "", Amount::Adds},
                                          {"Raise", "raise", "", Amount::Total},
                                          {"AllIn", "allin", "", Amount::Adds}};

// Writes the action of `type` when the table knows it; other types (shows, wins) are none.
template <std::size_t N>
void writeAction(CanonicalHandText& out, const ActionMeaning (&meanings)[N],
                 const std::string& type, const std::string& player, double amount) {
    for (const ActionMeaning& meaning : meanings) {
        if (type != meaning.type)
            continue;
        if (std::strcmp(meaning.verb, "post") == 0)
            out.post(player, meaning.blind, amount);
        else
            out.act(player, meaning.verb, amount, meaning.kind);
        return;
    }
}

// <session><general><gametype>Holdem NL £0.05/£0.10</gametype>...<game><general><players>
std::string readNumberedRounds(Node* game) {
    Node* sessionGeneral = nullptr;
    for (Node* n = game->parent(); n != nullptr && sessionGeneral == nullptr; n = n->parent())
        sessionGeneral = n->first_node("general");
    std::string gameType = value(sessionGeneral ? sessionGeneral->first_node("gametype") : nullptr);
    if (gameType.empty())
        gameType =
            value(game->first_node("general") ? game->first_node("general")->first_node("gametype")
                                              : nullptr);
    if (const std::string refusal = refusalOf(gameType); !refusal.empty())
        throw HandHistory::ParseError(refusal, true);
    const std::string nickname =
        value(sessionGeneral ? sessionGeneral->first_node("nickname") : nullptr);
    const std::string tableCurrency =
        value(sessionGeneral ? sessionGeneral->first_node("tablecurrency") : nullptr);

    Node* players = game->first_node("general")->first_node("players");
    char currency = 0;
    for (Node* p = players->first_node("player"); p; p = p->next_sibling("player"))
        if (const char sign = HandHistoryAmount::currencyIn(attribute(p, "chips")))
            currency = sign;
    if (currency == 0)
        currency = tableCurrency == "EUR"   ? '\x80'
                   : tableCurrency == "GBP" ? '\xA3'
                   : tableCurrency == "USD" ? '$'
                                            : 0;
    CanonicalHandText out(currency);
    for (Node* p = players->first_node("player"); p; p = p->next_sibling("player")) {
        out.addSeat(integerOf(attribute(p, "seat")), attribute(p, "name"),
                    amountOf(attribute(p, "chips")));
        if (attribute(p, "dealer") == "1")
            out.setButton(integerOf(attribute(p, "seat")));
    }

    // Pocket cards that are known: the hero's, and at a showdown those shown.
    std::map<std::string, std::string> known;
    for (Node* round = game->first_node("round"); round; round = round->next_sibling("round"))
        for (Node* c = round->first_node("cards"); c; c = c->next_sibling("cards"))
            if (attribute(c, "type") == "Pocket") {
                const std::string cards = HandHistoryCards::cardsIn(value(c));
                if (cards.size() > 4)
                    throw HandHistory::ParseError("more than two hole cards: not No Limit Hold'em",
                                                  true);
                if (cards.size() == 4)
                    known[attribute(c, "player")] = cards;
            }
    if (known.count(nickname) != 0)
        out.setHero(nickname, known[nickname]);
    else if (known.size() == 1)
        out.setHero(known.begin()->first, known.begin()->second);

    for (Node* round = game->first_node("round"); round; round = round->next_sibling("round")) {
        const int number = integerOf(attribute(round, "no"));
        if (number >= 2 && number <= 4) {
            std::string cards;
            for (Node* c = round->first_node("cards"); c; c = c->next_sibling("cards"))
                if (attribute(c, "type") != "Pocket")
                    cards += HandHistoryCards::cardsIn(value(c));
            out.startStreet(number - 1, cards);
        }
        std::vector<Node*> actions;
        for (Node* a = round->first_node("action"); a; a = a->next_sibling("action"))
            actions.push_back(a);
        std::stable_sort(actions.begin(), actions.end(), [](Node* a, Node* b) {
            return integerOf(attribute(a, "no")) < integerOf(attribute(b, "no"));
        });
        for (Node* a : actions) {
            writeAction(out, numberedMeanings, attribute(a, "type"), attribute(a, "player"),
                        amountOf(attribute(a, "sum")));
        }
    }
    return out.text();
}

// <description stakes="No Limit ($1/$2)"/><game><players dealer="5"><player seat nickname
// balance/>, <round id="BLINDS|PREFLOP|POSTFLOP|POSTTURN|POSTRIVER"> of <event>s.
std::string readNamedRounds(Node* game) {
    std::string description;
    for (Node* n = game->parent(); n != nullptr && description.empty(); n = n->parent())
        if (Node* d = n->first_node("description"))
            description = attribute(d, "type") + " " + attribute(d, "stakes");
    if (const std::string refusal = refusalOf(description); !refusal.empty())
        throw HandHistory::ParseError(refusal, true);
    Node* players = game->first_node("players");
    char currency = 0;
    std::map<std::string, std::string> bySeat;
    for (Node* p = players->first_node("player"); p; p = p->next_sibling("player")) {
        if (const char sign = HandHistoryAmount::currencyIn(attribute(p, "balance")))
            currency = sign;
        bySeat[attribute(p, "seat")] = attribute(p, "nickname");
    }
    CanonicalHandText out(currency);
    // Seat numbers start at 0 in this dialect; the canonical text counts from 1.
    for (Node* p = players->first_node("player"); p; p = p->next_sibling("player"))
        out.addSeat(integerOf(attribute(p, "seat")) + 1, attribute(p, "nickname"),
                    amountOf(attribute(p, "balance")));
    if (!attribute(players, "dealer").empty())
        out.setButton(integerOf(attribute(players, "dealer")) + 1);

    for (Node* round = game->first_node("round"); round; round = round->next_sibling("round")) {
        const std::string id = attribute(round, "id");
        for (Node* c = round->first_node("cards"); c; c = c->next_sibling("cards")) {
            const std::string type = attribute(c, "type");
            const std::string cards = HandHistoryCards::cardsIn(attribute(c, "cards"));
            if (type == "HOLE" || type == "DEALT") {
                if (cards.size() > 4)
                    throw HandHistory::ParseError("more than two hole cards: not No Limit Hold'em",
                                                  true);
                if (cards.size() == 4)
                    out.setHero(bySeat[attribute(c, "player")], cards);
            } else if (type == "COMMUNITY") {
                const int street = id == "POSTFLOP"    ? 1
                                   : id == "POSTTURN"  ? 2
                                   : id == "POSTRIVER" ? 3
                                                       : 0;
                const std::size_t known = street == 1 ? 0 : street == 2 ? 6 : 8;
                if (street != 0 && cards.size() >= known)
                    out.startStreet(street, cards.substr(known));
            }
        }
        for (Node* e = round->first_node("event"); e; e = e->next_sibling("event")) {
            writeAction(out, namedMeanings, attribute(e, "type"), bySeat[attribute(e, "player")],
                        amountOf(attribute(e, "amount")));
        }
    }
    return out.text();
}

// The currency symbol of the third dialect, Base64 of UTF-16LE ("rCA=" is the euro sign).
char currencyOfBase64(const std::string& text) {
    static const std::string alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<unsigned char> bytes;
    unsigned bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t at = alphabet.find(c);
        if (at == std::string::npos)
            break;
        bits = (bits << 6) | static_cast<unsigned>(at);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<unsigned char>((bits >> count) & 0xFF));
        }
    }
    if (bytes.size() < 2)
        return 0;
    const unsigned code = bytes[0] | (unsigned(bytes[1]) << 8);
    return code == 0x20AC ? '\x80' : code == 0xA3 ? '\xA3' : code == 0x24 ? '$' : 0;
}

// <Game stakes="0.01|0.02" betlimit="NL" playerseat><Seats><Seat num alias balance dealer/>
// <Gameplay><Action seq type seat value> with <Card value suit/> children.
std::string readGameplay(Node* game) {
    const std::string limit = attribute(game, "betlimit");
    const std::string type = attribute(game, "gametype");
    if (!limit.empty() && limit != "NL")
        throw HandHistory::ParseError("the game is a limit game, not No Limit Hold'em", true);
    if (const std::string refusal = refusalOf(type); !refusal.empty())
        throw HandHistory::ParseError(refusal, true);
    CanonicalHandText out(currencyOfBase64(attribute(game, "currencysymbol")));
    std::map<std::string, std::string> bySeat;
    Node* seats = game->first_node("Seats");
    for (Node* s = seats->first_node("Seat"); s; s = s->next_sibling("Seat")) {
        bySeat[attribute(s, "num")] = attribute(s, "alias");
        out.addSeat(integerOf(attribute(s, "num")), attribute(s, "alias"),
                    amountOf(attribute(s, "balance")));
        if (attribute(s, "dealer") == "true")
            out.setButton(integerOf(attribute(s, "num")));
    }
    const std::string heroSeat = attribute(game, "playerseat");
    Node* play = game->first_node("Gameplay");
    if (play == nullptr)
        throw HandHistory::ParseError("an XML hand without actions");
    for (Node* a = play->first_node("Action"); a; a = a->next_sibling("Action")) {
        const std::string kind = attribute(a, "type");
        const std::string seat = attribute(a, "seat");
        const std::string player = bySeat[seat];
        const double amount = amountOf(attribute(a, "value"));
        std::string cards;
        for (Node* c = a->first_node("Card"); c; c = c->next_sibling("Card"))
            cards += HandHistoryCards::cardsIn(attribute(c, "value") + attribute(c, "suit"));
        if (kind == "DealFlop")
            out.startStreet(1, cards);
        else if (kind == "DealTurn")
            out.startStreet(2, cards);
        else if (kind == "DealRiver")
            out.startStreet(3, cards);
        else if ((kind == "DealCards" || kind == "ShowCards") && seat == heroSeat &&
                 heroSeat != "0" && cards.size() == 4)
            out.setHero(player, cards);
        else
            writeAction(out, gameplayMeanings, kind, player, amount);
    }
    return out.text();
}

// The deepest nesting of elements in `text`, counted without parsing; RapidXML parses by
// recursion, so a paste of endless opening tags must not reach it.
int nestingOf(const std::string& text, std::size_t from) {
    int depth = 0;
    int deepest = 0;
    for (std::size_t at = text.find('<', from); at != std::string::npos;
         at = text.find('<', at + 1)) {
        if (at + 1 >= text.size())
            break;
        const char next = text[at + 1];
        if (next == '/') {
            --depth;
            continue;
        }
        if (next == '?' || next == '!')
            continue;
        const std::size_t end = text.find('>', at);
        if (end == std::string::npos)
            break;
        if (text[end - 1] != '/')
            deepest = std::max(deepest, ++depth);
    }
    return deepest;
}

constexpr int deepestHand = 64;

} // namespace

bool rewriteXmlDialect(std::string& text) {
    std::size_t start = 0;
    while (start < text.size() && (text[start] == ' ' || text[start] == '\n' ||
                                   text[start] == '\r' || text[start] == '\t'))
        ++start;
    if (start >= text.size() || text[start] != '<')
        return false;
    if (text.find("<game", start) == std::string::npos &&
        text.find("<Game", start) == std::string::npos)
        return false;

    if (nestingOf(text, start) > deepestHand)
        throw HandHistory::ParseError("the XML nests deeper than any hand history", true);
    std::vector<char> buffer(text.begin() + static_cast<std::ptrdiff_t>(start), text.end());
    buffer.push_back('\0');
    rapidxml::xml_document<char> document;
    try {
        document.parse<0>(buffer.data());
    } catch (const rapidxml::parse_error& error) {
        throw HandHistory::ParseError(std::string("the XML does not read: ") + error.what());
    }
    Node* game = findGame(&document, 2);
    if (game == nullptr)
        throw HandHistory::ParseError("an XML text without a hand");
    if (game->first_node("Seats") != nullptr)
        text = readGameplay(game);
    else if (game->first_node("players") != nullptr)
        text = readNamedRounds(game);
    else if (game->first_node("general") != nullptr &&
             game->first_node("general")->first_node("players") != nullptr)
        text = readNumberedRounds(game);
    else
        throw HandHistory::ParseError("an XML hand of no known form");
    return true;
}

} // namespace HandHistoryDialects
