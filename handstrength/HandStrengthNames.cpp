#include "handstrength/HandStrengthNames.h"

#include <bitset>
#include <map>

namespace {

struct NameRow {
    unsigned long long positive;
    unsigned long long exclusive;
    const char* name;
};

// The rows in the order of filling; a key entered twice would keep its first name.
constexpr NameRow nameRows[] = {
    {0x0004000000000000ULL, 0ULL, "Custom Sum"},
    {0x0000000000000100ULL, 0ULL, "Highcard"},
    {0x0000000000000080ULL, 0ULL, "Pair"},
    {0x0000000000000040ULL, 0ULL, "Twopair"},
    {0x0000000000000020ULL, 0ULL, "Three of a Kind"},
    {0x0000000000000010ULL, 0ULL, "Straight"},
    {0x0000000000000008ULL, 0ULL, "Flush"},
    {0x0000000000000004ULL, 0ULL, "Full House"},
    {0x0000000000000002ULL, 0ULL, "Four of a Kind"},
    {0x0000000000000001ULL, 0ULL, "Straightflush"},
    {0x0000000020000000ULL, 0ULL, "Backdoor-Flushdraw"},
    {0x0000000040000000ULL, 0ULL, "Backdoor-Straightdraw"},
    {0x000000000C000000ULL, 0ULL, "Straightflushdraw with OESD"},
    {0x0000000014000000ULL, 0ULL, "Straightflushdraw with Gutshot"},
    {0x0000000004000000ULL, 0ULL, "Flushdraw"},
    {0x0000000008000000ULL, 0ULL, "OESD"},
    {0x0000000010000000ULL, 0ULL, "Gutshotdraw"},
    {0x0000400000000000ULL, 0ULL, "Overcards"},
    {0x000000000C000000ULL, 0x0000000000433E00ULL, "Straightflushdraw with OESD"},
    {0x0000000014000000ULL, 0x0000000000433E00ULL, "Straightflushdraw with Gutshot"},
    {0x0000000004000000ULL, 0x0000000000433E00ULL, "Flushdraw"},
    {0x0000000008000000ULL, 0x0000000000433E00ULL, "OESD"},
    {0x0100000008000000ULL, 0x0000000000433E00ULL, "Using Two Holecards"},
    {0x0080000008000000ULL, 0x0000000000433E00ULL, "Using One Holecard"},
    {0x0000000010000000ULL, 0x0000000000433E00ULL, "Gutshotdraw"},
    {0x0100000010000000ULL, 0x0000000000433E00ULL, "Using Two Holecards"},
    {0x0080000010000000ULL, 0x0000000000433E00ULL, "Using One Holecard"},
    {0x0000400000000000ULL, 0x0000000000433E00ULL, "Overcards"},
    {0x0000000020000000ULL, 0x0000000000433E00ULL, "Backdoor-Flushdraw"},
    {0x0000000040000000ULL, 0x0000000000433E00ULL, "Backdoor-Straightdraw"},
    {0x0040000004000000ULL, 0x0000000000433E00ULL, "Using Two Holecards"},
    {0x0000000004200000ULL, 0x0000000000433E00ULL, "Using One Holecard"},
    {0x0040000084000000ULL, 0x0000000000433E00ULL, "To Nutflush"},
    {0x0040000104000000ULL, 0x0000000000433E00ULL, "To 2nd Nutflush"},
    {0x0040000204000000ULL, 0x0000000000433E00ULL, "To 3rd Nutflush"},
    {0x0040000404000000ULL, 0x0000000000433E00ULL, "To 4th Nutflush"},
    {0x0040000804000000ULL, 0x0000000000433E00ULL, "To 5th Nutflush"},
    {0x0000000084200000ULL, 0x0000000000433E00ULL, "To Nutflush"},
    {0x0000000104200000ULL, 0x0000000000433E00ULL, "To 2nd Nutflush"},
    {0x0000000204200000ULL, 0x0000000000433E00ULL, "To 3rd Nutflush"},
    {0x0000000404200000ULL, 0x0000000000433E00ULL, "To 4th Nutflush"},
    {0x0000000804200000ULL, 0x0000000000433E00ULL, "To 5th Nutflush"},
    {0x0040000020000000ULL, 0x0000000000433E00ULL, "Using Two Holecards"},
    {0x0000000020200000ULL, 0x0000000000433E00ULL, "Using One Holecard"},
    {0x00400000A0000000ULL, 0x0000000000433E00ULL, "To Nutflush"},
    {0x0040000120000000ULL, 0x0000000000433E00ULL, "To 2nd Nutflush"},
    {0x0040000220000000ULL, 0x0000000000433E00ULL, "To 3rd Nutflush"},
    {0x0040000420000000ULL, 0x0000000000433E00ULL, "To 4th Nutflush"},
    {0x0040000820000000ULL, 0x0000000000433E00ULL, "To 5th Nutflush"},
    {0x00000000A0200000ULL, 0x0000000000433E00ULL, "To Nutflush"},
    {0x0000000120200000ULL, 0x0000000000433E00ULL, "To 2nd Nutflush"},
    {0x0000000220200000ULL, 0x0000000000433E00ULL, "To 3rd Nutflush"},
    {0x0000000420200000ULL, 0x0000000000433E00ULL, "To 4th Nutflush"},
    {0x0000000820200000ULL, 0x0000000000433E00ULL, "To 5th Nutflush"},
    {0x0002400000000000ULL, 0x0000000000433E00ULL, "With Ace"},
    {0x0002400000000000ULL, 0ULL, "With Ace"},
    {0x0000400000000000ULL, 0x0002000000000000ULL, "Without Ace"},
    {0x0000400000000000ULL, 0x0002000000433E00ULL, "Without Ace"},
    {0x0100000040000000ULL, 0x0000000000433E00ULL, "Using Two Holecards"},
    {0x0080000040000000ULL, 0x0000000000433E00ULL, "Using One Holecard"},
    {0x0100001040000000ULL, 0x0000000000433E00ULL, "2 OESD, 2 Gutshotdraw"},
    {0x0100002040000000ULL, 0x0000000000433E00ULL, "1 OESD, 2 Gutshotdraw"},
    {0x0100004040000000ULL, 0x0000000000433E00ULL, "4 Gutshotdraw"},
    {0x0100008040000000ULL, 0x0000000000433E00ULL, "2 Gutshotdraw"},
    {0x0080001040000000ULL, 0x0000000000433E00ULL, "2 OESD, 2 Gutshotdraw"},
    {0x0080002040000000ULL, 0x0000000000433E00ULL, "1 OESD, 2 Gutshotdraw"},
    {0x0080004040000000ULL, 0x0000000000433E00ULL, "4 Gutshotdraw"},
    {0x0080008040000000ULL, 0x0000000000433E00ULL, "2 Gutshotdraw"},
    {0x0000000000004080ULL, 0ULL, "Boardpair Only"},
    {0x0000000000008080ULL, 0ULL, "Overpair"},
    {0x0000000000000280ULL, 0ULL, "Top Pair"},
    {0x0008000000000080ULL, 0ULL, "PP between Top/2nd Pair"},
    {0x0008000000000000ULL, 0ULL, "PP between Top/2nd Pair"},
    {0x0000000000000480ULL, 0ULL, "2nd Pair"},
    {0x0010000000000080ULL, 0ULL, "PP between 2nd/3rd Pair"},
    {0x0010000000000000ULL, 0ULL, "PP between 2nd/3rd Pair"},
    {0x0000000000000880ULL, 0ULL, "3rd Pair"},
    {0x0020000000000080ULL, 0ULL, "PP below 3rd Pair"},
    {0x0020000000000000ULL, 0ULL, "PP below 3rd Pair"},
    {0x0000000000000080ULL, 0x003800000000CE00ULL, "Other non-PP"},
    {0x0000000000040280ULL, 0ULL, "With Top Kicker"},
    {0x0000000000080280ULL, 0ULL, "With Second Kicker"},
    {0x0000000000100280ULL, 0ULL, "With Third Kicker"},
    {0x0000000000000280ULL, 0x00000000001C0000ULL, "With Other Kicker"},
    {0x0000000000040480ULL, 0ULL, "With Top Kicker"},
    {0x0000000000080480ULL, 0ULL, "With Second Kicker"},
    {0x0000000000100480ULL, 0ULL, "With Third Kicker"},
    {0x0000000000000480ULL, 0x00000000001C0000ULL, "With Other Kicker"},
    {0x0000000000040880ULL, 0ULL, "With Top Kicker"},
    {0x0000000000080880ULL, 0ULL, "With Second Kicker"},
    {0x0000000000100880ULL, 0ULL, "With Third Kicker"},
    {0x0000000000000880ULL, 0x00000000001C0000ULL, "With Other Kicker"},
    {0x0000000000004040ULL, 0ULL, "Board Twopair Only"},
    {0x0000000000408040ULL, 0ULL, "With Overpair to Board Pair"},
    {0x0000000000C00040ULL, 0ULL, "With Middle Pair"},
    {0x0000000001400040ULL, 0ULL, "With Underpair"},
    {0x0000000000010240ULL, 0ULL, "Top One"},
    {0x0000000000010440ULL, 0ULL, "2nd Top One"},
    {0x0000000000010840ULL, 0ULL, "3rd Top One"},
    {0x0000000000010040ULL, 0x0000000000000E00ULL, "Other"},
    {0x0000000000020240ULL, 0ULL, "Top One"},
    {0x0000000000020440ULL, 0ULL, "2nd Top One"},
    {0x0000000000020840ULL, 0ULL, "3rd Top One"},
    {0x0000000000020040ULL, 0x0000000000000E00ULL, "Other"},
    {0x0000000000400040ULL, 0ULL, "With Pocket Pair"},
    {0x0000000000010040ULL, 0ULL, "Without Pocket Pair, Using Two Hole Cards"},
    {0x0000000000020040ULL, 0ULL, "Without Pocket Pair, Using One Hole Card"},
    {0x0000000000011040ULL, 0ULL, "4th Top One"},
    {0x0000000000012040ULL, 0ULL, "5th Top One"},
    {0x0000000000010020ULL, 0ULL, "Set"},
    {0x0000000000020020ULL, 0ULL, "Trips"},
    {0x0000000000060020ULL, 0ULL, "With Top Kicker"},
    {0x00000000000A0020ULL, 0ULL, "With Second Kicker"},
    {0x0000000000120020ULL, 0ULL, "With Third Kicker"},
    {0x0000000000020020ULL, 0x00000000001C0000ULL, "With Other Kicker"},
    {0x0000000000000208ULL, 0ULL, "Nutflush"},
    {0x0000000000000408ULL, 0ULL, "2nd Nutflush"},
    {0x0000000000000808ULL, 0ULL, "3nd Nutflush"},
    {0x0000000000001008ULL, 0ULL, "4th Nutflush"},
    {0x0000000000002008ULL, 0ULL, "5th Nutflush"},
    {0x0000000000004008ULL, 0ULL, "Boardflush"},
    {0x0000000000004004ULL, 0ULL, "Board Only"},
    {0x0000000000020004ULL, 0ULL, "Using One Hole Card"},
    {0x0000000000010004ULL, 0ULL, "Using Two Hole Cards"},
    {0x0040000004000000ULL, 0ULL, "Using Two Hole Cards"},
    {0x0040000084000000ULL, 0ULL, "Nutflushdraw"},
    {0x0040000104000000ULL, 0ULL, "2nd Nutflushdraw"},
    {0x0040000204000000ULL, 0ULL, "3rd Nutflushdraw"},
    {0x0040000404000000ULL, 0ULL, "4th Nutflushdraw"},
    {0x0040000804000000ULL, 0ULL, "5th Nutflushdraw"},
    {0x0000000004200000ULL, 0ULL, "Using Two Hole Cards"},
    {0x0000000084200000ULL, 0ULL, "Nutflushdraw"},
    {0x0000000104200000ULL, 0ULL, "2nd Nutflushdraw"},
    {0x0000000204200000ULL, 0ULL, "3rd Nutflushdraw"},
    {0x0000000404200000ULL, 0ULL, "4th Nutflushdraw"},
    {0x0000000804200000ULL, 0ULL, "5th Nutflushdraw"},
    {0x0040000020000000ULL, 0ULL, "Using Two Hole Cards"},
    {0x00400000A0000000ULL, 0ULL, "Nutflushdraw"},
    {0x0040000120000000ULL, 0ULL, "2nd Nutflushdraw"},
    {0x0040000220000000ULL, 0ULL, "3rd Nutflushdraw"},
    {0x0040000420000000ULL, 0ULL, "4th Nutflushdraw"},
    {0x0040000820000000ULL, 0ULL, "5th Nutflushdraw"},
    {0x0000000020200000ULL, 0ULL, "Using Two Hole Cards"},
    {0x00000000A0200000ULL, 0ULL, "Nutflushdraw"},
    {0x0000000120200000ULL, 0ULL, "2nd Nutflushdraw"},
    {0x0000000220200000ULL, 0ULL, "3rd Nutflushdraw"},
    {0x0000000420200000ULL, 0ULL, "4th Nutflushdraw"},
    {0x0000000820200000ULL, 0ULL, "5th Nutflushdraw"},
    {0x0000400084000000ULL, 0ULL, "Nutflushdraw + Overcards"},
    {0x0000800000000000ULL, 0ULL, "One Overcard"},
    {0x0000000080000000ULL, 0ULL, "Nutflushdraw"},
    {0x0000000100000000ULL, 0ULL, "2nd Nutflushdraw"},
    {0x0000000200000000ULL, 0ULL, "3rd Nutflushdraw"},
    {0x0000000400000000ULL, 0ULL, "4th Nutflushdraw"},
    {0x0000000800000000ULL, 0ULL, "5th Nutflushdraw"},
    {0x0000000000000200ULL, 0ULL, "Top One"},
    {0x0000000000000400ULL, 0ULL, "2nd Top One"},
    {0x0000000000000800ULL, 0ULL, "3rd Top One"},
    {0x0000000000001000ULL, 0ULL, "4th Top One"},
    {0x0000000000002000ULL, 0ULL, "5th Top One"},
    {0x0000000000040000ULL, 0ULL, "Top Kicker"},
    {0x0000000000080000ULL, 0ULL, "2nd Kicker"},
    {0x0000000000100000ULL, 0ULL, "3rd Kicker"},
    {0x0000000000004000ULL, 0ULL, "With Made Hand on Board"},
    {0x0000000000010000ULL, 0ULL, "Using Two Holecards for Made Hand"},
    {0x0000000000020000ULL, 0ULL, "Using One Holecard for Made Hand"},
    {0x0040000000000000ULL, 0ULL, "Using Two Holecards for Flushdraws"},
    {0x0000000000200000ULL, 0ULL, "Using One Holecard for Flushdraws"},
    {0x0100000000000000ULL, 0ULL, "Using Two Holecards for Straightdraws"},
    {0x0080000000000000ULL, 0ULL, "Using One Holecard for Straightdraws"},
    {0x0000000000400000ULL, 0ULL, "Twopair using Pocket Pair"},
    {0x0000000000008000ULL, 0ULL, "Pocket Pair being Overpair"},
    {0x0000000000800000ULL, 0ULL, "Pocket Pair being Middle Pair"},
    {0x0000000001000000ULL, 0ULL, "Pocket Pair being Underpair"},
    {0x0000004000000000ULL, 0ULL, "4 x Backdoor Gutshot Draw"},
    {0x0000008000000000ULL, 0ULL, "2 x Backdoor Gutshot Draw"},
    {0x0000002000000000ULL, 0ULL, "2 x Backdoor Gutshot Draw + OESD"},
    {0x0000001000000000ULL, 0ULL, "2 x each BD Gutshot Draw/OESD"},
    {0x0002000000000000ULL, 0ULL, "With Ace Overcard"},
};

using NameTable = std::map<HandStrengthKey, std::string, HandStrengthKeyTableOrder>;

const NameTable& nameTable() {
    static const NameTable table = [] {
        NameTable filled;
        for (const NameRow& row : nameRows)
            filled.emplace(HandStrengthKey(row.positive, row.exclusive), row.name);
        return filled;
    }();
    return table;
}

int bitCount(unsigned long long word) {
    return static_cast<int>(std::bitset<64>(word).count());
}

} // namespace

