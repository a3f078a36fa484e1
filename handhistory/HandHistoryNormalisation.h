#pragma once

#include <string>

struct HandHistoryRecord;

// Rewrites a hand history of any known dialect in place into the canonical one that
// HandHistoryParser reads: seat lines "Seat N: name (stack)", action lines
// "name: verb amount", the markers of HandHistoryMarkers, cards as two characters (rank,
// then suit) in square brackets.
//
// `text` is a byte string in Windows-1252 (the currency signs are the bytes '$', 0xA3 and
// 0x80). Thirteen fixed steps run once, in order; a step that does not find its dialect's
// marker leaves the text alone, and no site is ever named or decided. Two steps also write
// to `hand`: the blinds of the head line ("$0.50/$1") go to `smallBlind`/`bigBlind`, and
// seat lines made from position lines ("BB: $100") go to `seats`.
//
// Throws HandHistory::ParseError when the text has neither seat lines nor position
// lines nor the marker "Game#", and so cannot be a hand history of any dialect.
void normalise(std::string& text, HandHistoryRecord& hand);
