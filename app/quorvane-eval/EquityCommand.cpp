// quorvane-eval equity RANGE1 RANGE2 [--board B] [--dead D] [--by-hand]
//
// Exact equity of two ranges through the evaluator library, with the counters and the time
// taken. Exit codes: 0 done, 1 bad input (the message names the bad token), 2 bad usage.

#include "CommandRegistry.h"
#include "CommandReply.h"
#include "FreeRangeText.h"

#include "VelmaraEvaluatorBase.h"

#include <chrono>
#include <cstdio>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const char* const usageLine = "equity RANGE1 RANGE2 [--board B] [--dead D] [--by-hand]";
const char* const helpLines =
    "      Exact equity of two ranges: every matchup on every completion of the board.\n"
    "      Prints equity1, equity2, wins1, wins2, ties and total (one unit is one matchup on\n"
    "      one board) and the time taken; --by-hand adds a line for every hand of RANGE1.\n";

std::string percent(double share) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f %%", share * 100.0);
    return text;
}

double share(unsigned long long wins, unsigned long long ties, unsigned long long total) {
    return (double(wins) + double(ties) * 0.5) / double(total);
}

std::string equityText(unsigned long long wins, unsigned long long ties, unsigned long long total) {
    if (total == 0)
        return "-";
    return percent(share(wins, ties, total));
}

void jsonEquity(JsonWriter& json, const char* name, unsigned long long wins,
                unsigned long long ties, unsigned long long total) {
    json.key(name);
    if (total == 0)
        json.null();
    else
        json.value(share(wins, ties, total));
}

int run(const std::vector<std::string>& args, CommandReply& reply) {
    std::vector<std::string> ranges;
    std::string board;
    std::string dead;
    bool byHand = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--board" || arg == "--dead") {
            if (i + 1 >= args.size())
                return reply.fail(2, "'" + arg + "' needs a value", usageLine);
            (arg == "--board" ? board : dead) = args[++i];
        } else if (arg == "--by-hand") {
            byHand = true;
        } else if (arg.size() > 1 && arg[0] == '-' && arg[1] == '-') {
            return reply.fail(2, "unknown option '" + arg + "'", usageLine);
        } else {
            ranges.push_back(arg);
        }
    }
    if (ranges.size() != 2)
        return reply.fail(2, "two ranges are needed, " + std::to_string(ranges.size()) + " given",
                          usageLine);

    // The library prepares what a query needs on first use; nothing is built up front.
    volatile bool stop = false;
    const auto started = std::chrono::steady_clock::now();
    EquityEvaluation<unsigned long long> result;
    std::vector<WinEvaluationByHand> hands;
    try {
        board = boardOfArgument(board);
        dead = deadCardsOfArgument(dead);
        const std::string range1 = technicalRangeOfFreeText(ranges[0]);
        const std::string range2 = technicalRangeOfFreeText(ranges[1]);
        if (byHand) {
            hands = board.empty() ? getWinEvaluationByHand(range1, range2, dead, stop)
                                  : getWinEvaluationByHand(range1, range2, board, dead, stop);
            for (const WinEvaluationByHand& hand : hands) {
                result.total += hand.total;
                result.wins1 += hand.wins;
                result.wins2 += hand.losses;
                result.ties += hand.ties;
            }
        } else {
            result = board.empty() ? getEquity(range1, range2, dead, stop)
                                   : getEquity(range1, range2, board, dead, stop);
        }
    } catch (const std::invalid_argument& error) {
        return reply.fail(1, error.what());
    }
    const double milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started)
            .count();

    if (reply.json()) {
        JsonWriter& json = reply.object();
        json.member("range1", ranges[0]).member("range2", ranges[1]);
        json.member("board", board).member("dead", dead);
        jsonEquity(json, "equity1", result.wins1, result.ties, result.total);
        jsonEquity(json, "equity2", result.wins2, result.ties, result.total);
        json.member("wins1", std::uint64_t(result.wins1));
        json.member("wins2", std::uint64_t(result.wins2));
        json.member("ties", std::uint64_t(result.ties));
        json.member("total", std::uint64_t(result.total));
        json.key("time_ms").fixed(milliseconds, 3);
        if (byHand) {
            json.key("hands").beginArray();
            for (const WinEvaluationByHand& hand : hands) {
                json.beginObject();
                json.member("hand", hand.hand);
                jsonEquity(json, "equity", hand.wins, hand.ties, hand.total);
                json.member("wins", std::uint64_t(hand.wins));
                json.member("losses", std::uint64_t(hand.losses));
                json.member("ties", std::uint64_t(hand.ties));
                json.member("total", std::uint64_t(hand.total));
                json.endObject();
            }
            json.endArray();
        }
        return 0;
    }

    std::ostream& out = reply.out();
    out << "equity1 " << equityText(result.wins1, result.ties, result.total) << "\n"
        << "equity2 " << equityText(result.wins2, result.ties, result.total) << "\n"
        << "wins1 " << result.wins1 << "\n"
        << "wins2 " << result.wins2 << "\n"
        << "ties " << result.ties << "\n"
        << "total " << result.total << "\n";
    if (result.total == 0)
        out << "no matchup is possible\n";
    char time[32];
    std::snprintf(time, sizeof time, "%.3f", milliseconds);
    out << "time " << time << " ms\n";
    for (const WinEvaluationByHand& hand : hands) {
        out << hand.hand << " " << equityText(hand.wins, hand.ties, hand.total) << " wins "
            << hand.wins << " losses " << hand.losses << " ties " << hand.ties << " total "
            << hand.total << "\n";
    }
    return 0;
}

const CommandRegistry::Entry entry{"equity", &run, usageLine, helpLines};

} // namespace
