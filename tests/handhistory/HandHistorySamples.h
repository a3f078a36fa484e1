#pragma once

#include <string>
#include <vector>

class HandHistoryParser;

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
