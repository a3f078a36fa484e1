#pragma once

#include "evfe/Line.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Range {
class HandRange;
} // namespace Range

// A line as a file spells it: its texts by field name, before anything is converted. Both
// file forms (the XML elements of LineFile and the legacy text of LegacyLineReader) gather
// these records, and one builder turns a record into a Line, so that the two forms read
// numbers, codes and ranges the same way and skip the same faults.
struct LineRecord {
    using Fields = std::map<std::string, std::string>;

    struct Action {
        std::optional<std::string> code; // the action's text code ("c", "rsf", ...)
        Fields fields;
    };

    struct Variant {
        std::optional<std::string> name;
        Fields fields;
        std::vector<Action> actions;
    };

    std::optional<std::string> name;
    Fields fields;
    std::vector<Variant> variants;

    // The children of a variant before its actions, in file order.
    static const std::vector<std::string>& variantFields();
    // The children of an action, in file order.
    static const std::vector<std::string>& actionFields();

    // The line, with group 0 of each variant's sets made from the full ranges; nothing when
    // the line has to be skipped. Every fault is added to `problems` (and written to standard
    // error) as LineFile::report does.
    std::optional<Line> build(const Range::HandRange& player1, const Range::HandRange& player2,
                              std::vector<std::string>& problems) const;
};
