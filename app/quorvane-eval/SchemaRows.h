#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The rows of a hand group schema after a one-player hit evaluation, as the Board Hits tab
// shows them: for each group its rows in tree order, each with its depth below the group,
// its combinations and its share (of the parent row, or of all combinations when the
// percentages are absolute) with the tab's percentage text.
struct SchemaRows {
    struct Row {
        unsigned int depth = 0;
        std::string name;
        std::uint32_t combinations = 0;
        float share = 0.0f;      // 0 to 1, as the schema computes it in single precision
        std::string percentText; // "65.22 %", as the tab writes the share
    };
    struct Group {
        std::string name;
        bool customSum = false; // the tab shows no title above the custom sum
        std::vector<Row> rows;
    };

    std::string schema;
    // The program's option "Hide Empty Lines in Evaluation Tabs", as the tab reads it.
    bool hidesEmptyRows = true;
    std::uint64_t combinations = 0; // of the range, on the board, without the dead cards
    std::vector<Group> groups;
};
