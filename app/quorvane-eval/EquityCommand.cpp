// quorvane-eval equity RANGE1 RANGE2 [--board B] [--dead D] [--by-hand]
//
// Exact equity of two ranges through the evaluator library, with the counters and the time
// taken. Exit codes: 0 done, 1 bad input (the message names the bad token), 2 bad usage.

#include "CommandRegistry.h"
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

std::string percent(double share) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f %%", share * 100.0);
    return text;
}

std::string equityText(unsigned long long wins, unsigned long long ties, unsigned long long total) {
    if (total == 0)
        return "-";
    return percent((double(wins) + double(ties) * 0.5) / double(total));
}

int usageError(std::ostream& err, const std::string& message) {
    err << "quorvane-eval equity: " << message << "\n"
        << "usage: quorvane-eval " << usageLine << "\n";
    return 2;
}

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> ranges;
    std::string board;
    std::string dead;
    bool byHand = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--board" || arg == "--dead") {
            if (i + 1 >= args.size())
                return usageError(err, "'" + arg + "' needs a value");
            (arg == "--board" ? board : dead) = args[++i];
        } else if (arg == "--by-hand") {
            byHand = true;
        } else if (arg.size() > 1 && arg[0] == '-' && arg[1] == '-') {
            return usageError(err, "unknown option '" + arg + "'");
        } else {
            ranges.push_back(arg);
        }
    }
    if (ranges.size() != 2)
        return usageError(err,
                          "two ranges are needed, " + std::to_string(ranges.size()) + " given");

    // The one-time preparation is not part of a calculation's time.
    initializeAllBoardsBeforeCalculation();
    volatile bool stop = false;
    const auto started = std::chrono::steady_clock::now();
    EquityEvaluation<unsigned long long> result;
    std::vector<WinEvaluationByHand> hands;
    try {
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
        err << "quorvane-eval equity: " << error.what() << "\n";
        return 1;
    }
    const double milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started)
            .count();

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

const CommandRegistry::Entry entry{"equity", &run, usageLine};

} // namespace
