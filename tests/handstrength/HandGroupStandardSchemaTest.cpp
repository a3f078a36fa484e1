#include "handstrength/HandGroupStandardSchema.h"
#include "handstrength/HandGroupSchema.h"
#include "handstrength/HandStrengthNames.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

// The built-in schema as the product describes it: group, depth, caption, key.
struct ExpectedRow {
    int group;
    unsigned int depth;
    const char* name;
    unsigned long long positive;
    unsigned long long exclusive;
};

const char* const expectedGroups[] = {"Custom Sum", "Made Hands", "Draws (excluding made hands)",
                                      "Combodraws"};

const ExpectedRow expectedRows[] = {
    // Custom Sum
    {0, 0, "Custom Sum", 0x4000000000000ULL, 0},
    // Made Hands
    {1, 0, "Straightflush", 0x1ULL, 0},
    {1, 0, "Four of a Kind", 0x2ULL, 0},
    {1, 0, "Full House", 0x4ULL, 0},
    {1, 0, "Flush", 0x8ULL, 0},
    {1, 1, "Nutflush", 0x208ULL, 0},
    {1, 1, "2nd Nutflush", 0x408ULL, 0},
    {1, 1, "3nd Nutflush", 0x808ULL, 0},
    {1, 1, "4th Nutflush", 0x1008ULL, 0},
    {1, 1, "5th Nutflush", 0x2008ULL, 0},
    {1, 1, "Boardflush", 0x4008ULL, 0},
    {1, 1, "Other", 0x8ULL, 0x7E00ULL},
    {1, 0, "Straight", 0x10ULL, 0},
    {1, 0, "Three of a Kind", 0x20ULL, 0},
    {1, 1, "Set", 0x10020ULL, 0},
    {1, 1, "Trips", 0x20020ULL, 0},
    {1, 2, "With Top Kicker", 0x60020ULL, 0},
    {1, 2, "With Second Kicker", 0xA0020ULL, 0},
    {1, 2, "With Third Kicker", 0x120020ULL, 0},
    {1, 2, "With Other Kicker", 0x20020ULL, 0x1C0000ULL},
    {1, 0, "Twopair", 0x40ULL, 0},
    {1, 1, "With Pocket Pair", 0x400040ULL, 0},
    {1, 2, "With Overpair to Board Pair", 0x408040ULL, 0},
    {1, 2, "With Middle Pair", 0xC00040ULL, 0},
    {1, 2, "With Underpair", 0x1400040ULL, 0},
    {1, 1, "Without Pocket Pair, Using Two Hole Cards", 0x10040ULL, 0},
    {1, 2, "Top One", 0x10240ULL, 0},
    {1, 2, "2nd Top One", 0x10440ULL, 0},
    {1, 2, "3rd Top One", 0x10840ULL, 0},
    {1, 2, "Other", 0x10040ULL, 0xE00ULL},
    {1, 1, "Without Pocket Pair, Using One Hole Card", 0x20040ULL, 0},
    {1, 2, "Top One", 0x20240ULL, 0},
    {1, 2, "2nd Top One", 0x20440ULL, 0},
    {1, 2, "3rd Top One", 0x20840ULL, 0},
    {1, 1, "Board Twopair Only", 0x4040ULL, 0},
    {1, 0, "Pair", 0x80ULL, 0},
    {1, 1, "Overpair", 0x8080ULL, 0},
    {1, 1, "Top Pair", 0x280ULL, 0},
    {1, 2, "With Top Kicker", 0x40280ULL, 0},
    {1, 2, "With Second Kicker", 0x80280ULL, 0},
    {1, 2, "With Third Kicker", 0x100280ULL, 0},
    {1, 2, "With Other Kicker", 0x280ULL, 0x1C0000ULL},
    {1, 1, "PP between Top/2nd Pair", 0x8000000000080ULL, 0},
    {1, 1, "2nd Pair", 0x480ULL, 0},
    {1, 2, "With Top Kicker", 0x40480ULL, 0},
    {1, 2, "With Second Kicker", 0x80480ULL, 0},
    {1, 2, "With Third Kicker", 0x100480ULL, 0},
    {1, 2, "With Other Kicker", 0x480ULL, 0x1C0000ULL},
    {1, 1, "PP between 2nd/3rd Pair", 0x10000000000080ULL, 0},
    {1, 1, "3rd Pair", 0x880ULL, 0},
    {1, 2, "With Top Kicker", 0x40880ULL, 0},
    {1, 2, "With Second Kicker", 0x80880ULL, 0},
    {1, 2, "With Third Kicker", 0x100880ULL, 0},
    {1, 2, "With Other Kicker", 0x880ULL, 0x1C0000ULL},
    {1, 1, "PP below 3rd Pair", 0x20000000000080ULL, 0},
    {1, 1, "Other non-PP", 0x80ULL, 0x3800000000CE00ULL},
    {1, 1, "Boardpair Only", 0x4080ULL, 0},
    {1, 0, "Highcard", 0x100ULL, 0},
    // Draws (excluding made hands)
    {2, 0, "Straightflushdraw with OESD", 0xC000000ULL, 0x433E00ULL},
    {2, 0, "Straightflushdraw with Gutshot", 0x14000000ULL, 0x433E00ULL},
    {2, 0, "Flushdraw", 0x4000000ULL, 0x433E00ULL},
    {2, 1, "Using Two Holecards", 0x40000004000000ULL, 0x433E00ULL},
    {2, 2, "To Nutflush", 0x40000084000000ULL, 0x433E00ULL},
    {2, 2, "To 2nd Nutflush", 0x40000104000000ULL, 0x433E00ULL},
    {2, 2, "To 3rd Nutflush", 0x40000204000000ULL, 0x433E00ULL},
    {2, 2, "To 4th Nutflush", 0x40000404000000ULL, 0x433E00ULL},
    {2, 2, "To 5th Nutflush", 0x40000804000000ULL, 0x433E00ULL},
    {2, 2, "Other", 0x40000004000000ULL, 0xF80433E00ULL},
    {2, 1, "Using One Holecard", 0x4200000ULL, 0x433E00ULL},
    {2, 2, "To Nutflush", 0x84200000ULL, 0x433E00ULL},
    {2, 2, "To 2nd Nutflush", 0x104200000ULL, 0x433E00ULL},
    {2, 2, "To 3rd Nutflush", 0x204200000ULL, 0x433E00ULL},
    {2, 2, "To 4th Nutflush", 0x404200000ULL, 0x433E00ULL},
    {2, 2, "To 5th Nutflush", 0x804200000ULL, 0x433E00ULL},
    {2, 2, "Other", 0x4200000ULL, 0xF80433E00ULL},
    {2, 0, "OESD", 0x8000000ULL, 0x433E00ULL},
    {2, 1, "Using Two Holecards", 0x100000008000000ULL, 0x433E00ULL},
    {2, 1, "Using One Holecard", 0x80000008000000ULL, 0x433E00ULL},
    {2, 0, "Gutshotdraw", 0x10000000ULL, 0x433E00ULL},
    {2, 1, "Using Two Holecards", 0x100000010000000ULL, 0x433E00ULL},
    {2, 1, "Using One Holecard", 0x80000010000000ULL, 0x433E00ULL},
    {2, 0, "Overcards", 0x400000000000ULL, 0x433E00ULL},
    {2, 1, "With Ace", 0x2400000000000ULL, 0x433E00ULL},
    {2, 1, "Without Ace", 0x400000000000ULL, 0x2000000433E00ULL},
    {2, 0, "Backdoor-Flushdraw", 0x20000000ULL, 0x433E00ULL},
    {2, 1, "Using Two Holecards", 0x40000020000000ULL, 0x433E00ULL},
    {2, 2, "To Nutflush", 0x400000A0000000ULL, 0x433E00ULL},
    {2, 2, "To 2nd Nutflush", 0x40000120000000ULL, 0x433E00ULL},
    {2, 2, "To 3rd Nutflush", 0x40000220000000ULL, 0x433E00ULL},
    {2, 2, "To 4th Nutflush", 0x40000420000000ULL, 0x433E00ULL},
    {2, 2, "To 5th Nutflush", 0x40000820000000ULL, 0x433E00ULL},
    {2, 2, "Other", 0x40000020000000ULL, 0xF80433E00ULL},
    {2, 1, "Using One Holecard", 0x20200000ULL, 0x433E00ULL},
    {2, 2, "To Nutflush", 0xA0200000ULL, 0x433E00ULL},
    {2, 2, "To 2nd Nutflush", 0x120200000ULL, 0x433E00ULL},
    {2, 2, "To 3rd Nutflush", 0x220200000ULL, 0x433E00ULL},
    {2, 2, "To 4th Nutflush", 0x420200000ULL, 0x433E00ULL},
    {2, 2, "To 5th Nutflush", 0x820200000ULL, 0x433E00ULL},
    {2, 2, "Other", 0x20200000ULL, 0xF80433E00ULL},
    {2, 0, "Backdoor-Straightdraw", 0x40000000ULL, 0x433E00ULL},
    {2, 1, "Using Two Holecards", 0x100000040000000ULL, 0x433E00ULL},
    {2, 2, "2 OESD, 2 Gutshotdraw", 0x100001040000000ULL, 0x433E00ULL},
    {2, 2, "1 OESD, 2 Gutshotdraw", 0x100002040000000ULL, 0x433E00ULL},
    {2, 2, "4 Gutshotdraw", 0x100004040000000ULL, 0x433E00ULL},
    {2, 2, "2 Gutshotdraw", 0x100008040000000ULL, 0x433E00ULL},
    {2, 1, "Using One Holecard", 0x80000040000000ULL, 0x433E00ULL},
    {2, 2, "2 OESD, 2 Gutshotdraw", 0x80001040000000ULL, 0x433E00ULL},
    {2, 2, "1 OESD, 2 Gutshotdraw", 0x80002040000000ULL, 0x433E00ULL},
    {2, 2, "4 Gutshotdraw", 0x80004040000000ULL, 0x433E00ULL},
    {2, 2, "2 Gutshotdraw", 0x80008040000000ULL, 0x433E00ULL},
    // Combodraws
    {3, 0, "Pair + Flushdraw", 0x4000080ULL, 0},
    {3, 1, "Pair + Flushdraw + Nutflushdraw", 0x84000080ULL, 0},
    {3, 1, "Other", 0x4000080ULL, 0x80000000ULL},
    {3, 0, "Pair + OESD", 0x8000080ULL, 0},
    {3, 0, "Pair + Gutshotdraw", 0x10000080ULL, 0},
    {3, 0, "Twopair + Flushdraw", 0x4000040ULL, 0},
    {3, 1, "Twopair + Flushdraw + Nutflushdraw", 0x84000040ULL, 0},
    {3, 1, "Other", 0x4000040ULL, 0x80000000ULL},
    {3, 0, "Twopair + OESD", 0x8000040ULL, 0},
    {3, 0, "Twopair + Gutshotdraw", 0x10000040ULL, 0},
    {3, 0, "Flushdraw + Overcards", 0x400004000000ULL, 0},
    {3, 1, "Nutflushdraw + Overcards", 0x400084000000ULL, 0},
    {3, 1, "Other", 0x400004000000ULL, 0x80000000ULL},
    {3, 0, "OESD + Overcards", 0x400008000000ULL, 0},
    {3, 0, "Gutshotdraw + Overcards", 0x400010000000ULL, 0},
    {3, 0, "Backdoor-Flushdraw + Backdoor-Straightdraw + Overcards", 0x400060000000ULL, 0},
    {3, 1, "With Flushdraw to Nuts", 0x4000E0000000ULL, 0},
    {3, 1, "Other", 0x400060000000ULL, 0x80000000ULL},
};

