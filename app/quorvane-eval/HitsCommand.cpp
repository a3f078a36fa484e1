// quorvane-eval hits RANGE --board B [--dead D]
//
// How a range hits a board: for each hand value and each feature bit that the evaluator
// sets, its table name and the number of combinations of the range that have it, one
// "name: count" per line, after a first line "combinations: N" with the number of
// combinations the board and the dead cards leave. Hand values come first (straight flush
// down to high card), then the other features by bit. Exit codes: 0 done, 1 bad input (the
// message names it), 2 bad usage.

#include "CommandRegistry.h"
#include "FreeRangeText.h"

#include "VelmaraEvaluatorBase.h"
#include "handstrength/HandStrengthNames.h"

#include <ostream>
#include <string>
#include <vector>

namespace {

const char* const usageLine = "hits RANGE --board B [--dead D]";

// Bits that no hand ever has: unused positions and the custom sum marker (bit 50).
constexpr unsigned long long neverSetBits =
    (1ULL << 25) | (0x3FULL << 40) | (1ULL << 48) | (1ULL << 50) | (0x7FULL << 57);

int usageError(std::ostream& err, const std::string& message) {
    err << "quorvane-eval hits: " << message << "\n"
        << "usage: quorvane-eval " << usageLine << "\n";
    return 2;
}

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string range;
    std::string board;
    std::string dead;
    bool haveRange = false;
    bool haveBoard = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--board" || arg == "--dead") {
            if (i + 1 >= args.size())
                return usageError(err, "'" + arg + "' needs a value");
            (arg == "--board" ? board : dead) = args[++i];
            haveBoard = haveBoard || arg == "--board";
        } else if (arg.size() > 1 && arg[0] == '-' && arg[1] == '-') {
            return usageError(err, "unknown option '" + arg + "'");
        } else if (haveRange) {
            return usageError(err, "one range only, got '" + arg + "' as well");
        } else {
            range = arg;
            haveRange = true;
        }
    }
    if (!haveRange || range.empty())
        return usageError(err, "a range is needed");
    if (!haveBoard)
        return usageError(err, "'--board' is needed (a flop, turn or river)");

    DetailHandEvaluations evaluations;
    for (int bit = 0; bit < 64; ++bit) {
        const unsigned long long single = 1ULL << bit;
        if (single & neverSetBits)
            continue;
        DetailHandEvaluation entry;
        entry.key = HandStrengthKey(single, 0);
        entry.name = tableName(entry.key);
        evaluations.details.push_back(entry);
    }
    // The library throws std::invalid_argument naming a bad range token, card or board;
    // main reports it with exit code 1.
    getHitEvaluationForOnePlayer(technicalRangeOfFreeText(range), board, dead, evaluations);

    out << "combinations: " << evaluations.total << "\n";
    for (const DetailHandEvaluation& entry : evaluations.details)
        out << entry.name << ": " << entry.combinations1 << "\n";
    return 0;
}

const CommandRegistry::Entry entry{"hits", &run, usageLine};

} // namespace
