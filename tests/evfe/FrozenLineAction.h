#pragma once

#include "evfe/LineAction.h"

// LineAction with its EV arithmetic frozen as it stood when calculateEV was still one switch
// over the action codes, before it became one function per code. The body is kept verbatim,
// so that the current calculateEV can be compared with it bit for bit; never edit it.
struct FrozenLineAction : LineAction {
    FrozenLineAction() = default;
    explicit FrozenLineAction(const LineAction& action) : LineAction(action) {}

    // The previous calculateEV, unchanged: sets EV_P1, EV_P2 and explanation.
    void previousCalculateEV();
};
