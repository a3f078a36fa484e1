#pragma once

// Display names of hand strength keys. The name table is a process-wide, read-only map built
// on first use (thread-safe, never changed afterwards), so every function here may be called
// from any thread.

#include "VelmaraEvaluatorBase.h"

#include <string>
#include <utility>
#include <vector>

// Strict order of the name table, most specific key first: more set bits of `positive`
// first, then the larger `positive`, then the larger `exclusive`. `displayName` and the bit
// count of `exclusive` take no part.
struct HandStrengthKeyTableOrder {
    bool operator()(const HandStrengthKey& a, const HandStrengthKey& b) const;
};

// The name of any key: its displayName if set; else the table's name for the two words; else
// "Other" for a key with an `exclusive` word; else the names of the single bits of
// `positive` from bit 0 upward, joined by " + " ("Unknown" for a bit without a row). The
// default key yields an empty text.
std::string handStrengthName(const HandStrengthKey& key);

// The table's name of the two words, or an empty text if the table has no row for them.
std::string tableName(const HandStrengthKey& key);

// For each set bit of `word`, from the highest to the lowest: the key with just this bit in
// `positive` (and `exclusive` zero) with its table name (empty for a bit without a row).
std::vector<std::pair<HandStrengthKey, std::string>> splitIntoNames(const unsigned long long& word);

// All rows of the name table in the table's order (HandStrengthKeyTableOrder).
std::vector<std::pair<HandStrengthKey, std::string>> nameTableRows();
