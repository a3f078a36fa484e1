#pragma once

#include <QString>

#include <string>
#include <vector>

// The tokens of a free range text that the range grammar cannot read and so drops, for
// telling the user what vanished from a range line ("not understood: AKx").
//
// Tokens are what lies between commas once white space is gone, as the grammar reads them;
// empty tokens (",,", a trailing comma) are no mistake. Linear in the text's length: each
// distinct token is judged once.
class UnreadRangeTokens {
public:
    // In the order of the text, each as often as it stands there.
    static std::vector<std::string> of(const std::string& freeText);
    // "not understood: AKx, Qz", naming at most `named` tokens and counting the rest
    // ("not understood: A1, A2, ... and 20 more"); empty when every token was read.
    static QString note(const std::string& freeText, std::size_t named = 10);
};
