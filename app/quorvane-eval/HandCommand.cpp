// quorvane-eval hand FILE|-
//
// Reads a text of one or many hand histories (separated by blank lines) and prints, for
// each hand, what an import makes of it: hero and hole cards, blinds, board, the stacks at
// the start, and each street's pot and actions; or the reason why the hand could not be
// read. Exit code 0 only when every hand was read, 1 when one was not (or the text held no
// hand), 2 for a usage error or an unreadable file.

#include "CommandRegistry.h"
#include "CommandReply.h"

#include "evfe/Line.h"
#include "evfe/LineList.h"
#include "evfe/Street.h"
#include "handhistory/HandHistoryLines.h"
#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

const char* const usage = "hand FILE|-";
const char* const helpLines =
    "      Reads hand histories (blank lines between hands; - reads standard input) and\n"
    "      prints what an import makes of each: hero and hole cards, blinds, board, the\n"
    "      stacks at the start, each street's pot and actions and the EV/FE lines with\n"
    "      their variants, or why a hand could not be read. Exit code 0 only when every\n"
    "      hand was read.\n";

// "12.5", "1000", "0.05": two decimals at most, no trailing zeros.
std::string number(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", static_cast<double>(value));
    std::string out = text;
    if (out.find('.') != std::string::npos) {
        while (out.back() == '0')
            out.pop_back();
        if (out.back() == '.')
            out.pop_back();
    }
    return out == "-0" ? "0" : out;
}

class Printer {
public:
    Printer(const HandHistoryRecord& hand, std::ostream& out) : hand(hand), out(out) {}

    void print() {
        out << "  hero: ";
        if (hand.hero.empty())
            out << "(none)\n";
        else
            out << utf8(hand.hero) << " [" << hand.holeCards << "]\n";
        out << "  blinds: " << money(hand.smallBlind) << " / " << money(hand.bigBlind) << "\n";
        out << "  board: " << (hand.board.empty() ? "(none)" : hand.board) << "\n";
        out << "  stacks at start:\n";
        for (const HandHistorySeat& seat : hand.seats) {
            const auto stack = hand.stacksAtStart.find(seat.name);
            out << "    seat " << seat.seat << " " << utf8(seat.name) << " "
                << (stack == hand.stacksAtStart.end() ? "(no stack)" : money(stack->second))
                << positionLabel(seat.positionKind) << "\n";
        }
        street("preflop", "", hand.potPreflop, hand.postActions, true);
        if (!hand.flop.empty() || !hand.flopActions.empty())
            street("flop", hand.flop, hand.potFlop, hand.flopActions, false);
        if (!hand.turn.empty() || !hand.turnActions.empty())
            street("turn", hand.turn, hand.potTurn, hand.turnActions, false);
        if (!hand.river.empty() || !hand.riverActions.empty())
            street("river", hand.river, hand.potRiver, hand.riverActions, false);
        printLines();
    }

private:
    // The EV/FE lines an import builds, in big blinds.
    void printLines() {
        HandHistoryLines builder(hand);
        LineList lines;
        builder.preflopLines(lines);
        if (builder.hero().empty()) {
            out << "  lines: none, no hero could be found or determined by preflop actions\n";
            return;
        }
        builder.flopLines(lines);
        builder.riverLines(lines);
        builder.turnLines(lines);
        if (hand.hero.empty())
            out << "  hero by the first preflop raise: " << utf8(builder.hero()) << "\n";
        if (lines.empty()) {
            out << "  lines: none (no bet or raise)\n";
            return;
        }
        out << "  lines (in big blinds):\n";
        for (const Line& line : lines) {
            out << "    " << streetToText(line.street) << " " << line.name << ":\n";
            for (const LineVariant& v : line.variants) {
                out << "      " << utf8(v.name) << ", " << v.forPlayer
                    << " first: " << v.actions[0].verb << " " << number(v.actions[0].size)
                    << ", pot " << number(v.deadmoney) << ", stacks "
                    << number(v.player1sEffectiveStackSize) << " / "
                    << number(v.player2sEffectiveStackSize) << ", in "
                    << number(v.player1sLastInvestment) << " / " << number(v.player2sLastInvestment)
                    << "; answers:";
                for (std::size_t i = 1; i < v.actions.size(); ++i) {
                    out << (i == 1 ? " " : ", ") << v.actions[i].verb;
                    if (v.actions[i].size != 0.0f)
                        out << " " << number(v.actions[i].size);
                }
                out << "\n";
            }
        }
    }