bool HandStrengthKeyTableOrder::operator()(const HandStrengthKey& a,
                                           const HandStrengthKey& b) const {
    const int bitsA = bitCount(a.positive);
    const int bitsB = bitCount(b.positive);
    if (bitsA != bitsB)
        return bitsA > bitsB;
    if (a.positive != b.positive)
        return a.positive > b.positive;
    return a.exclusive > b.exclusive;
}

std::string tableName(const HandStrengthKey& key) {
    const NameTable& table = nameTable();
    const auto found = table.find(key);
    return found == table.end() ? std::string() : found->second;
}

std::string handStrengthName(const HandStrengthKey& key) {
    if (!key.displayName.empty())
        return key.displayName;
    std::string name = tableName(key);
    if (!name.empty())
        return name;
    if (key.exclusive != 0)
        return "Other";
    for (int bit = 0; bit < 64; ++bit) {
        const unsigned long long single = 1ULL << bit;
        if ((key.positive & single) == 0)
            continue;
        if (!name.empty())
            name += " + ";
        const std::string part = tableName(HandStrengthKey(single, 0));
        name += part.empty() ? std::string("Unknown") : part;
    }
    return name;
}

std::vector<std::pair<HandStrengthKey, std::string>>
splitIntoNames(const unsigned long long& word) {
    std::vector<std::pair<HandStrengthKey, std::string>> parts;
    for (int bit = 63; bit >= 0; --bit) {
        const unsigned long long single = 1ULL << bit;
        if (word & single) {
            HandStrengthKey key(single, 0);
            parts.emplace_back(key, tableName(key));
        }
    }
    return parts;
}

std::vector<std::pair<HandStrengthKey, std::string>> nameTableRows() {
    const NameTable& table = nameTable();
    return std::vector<std::pair<HandStrengthKey, std::string>>(table.begin(), table.end());
}
