// quorvane-eval hits RANGE --board B [--dead D] [--schema NAME] [--absolute] [--all-rows]
//                  [--features]
//
// How a range hits a board, as the Board Hits tab shows it: the rows of a hand group schema
// ("Standard" unless --schema names another of the user's schemas), nested by indentation,
// each "name: combinations (percentage)". Percentages are relative to the parent row, or with
// --absolute to all combinations. Rows without combinations are left out when the program's
// option "Hide Empty Lines in Evaluation Tabs" is on (the default); --all-rows shows them.
// The first line is "combinations: N", the combinations the board and the dead cards leave.
//
// --features prints instead, for each hand value and each feature bit that the evaluator
// sets, its table name and the number of combinations that have it, one "name: count" per
// line: hand values first (straight flush down to high card), then the other features by
// bit. Exit codes: 0 done, 1 bad input (the message names it), 2 bad usage.

#include "CommandRegistry.h"
#include "CommandReply.h"
#include "FreeRangeText.h"
#include "SchemaRows.h"
#include "SchemaRowsClient.h"

#include "VelmaraEvaluatorBase.h"
#include "handstrength/HandStrengthNames.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const char* const usageLine =
    "hits RANGE --board B [--dead D] [--schema NAME] [--absolute] [--all-rows] [--features]";
const char* const helpLines =
    "      How RANGE hits the board, as the Board Hits tab shows it: the rows of the hand\n"
    "      group schema NAME (\"Standard\" by default; the user's own schemas are read from\n"
    "      the program's settings), nested by indentation, \"Top Pair: 120 (10.20 %)\".\n"
    "      Percentages of the parent row, or with --absolute of all combinations. Empty rows\n"
    "      are left out when the program hides them; --all-rows shows them. --features lists\n"
    "      the count of every feature bit of the evaluator instead.\n";

// Bits that no hand ever has: unused positions and the custom sum marker (bit 50).
constexpr unsigned long long neverSetBits =
    (1ULL << 25) | (0x3FULL << 40) | (1ULL << 48) | (1ULL << 50) | (0x7FULL << 57);

double millisecondsSince(std::chrono::steady_clock::time_point started) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started)
        .count();
}

int features(const std::string& range, const std::string& board, const std::string& dead,
             CommandReply& reply, std::chrono::steady_clock::time_point started) {
    DetailHandEvaluations evaluations;
    std::vector<int> bits;
    for (int bit = 0; bit < 64; ++bit) {
        const unsigned long long single = 1ULL << bit;
        if (single & neverSetBits)
            continue;
        DetailHandEvaluation entry;
        entry.key = HandStrengthKey(single, 0);
        entry.name = tableName(entry.key);
        evaluations.details.push_back(entry);
        bits.push_back(bit);
    }
    getHitEvaluationForOnePlayer(range, board, dead, evaluations);
    if (reply.json()) {
        JsonWriter& json = reply.object();
        json.member("combinations", std::uint64_t(evaluations.total));
        json.key("features").beginArray();
        for (std::size_t i = 0; i < evaluations.details.size(); ++i) {
            const DetailHandEvaluation& entry = evaluations.details[i];
            json.beginObject()
                .member("name", entry.name)
                .member("bit", bits[i])
                .member("combinations", entry.combinations1)
                .endObject();
        }
        json.endArray();
        json.key("time_ms").fixed(millisecondsSince(started), 3);
        return 0;
    }
    std::ostream& out = reply.out();
    out << "combinations: " << evaluations.total << "\n";
    for (const DetailHandEvaluation& entry : evaluations.details)
        out << entry.name << ": " << entry.combinations1 << "\n";
    return 0;
}

bool shown(const SchemaRows& rows, const SchemaRows::Row& row, bool allRows) {
    return allRows || !rows.hidesEmptyRows || row.combinations > 0;
}

// The shown rows of a group as nested JSON arrays: each row holds the rows below it.
void jsonRows(JsonWriter& json, const std::vector<const SchemaRows::Row*>& rows, std::size_t& next,
              unsigned int depth) {
    json.beginArray();
    while (next < rows.size() && rows[next]->depth >= depth) {
        const SchemaRows::Row& row = *rows[next++];
        json.beginObject()
            .member("name", row.name)
            .member("combinations", std::uint64_t(row.combinations));
        // Nine significant digits: the schema's single-precision share, exactly.
        char share[32];
        std::snprintf(share, sizeof share, "%.9g", static_cast<double>(row.share));
        json.key("share");
        if (std::isfinite(row.share))
            json.raw(share);
        else
            json.null(); // a stored schema with a broken tree may divide by zero
        json.member("percent", row.percentText);
        if (next < rows.size() && rows[next]->depth > row.depth) {
            json.key("rows");
            jsonRows(json, rows, next, row.depth + 1);
        }
        json.endObject();
    }
    json.endArray();
}