std::vector<const ExpectedRow*> rowsOfGroup(int group) {
    std::vector<const ExpectedRow*> rows;
    for (const ExpectedRow& row : expectedRows) {
        if (row.group == group)
            rows.push_back(&row);
    }
    return rows;
}

} // namespace

TEST(HandGroupStandardSchema, HasTheFourGroupsInOrder) {
    const HandGroupSchemaData& standard = HandGroupStandardSchema::data();
    EXPECT_EQ(standard.name, "Standard");
    ASSERT_EQ(standard.groups.size(), 4u);
    for (int g = 0; g < 4; ++g)
        EXPECT_EQ(standard.groups[g].name, expectedGroups[g]);
}

TEST(HandGroupStandardSchema, RowsMatchTheTableRowForRow) {
    const HandGroupSchemaData& standard = HandGroupStandardSchema::data();
    ASSERT_EQ(standard.groups.size(), 4u);
    std::size_t total = 0;
    for (int g = 0; g < 4; ++g) {
        const HandGroup& group = standard.groups[g];
        const std::vector<const ExpectedRow*> expected = rowsOfGroup(g);
        ASSERT_EQ(group.rows.size(), expected.size()) << group.name;
        total += group.rows.size();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const HandGroupRow& row = group.rows[i];
            SCOPED_TRACE(group.name + ", row " + std::to_string(i) + " " + expected[i]->name);
            EXPECT_EQ(row.key.positive, expected[i]->positive);
            EXPECT_EQ(row.key.exclusive, expected[i]->exclusive);
            EXPECT_EQ(handStrengthName(row.key), expected[i]->name);
            EXPECT_EQ(group.depth(i), expected[i]->depth);
            // Parent: the nearest earlier row of lower depth.
            std::uint32_t expectedParent = HandGroupRow::noParent;
            for (std::size_t j = i; j-- > 0;) {
                if (expected[j]->depth < expected[i]->depth) {
                    expectedParent = static_cast<std::uint32_t>(j);
                    break;
                }
            }
            EXPECT_EQ(row.parent, expectedParent);
            // Roots start visible, children hidden.
            EXPECT_EQ(row.visible, expected[i]->depth == 0);
            EXPECT_EQ(row.combinations1, 0u);
            EXPECT_EQ(row.combinations2, 0u);
            EXPECT_EQ(row.percentage1, 0.0f);
            EXPECT_EQ(row.percentage2, 0.0f);
        }
    }
    EXPECT_EQ(total, sizeof(expectedRows) / sizeof(expectedRows[0]));
}

