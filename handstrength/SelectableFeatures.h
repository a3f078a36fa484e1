#pragma once

// Which feature bits a user may still add to a key in the hand strength dialog.

#include "VelmaraEvaluatorBase.h"

#include <vector>

// One row of the enabling or disabling table: it fires when `trigger` equals one single set
// bit of the key's `positive` word. Triggers of two bits never fire; such rows are kept.
struct SelectableFeatureRow {
    unsigned long long trigger;
    unsigned long long mask;
};

// The features that may still be added to `key`: baseSelectableMask, widened by the enabling
// rows and narrowed by the disabling rows that the set bits of `key.positive` trigger, less
// every bit already in `positive` or `exclusive`.
unsigned long long selectableFeatures(const HandStrengthKey& key);

// The two tables, in their order (21 enabling rows, 45 disabling rows).
const std::vector<SelectableFeatureRow>& enablingFeatureRows();
const std::vector<SelectableFeatureRow>& disablingFeatureRows();
