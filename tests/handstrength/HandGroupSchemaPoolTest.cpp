#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupRowRequest.h"
#include "handstrength/HandGroupStandardSchema.h"

#include <QDataStream>
#include <QSettings>
#include <gtest/gtest.h>

#include <random>

namespace {

// A schema with a row of every kind: the custom sum, roots, children and grandchildren, a
// caption of its own, exclusive words, the highest key bits, hidden and shown rows, and a
// group without rows.
HandGroupSchemaData everyKind() {
    HandGroupSchemaData data;
    data.name = "Every Kind";
    data.groups.resize(4);
    data.groups[0].name = "Custom Sum";
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x4000000000000ULL, 0), {}));
    HandGroup& made = data.groups[1];
    made.name = "Made";
    made.addRow(HandGroupRowRequest(HandStrengthKey(0x80, 0), {}));
    made.addRow(HandGroupRowRequest(HandStrengthKey(0x280, 0), HandStrengthKey(0x80, 0)));
    made.addRow(HandGroupRowRequest(HandStrengthKey(0x40280, 0, "Best \xC3\xA4 kicker"),
                                    HandStrengthKey(0x280, 0)));
    made.addRow(HandGroupRowRequest(HandStrengthKey(0x280, 0x1C0000), HandStrengthKey(0x280, 0)));
    made.addRow(HandGroupRowRequest(HandStrengthKey(0x100, 0), {}));
    made.rows[1].visible = true; // expanded
    made.rows[4].visible = false;
    data.groups[2].name = "No rows";
    HandGroup& odd = data.groups[3];
    odd.name = "Odd bits";
    odd.addRow(
        HandGroupRowRequest(HandStrengthKey(0x8000000000000001ULL, 0xFFFFFFFFFFFFFFFFULL), {}));
    odd.addRow(HandGroupRowRequest(HandStrengthKey(0x4000E0000000ULL, 0, "With Flushdraw to Nuts"),
                                   HandStrengthKey(0x8000000000000001ULL, 0xFFFFFFFFFFFFFFFFULL)));
    return data;
}

HandGroupSchemaData small() {
    HandGroupSchemaData data;
    data.name = "Small";
    data.groups.resize(1);
    data.groups[0].name = "Only";
    data.groups[0].addRow(HandGroupRowRequest(HandStrengthKey(0x20, 0), {}));
    return data;
}

void expectSameStructure(const HandGroupSchemaData& a, const HandGroupSchemaData& b) {
    ASSERT_EQ(a.name, b.name);
    ASSERT_EQ(a.groups.size(), b.groups.size()) << a.name;
    for (std::size_t g = 0; g < a.groups.size(); ++g) {
        EXPECT_EQ(a.groups[g].name, b.groups[g].name);
        ASSERT_EQ(a.groups[g].rows.size(), b.groups[g].rows.size()) << a.groups[g].name;
        for (std::size_t r = 0; r < a.groups[g].rows.size(); ++r) {
            const HandGroupRow& x = a.groups[g].rows[r];
            const HandGroupRow& y = b.groups[g].rows[r];
            EXPECT_EQ(x.key.positive, y.key.positive);
            EXPECT_EQ(x.key.exclusive, y.key.exclusive);
            EXPECT_EQ(x.key.displayName, y.key.displayName);
            EXPECT_EQ(x.parent, y.parent);
            EXPECT_EQ(x.visible, y.visible);
        }
    }
}

// `loaded` is `original` cut short somewhere: same names, fewer or equal groups and rows.
void expectPrefixOf(const HandGroupSchemaData& loaded, const HandGroupSchemaData& original) {
    ASSERT_EQ(loaded.name, original.name);
    ASSERT_LE(loaded.groups.size(), original.groups.size());
    for (std::size_t g = 0; g < loaded.groups.size(); ++g) {
        EXPECT_EQ(loaded.groups[g].name, original.groups[g].name);
        ASSERT_LE(loaded.groups[g].rows.size(), original.groups[g].rows.size());
        for (std::size_t r = 0; r < loaded.groups[g].rows.size(); ++r) {
            EXPECT_EQ(loaded.groups[g].rows[r].key, original.groups[g].rows[r].key);
            EXPECT_EQ(loaded.groups[g].rows[r].parent, original.groups[g].rows[r].parent);
        }
    }
}

void writeRow(QDataStream& out, const HandGroupRow& row) {
    out << QString("position") << QString::fromStdString(row.key.displayName)
        << qint64(row.key.positive) << qint64(row.key.exclusive) << qint32(row.parent)
        << row.visible;
}

QByteArray storedValue() {
    QSettings settings("Velmara", "Quorvane");
    return settings.value("HandSelection/handGroupSchemaPool").toByteArray();
}

} // namespace

