#pragma once

#include "evfe/Line.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace Range {
class HandRange;
} // namespace Range

// Reads one line in the text form of analysis files written before the XML file: each field
// on a line of its own (a carriage return before the line feed is dropped), in this order:
//
//   line name
//   street ("Preflop", "Flop", "Turn", "River")
//   action sequence ("xf", "xc", "xr", "bf", "bc", "bs")
//   number of variants
//   for each variant:
//     variant name
//     first actor ("Player1", "Player2")
//     deadmoney, player1sEffectiveStackSize, player1sLastInvestment,
//     player2sEffectiveStackSize, player2sLastInvestment, EV_P1, EV_P2, FE_P1, FE_P2
//     action sequence of the variant
//     number of actions
//     for each action:
//       text code of the action ("x", "b", "c", ..., also the old "xbr" and "rs")
//       equityP1, equityP2, EV_P1, EV_P2, deadmoney, rangeCombinations, rangePercentage,
//       size, firstToAct, needsOwnSize, parentRangePercentage, player1FirstToAct,
//       player1sEffectiveStackSizeBeforeAction, player1sLastInvestmentBeforeAction,
//       player2sEffectiveStackSizeBeforeAction, player2sLastInvestmentBeforeAction,
//       previousMoney
//       range (range text)
//       addition
//       verb
//
// that is the fields of the XML form in the same order, numbers in the same lexical form.
// The form is only read; nothing writes it any more.
//
// What is read is built as the XML reader builds it (LineRecord): group 0 of each variant
// from the scenario's full ranges, the same defaults for fields that are no number, the same
// variants and lines skipped, each problem in `problems` and on standard error. A count that
// is no number, or a stream that ends before the line does, loses the whole line: the stream
// is then left failed, since nothing after it can be found again.
namespace LegacyLineReader {

std::optional<Line> read(std::istream& stream, const Range::HandRange& player1,
                         const Range::HandRange& player2, std::vector<std::string>& problems);

} // namespace LegacyLineReader
