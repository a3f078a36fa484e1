#include "handstrength/HandGroupStandardSchema.h"

#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandStrengthMasks.h"

#include <initializer_list>
#include <vector>

namespace HandGroupStandardSchema {

const char* const name = "Standard";

namespace {

// One row of the built-in table: its depth in the tree and its key.
struct Entry {
    unsigned int depth;
    unsigned long long positive;
    unsigned long long exclusive;
    const char* displayName; // a caption of its own instead of the composed name, or null

    Entry(unsigned int depth, unsigned long long positive, unsigned long long exclusive,
          const char* displayName = nullptr)
        : depth(depth), positive(positive), exclusive(exclusive), displayName(displayName) {}
};

// Rows are added in table order; each row's parent is the nearest earlier row of lower depth.
HandGroup makeGroup(const char* groupName, std::initializer_list<Entry> entries) {
    HandGroup group;
    group.name = groupName;
    std::vector<HandStrengthKey> openAtDepth; // key of the latest row at each depth
    for (const Entry& entry : entries) {
        HandStrengthKey key(entry.positive, entry.exclusive,
                            entry.displayName ? entry.displayName : "");
        openAtDepth.resize(entry.depth);
        const HandStrengthKey parentKey =
            entry.depth == 0 ? HandStrengthKey() : openAtDepth[entry.depth - 1];
        group.addRow(HandGroupRowRequest(key, parentKey));
        openAtDepth.push_back(key);
    }
    return group;
}

// The draw to the nut flush (bit 31).
constexpr unsigned long long nutFlushdraw = 0x80000000ULL;

HandGroupSchemaData build() {
    HandGroupSchemaData schema;
    schema.name = name;

    schema.groups.push_back(makeGroup("Custom Sum", {{0, customSumMarker, 0}}));

    schema.groups.push_back(
        makeGroup("Made Hands", {
                                    {0, 0x1, 0},                    // Straightflush
                                    {0, 0x2, 0},                    // Four of a Kind
                                    {0, 0x4, 0},                    // Full House
                                    {0, 0x8, 0},                    // Flush
                                    {1, 0x208, 0},                  // Nutflush
                                    {1, 0x408, 0},                  // 2nd Nutflush
                                    {1, 0x808, 0},                  // 3nd Nutflush
                                    {1, 0x1008, 0},                 // 4th Nutflush
                                    {1, 0x2008, 0},                 // 5th Nutflush
                                    {1, 0x4008, 0},                 // Boardflush
                                    {1, 0x8, 0x7E00},               // Other
                                    {0, 0x10, 0},                   // Straight
                                    {0, 0x20, 0},                   // Three of a Kind
                                    {1, 0x10020, 0},                // Set
                                    {1, 0x20020, 0},                // Trips
                                    {2, 0x60020, 0},                // With Top Kicker
                                    {2, 0xA0020, 0},                // With Second Kicker
                                    {2, 0x120020, 0},               // With Third Kicker
                                    {2, 0x20020, 0x1C0000},         // With Other Kicker
                                    {0, 0x40, 0},                   // Twopair
                                    {1, 0x400040, 0},               // With Pocket Pair
                                    {2, 0x408040, 0},               // With Overpair to ...
                                    {2, 0xC00040, 0},               // With Middle Pair
                                    {2, 0x1400040, 0},              // With Underpair
                                    {1, 0x10040, 0},                // Without PP, two cards
                                    {2, 0x10240, 0},                // Top One
                                    {2, 0x10440, 0},                // 2nd Top One
                                    {2, 0x10840, 0},                // 3rd Top One
                                    {2, 0x10040, 0xE00},            // Other
                                    {1, 0x20040, 0},                // Without PP, one card
                                    {2, 0x20240, 0},                // Top One
                                    {2, 0x20440, 0},                // 2nd Top One
                                    {2, 0x20840, 0},                // 3rd Top One
                                    {1, 0x4040, 0},                 // Board Twopair Only
                                    {0, 0x80, 0},                   // Pair
                                    {1, 0x8080, 0},                 // Overpair
                                    {1, 0x280, 0},                  // Top Pair
                                    {2, 0x40280, 0},                // With Top Kicker
                                    {2, 0x80280, 0},                // With Second Kicker
                                    {2, 0x100280, 0},               // With Third Kicker
                                    {2, 0x280, 0x1C0000},           // With Other Kicker
                                    {1, 0x8000000000080ULL, 0},     // PP between Top/2nd
                                    {1, 0x480, 0},                  // 2nd Pair
                                    {2, 0x40480, 0},                // With Top Kicker
                                    {2, 0x80480, 0},                // With Second Kicker
                                    {2, 0x100480, 0},               // With Third Kicker
                                    {2, 0x480, 0x1C0000},           // With Other Kicker
                                    {1, 0x10000000000080ULL, 0},    // PP between 2nd/3rd
                                    {1, 0x880, 0},                  // 3rd Pair
                                    {2, 0x40880, 0},                // With Top Kicker
                                    {2, 0x80880, 0},                // With Second Kicker
                                    {2, 0x100880, 0},               // With Third Kicker
                                    {2, 0x880, 0x1C0000},           // With Other Kicker
                                    {1, 0x20000000000080ULL, 0},    // PP below 3rd Pair
                                    {1, 0x80, 0x3800000000CE00ULL}, // Other non-PP
                                    {1, 0x4080, 0},                 // Boardpair Only
                                    {0, 0x100, 0},                  // Highcard
                                }));

    // Every row of the draw tree keeps out the made hands that use hole cards.
    const unsigned long long x = madeHandWithHoleCardsMask;
    schema.groups.push_back(
        makeGroup("Draws (excluding made hands)",
                  {
                      {0, 0xC000000ULL, x},                      // Straightflushdraw with OESD
                      {0, 0x14000000ULL, x},                     // Straightflushdraw with Gutshot
                      {0, 0x4000000ULL, x},                      // Flushdraw
                      {1, 0x40000004000000ULL, x},               // Using Two Holecards
                      {2, 0x40000084000000ULL, x},               // To Nutflush
                      {2, 0x40000104000000ULL, x},               // To 2nd Nutflush
                      {2, 0x40000204000000ULL, x},               // To 3rd Nutflush
                      {2, 0x40000404000000ULL, x},               // To 4th Nutflush
                      {2, 0x40000804000000ULL, x},               // To 5th Nutflush
                      {2, 0x40000004000000ULL, nutRankMask | x}, // Other
                      {1, 0x4200000ULL, x},                      // Using One Holecard
                      {2, 0x84200000ULL, x},                     // To Nutflush
                      {2, 0x104200000ULL, x},                    // To 2nd Nutflush
                      {2, 0x204200000ULL, x},                    // To 3rd Nutflush
                      {2, 0x404200000ULL, x},                    // To 4th Nutflush
                      {2, 0x804200000ULL, x},                    // To 5th Nutflush
                      {2, 0x4200000ULL, nutRankMask | x},        // Other
                      {0, 0x8000000ULL, x},                      // OESD
                      {1, 0x100000008000000ULL, x},              // Using Two Holecards
                      {1, 0x80000008000000ULL, x},               // Using One Holecard
                      {0, 0x10000000ULL, x},                     // Gutshotdraw
                      {1, 0x100000010000000ULL, x},              // Using Two Holecards
                      {1, 0x80000010000000ULL, x},               // Using One Holecard
                      {0, 0x400000000000ULL, x},                 // Overcards
                      {1, 0x2400000000000ULL, x},                // With Ace
                      {1, 0x400000000000ULL, 0x2000000000000ULL | x}, // Without Ace
                      {0, 0x20000000ULL, x},                          // Backdoor-Flushdraw
                      {1, 0x40000020000000ULL, x},                    // Using Two Holecards
                      {2, 0x400000A0000000ULL, x},                    // To Nutflush
                      {2, 0x40000120000000ULL, x},                    // To 2nd Nutflush
                      {2, 0x40000220000000ULL, x},                    // To 3rd Nutflush
                      {2, 0x40000420000000ULL, x},                    // To 4th Nutflush
                      {2, 0x40000820000000ULL, x},                    // To 5th Nutflush
                      {2, 0x40000020000000ULL, nutRankMask | x},      // Other
                      {1, 0x20200000ULL, x},                          // Using One Holecard
                      {2, 0xA0200000ULL, x},                          // To Nutflush
                      {2, 0x120200000ULL, x},                         // To 2nd Nutflush
                      {2, 0x220200000ULL, x},                         // To 3rd Nutflush
                      {2, 0x420200000ULL, x},                         // To 4th Nutflush
                      {2, 0x820200000ULL, x},                         // To 5th Nutflush
                      {2, 0x20200000ULL, nutRankMask | x},            // Other
                      {0, 0x40000000ULL, x},                          // Backdoor-Straightdraw
                      {1, 0x100000040000000ULL, x},                   // Using Two Holecards
                      {2, 0x100001040000000ULL, x},                   // 2 OESD, 2 Gutshotdraw
                      {2, 0x100002040000000ULL, x},                   // 1 OESD, 2 Gutshotdraw
                      {2, 0x100004040000000ULL, x},                   // 4 Gutshotdraw
                      {2, 0x100008040000000ULL, x},                   // 2 Gutshotdraw
                      {1, 0x80000040000000ULL, x},                    // Using One Holecard
                      {2, 0x80001040000000ULL, x},                    // 2 OESD, 2 Gutshotdraw
                      {2, 0x80002040000000ULL, x},                    // 1 OESD, 2 Gutshotdraw
                      {2, 0x80004040000000ULL, x},                    // 4 Gutshotdraw
                      {2, 0x80008040000000ULL, x},                    // 2 Gutshotdraw
                  }));

    // "With Flushdraw to Nuts" is the one row with a caption of its own: the composed name
    // of its key would read "... + Nutflushdraw + Overcards".
    // Each combo draw with a flush draw splits into the draw to the nut flush and the rest;
    // the rest is the parent's positive word with the nut flush draw bit excluded.
    const unsigned long long n = nutFlushdraw;
    HandGroup combodraws = makeGroup(
        "Combodraws", {
                          {0, 0x4000080ULL, 0},      // Pair + Flushdraw
                          {1, 0x84000080ULL, 0},     // Pair + Flushdraw + Nutflushdraw
                          {1, 0x4000080ULL, n},      // Other
                          {0, 0x8000080ULL, 0},      // Pair + OESD
                          {0, 0x10000080ULL, 0},     // Pair + Gutshotdraw
                          {0, 0x4000040ULL, 0},      // Twopair + Flushdraw
                          {1, 0x84000040ULL, 0},     // Twopair + Flushdraw + Nutflushdraw
                          {1, 0x4000040ULL, n},      // Other
                          {0, 0x8000040ULL, 0},      // Twopair + OESD
                          {0, 0x10000040ULL, 0},     // Twopair + Gutshotdraw
                          {0, 0x400004000000ULL, 0}, // Flushdraw + Overcards
                          {1, 0x400084000000ULL, 0}, // Nutflushdraw + Overcards
                          {1, 0x400004000000ULL, n}, // Other
                          {0, 0x400008000000ULL, 0}, // OESD + Overcards
                          {0, 0x400010000000ULL, 0}, // Gutshotdraw + Overcards
                          {0, 0x400060000000ULL, 0}, // BD-Flushdraw + BD-Straightdraw + Overc.
                          {1, 0x400060000000ULL | n, 0, "With Flushdraw to Nuts"},
                          {1, 0x400060000000ULL, n}, // Other
                      });
    schema.groups.push_back(std::move(combodraws));
    return schema;
}

} // namespace

const HandGroupSchemaData& data() {
    static const HandGroupSchemaData standard = build();
    return standard;
}

} // namespace HandGroupStandardSchema
