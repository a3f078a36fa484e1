#pragma once

#include <string>

// Range text typed on the command line, read as the program's range lines read it (free
// text: any case, blanks, '+' and '-' runs, "AhXx" wildcards), but strict: a token that the
// program would silently drop is an error here, so that scripts never compute with a range
// other than the one they meant.

// Normal text of `text`. Throws std::invalid_argument naming the first unreadable token.
std::string normalRangeOfFreeText(const std::string& text);

// Card text typed on the command line (--board, --dead) in canonical spelling: any case, and
// blanks, commas or semicolons between the cards ("ah kd, 2c" gives "AhKd2c"). Throws
// std::invalid_argument naming what is no card ("Unknown card \"Zz\" in the board: a card is a
// rank and a suit, like Ah.") or a card given twice.
std::string boardOfArgument(const std::string& text);
std::string deadCardsOfArgument(const std::string& text);

// Technical text (comma-separated 2-, 3- and 4-character tokens) of the range that `text`
// describes, as the evaluator takes it. Throws like normalRangeOfFreeText.
std::string technicalRangeOfFreeText(const std::string& text);
