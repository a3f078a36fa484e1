#pragma once

#include <cstddef>
#include <string>

// The betting round a line belongs to. The numbers are stored in files and in `Line::street`.
enum class Street : int { Preflop = 0, Flop = 1, Turn = 2, River = 3 };

// "Preflop", "Flop", "Turn", "River" to the street. Anything else throws std::runtime_error
// "Unknown Street: " followed by the text.
Street streetFromText(const std::string& text);

// The number 0 to 3 to its text. Any other number throws std::runtime_error
// "Unknown Street " followed by the number.
std::string streetToText(int street);
std::string streetToText(Street street);

// Whether a board given as text (two characters a card) is long enough for `street`:
// the flop needs 6 characters, the turn 8, the river 10; preflop is always available.
bool isStreetAvailable(Street street, std::size_t boardTextLength);

// The street to show after the board changed: `selected` itself while the board still
// carries it, otherwise the next lower street that it does carry, down to preflop.
Street streetAfterBoardChange(Street selected, std::size_t boardTextLength);
