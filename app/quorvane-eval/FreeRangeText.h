#pragma once

#include <string>

// Range text typed on the command line, read as the program's range lines read it (free
// text: any case, blanks, '+' and '-' runs, "AhXx" wildcards), but strict: a token that the
// program would silently drop is an error here, so that scripts never compute with a range
// other than the one they meant.

// Normal text of `text`. Throws std::invalid_argument naming the first unreadable token.
std::string normalRangeOfFreeText(const std::string& text);

// Technical text (comma-separated 2-, 3- and 4-character tokens) of the range that `text`
// describes, as the evaluator takes it. Throws like normalRangeOfFreeText.
std::string technicalRangeOfFreeText(const std::string& text);
