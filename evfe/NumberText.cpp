#include "evfe/NumberText.h"

#include <boost/lexical_cast.hpp>

#include <algorithm>
#include <cctype>

namespace NumberText {
namespace {

std::string trimmed(const std::string& text) {
    const auto isBlank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isBlank).base();
    return first < last ? std::string(first, last) : std::string();
}

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return text;
}

template <typename Number>
std::optional<Number> converted(const std::string& text) {
    try {
        return boost::lexical_cast<Number>(text);
    } catch (const boost::bad_lexical_cast&) {
        return std::nullopt;
    }
}

template <typename Number>
std::optional<Number> floating(const std::string& text) {
    const std::string number = trimmed(text);
    if (number.empty())
        return std::nullopt;
    return converted<Number>(number);
}

bool allDigits(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
}

} // namespace

std::string of(float value) {
    return boost::lexical_cast<std::string>(value);
}

std::string of(double value) {
    return boost::lexical_cast<std::string>(value);
}

std::string of(std::uint32_t value) {
    return boost::lexical_cast<std::string>(value);
}

std::string of(int value) {
    return boost::lexical_cast<std::string>(value);
}

std::string of(bool value) {
    return value ? "1" : "0";
}

std::optional<float> toFloat(const std::string& text) {
    return floating<float>(text);
}

std::optional<double> toDouble(const std::string& text) {
    return floating<double>(text);
}

std::optional<std::uint32_t> toUnsigned(const std::string& text) {
    // The lexical conversion reads "-1" as the largest count; a file never means that.
    const std::string number = trimmed(text);
    if (!allDigits(number))
        return std::nullopt;
    return converted<std::uint32_t>(number);
}

std::optional<int> toInt(const std::string& text) {
    const std::string number = trimmed(text);
    const bool negative = !number.empty() && number[0] == '-';
    if (!allDigits(negative ? number.substr(1) : number))
        return std::nullopt;
    return converted<int>(number);
}

std::optional<bool> toBool(const std::string& text) {
    const std::string word = lowerCase(trimmed(text));
    if (word == "1" || word == "true")
        return true;
    if (word == "0" || word == "false")
        return false;
    return std::nullopt;
}

} // namespace NumberText
