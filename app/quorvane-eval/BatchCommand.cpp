// quorvane-eval batch [FILE|-]
//
// Answers many queries in one process: one query per line of FILE (or of standard input),
// in the words of the sub-commands ("equity AA KK --board Ah7d2c", "range 'QQ+, AKs'",
// "hits AA,KK --board Ks7h2d"), each answered on one line in the order given. A text answer
// is what the single call prints, its lines joined by tabs; an answer that failed starts with
// "error" and a tab, followed by the single call's message. With --json every answer is the
// single call's JSON object. Blank lines and lines starting with '#' are skipped. The batch
// goes on after a failed query; its exit code is the number of queries that failed (at most
// 125), or 2 when the input cannot be read.

#include "CommandLine.h"
#include "CommandRegistry.h"
#include "CommandReply.h"
#include "QueryWords.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const char* const usageLine = "batch [FILE|-]";
const char* const helpLines =
    "      One query per line of FILE or of standard input, in the words of the other\n"
    "      commands, each answered on one line in the order given: the single call's\n"
    "      text with its lines joined by tabs, or \"error\", a tab and its message; with\n"
    "      --json the single call's JSON object. Blank lines and '#' lines are skipped.\n"
    "      Exit code: the number of failed queries (at most 125).\n";

constexpr int mostFailuresReported = 125;

// The lines of a text joined by tabs, without the last line break.
std::string oneLine(const std::string& text) {
    std::string result = text;
    while (!result.empty() && result.back() == '\n')
        result.pop_back();
    std::replace(result.begin(), result.end(), '\n', '\t');
    return result;
}

std::string answerOf(const std::vector<std::string>& words, bool json, int& code) {
    std::ostringstream out;
    std::ostringstream err;
    code = runCommandLine(words, out, err);
    if (json && !out.str().empty())
        return oneLine(out.str());
    if (code == 0)
        return oneLine(out.str());
    const std::string message = err.str().empty() ? out.str() : err.str();
    return "error\t" + oneLine(message);
}

std::string failureOf(const std::string& message, bool json) {
    if (!json)
        return "error\tquorvane-eval batch: " + message;
    std::ostringstream out;
    JsonWriter writer(out);
    writer.beginObject()
        .member("command", "batch")
        .member("error", message)
        .member("exit_code", 2)
        .endObject();
    return out.str();
}

int run(const std::vector<std::string>& args, CommandReply& reply) {
    std::string file = "-";
    bool fileGiven = false;
    for (const std::string& arg : args) {
        if (arg.size() > 1 && arg[0] == '-' && arg[1] == '-')
            return reply.fail(2, "unknown option '" + arg + "'", usageLine);
        if (fileGiven)
            return reply.fail(2, "one input only, got '" + arg + "' as well", usageLine);
        file = arg;
        fileGiven = true;
    }
    std::unique_ptr<std::ifstream> opened;
    if (file != "-") {
        opened = std::make_unique<std::ifstream>(file, std::ios::binary);
        if (!*opened)
            return reply.fail(2, "cannot open \"" + file + "\"");
    }
    std::istream& in = opened ? *opened : std::cin;
    std::ostream& out = reply.out();

    long failed = 0;
    long queries = 0;
    std::string line;
    for (long number = 1; std::getline(in, line); ++number) {
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos || line[first] == '#')
            continue;
        ++queries;
        std::string answer;
        int code = 0;
        try {
            std::vector<std::string> words = queryWords(line);
            const bool readsInput = words.front() == "hand" &&
                                    std::find(words.begin(), words.end(), "-") != words.end();
            if (words.front() == "batch" || readsInput) {
                code = 2;
                answer = failureOf("line " + std::to_string(number) + ": " +
                                       (readsInput ? "hand reads no standard input in a batch"
                                                   : "a batch runs no batch"),
                                   reply.json());
            } else {
                if (reply.json())
                    words.push_back("--json");
                answer = answerOf(words, reply.json(), code);
            }
        } catch (const std::invalid_argument& error) {
            code = 2;
            answer =
                failureOf("line " + std::to_string(number) + ": " + error.what(), reply.json());
        }
        failed += code != 0;
        // One answer per line as soon as it is known, for scripts that feed a query and wait.
        out << answer << "\n" << std::flush;
    }
    if (failed > 0)
        reply.err() << "quorvane-eval batch: " << failed << " of " << queries
                    << " queries failed\n";
    return static_cast<int>(std::min<long>(failed, mostFailuresReported));
}

const CommandRegistry::Entry entry{"batch", &run, usageLine, helpLines};

} // namespace
