#include "handstrength/HandGroupTickSchemaPool.h"

#include <QDataStream>
#include <QSettings>
#include <gtest/gtest.h>

#include <random>

namespace {

using TickSchema = HandGroupTickSchemaPool::HandGroupTickSchema;

TickSchema mine() {
    TickSchema schema;
    schema.name = "Mine";
    schema.handStrengths = {HandStrengthKey(0x280, 0, "caption is not stored"),
                            HandStrengthKey(0x4000000000000ULL, 0),
                            HandStrengthKey(0x8000000000000000ULL, 0xFFFFFFFFFFFFFFFFULL),
                            HandStrengthKey(0x4000000, 0x433E00)};
    return schema;
}

TickSchema empty() {
    TickSchema schema;
    schema.name = "Empty";
    return schema;
}

void expectSame(const TickSchema& a, const TickSchema& b) {
    EXPECT_EQ(a.name, b.name);
    ASSERT_EQ(a.handStrengths.size(), b.handStrengths.size()) << a.name;
    for (std::size_t i = 0; i < a.handStrengths.size(); ++i) {
        EXPECT_EQ(a.handStrengths[i].positive, b.handStrengths[i].positive);
        EXPECT_EQ(a.handStrengths[i].exclusive, b.handStrengths[i].exclusive);
    }
}

std::vector<std::string> namesOf(const HandGroupTickSchemaPool& pool) {
    std::vector<std::string> names;
    for (const TickSchema& schema : pool.schemas())
        names.push_back(schema.name);
    return names;
}

} // namespace

TEST(HandGroupTickSchemaPool, TheFixedSchemas) {
    HandGroupTickSchemaPool pool;
    EXPECT_EQ(namesOf(pool),
              (std::vector<std::string>{"Nothing", "Made Hands", "Mediocre and Strong Draws"}));
    EXPECT_TRUE(pool.schemas()[0].handStrengths.empty());

    const std::vector<HandStrengthKey>& made = pool.schemas()[1].handStrengths;
    const unsigned long long madeValues[] = {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80};
    ASSERT_EQ(made.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(made[i].positive, madeValues[i]);
        EXPECT_EQ(made[i].exclusive, 0u);
    }

    const std::vector<HandStrengthKey>& draws = pool.schemas()[2].handStrengths;
    const unsigned long long drawValues[] = {
        0xC000000,      0x14000000,     0x4000000,      0x8000000,      0x14000000,    0x28000000,
        0x400004000000, 0x400008000000, 0x40000C000000, 0x400014000000, 0x400010000000};
    ASSERT_EQ(draws.size(), 11u);
    for (std::size_t i = 0; i < 11; ++i) {
        EXPECT_EQ(draws[i].positive, drawValues[i]);
        EXPECT_EQ(draws[i].exclusive, 0x433E00u);
    }
}

TEST(HandGroupTickSchemaPool, SettingsRoundTrip) {
    {
        HandGroupTickSchemaPool pool;
        pool.add(mine());
        pool.add(empty());
        pool.save();
    }
    QSettings settings("Velmara", "Quorvane");
    EXPECT_FALSE(settings.value("HandSelection/handGroupTickSchemaPool").toByteArray().isEmpty());

    HandGroupTickSchemaPool loaded;
    loaded.load();
    EXPECT_EQ(namesOf(loaded),
              (std::vector<std::string>{"Nothing", "Made Hands", "Mediocre and Strong Draws",
                                        "Mine", "Empty"}));
    expectSame(loaded.schemas()[3], mine());
    expectSame(loaded.schemas()[4], empty());
    EXPECT_TRUE(loaded.schemas()[3].handStrengths[0].displayName.empty());
}

TEST(HandGroupTickSchemaPool, TheStreamHasTheDocumentedTokens) {
    HandGroupTickSchemaPool pool;
    TickSchema one;
    one.name = "One";
    one.handStrengths = {HandStrengthKey(0x80, 0x4000)};
    pool.add(one);
    QByteArray expected;
    QDataStream out(&expected, QIODevice::WriteOnly);
    out << QString("schema") << QString("One") << QString("handStrength") << qint64(0x80)
        << qint64(0x4000);
    EXPECT_EQ(pool.toByteArray(), expected);
}

