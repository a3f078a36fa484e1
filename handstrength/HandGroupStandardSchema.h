#pragma once

#include "handstrength/HandGroupSchemaData.h"

// The built-in schema "Standard". It is built here in code, exists in every schema pool and
// is never written to the settings, so it cannot be changed.
namespace HandGroupStandardSchema {

// "Standard".
extern const char* const name;

// The schema with its four groups "Custom Sum", "Made Hands", "Draws (excluding made hands)"
// and "Combodraws"; counts and shares all zero, roots visible, children hidden.
const HandGroupSchemaData& data();

} // namespace HandGroupStandardSchema
