#include "Range/GroupColor.h"

#include <algorithm>
#include <stdexcept>

namespace Range {
namespace {

GroupColor colorPair(int r1, int g1, int b1, int r2, int g2, int b2) {
    GroupColor color;
    color.colorFrom = {r1, g1, b1};
    color.colorTo = {r2, g2, b2};
    color.usesColor = true;
    return color;
}

bool inUse(const GroupColor& candidate, const std::vector<GroupColor>& familyColors) {
    return std::any_of(familyColors.begin(), familyColors.end(),
                       [&](const GroupColor& used) { return used.usesColor && used == candidate; });
}

} // namespace

const std::array<GroupColor, 16>& GroupColor::standardColors() {
    static const std::array<GroupColor, 16> table = {
        colorPair(252, 112, 91, 232, 112, 101),  colorPair(111, 232, 122, 91, 202, 101),
        colorPair(151, 162, 242, 111, 122, 222), colorPair(242, 242, 111, 202, 202, 91),
        colorPair(242, 192, 62, 212, 162, 42),   colorPair(242, 91, 242, 222, 91, 221),
        colorPair(111, 242, 242, 101, 222, 222), colorPair(192, 62, 41, 172, 42, 31),
        colorPair(51, 172, 62, 41, 152, 51),     colorPair(255, 62, 164, 235, 42, 144),
        colorPair(202, 122, 42, 182, 102, 32),   colorPair(242, 242, 255, 212, 212, 255),
        colorPair(255, 192, 192, 255, 172, 172), colorPair(172, 255, 192, 152, 235, 172),
        colorPair(255, 255, 255, 255, 255, 192), colorPair(255, 22, 22, 255, 255, 42)};
    return table;
}

std::vector<GroupColor> GroupColor::freeColors(const std::vector<GroupColor>& familyColors) {
    std::vector<GroupColor> free;
    for (const GroupColor& color : standardColors())
        if (!inUse(color, familyColors))
            free.push_back(color);
    return free;
}

GroupColor GroupColor::firstFreeColor(const std::vector<GroupColor>& familyColors) {
    for (const GroupColor& color : standardColors())
        if (!inUse(color, familyColors))
            return color;
    throw std::logic_error("All colors in use.");
}

} // namespace Range
