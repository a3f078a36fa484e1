#pragma once

#include "handhistory/HandHistoryRecord.h"

#include <string>
#include <vector>

// Every hand of a pasted text, each read or refused: what the import lists when a paste
// holds more than one hand. The text is decoded first (HandHistoryText::decode), so it may
// come in any encoding a clipboard or file brings.
class HandHistoryPaste {
public:
    struct Hand {
        // Windows-1252, as the parser reads it.
        std::string text;
        int firstLine = 0;
        int lastLine = 0;
        bool read = false;
        // Why the hand was not read; empty when it was.
        std::string reason;
        HandHistoryRecord record;
        // The site's number of the hand ("13550276397"), empty when the head shows none.
        std::string number;
    };

    explicit HandHistoryPaste(const std::string& bytes);

    const std::vector<Hand>& hands() const { return all; }
    // The indices of the hands that were read, in paste order.
    std::vector<std::size_t> readHands() const;

    // "$0.5/$1", "10/20": the blinds with the hand's currency sign (Windows-1252).
    static std::string stakesOf(const HandHistoryRecord& record);

private:
    std::vector<Hand> all;
};
