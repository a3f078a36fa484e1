#pragma once

#include <string>
#include <vector>

// The words of one batch line, split as a shell splits a simple command: at blanks, with
// '...' and "..." keeping blanks inside one word (a backslash escapes '"' and '\' inside
// double quotes). Throws std::invalid_argument for a quote that is never closed.
std::vector<std::string> queryWords(const std::string& line);