TEST(HandGroupStandardSchema, OnlyTheNutFlushdrawComboCarriesADisplayName) {
    const HandGroupSchemaData& standard = HandGroupStandardSchema::data();
    int named = 0;
    for (const HandGroup& group : standard.groups) {
        for (const HandGroupRow& row : group.rows) {
            if (row.key.displayName.empty())
                continue;
            ++named;
            EXPECT_EQ(group.name, "Combodraws");
            EXPECT_EQ(row.key.displayName, "With Flushdraw to Nuts");
            EXPECT_EQ(row.key.positive, 0x4000E0000000ULL);
            EXPECT_EQ(row.key.exclusive, 0u);
            // Built from its parent's key with the nut flush draw bit added.
            ASSERT_NE(row.parent, HandGroupRow::noParent);
            const HandStrengthKey& parent = group.rows[row.parent].key;
            EXPECT_EQ(parent.positive | 0x80000000ULL, row.key.positive);
            EXPECT_EQ(parent.exclusive, row.key.exclusive);
        }
    }
    EXPECT_EQ(named, 1);
}

TEST(HandGroupStandardSchema, CombodrawTriplesSplitOffTheNutFlushdraw) {
    const HandGroup& combodraws = HandGroupStandardSchema::data().groups.at(3);
    int triples = 0;
    for (std::size_t i = 0; i < combodraws.rows.size(); ++i) {
        const std::vector<std::size_t> children = combodraws.childrenOf(i);
        if (children.empty())
            continue;
        ++triples;
        ASSERT_EQ(children.size(), 2u);
        const HandStrengthKey& parent = combodraws.rows[i].key;
        const HandStrengthKey& nut = combodraws.rows[children[0]].key;
        const HandStrengthKey& other = combodraws.rows[children[1]].key;
        EXPECT_EQ(nut.positive, parent.positive | 0x80000000ULL);
        EXPECT_EQ(other.positive, parent.positive);
        EXPECT_EQ(other.exclusive, 0x80000000ULL);
        EXPECT_EQ(handStrengthName(other), "Other");
    }
    EXPECT_EQ(triples, 4);
}

