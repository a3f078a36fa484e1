#pragma once

#include <optional>
#include <string>
#include <vector>

// What the EV/FE page shows, as the analysis file and the undo list keep it: the element
// `EV_FE_Tab` with the children rakePercentage, rakeCap, selectedStreet ("Preflop" to
// "River"), selectedPlayer (index of the first actor box), selectedLine and selectedVariant
// (indices of the line and variant boxes), in this order, each holding its value as text.
//
// An index of -1 stands for a box left alone; reading gives -1 for an index that is missing,
// and a missing rake, cap or street is no value. What cannot be read (text that is no XML, a
// child that is no number, an unknown street) is named in `problems` and on standard error,
// and counts as missing.
struct EV_FE_TabState {
    std::optional<double> rakePercentage;
    std::optional<double> rakeCap;
    std::optional<int> selectedStreet; // 0 preflop to 3 river, see Street
    int selectedPlayer = -1;
    int selectedLine = -1;
    int selectedVariant = -1;

    // The element printed with the printer's default flags (indented with tabs). Values that
    // are not there are left out.
    std::string toText() const;
    static EV_FE_TabState fromText(const std::string& text, std::vector<std::string>& problems);

    bool operator==(const EV_FE_TabState& other) const;
    bool operator!=(const EV_FE_TabState& other) const { return !(*this == other); }
};