TEST(HandGroupSchemaPool, StartsWithStandardAsDefault) {
    HandGroupSchemaPool pool;
    ASSERT_EQ(pool.schemas().size(), 1u);
    EXPECT_EQ(pool.schemas()[0].name, "Standard");
    EXPECT_EQ(pool.defaultName(), "Standard");
    ASSERT_NE(pool.find("Standard"), nullptr);
    EXPECT_EQ(pool.find("Standard")->groups.size(), 4u);
    EXPECT_EQ(pool.find("Nope"), nullptr);
}

TEST(HandGroupSchemaPool, SettingsRoundTripOfEveryRowKind) {
    {
        HandGroupSchemaPool pool;
        ASSERT_TRUE(pool.add(everyKind()));
        ASSERT_TRUE(pool.add(small()));
        pool.setDefaultName("Every Kind");
        pool.save();
    }
    EXPECT_FALSE(storedValue().isEmpty());

    HandGroupSchemaPool loaded;
    loaded.load();
    ASSERT_EQ(loaded.schemas().size(), 3u);
    EXPECT_EQ(loaded.schemas()[0].name, "Standard");
    EXPECT_EQ(loaded.defaultName(), "Every Kind");
    expectSameStructure(loaded.schemas()[1], everyKind());
    expectSameStructure(loaded.schemas()[2], small());
    // Counts and shares are not stored.
    for (const HandGroup& group : loaded.schemas()[1].groups) {
        for (const HandGroupRow& row : group.rows) {
            EXPECT_EQ(row.combinations1, 0u);
            EXPECT_EQ(row.percentage1, 0.0f);
        }
    }
}

TEST(HandGroupSchemaPool, TheStreamHasTheDocumentedTokens) {
    HandGroupSchemaPool pool;
    pool.add(small());
    pool.setDefaultName("Small");

    QByteArray expected;
    QDataStream out(&expected, QIODevice::WriteOnly);
    out << QString("Small") << QString("schema") << QString("Small") << QString("group")
        << QString("Only");
    writeRow(out, small().groups[0].rows[0]);
    EXPECT_EQ(pool.toByteArray(), expected);
}

TEST(HandGroupSchemaPool, StandardIsNeverWrittenAndAlwaysLoaded) {
    HandGroupSchemaPool pool;
    QByteArray onlyDefault;
    {
        QDataStream out(&onlyDefault, QIODevice::WriteOnly);
        out << QString("Standard");
    }
    EXPECT_EQ(pool.toByteArray(), onlyDefault);

    // Nor can it be replaced or removed.
    HandGroupSchemaData fake = small();
    fake.name = "Standard";
    EXPECT_FALSE(pool.add(fake));
    EXPECT_FALSE(pool.remove("Standard"));
    EXPECT_EQ(pool.find("Standard")->groups.size(), 4u);

    // A foreign stream that holds a "Standard" does not replace the built-in one.
    QByteArray foreign;
    {
        QDataStream out(&foreign, QIODevice::WriteOnly);
        out << QString("Standard") << QString("schema") << QString("Standard") << QString("group")
            << QString("Fake");
        writeRow(out, small().groups[0].rows[0]);
    }
    pool.fromByteArray(foreign);
    ASSERT_EQ(pool.schemas().size(), 1u);
    expectSameStructure(pool.schemas()[0], HandGroupStandardSchema::data());
}

TEST(HandGroupSchemaPool, EmptyValueAndEmptyDefaultGiveStandard) {
    HandGroupSchemaPool pool;
    pool.add(small());
    pool.fromByteArray(QByteArray());
    ASSERT_EQ(pool.schemas().size(), 1u);
    EXPECT_EQ(pool.defaultName(), "Standard");

    QByteArray emptyDefault;
    {
        QDataStream out(&emptyDefault, QIODevice::WriteOnly);
        out << QString() << QString("schema") << QString("Small") << QString("group")
            << QString("Only");
        writeRow(out, small().groups[0].rows[0]);
    }
    pool.fromByteArray(emptyDefault);
    EXPECT_EQ(pool.defaultName(), "Standard");
    ASSERT_EQ(pool.schemas().size(), 2u);
    expectSameStructure(pool.schemas()[1], small());

    // Nothing stored at all.
    QSettings("Velmara", "Quorvane").remove("HandSelection/handGroupSchemaPool");
    HandGroupSchemaPool fresh;
    fresh.load();
    EXPECT_EQ(fresh.schemas().size(), 1u);
}

