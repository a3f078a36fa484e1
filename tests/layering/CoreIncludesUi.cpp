// Deliberately wrong: a file of the core layer that includes a window. Compiled by the test
// "layering_core_cannot_see_ui" with the core layer's include directory only; the compiler
// must not find the header.
#include "app/Quorvane.h"
