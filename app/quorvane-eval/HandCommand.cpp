// quorvane-eval hand FILE|-
//
// Reads a text of one or many hand histories (separated by blank lines) and prints, for
// each hand, what an import makes of it: hero and hole cards, blinds, board, the stacks at
// the start, and each street's pot and actions; or the reason why the hand could not be
// read. Exit code 0 only when every hand was read, 1 when one was not (or the text held no
// hand), 2 for a usage error or an unreadable file.

#include "CommandRegistry.h"

#include "handhistory/HandHistoryParser.h"
#include "handhistory/HandHistoryText.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

const char* const usage = "hand FILE|-    read hand histories (blank lines between hands; - reads "
                          "standard input) and print what an import makes of each";

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
    }

private:
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

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) {
        err << "usage: quorvane-eval " << usage << "\n";
        return 2;
    }
    std::string text;
    if (args[0] == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    } else {
        std::ifstream file(args[0], std::ios::binary);
        if (!file) {
            err << "quorvane-eval hand: cannot open \"" << args[0] << "\"\n";
            return 2;
        }
        std::ostringstream content;
        content << file.rdbuf();
        text = content.str();
    }

    const std::vector<HandHistoryText::Piece> pieces =
        HandHistoryText::splitAtBlankLines(HandHistoryText::toWindows1252(text));
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

const CommandRegistry::Entry entry{"hand", &run, usage};

} // namespace