TEST(HandGroupSchemaPool, TruncatedAtEveryByteLoadsWhatItCan) {
    HandGroupSchemaPool pool;
    pool.add(everyKind());
    pool.add(small());
    pool.setDefaultName("Small");
    const QByteArray full = pool.toByteArray();

    std::size_t longest = 0;
    for (int length = 0; length <= full.size(); ++length) {
        HandGroupSchemaPool loaded;
        loaded.fromByteArray(full.left(length));
        ASSERT_GE(loaded.schemas().size(), 1u);
        ASSERT_EQ(loaded.schemas()[0].name, "Standard");
        ASSERT_LE(loaded.schemas().size(), 3u);
        for (std::size_t s = 1; s < loaded.schemas().size(); ++s)
            expectPrefixOf(loaded.schemas()[s], pool.schemas()[s]);
        longest = std::max(longest, loaded.schemas().size());
        if (length == full.size()) {
            expectSameStructure(loaded.schemas()[1], everyKind());
            expectSameStructure(loaded.schemas()[2], small());
            EXPECT_EQ(loaded.defaultName(), "Small");
        }
    }
    EXPECT_EQ(longest, 3u);

    // Cut inside the second schema's row: the first schema is whole.
    HandGroupSchemaPool cut;
    cut.fromByteArray(full.left(full.size() - 3));
    ASSERT_EQ(cut.schemas().size(), 3u);
    expectSameStructure(cut.schemas()[1], everyKind());
    EXPECT_TRUE(cut.schemas()[2].groups.empty() || cut.schemas()[2].groups[0].rows.empty());
}

TEST(HandGroupSchemaPool, UnknownTagsAreSkippedOneStringAtATime) {
    const HandGroupSchemaData kinds = everyKind();
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QString("Every Kind") << QString("fromTheFuture") << QString("schema")
            << QString("Every Kind");
        for (const HandGroup& group : kinds.groups) {
            out << QString("group") << QString::fromStdString(group.name);
            for (const HandGroupRow& row : group.rows) {
                writeRow(out, row);
                out << QString("colour");
            }
            out << QString("note") << QString("group"); // a tag name as payload is a tag
            out << QString("Late group");
        }
    }
    HandGroupSchemaPool pool;
    pool.fromByteArray(bytes);
    ASSERT_EQ(pool.schemas().size(), 2u);
    const HandGroupSchemaData& loaded = pool.schemas()[1];
    EXPECT_EQ(pool.defaultName(), "Every Kind");
    // Each "note", "group", name triple opens an extra, empty group "Late group".
    ASSERT_EQ(loaded.groups.size(), 2 * kinds.groups.size());
    for (std::size_t g = 0; g < kinds.groups.size(); ++g) {
        EXPECT_EQ(loaded.groups[2 * g].name, kinds.groups[g].name);
        EXPECT_EQ(loaded.groups[2 * g].rows.size(), kinds.groups[g].rows.size());
        EXPECT_EQ(loaded.groups[2 * g + 1].name, "Late group");
        EXPECT_TRUE(loaded.groups[2 * g + 1].rows.empty());
    }
}

TEST(HandGroupSchemaPool, NamelessSchemasAndGroupsAreDropped) {
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QString("Standard");
        out << QString("group") << QString("Before any schema");
        writeRow(out, small().groups[0].rows[0]);
        out << QString("schema") << QString("Kept") << QString("group") << QString();
        writeRow(out, small().groups[0].rows[0]); // in a nameless group
        out << QString("group") << QString("Named");
        writeRow(out, small().groups[0].rows[0]);
        out << QString("schema") << QString() << QString("group") << QString("Lost");
        writeRow(out, small().groups[0].rows[0]);
    }
    HandGroupSchemaPool pool;
    pool.fromByteArray(bytes);
    ASSERT_EQ(pool.schemas().size(), 2u);
    const HandGroupSchemaData& kept = pool.schemas()[1];
    EXPECT_EQ(kept.name, "Kept");
    ASSERT_EQ(kept.groups.size(), 1u);
    EXPECT_EQ(kept.groups[0].name, "Named");
    EXPECT_EQ(kept.groups[0].rows.size(), 1u);
}

TEST(HandGroupSchemaPool, GarbageNeverCrashes) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes;
        const int size = static_cast<int>(random() % 200);
        for (int i = 0; i < size; ++i)
            bytes.append(static_cast<char>(random() & 0xFF));
        HandGroupSchemaPool pool;
        pool.fromByteArray(bytes);
        ASSERT_GE(pool.schemas().size(), 1u);
        EXPECT_EQ(pool.schemas()[0].name, "Standard");
    }
}

TEST(HandGroupSchemaPool, AddReplacesAndRemoveResetsTheDefault) {
    HandGroupSchemaPool pool;
    EXPECT_TRUE(pool.add(small()));
    HandGroupSchemaData bigger = small();
    bigger.groups.resize(2);
    bigger.groups[1].name = "Second";
    EXPECT_TRUE(pool.add(bigger));
    ASSERT_EQ(pool.schemas().size(), 2u);
    EXPECT_EQ(pool.find("Small")->groups.size(), 2u);

    EXPECT_FALSE(pool.add(HandGroupSchemaData()));
    EXPECT_EQ(pool.schemas().size(), 2u);

    pool.setDefaultName("Small");
    EXPECT_FALSE(pool.remove("Missing"));
    EXPECT_TRUE(pool.remove("Small"));
    EXPECT_EQ(pool.defaultName(), "Standard");
    EXPECT_EQ(pool.schemas().size(), 1u);
}
