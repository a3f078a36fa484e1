#pragma once

#include <string>
#include <vector>

class HandHistoryParser;
struct HandHistoryAction;

// The public hand histories of the shared folder (handhistories/*.txt, one or many hands
// per file, blank lines between hands), split into hands.
struct SampleHand {
    std::string file; // file name without folder
    int index = 0;    // 0-based position of the hand in its file
    std::string text; // UTF-8 as stored, byte order mark included
};

// Every hand of every file, files in name order. Fails the calling test (ADD_FAILURE) when
// the folder cannot be read, and returns nothing then.
std::vector<SampleHand> loadSampleHands();

// The hands of one file.
std::vector<SampleHand> sampleHandsOf(const std::string& file);

// Converts like the import does (UTF-8 to Windows-1252) and parses; throws what the parser
// throws.
HandHistoryParser parseSample(const std::string& utf8Text);

// "player verb[ blind][ amount]" per action, one a line, amounts with two decimals: a record's
// actions as a text to compare with what the test reads in the file.
std::string actionsText(const std::vector<HandHistoryAction>& actions);

// `text` with every `from` replaced by `to`.
std::string replacedAll(std::string text, const std::string& from, const std::string& to);
