#pragma once

#include "evfe/LineList.h"

#include <optional>
#include <string>
#include <vector>

namespace Range {
class HandRange;
} // namespace Range
namespace rapidxml {
template <class Ch>
class xml_document;
template <class Ch>
class xml_node;
} // namespace rapidxml

// The EV/FE lines of a scenario as elements of an analysis file: `EV_FE_Lines` holding one
// `Line` per line in list order.
//
//   <Line name="Bet/Ship">
//     <forStreet>Flop</forStreet> <actionSequence>bs</actionSequence>
//     <LineVariants> <LineVariant name="Main Variant"> ... </LineVariant> </LineVariants>
//   </Line>
//
// A `LineVariant` holds, in this order, deadmoney, player1sEffectiveStackSize,
// player1sLastInvestment, player2sEffectiveStackSize, player2sLastInvestment, EV_P1, EV_P2,
// FE_P1, FE_P2, actionSequence, forPlayer and LineActions; a `LineAction` has the attribute
// `action` (its text code) and the children equityP1, equityP2, EV_P1, EV_P2, deadmoney,
// rangeCombinations, rangePercentage, size, firstToAct, needsOwnSize, parentRangePercentage,
// player1FirstToAct, the two stacks and two last investments before the action,
// previousMoney, range (compact range text), addition and verb. Numbers are written by the
// library's lexical conversion (see NumberText); rake and cap are the page's, not stored.
//
// Reading builds group 0 of a variant's two range group sets from the scenario's full ranges
// (the first actor's in the first set) and each action's group below it, holding exactly
// the range the file names. A file is read as far as it can be: what cannot be read is
// skipped and named in `problems`, and each problem is also written to standard error, so
// that a damaged or foreign file never ends the program:
//   - a missing child keeps the field's default; a child that is no number keeps it too;
//   - a variant with an unknown action code, an unknown first actor, or actions that make no
//     line's tree is skipped;
//   - a line without a name, with an unknown street, or without any readable variant is
//     skipped.
// Elements are found by name, so their order does not matter to the reader. The parser takes
// an element that holds only white space as empty, so an `addition` or `verb` of blanks only
// comes back empty.
namespace LineFile {

using Problems = std::vector<std::string>;

// Appends one `Line` element below `parent`; its texts are allocated in `document`.
void appendLine(rapidxml::xml_document<char>& document, rapidxml::xml_node<char>& parent,
                const Line& line);
// Appends a `Line` element per line, in list order, below `parent` (the `EV_FE_Lines`
// element of a scenario).
void appendLines(rapidxml::xml_document<char>& document, rapidxml::xml_node<char>& parent,
                 const LineList& lines);

// The `Line` element printed alone, with the printer's default flags (indented with tabs).
std::string lineText(const Line& line);
// An `EV_FE_Lines` element holding the lines, printed the same way.
std::string linesText(const LineList& lines);

// The line of a `Line` element; nothing when it had to be skipped.
std::optional<Line> readLine(const rapidxml::xml_node<char>& element,
                             const Range::HandRange& player1, const Range::HandRange& player2,
                             Problems& problems);
// Every child named `Line` of an `EV_FE_Lines` element that could be read, in file order.
LineList readLines(const rapidxml::xml_node<char>& linesElement, const Range::HandRange& player1,
                   const Range::HandRange& player2, Problems& problems);

// The same from text: the first element of `text` is the `Line` (or the `EV_FE_Lines`)
// element. Text that is no XML is a problem, and gives nothing.
std::optional<Line> readLineText(const std::string& text, const Range::HandRange& player1,
                                 const Range::HandRange& player2, Problems& problems);
LineList readLinesText(const std::string& text, const Range::HandRange& player1,
                       const Range::HandRange& player2, Problems& problems);

// Adds `problem` to `problems` and writes it to standard error.
void report(Problems& problems, const std::string& problem);

} // namespace LineFile
