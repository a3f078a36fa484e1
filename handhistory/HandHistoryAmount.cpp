#include "handhistory/HandHistoryAmount.h"

#include "handhistory/ParseError.h"

#include <cmath>
#include <cstdio>

namespace HandHistoryAmount {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

[[noreturn]] void refuse(std::string_view number, std::string_view why) {
    throw HandHistory::ParseError{"the amount \"" + std::string(number) + "\" " + std::string(why),
                                  true};
}

// Reads the number starting at `at` (a digit, or a point before a digit), returns its end.
std::size_t readOne(std::string_view text, std::size_t at, double& value) {
    std::string digits;
    std::size_t end = at;
    bool point = false;
    int integerDigits = 0;
    while (end < text.size()) {
        const char c = text[end];
        if (isDigit(c)) {
            digits.push_back(c);
            if (!point)
                ++integerDigits;
            ++end;
        } else if (c == '.' && !point && end + 1 < text.size() && isDigit(text[end + 1])) {
            point = true;
            digits.push_back('.');
            ++end;
        } else if (c == ',' && !point && end + 1 < text.size() && isDigit(text[end + 1])) {
            std::size_t run = end + 1;
            while (run < text.size() && isDigit(text[run]))
                ++run;
            const std::size_t count = run - end - 1;
            if (count == 3) {
                end = end + 1; // a thousands separator
            } else if (count <= 2 && (run >= text.size() || text[run] != '.')) {
                point = true; // a decimal comma
                digits.push_back('.');
                ++end;
            } else {
                break;
            }
        } else {
            break;
        }
    }
    const std::string_view number = text.substr(at, end - at);
    const bool signBefore = at > 1 && currencyIn(text.substr(at - 1, 1)) != 0;
    if ((at > 0 && text[at - 1] == '-') || (signBefore && text[at - 2] == '-'))
        refuse("-" + std::string(number), "is negative");
    if (end < text.size()) {
        const char next = text[end];
        if ((next == 'e' || next == 'E') && end + 1 < text.size() &&
            (isDigit(text[end + 1]) || text[end + 1] == '+' || text[end + 1] == '-'))
            refuse(text.substr(at, std::min<std::size_t>(end + 5, text.size()) - at),
                   "has an exponent");
        if (next == '.' && end + 1 < text.size() && isDigit(text[end + 1]))
            refuse(text.substr(at, end + 2 - at), "has two decimal points");
    }
    if (integerDigits > 12)
        refuse(number, "is too large");
    value = std::strtod(digits.c_str(), nullptr);
    if (!std::isfinite(value) || value > largest)
        refuse(number, "is too large");
    return end;
}

} // namespace

std::vector<double> amountsIn(std::string_view text) {
    std::vector<double> amounts;
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        const bool starts = isDigit(c) || (c == '.' && i + 1 < text.size() && isDigit(text[i + 1]));
        // Digits inside a word ("R5-361", "2nd") are no amount.
        if (!starts || (i > 0 && (isLetter(text[i - 1]) || text[i - 1] == '_'))) {
            ++i;
            continue;
        }
        double value = 0.0;
        i = readOne(text, i, value);
        amounts.push_back(value);
    }
    return amounts;
}

void checkAmountEnd(std::string_view text, std::string_view line) {
    if (text.empty())
        return;
    const char next = text[0];
    const bool exponent = (next == 'e' || next == 'E') && text.size() > 1 &&
                          (isDigit(text[1]) || text[1] == '+' || text[1] == '-');
    const bool secondPoint = next == '.' && text.size() > 1 && isDigit(text[1]);
    if (exponent || secondPoint || isDigit(next))
        throw HandHistory::ParseError{"an amount that is not a plain number: " + std::string(line),
                                      true};
}

char currencyIn(std::string_view text) {
    for (const char c : text)
        if (c == '$' || c == '\xA3' || c == '\x80')
            return c;
    return 0;
}

std::string format(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    std::string out = text;
    while (out.back() == '0')
        out.pop_back();
    if (out.back() == '.')
        out.pop_back();
    return out == "-0" ? "0" : out;
}

} // namespace HandHistoryAmount
