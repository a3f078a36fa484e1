#pragma once

#include "Range/HandRange.h"

#include <vector>

// The ranking of the 169 hand classes that the percent slider of the hand selection dialog
// walks, best first ("AA,KK,QQ,...,32o"), and the range that a percent takes from its front.
// The lists are built once per process, on first use.
class HandPercentOrder {
public:
    // Each class with all its suit combinations.
    static const std::vector<Range::Element>& classes();
    // Each class's number of combinations: 6 a pair, 4 suited, 12 offsuit.
    static const std::vector<unsigned int>& counts();
    // The first classes whose combinations reach `percent` (cut to a whole number) of 1326:
    // the last one taken overshoots; 0 takes no class, 100 all.
    static Range::HandRange rangeFor(double percent);
};
