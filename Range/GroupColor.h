#pragma once

#include <array>
#include <vector>

namespace Range {

// The colour of a group: a gradient from `colorFrom` to `colorTo`, shown only when
// `usesColor`. Channels are 0..255.
struct GroupColor {
    struct Rgb {
        int red = 0;
        int green = 0;
        int blue = 0;
        bool operator==(const Rgb& other) const {
            return red == other.red && green == other.green && blue == other.blue;
        }
    };

    Rgb colorFrom;
    Rgb colorTo;
    bool usesColor = false;

    // All six channels and the flag.
    bool operator==(const GroupColor& other) const {
        return colorFrom == other.colorFrom && colorTo == other.colorTo &&
               usesColor == other.usesColor;
    }
    bool operator!=(const GroupColor& other) const { return !(*this == other); }

    // The 16 standard colours for new groups, in the order they are handed out.
    static const std::array<GroupColor, 16>& standardColors();

    // Standard colours not in use, in table order. `familyColors` are the records of the
    // nodes of one connected family of groups (the tree decides the family); a record
    // without `usesColor` marks nothing.
    static std::vector<GroupColor> freeColors(const std::vector<GroupColor>& familyColors);
    // The first standard colour not in use; std::logic_error "All colors in use." when
    // all 16 are taken.
    static GroupColor firstFreeColor(const std::vector<GroupColor>& familyColors);
};

} // namespace Range