int schemaRows(const std::string& range, const std::string& board, const std::string& dead,
               const std::string& schema, bool absolute, bool allRows, CommandReply& reply,
               std::chrono::steady_clock::time_point started) {
    SchemaRows rows;
    int code = 0;
    std::string message;
    if (!SchemaRowsClient::instance().evaluate(range, board, dead, schema, absolute, rows, code,
                                               message))
        return reply.fail(code, message);
    if (reply.json()) {
        JsonWriter& json = reply.object();
        json.member("schema", rows.schema).member("absolute", absolute);
        json.member("combinations", std::uint64_t(rows.combinations));
        json.key("groups").beginArray();
        for (const SchemaRows::Group& group : rows.groups) {
            std::vector<const SchemaRows::Row*> visible;
            for (const SchemaRows::Row& row : group.rows)
                if (shown(rows, row, allRows))
                    visible.push_back(&row);
            json.beginObject().member("name", group.name);
            json.member("custom_sum", group.customSum).key("rows");
            std::size_t next = 0;
            jsonRows(json, visible, next, 0);
            json.endObject();
        }
        json.endArray();
        json.key("time_ms").fixed(millisecondsSince(started), 3);
        return 0;
    }
    std::ostream& out = reply.out();
    out << "combinations: " << rows.combinations << "\n";
    for (const SchemaRows::Group& group : rows.groups) {
        bool titled = group.customSum;
        for (const SchemaRows::Row& row : group.rows) {
            if (!shown(rows, row, allRows))
                continue;
            // The group's name above its first shown row, as in the tab.
            if (!titled) {
                out << group.name << "\n";
                titled = true;
            }
            out << std::string(2 + 2 * row.depth, ' ') << row.name << ": " << row.combinations
                << " (" << row.percentText << ")\n";
        }
    }
    return 0;
}

int run(const std::vector<std::string>& args, CommandReply& reply) {
    std::string range;
    std::string board;
    std::string dead;
    std::string schema = "Standard";
    bool haveRange = false;
    bool haveBoard = false;
    bool listFeatures = false;
    bool absolute = false;
    bool allRows = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--board" || arg == "--dead" || arg == "--schema") {
            if (i + 1 >= args.size())
                return reply.fail(2, "'" + arg + "' needs a value", usageLine);
            (arg == "--board" ? board : arg == "--dead" ? dead : schema) = args[++i];
            haveBoard = haveBoard || arg == "--board";
        } else if (arg == "--features") {
            listFeatures = true;
        } else if (arg == "--absolute") {
            absolute = true;
        } else if (arg == "--all-rows") {
            allRows = true;
        } else if (arg.size() > 1 && arg[0] == '-' && arg[1] == '-') {
            return reply.fail(2, "unknown option '" + arg + "'", usageLine);
        } else if (haveRange) {
            return reply.fail(2, "one range only, got '" + arg + "' as well", usageLine);
        } else {
            range = arg;
            haveRange = true;
        }
    }
    if (!haveRange || range.empty())
        return reply.fail(2, "a range is needed", usageLine);
    if (!haveBoard)
        return reply.fail(2, "'--board' is needed (a flop, turn or river)", usageLine);

    const auto started = std::chrono::steady_clock::now();
    std::string technical;
    try {
        board = boardOfArgument(board);
        dead = deadCardsOfArgument(dead);
        technical = technicalRangeOfFreeText(range);
        // The library checks the board and the dead cards (std::invalid_argument naming the
        // bad card) before the schema helper is asked.
        DetailHandEvaluations check;
        check.details.resize(1);
        getHitEvaluationForOnePlayer(technical, board, dead, check);
    } catch (const std::invalid_argument& error) {
        return reply.fail(1, error.what());
    }
    if (reply.json())
        reply.object().member("range", range).member("board", board).member("dead", dead);
    if (listFeatures)
        return features(technical, board, dead, reply, started);
    return schemaRows(technical, board, dead, schema, absolute, allRows, reply, started);
}

const CommandRegistry::Entry entry{"hits", &run, usageLine, helpLines};

} // namespace