    static std::string utf8(const std::string& text) { return HandHistoryText::toUtf8(text); }

    static const char* positionLabel(int kind) {
        return kind == 0 ? " (small blind)" : kind == 1 ? " (big blind)" : "";
    }

    std::string money(float value) const {
        const std::string sign =
            hand.currency == 0 ? std::string() : utf8(std::string(1, hand.currency));
        return sign + number(value);
    }

    void street(const char* name, const std::string& cards, float pot,
                const std::vector<HandHistoryAction>& actions, bool preflop) {
        out << "  " << name;
        if (!cards.empty())
            out << " [" << cards << "]";
        out << ", pot " << money(pot) << (preflop ? " after the posts" : "") << ":\n";
        if (actions.empty())
            out << "    (no actions)\n";
        for (const HandHistoryAction& action : actions) {
            out << "    " << utf8(action.player) << " " << action.verb;
            if (!action.blind.empty())
                out << " " << action.blind;
            if (action.verb == "raise")
                out << " to";
            if (action.verb != "fold" && action.verb != "check")
                out << " " << money(action.amount);
            out << "\n";
        }
    }

    const HandHistoryRecord& hand;
    std::ostream& out;
};

// The same record as members of a JSON object.
class JsonPrinter {
public:
    JsonPrinter(const HandHistoryRecord& hand, JsonWriter& json) : hand(hand), json(json) {}

    void print() {
        if (hand.hero.empty())
            json.key("hero").null();
        else
            json.member("hero", utf8(hand.hero)).member("hole_cards", hand.holeCards);
        json.member("currency",
                    hand.currency == 0 ? std::string() : utf8(std::string(1, hand.currency)));
        json.key("small_blind").raw(number(hand.smallBlind));
        json.key("big_blind").raw(number(hand.bigBlind));
        json.member("board", hand.board);
        json.key("seats").beginArray();
        for (const HandHistorySeat& seat : hand.seats) {
            json.beginObject().member("seat", seat.seat).member("name", utf8(seat.name));
            const auto stack = hand.stacksAtStart.find(seat.name);
            json.key("stack");
            if (stack == hand.stacksAtStart.end())
                json.null();
            else
                json.raw(number(stack->second));
            json.key("blind");
            if (seat.positionKind == 0 || seat.positionKind == 1)
                json.value(seat.positionKind == 0 ? "small blind" : "big blind");
            else
                json.null();
            json.endObject();
        }
        json.endArray();
        json.key("streets").beginArray();
        street("preflop", "", hand.potPreflop, hand.postActions);
        if (!hand.flop.empty() || !hand.flopActions.empty())
            street("flop", hand.flop, hand.potFlop, hand.flopActions);
        if (!hand.turn.empty() || !hand.turnActions.empty())
            street("turn", hand.turn, hand.potTurn, hand.turnActions);
        if (!hand.river.empty() || !hand.riverActions.empty())
            street("river", hand.river, hand.potRiver, hand.riverActions);
        json.endArray();
        printLines();
    }

private:
    // The EV/FE lines, in big blinds; null when no hero could be found.
    void printLines() {
        HandHistoryLines builder(hand);
        LineList lines;
        builder.preflopLines(lines);
        json.key("lines");
        if (builder.hero().empty()) {
            json.null();
            return;
        }
        builder.flopLines(lines);
        builder.riverLines(lines);
        builder.turnLines(lines);
        json.beginArray();
        for (const Line& line : lines) {
            json.beginObject()
                .member("street", streetToText(line.street))
                .member("name", line.name)
                .key("variants")
                .beginArray();
            for (const LineVariant& v : line.variants) {
                json.beginObject().member("name", utf8(v.name)).member("first", v.forPlayer);
                json.key("size").raw(number(v.actions[0].size));
                json.key("pot").raw(number(v.deadmoney));
                json.key("stacks").beginArray();
                json.raw(number(v.player1sEffectiveStackSize))
                    .raw(number(v.player2sEffectiveStackSize));
                json.endArray().key("last_investments").beginArray();
                json.raw(number(v.player1sLastInvestment)).raw(number(v.player2sLastInvestment));
                json.endArray().endObject();
            }
            json.endArray().endObject();
        }
        json.endArray();
    }

