#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Numbers as the EV/FE elements of an analysis file hold them: the library's lexical
// conversion (nine significant digits for a float, seventeen for a double, "nan", "inf" and
// "-inf" for the values that are no number), and back.
//
// Reading is forgiving only where a hand-edited file would differ from a written one: white
// space around the number is ignored, and "infinity", "INFINITY", "nan", "NAN" are read in any
// mix of cases. Anything else that is not a number is no value.
namespace NumberText {

std::string of(float value);
std::string of(double value);
std::string of(std::uint32_t value);
std::string of(int value);
// "1" or "0".
std::string of(bool value);

std::optional<float> toFloat(const std::string& text);
std::optional<double> toDouble(const std::string& text);
// Decimal digits only (no sign): a negative count is no count.
std::optional<std::uint32_t> toUnsigned(const std::string& text);
std::optional<int> toInt(const std::string& text);
// "1" and "0"; "true" and "false" in any case.
std::optional<bool> toBool(const std::string& text);

} // namespace NumberText
