#pragma once

#include "handstrength/HandGroupRow.h"

#include <VelmaraEvaluatorBase.h>

#include <cstddef>
#include <string>
#include <vector>

struct HandGroupRowRequest;

// A named group of a hand group schema: a flat list of rows that form a tree through their
// parent indices, and the evaluator record of the last evaluation.
//
// Keys are compared by their two words only (displayName plays no part). Rows read from the
// settings may carry broken parent links (out of range, pointing at themselves, cycles);
// every walk here treats such a row as a root and terminates.
struct HandGroup {
    // "No such row" for the index lookups.
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    std::vector<HandGroupRow> rows;
    // `total` and one detail record for each distinct key of `rows`, in row order, after an
    // evaluation; the hand lists behind the rows live here.
    DetailHandEvaluations evaluations;
    std::string name;

    // A request whose parent key is the default key adds a visible root row. Otherwise the
    // first row equal to the parent key becomes the parent and the new row starts hidden.
    // Throws std::string "Group does not contain parental hand." when no row equals the
    // parent key.
    void addRow(const HandGroupRowRequest& request);

    // Removes the rows whose parent is the row with this key (the first row equal to it),
    // together with everything below them, and renumbers the parent links of the rows
    // behind them. Throws std::string "Parent hand strength detail not found." when no row
    // equals the key.
    void removeChildren(const HandStrengthKey& key);

    // Number of steps from the row at `index` to a root; 0 for a root.
    unsigned int depth(std::size_t index) const;

    // Writes both counts into every row equal to `key`.
    void setCombinations(const HandStrengthKey& key, std::uint32_t combinations1,
                         std::uint32_t combinations2);

    // Index of the first row equal to `key`, or npos.
    std::size_t indexOf(const HandStrengthKey& key) const;
    bool contains(const HandStrengthKey& key) const { return indexOf(key) != npos; }

    // The parent index of a row, or HandGroupRow::noParent for a root or a broken link.
    std::uint32_t parentOf(std::size_t index) const;
    // Indices of the direct children of the row at `index`, in row order.
    std::vector<std::size_t> childrenOf(std::size_t index) const;
    // Indices of all rows below the row at `index`, depth first, each once.
    std::vector<std::size_t> descendantsOf(std::size_t index) const;

    // Rebuilds `evaluations` as the empty input of an evaluation: total 0 and one cleared
    // detail record (key and display name, counts 0, no hands, shares quiet NaN) for each
    // distinct key of the rows, in row order.
    void resetEvaluations();

    // The detail record equal to `key`, or null.
    const DetailHandEvaluation* detailOf(const HandStrengthKey& key) const;
    DetailHandEvaluation* detailOf(const HandStrengthKey& key);
};
