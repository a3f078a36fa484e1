#pragma once

#include <list>
#include <optional>
#include <string>

#include "evfe/Line.h"

enum class Street : int;

// The lines of an analysis: one list for all streets, each street's lines kept in display
// order ("Check/..." first, then "Bet/...", "Raise/...", "3-Bet/..." and up; within a prefix
// "/Fold", "/Call", "/Ship").
using LineList = std::list<Line>;

// Whether line name `a` is shown before `b`. Compares the first characters: lettered names
// before the others, "C" first among letters, otherwise the lower character first; only on
// equal first characters the parts behind "/" decide, "F" before anything and "C" before
// "S". Names that none of these order compare as equivalent.
bool lineNameSortsBefore(const std::string& a, const std::string& b);

// Inserts `line` directly before the first line of its street that sorts after it, or at the
// end. Returns the inserted line.
Line& insertLine(LineList& lines, Line line);

// The first line with this name on this street, or nullptr.
Line* findLine(LineList& lines, const std::string& name, int street);

// The kind that a new line's name selects: "Check/" with "Fold", "Call", "Raise" and "Bet/"
// with "Fold", "Call", "Ship". Other prefixes have no entry.
std::optional<LineKind> lineKindForName(const std::string& name);

// Adds a variant "Main Variant" of the named line with first actor `forPlayer`: to the line
// of this name and street if there is one, otherwise to a new line inserted in display
// order whose `actionSequence` comes from its name or, without an entry, from the variant.
// Returns the line that holds the new variant, which is its last one.
Line& addLine(LineList& lines, const std::string& name, Street street,
              const std::string& forPlayer);