TEST(HandGroupTickSchemaPool, FixedNamesAreNeverSaved) {
    HandGroupTickSchemaPool pool;
    TickSchema mineMade;
    mineMade.name = "Made Hands";
    mineMade.handStrengths = {HandStrengthKey(0x100, 0)};
    pool.add(mineMade); // replaces the fixed one for this run
    ASSERT_EQ(pool.find("Made Hands")->handStrengths.size(), 1u);
    EXPECT_TRUE(pool.toByteArray().isEmpty());
    pool.save();

    HandGroupTickSchemaPool loaded;
    loaded.load();
    EXPECT_EQ(loaded.schemas().size(), 3u);
    EXPECT_EQ(loaded.find("Made Hands")->handStrengths.size(), 8u);

    // A foreign stream with a fixed name does not replace it either.
    QByteArray foreign;
    QDataStream foreignOut(&foreign, QIODevice::WriteOnly);
    foreignOut << QString("schema") << QString("Nothing") << QString("handStrength") << qint64(1)
               << qint64(0);
    loaded.fromByteArray(foreign);
    EXPECT_TRUE(loaded.find("Nothing")->handStrengths.empty());
    EXPECT_EQ(loaded.schemas().size(), 3u);

    EXPECT_FALSE(loaded.remove("Nothing"));
    EXPECT_FALSE(loaded.remove("Mediocre and Strong Draws"));
}

TEST(HandGroupTickSchemaPool, TruncatedAtEveryByteLoadsWhatItCan) {
    HandGroupTickSchemaPool pool;
    pool.add(mine());
    pool.add(empty());
    const QByteArray full = pool.toByteArray();
    for (int length = 0; length <= full.size(); ++length) {
        HandGroupTickSchemaPool loaded;
        loaded.fromByteArray(full.left(length));
        ASSERT_GE(loaded.schemas().size(), 3u);
        ASSERT_LE(loaded.schemas().size(), 5u);
        EXPECT_EQ(loaded.schemas()[0].name, "Nothing");
        for (std::size_t s = 3; s < loaded.schemas().size(); ++s) {
            const TickSchema& got = loaded.schemas()[s];
            const TickSchema& original = pool.schemas()[s];
            EXPECT_EQ(got.name, original.name);
            ASSERT_LE(got.handStrengths.size(), original.handStrengths.size());
            for (std::size_t k = 0; k < got.handStrengths.size(); ++k)
                EXPECT_EQ(got.handStrengths[k], original.handStrengths[k]);
        }
        if (length == full.size()) {
            ASSERT_EQ(loaded.schemas().size(), 5u);
            expectSame(loaded.schemas()[3], mine());
        }
    }
}

TEST(HandGroupTickSchemaPool, UnknownTagsAndNamelessSchemas) {
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QString("handStrength") << qint64(0x80) << qint64(0); // before any schema
        out << QString("schema") << QString("Tagged") << QString("comment") << QString("text")
            << QString("handStrength") << qint64(0x80) << qint64(0) << QString("weight")
            << QString("handStrength") << qint64(0x100) << qint64(0);
        out << QString("schema") << QString() << QString("handStrength") << qint64(0x8)
            << qint64(0);
    }
    HandGroupTickSchemaPool pool;
    pool.fromByteArray(bytes);
    ASSERT_EQ(pool.schemas().size(), 4u);
    const TickSchema& tagged = pool.schemas()[3];
    EXPECT_EQ(tagged.name, "Tagged");
    EXPECT_EQ(tagged.handStrengths,
              (std::vector<HandStrengthKey>{HandStrengthKey(0x80, 0), HandStrengthKey(0x100, 0)}));
}

TEST(HandGroupTickSchemaPool, GarbageNeverCrashes) {
    std::mt19937 random(112026);
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes;
        const int size = static_cast<int>(random() % 160);
        for (int i = 0; i < size; ++i)
            bytes.append(static_cast<char>(random() & 0xFF));
        HandGroupTickSchemaPool pool;
        pool.fromByteArray(bytes);
        ASSERT_GE(pool.schemas().size(), 3u);
    }
}

TEST(HandGroupTickSchemaPool, AddReplacesAndRemoveDeletes) {
    HandGroupTickSchemaPool pool;
    EXPECT_TRUE(pool.add(mine()));
    TickSchema other = mine();
    other.handStrengths.resize(1);
    EXPECT_TRUE(pool.add(other));
    EXPECT_EQ(pool.schemas().size(), 4u);
    EXPECT_EQ(pool.find("Mine")->handStrengths.size(), 1u);
    EXPECT_FALSE(pool.add(TickSchema()));
    EXPECT_TRUE(pool.remove("Mine"));
    EXPECT_FALSE(pool.remove("Mine"));
    EXPECT_EQ(pool.find("Mine"), nullptr);
}
