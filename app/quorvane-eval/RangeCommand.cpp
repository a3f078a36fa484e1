// quorvane-eval range TEXT: the spellings of a free range text, for scripts.
//
// Output, one per line: the normal text, the technical text of the resulting range, its
// compact text, and its number of combinations. A token that cannot be read is an error
// (exit code 1), not silently dropped as in the range lines of the program.

#include "CommandRegistry.h"
#include "FreeRangeText.h"

#include "Range/HandRange.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeStringOperations.h"

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const char* const usage = "range TEXT  (prints normal, technical and compact text and the "
                          "number of combinations)";

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        err << "usage: quorvane-eval " << usage << "\n";
        return 2;
    }
    std::string text;
    for (const std::string& arg : args)
        text += (text.empty() ? "" : ",") + arg;

    std::string normal;
    try {
        normal = normalRangeOfFreeText(text);
    } catch (const std::invalid_argument& error) {
        err << "quorvane-eval range: " << error.what() << "\n";
        return 1;
    }
    Range::HandRange range;
    Range::HandRangeStringManipulator manipulator(range);
    manipulator.setNormal(normal, true);
    out << normal << "\n"
        << manipulator.technicalText() << "\n"
        << manipulator.compactText() << "\n"
        << range.combinationCount() << "\n";
    return 0;
}

CommandRegistry::Entry entry{"range", &run, usage};

} // namespace
