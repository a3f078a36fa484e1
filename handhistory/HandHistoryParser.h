#pragma once

#include "handhistory/HandHistoryRecord.h"
#include "handhistory/ParseError.h"
#include "handhistory/PrematureEnd.h"

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class HandHistoryStream;

// Reads one hand history into a HandHistoryRecord. The constructor does all the work: it
// rewrites the text with `normalise` and then reads, in four stages, the seats, the blinds
// and posts, the hole cards and the streets. The first three stages are strict: what they
// do not find fails the whole hand with ParseError. The streets are forgiving: an action
// line that does not read is passed over, and a text that ends before "*** SUMMARY ***"
// stands as far as it was read.
//
// The text is a byte string in Windows-1252 (see HandHistoryText::toWindows1252 for text
// from files and the clipboard). The parser never asks anything and keeps no reference to
// the text.
class HandHistoryParser {
public:
    using ParseError = HandHistory::ParseError;
    using PrematureEnd = HandHistory::PrematureEnd;

    // Throws ParseError.
    explicit HandHistoryParser(std::string text);

    const HandHistoryRecord& record() const { return hand; }

    char currency() const { return hand.currency; }
    float smallBlind() const { return hand.smallBlind; }
    float bigBlind() const { return hand.bigBlind; }
    const std::vector<HandHistorySeat>& seats() const { return hand.seats; }
    const HandHistoryRecord::Stacks& stacksAtStart() const { return hand.stacksAtStart; }
    const HandHistoryRecord::Stacks& stacksPreflop() const { return hand.stacksPreflop; }
    const HandHistoryRecord::Stacks& stacksFlop() const { return hand.stacksFlop; }
    const HandHistoryRecord::Stacks& stacksTurn() const { return hand.stacksTurn; }
    const HandHistoryRecord::Stacks& stacksRiver() const { return hand.stacksRiver; }
    float potPreflop() const { return hand.potPreflop; }
    float potFlop() const { return hand.potFlop; }
    float potTurn() const { return hand.potTurn; }
    float potRiver() const { return hand.potRiver; }
    const std::string& hero() const { return hand.hero; }
    const std::string& holeCards() const { return hand.holeCards; }
    const std::string& flop() const { return hand.flop; }
    const std::string& turn() const { return hand.turn; }
    const std::string& river() const { return hand.river; }
    const std::string& board() const { return hand.board; }
    const std::vector<HandHistoryAction>& postActions() const { return hand.postActions; }
    const std::vector<HandHistoryAction>& flopActions() const { return hand.flopActions; }
    const std::vector<HandHistoryAction>& turnActions() const { return hand.turnActions; }
    const std::vector<HandHistoryAction>& riverActions() const { return hand.riverActions; }

private:
    void readSeats(HandHistoryStream& stream);
    void readSeatLine(HandHistoryStream& stream, bool addSeats, int& button);
    void readBlindsAndPosts(HandHistoryStream& stream);
    void readHoleCards(HandHistoryStream& stream);
    void readStreets(HandHistoryStream& stream);

    // Reads one action line (without its newline). Throws ParseError when an amount that
    // must stand there does not read.
    HandHistoryAction parseActionLine(std::string_view line) const;
    bool readAmount(HandHistoryStream& stream, float& amount, std::string_view line) const;
    static bool readPlainNumber(HandHistoryStream& stream, float& amount, std::string_view line);
    void checkCards() const;
    static void refuseTextWithoutAnyHand(const std::string& text);
    // The player in the next seat after `currentPlayer` who is still in; empty if none.
    std::string nextPlayerInTurn() const;

    HandHistoryRecord hand;

    // Street state: stacks of the players still in, and the last player who acted.
    HandHistoryRecord::Stacks stacks;
    std::string currentPlayer;
    // Turn order for "fold" lines: the distinct seat names in seat order, and the indices
    // of those still in, so that a long run of folds stays linear.
    std::vector<std::string> turnOrder;
    std::unordered_map<std::string, std::size_t> turnIndex;
    std::set<std::size_t> stillIn;
};
