#pragma once

#include <string>
#include <string_view>
#include <vector>

// Amounts of money as hand histories write them: "$1,000.50", "0.25€", "[$0.05 USD]",
// "(2)". Only plain non-negative decimals of a sane size are amounts; a number with a sign,
// an exponent, a second decimal point or more digits than any stake has makes the whole hand
// unreadable (HandHistory::ParseError), since reading a different amount, or none, would
// silently change what was played.
namespace HandHistoryAmount {

// The largest amount a hand may hold, in any currency or chips.
inline constexpr double largest = 1e12;

// Every amount of `text`, in order. Commas between digits that are followed by exactly
// three digits are thousands separators; a comma followed by one or two digits and no
// further digit, in a number without a point, is a decimal comma. Throws ParseError (for
// the whole hand) on a malformed number.
std::vector<double> amountsIn(std::string_view text);

// Throws ParseError when `text`, standing right behind an amount that was read, continues
// that amount in a way no plain number does ("e308", ".5.", more digits).
void checkAmountEnd(std::string_view text, std::string_view line);

// The currency sign of `text`: '$', the pound (0xA3) or euro (0x80) byte, or 0.
char currencyIn(std::string_view text);

// "12.5", "1000", "0.05": at most two decimals, no trailing zeros.
std::string format(double value);

} // namespace HandHistoryAmount
