#pragma once

#include "handhistory/HandHistoryAction.h"
#include "handhistory/HandHistorySeat.h"

#include <map>
#include <string>
#include <vector>

// Everything one hand history says that the import needs. Amounts are in the hand's
// currency (cash games) or chips (tournaments); the byte `currency` is the sign in front of
// the stacks in Windows-1252 ('$', 0x80 for the euro, 0xA3 for the pound), 0 when the
// stacks are plain numbers.
struct HandHistoryRecord {
    using Stacks = std::map<std::string, float>;

    char currency = 0;
    float smallBlind = 0.0f;
    float bigBlind = 0.0f;
    // Sorted by seat number.
    std::vector<HandHistorySeat> seats;

    // From the seat lines, before any post.
    Stacks stacksAtStart;
    // Stacks at the start of each street. Preflop starts before the posts (the same values
    // as `stacksAtStart`); the later streets hold only the players who have not folded.
    Stacks stacksPreflop;
    Stacks stacksFlop;
    Stacks stacksTurn;
    Stacks stacksRiver;
    // Pot at the start of each street; `potPreflop` is the sum of the posts.
    float potPreflop = 0.0f;
    float potFlop = 0.0f;
    float potTurn = 0.0f;
    float potRiver = 0.0f;

    // The player of the "Dealt to" line; empty when the text has none.
    std::string hero;
    // Two cards, four characters, the higher rank first (of a pair, the suit later in the
    // order c, s, h, d first). Empty when there is no hero.
    std::string holeCards;
    // Board cards as written in the street's marker line, without blanks, commas and
    // brackets ("5c7c7d"); `board` joins those of the streets that had 3, 1 and 1 cards.
    std::string flop;
    std::string turn;
    std::string river;
    std::string board;

    // Blinds and antes, then the preflop actions.
    std::vector<HandHistoryAction> postActions;
    std::vector<HandHistoryAction> flopActions;
    std::vector<HandHistoryAction> turnActions;
    std::vector<HandHistoryAction> riverActions;
};
