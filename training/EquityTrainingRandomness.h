#pragma once

// Which board cards a training deals anew for every item: none (the board is given), the
// flop, everything up to the turn, or everything up to the river. Cards given on the start
// page stay; only the missing ones are dealt. The numbers are those of the start page's
// radio buttons from top to bottom.
enum class EquityTrainingRandomness : int { None = 0, Flop = 1, Turn = 2, River = 3 };
