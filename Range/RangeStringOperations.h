#pragma once

#include <string>
#include <utility>

// Pure text work on range text: a list of tokens separated by `,`.
//
// Forms of a text:
//   free      anything a user typed;
//   normal    only valid tokens in canonical spelling, sorted (normalize);
//   technical only tokens of 2, 3 or 4 characters without `+`, `-`, `X`, `x` (expand); this
//             is what the evaluator gets;
//   compact   the shortest spelling with `+` and `-` (compact); files and users see it.
// No function here keeps state.

namespace Range {

// Repairs free text in place into normal text. Never throws: white space goes first, then
// every token that cannot be repaired is dropped. When no token needed a repair the text
// stays as it was (sorted or not); otherwise it is rebuilt from the sorted tokens.
void normalize(std::string& text);

// Normal text to technical text: every `+`, `-` and wildcard token is spelled out, its hands
// following the tokens that needed no expansion. Text holding "Group" asserts
// "str is corrupted with a group.". Spans given high end first throw std::runtime_error
// "Invalid value description." (normalize rules them out).
std::string expand(const std::string& normalText);

// Technical text (any order) to compact text. Throws std::runtime_error
// "String has to be sorted to be processed." only for an order its own sort cannot give.
std::string compact(const std::string& technicalText);

// Number of combinations of technical text and its share of 1326. Tokens of an unknown
// shape assert "false" and count nothing.
std::pair<unsigned int, float> countCombinations(const std::string& technicalText);

// Whether any two-character suit pair of `first` ("dhsc") occurs among those of `second`.
bool sharesSuitPair(const std::string& first, const std::string& second);

} // namespace Range