    static std::string utf8(const std::string& text) { return HandHistoryText::toUtf8(text); }

    void street(const char* name, const std::string& cards, float pot,
                const std::vector<HandHistoryAction>& actions) {
        json.beginObject().member("street", name).member("cards", cards);
        json.key("pot").raw(number(pot));
        json.key("actions").beginArray();
        for (const HandHistoryAction& action : actions) {
            json.beginObject().member("player", utf8(action.player)).member("verb", action.verb);
            if (!action.blind.empty())
                json.member("blind", action.blind);
            if (action.verb != "fold" && action.verb != "check")
                json.key("amount").raw(number(action.amount));
            json.endObject();
        }
        json.endArray().endObject();
    }

    const HandHistoryRecord& hand;
    JsonWriter& json;
};

int run(const std::vector<std::string>& args, CommandReply& reply) {
    if (args.size() != 1)
        return reply.fail(2, std::string(), usage);
    const auto started = std::chrono::steady_clock::now();
    std::string text;
    if (args[0] == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    } else {
        std::ifstream file(args[0], std::ios::binary);
        if (!file)
            return reply.fail(2, "cannot open \"" + args[0] + "\"");
        std::ostringstream content;
        content << file.rdbuf();
        text = content.str();
    }

    const std::vector<HandHistoryText::Piece> pieces =
        HandHistoryText::splitHands(HandHistoryText::decode(text));
    if (reply.json()) {
        JsonWriter& json = reply.object();
        json.member("file", args[0]);
        json.key("hands").beginArray();
        int unread = 0;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const HandHistoryText::Piece& piece = pieces[i];
            json.beginObject()
                .member("number", std::uint64_t(i + 1))
                .member("first_line", piece.firstLine)
                .member("last_line", piece.lastLine);
            try {
                const HandHistoryParser parser(piece.text);
                json.member("read", true);
                JsonPrinter(parser.record(), json).print();
            } catch (const HandHistoryParser::ParseError& error) {
                ++unread;
                json.member("read", false).member("reason", HandHistoryText::toUtf8(error.reason));
            }
            json.endObject();
        }
        json.endArray();
        json.member("read", std::uint64_t(pieces.size() - static_cast<std::size_t>(unread)));
        json.member("total", std::uint64_t(pieces.size()));
        json.key("time_ms").fixed(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started)
                .count(),
            3);
        return pieces.empty() || unread > 0 ? 1 : 0;
    }

    std::ostream& out = reply.out();
    if (pieces.empty()) {
        out << "no hand history found\n";
        return 1;
    }
    int unread = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const HandHistoryText::Piece& piece = pieces[i];
        out << "hand " << i + 1 << " (lines " << piece.firstLine << "-" << piece.lastLine << "): ";
        try {
            const HandHistoryParser parser(piece.text);
            out << "read\n";
            Printer(parser.record(), out).print();
        } catch (const HandHistoryParser::ParseError& error) {
            ++unread;
            out << "not read: " << HandHistoryText::toUtf8(error.reason) << "\n";
        }
    }
    out << pieces.size() - static_cast<std::size_t>(unread) << " of " << pieces.size()
        << " hands read\n";
    return unread == 0 ? 0 : 1;
}

const CommandRegistry::Entry entry{"hand", &run, usage, helpLines};

} // namespace
