#pragma once

#include <map>
#include <string>

// The value types between the equity table tab, its matrix and its table.
//
// Keys of both maps are hand classes as three characters: the two rank characters and a
// marker, "P" pair, "S" suited, "O" offsuit. A pair and an offsuit class have the higher
// rank first ("AAP", "AKO"); a suited class has it second ("KAS"), so that on the 13 x 13
// matrix (column from the first character, row from the second) the suited classes lie
// above the diagonal and the offsuit ones below it.

// Summed counters of all hands of one class that passed the filters.
struct AggregatedHand {
    unsigned long long wins = 0;
    unsigned long long ties = 0;
    unsigned long long total = 0; // unit of the evaluator: one matchup on one board
    int hands = 0;                // records summed (concrete hands, or classes)
    int combinations = 0;         // combinations shown for the class
};
using AggregatedHands = std::map<std::string, AggregatedHand>;

// What a matrix cell shows for a class.
struct DisplayedHand {
    float equity = 0.0f; // fraction between 0 and 1
    int combinations = 0;
};
using DisplayedHands = std::map<std::string, DisplayedHand>;