TEST(HandGroupStandardSchema, NoKeyStandsTwiceInAGroup) {
    // Parents are found by key; with unique keys that is the nearest earlier row.
    for (const HandGroup& group : HandGroupStandardSchema::data().groups) {
        std::set<HandStrengthKey> keys;
        for (const HandGroupRow& row : group.rows)
            EXPECT_TRUE(keys.insert(row.key).second)
                << group.name << " " << handStrengthName(row.key);
    }
}

TEST(HandGroupStandardSchema, DrawRowsExcludeMadeHandsWithHoleCards) {
    for (const HandGroupRow& row : HandGroupStandardSchema::data().groups.at(2).rows)
        EXPECT_EQ(row.key.exclusive & 0x433E00ULL, 0x433E00ULL) << handStrengthName(row.key);
}

TEST(HandGroupStandardSchema, SchemaConstructors) {
    HandGroupSchema byDefault;
    EXPECT_EQ(byDefault.getName(), "Standard");
    ASSERT_EQ(byDefault.getGroups().size(), 4u);
    EXPECT_EQ(byDefault.getGroups()[1].rows.size(), rowsOfGroup(1).size());

    HandGroupSchema standard(nullptr, 1);
    EXPECT_EQ(standard.getName(), "Standard");
    EXPECT_EQ(standard.getGroups().size(), 4u);

    for (int notOne : {0, 2, -1}) {
        HandGroupSchema empty(nullptr, notOne);
        EXPECT_TRUE(empty.getName().empty());
        EXPECT_TRUE(empty.getGroups().empty());
    }

    QObject owner;
    HandGroupSchemaData data;
    data.name = "Mine";
    data.groups.resize(1);
    data.groups[0].name = "Only";
    auto* fromData = new HandGroupSchema(&owner, data);
    EXPECT_EQ(fromData->parent(), &owner);
    EXPECT_EQ(fromData->getName(), "Mine");
    ASSERT_EQ(fromData->getGroups().size(), 1u);
    EXPECT_EQ(fromData->data().groups[0].name, "Only");
}
