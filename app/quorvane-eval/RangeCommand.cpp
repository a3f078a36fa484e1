// quorvane-eval range TEXT: the spellings of a free range text, for scripts.
//
// Output, one per line: the normal text, the technical text of the resulting range, its
// compact text, and its number of combinations. A token that cannot be read is an error
// (exit code 1), not silently dropped as in the range lines of the program.

#include "CommandRegistry.h"
#include "CommandReply.h"
#include "FreeRangeText.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeStringOperations.h"

#include <chrono>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const char* const usage = "range TEXT...";
const char* const helpLines =
    "      The spellings of a range text as the program's range lines read it (any case,\n"
    "      blanks, '+' and '-' runs, wildcards): its normal, technical and compact text and\n"
    "      its number of combinations. Several arguments are one text, joined by commas.\n";

int run(const std::vector<std::string>& args, CommandReply& reply) {
    if (args.empty())
        return reply.fail(2, std::string(), usage);
    const auto started = std::chrono::steady_clock::now();
    std::string text;
    for (const std::string& arg : args)
        text += (text.empty() ? "" : ",") + arg;

    std::string normal;
    try {
        normal = normalRangeOfFreeText(text);
    } catch (const std::invalid_argument& error) {
        return reply.fail(1, error.what());
    }
    Range::HandRange range;
    Range::HandRangeStringManipulator manipulator(range);
    manipulator.setNormal(normal, true);
    const std::string technical = manipulator.technicalText();
    const std::string compact = manipulator.compactText();
    const auto combinations = range.combinationCount();
    if (reply.json()) {
        const double milliseconds =
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started)
                .count();
        reply.object()
            .member("text", text)
            .member("normal", normal)
            .member("technical", technical)
            .member("compact", compact)
            .member("combinations", std::uint64_t(combinations))
            .key("time_ms")
            .fixed(milliseconds, 3);
        return 0;
    }
    reply.out() << normal << "\n" << technical << "\n" << compact << "\n" << combinations << "\n";
    return 0;
}

CommandRegistry::Entry entry{"range", &run, usage, helpLines};

} // namespace
