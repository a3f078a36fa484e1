#include "Range/HandRange.h"

#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RandomSource.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace Range;

namespace {

unsigned int values(char high, char low) {
    return valueToBinaryMask(high) | valueToBinaryMask(low);
}

std::string technical(const HandRange& range) {
    return HandRangeStringReader(range).technicalText();
}

HandRange rangeOf(const std::string& freeText) {
    HandRange range;
    HandRangeStringManipulator(range).setFree(freeText);
    return range;
}

} // namespace

TEST(HandRange, ElementOrderIsValuesThenSuitedFirst) {
    const HandRange range(true);
    std::vector<std::string> names;
    for (const Element& element : range)
        names.push_back(elementToText(element));
    ASSERT_EQ(names.size(), 169u);
    EXPECT_EQ(std::vector<std::string>(names.begin(), names.begin() + 10),
              (std::vector<std::string>{"22", "33", "32s", "32o", "44", "42s", "42o", "43s", "43o",
                                        "55"}));
    EXPECT_EQ(std::vector<std::string>(names.end() - 4, names.end()),
              (std::vector<std::string>{"AQs", "AQo", "AKs", "AKo"}));
}

TEST(HandRange, ClassesAndCombinationsOfTheMatrix) {
    const HandRange range(true);
    int pairs = 0, suited = 0, offsuit = 0;
    for (const Element& element : range) {
        switch (element.suitClass) {
        case Pair:
            ++pairs;
            EXPECT_EQ(element.possibleSuits, 2254u);
            EXPECT_FALSE(element.suited);
            EXPECT_EQ(valueBitCount(element.values), 1u);
            break;
        case Suited:
            ++suited;
            EXPECT_EQ(element.possibleSuits, 33825u);
            EXPECT_TRUE(element.suited);
            break;
        default:
            ++offsuit;
            EXPECT_EQ(element.possibleSuits, 31710u);
            EXPECT_FALSE(element.suited);
            break;
        }
        EXPECT_EQ(element.suits, element.possibleSuits);
    }
    EXPECT_EQ(pairs, 13);
    EXPECT_EQ(suited, 78);
    EXPECT_EQ(offsuit, 78);
    EXPECT_EQ(range.combinationCount(), 1326u);
}

TEST(HandRange, NewDefaultRangeIsEmpty) {
    const HandRange range;
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(range.combinationCount(), 0u);
    EXPECT_EQ(range.rangePercentage(), 0.0f);
    EXPECT_EQ(range.size(), 169u);
    EXPECT_EQ(technical(range), "");
}

TEST(HandRange, FullRangePercentageIsExactlyOne) {
    const HandRange range(true);
    EXPECT_FALSE(range.isEmpty());
    EXPECT_EQ(range.rangePercentage(), 1.0f);
}

TEST(HandRange, RangePercentageIsAShareOf1326) {
    EXPECT_FLOAT_EQ(rangeOf("AA").rangePercentage(), 6.0f / 1326.0f);
    EXPECT_EQ(rangeOf("AA,AKs").rangePercentage(), 10.0f / 1326.0f);
}

TEST(HandRange, ConstructorTakesOverAPreparedContainer) {
    ElementContainer elements;
    buildElements(elements, false);
    buildElements(elements, true); // rebuilding replaces every class
    EXPECT_EQ(elements.size(), 169u);
    const HandRange range(std::move(elements));
    EXPECT_EQ(range.combinationCount(), 1326u);
}

TEST(HandRange, FindByKey) {
    const HandRange range(true);
    const auto aks = range.find(values('A', 'K'), true);
    ASSERT_NE(aks, range.end());
    EXPECT_EQ(aks->suitClass, Suited);
    const auto ako = range.find(values('A', 'K'), false);
    ASSERT_NE(ako, range.end());
    EXPECT_EQ(ako->suitClass, Offsuit);
    const auto aa = range.find(valueToBinaryMask('A'), false);
    ASSERT_NE(aa, range.end());
    EXPECT_EQ(aa->suitClass, Pair);
    EXPECT_EQ(range.find(valueToBinaryMask('A'), true), range.end());
    EXPECT_EQ(range.find(7, false), range.end());
}

TEST(HandRange, SetSuitsStoresInPlaceWithoutNotification) {
    HandRange range;
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    const auto aks = range.find(values('A', 'K'), true);
    EXPECT_TRUE(range.setSuits(aks, 1 | 32));
    EXPECT_EQ(aks->suits, 33u); // the iterator held across the change sees it
    EXPECT_EQ(range.combinationCount(), 2u);
    EXPECT_FALSE(range.setSuits(aks, 1 | 32));
    EXPECT_TRUE(range.setSuits(values('A', 'K'), true, 0x8421));
    EXPECT_EQ(range.combinationCount(), 4u);
    EXPECT_EQ(notified, 0);
}

TEST(HandRange, SetSuitsKeepsWithinThePossibleSuits) {
    HandRange range;
    EXPECT_TRUE(range.setSuits(values('A', 'K'), true, 0xFFFF));
    EXPECT_EQ(range.find(values('A', 'K'), true)->suits, 0x8421u);
    EXPECT_EQ(range.combinationCount(), 4u);
}

TEST(HandRange, SetSuitsOfAMissingClassChangesNothing) {
    HandRange range;
    EXPECT_FALSE(range.setSuits(7, false, 1));
    EXPECT_TRUE(range.isEmpty());
}

TEST(HandRange, SameSuitsReportFalseAndDoNotNotify) {
    HandRange range = rangeOf("AKs");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    EXPECT_FALSE(range.setSuitsAndNotify(values('A', 'K'), true, 0x8421));
    EXPECT_EQ(notified, 0);
    EXPECT_TRUE(range.setSuitsAndNotify(values('A', 'K'), true, 1));
    EXPECT_EQ(notified, 1);
    EXPECT_TRUE(range.setSuitsAndNotify(range.find(values('A', 'K'), true), 0));
    EXPECT_EQ(notified, 2);
}

TEST(HandRange, PlusAssignNotifiesEvenWithoutChange) {
    HandRange range = rangeOf("AA");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    range += rangeOf("AA");
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(technical(range), "AA");
    range += rangeOf("KK,AdKd");
    EXPECT_EQ(notified, 2);
    EXPECT_EQ(technical(range), "KK,AA,AdKd");
    EXPECT_EQ(range.combinationCount(), 13u);
}

TEST(HandRange, MinusAssignTakesSuitsOut) {
    HandRange range = rangeOf("AA,AKs");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    range -= rangeOf("AdAh,AhKh,QQ");
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(technical(range), "AdAs,AdAc,AhAs,AhAc,AsAc,AdKd,AsKs,AcKc");
    EXPECT_EQ(range.combinationCount(), 8u);
    range -= rangeOf("KK");
    EXPECT_EQ(notified, 2);
    EXPECT_EQ(range.combinationCount(), 8u);
}

TEST(HandRange, InsertKeepsOnlyPossibleSuits) {
    HandRange range;
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    // AdAd asks for bit 0 (dd), which no pair has.
    Element adAd = makeElement(valueToBinaryMask('A'), Pair, 1);
    Element result = range.insert(adAd, true);
    EXPECT_EQ(result.suits, 0u);
    EXPECT_TRUE(range.isEmpty());
    // AhAd spelled with the suit pair hd: the lower triangle, outside the pair mask.
    Element ahAd = makeElement(valueToBinaryMask('A'), Pair, suitPairToBit('h', 'd'));
    result = range.insert(ahAd, true);
    EXPECT_EQ(result.suits, 0u);
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(notified, 0);
    // Spelled dh it is a real hand.
    Element adAh = makeElement(valueToBinaryMask('A'), Pair, suitPairToBit('d', 'h'));
    result = range.insert(adAh, true);
    EXPECT_EQ(result.suits, 2u);
    EXPECT_EQ(result.values, 4096u);
    EXPECT_EQ(notified, 1);
}

TEST(HandRange, InsertAddsOrReplaces) {
    HandRange range;
    range.insert(makeElement(values('K', 'Q'), Suited, 1), true);
    const Element added = range.insert(makeElement(values('K', 'Q'), Suited, 32), true);
    EXPECT_EQ(added.suits, 33u);
    const Element replaced = range.insert(makeElement(values('K', 'Q'), Suited, 1024), false);
    EXPECT_EQ(replaced.suits, 1024u);
    EXPECT_EQ(range.combinationCount(), 1u);
}

TEST(HandRange, InsertOfAnUnknownClassAsserts) {
    HandRange range;
    AssertionRecorder recorder;
    Element strange = makeElement(7, Offsuit, 2); // three values: no such class
    const Element result = range.insert(strange, true);
    EXPECT_TRUE(recorder.saw("Hand not found."));
    EXPECT_EQ(result.values, 7u);
    EXPECT_EQ(result.suits, 2u);
    EXPECT_TRUE(range.isEmpty());
}

TEST(HandRange, InsertOfAnElementWithoutPossibleSuitsGivesZero) {
    HandRange range;
    Element bare;
    bare.values = values('A', 'K');
    bare.suits = 1;
    const Element result = range.insert(bare, true);
    EXPECT_EQ(result.values, 0u);
    EXPECT_EQ(result.suits, 0u);
    EXPECT_EQ(result.possibleSuits, 0u);
    EXPECT_TRUE(range.isEmpty());
}

TEST(HandRange, RemoveHand) {
    HandRange range = rangeOf("AKs,QQ");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    EXPECT_TRUE(range.removeHand(values('A', 'K'), true));
    EXPECT_EQ(notified, 1);
    EXPECT_TRUE(range.removeHand(values('A', 'K'), true)); // exists, nothing to change
    EXPECT_EQ(notified, 1);
    EXPECT_FALSE(range.removeHand(7, true));
    EXPECT_EQ(technical(range), "QQ");
}

TEST(HandRange, ResetDoesNotNotify) {
    HandRange range = rangeOf("AA,KK");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    range.reset();
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(range.combinationCount(), 0u);
    EXPECT_EQ(notified, 0);
}

TEST(HandRange, AssignPassesTheFilterAndNotifiesOnce) {
    HandRange range = rangeOf("22");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    // A filter that allows pairs only.
    range.setSuitFilter(
        [](const Element& element) { return element.suitClass == Pair ? element.suits : 0; });
    range.assign(rangeOf("AA,AKs,KQo").elements());
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(technical(range), "AA");
}

TEST(HandRange, FilterMaySilentlyRefuse) {
    HandRange range;
    range.setSuitFilter([](const Element& element) { return element.suits & 1U; });
    EXPECT_FALSE(range.setSuits(values('A', 'K'), true, 32));
    const Element result = range.insert(makeElement(values('A', 'K'), Suited, 0x8421), true);
    EXPECT_EQ(result.suits, 1u);
}

TEST(HandRange, SuitsVectorRoundTrip) {
    const HandRange source = rangeOf("TT+,AJs+,KQo,7h6h");
    const std::vector<unsigned int> suits = source.suitsVector();
    ASSERT_EQ(suits.size(), 169u);
    HandRange target;
    int notified = 0;
    target.setChangeNotifier([&] { ++notified; });
    target.setSuitsVector(suits);
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(target.suitsVector(), suits);
    EXPECT_EQ(target.combinationCount(), source.combinationCount());
    target.setSuitsVector(suits);
    EXPECT_EQ(notified, 2); // one notification at the end, changed or not
}

TEST(HandRange, SuitsVectorOfAWrongSizeAsserts) {
    HandRange target;
    AssertionRecorder recorder;
    target.setSuitsVector(std::vector<unsigned int>(3, 0x08CE));
    EXPECT_TRUE(recorder.saw("Suits vector does not hold 169 entries."));
    EXPECT_EQ(technical(target), "22,33");
}

TEST(HandRange, RefilterNotifiesOnlyOnChange) {
    HandRange range = rangeOf("AA,KK");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    range.refilter();
    EXPECT_EQ(notified, 0);
    unsigned int allowed = 0x08CE;
    range.setSuitFilter([&](const Element& element) {
        return element.values == valueToBinaryMask('A') ? element.suits & allowed : element.suits;
    });
    allowed = 2;
    range.refilter();
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(technical(range), "KK,AdAh");
    EXPECT_EQ(range.combinationCount(), 7u);
}

TEST(HandRange, CopyDropsTheFunctionObjects) {
    HandRange group = rangeOf("AA");
    int notified = 0;
    group.setChangeNotifier([&] { ++notified; });
    group.setSuitFilter([](const Element&) { return 0u; }); // a group under an empty parent
    HandRange copy(group);
    EXPECT_EQ(technical(copy), "AA");
    EXPECT_TRUE(copy.setSuitsAndNotify(values('K', 'Q'), true, 0x8421)); // not filtered
    EXPECT_EQ(technical(copy), "KQs,AA");
    EXPECT_EQ(notified, 0);
    // The original still refuses.
    EXPECT_FALSE(group.setSuitsAndNotify(values('K', 'Q'), true, 0x8421));
}

TEST(HandRange, AssignmentKeepsOwnFunctionObjects) {
    HandRange target;
    int notified = 0;
    target.setChangeNotifier([&] { ++notified; });
    target.setSuitFilter([](const Element& element) { return element.suits & 1U; });
    target = rangeOf("AKs,QQ");
    EXPECT_EQ(technical(target), "QQ,AKs"); // plain assignment: nothing filtered
    EXPECT_EQ(notified, 0);
    target.refilter();
    EXPECT_EQ(technical(target), "AdKd");
    EXPECT_EQ(notified, 1);
}

TEST(HandRange, CopyWithoutNotifierThrowsBadFunctionCallOnNotify) {
    const HandRange range = rangeOf("AA");
    HandRange quiet(range, withoutNotifier);
    EXPECT_EQ(technical(quiet), "AA");
    EXPECT_FALSE(static_cast<bool>(quiet.changeNotifier()));
    EXPECT_TRUE(quiet.setSuits(values('K', 'Q'), true, 1)); // no notification needed
    EXPECT_THROW(quiet.setSuitsAndNotify(values('K', 'Q'), true, 0), std::bad_function_call);
    EXPECT_THROW(quiet += range, std::bad_function_call);
}

TEST(HandRange, CombinationCountFollowsEveryChange) {
    HandRange range;
    range.setSuits(valueToBinaryMask('A'), false, 0x08CE);
    EXPECT_EQ(range.combinationCount(), 6u);
    range.setSuits(values('A', 'K'), false, 0x7BDE);
    EXPECT_EQ(range.combinationCount(), 18u);
    range.removeHand(valueToBinaryMask('A'), false);
    EXPECT_EQ(range.combinationCount(), 12u);
    range += HandRange(true);
    EXPECT_EQ(range.combinationCount(), 1326u);
    range -= rangeOf("AKo");
    EXPECT_EQ(range.combinationCount(), 1314u);
}

TEST(HandRange, StreamWritesCompactText) {
    std::ostringstream out;
    out << rangeOf("AKs,AQs,AJs,QQ,KK,AA");
    EXPECT_EQ(out.str(), "QQ+,AJs+");
    std::ostringstream empty;
    empty << HandRange();
    EXPECT_EQ(empty.str(), "");
}

TEST(HandRange, StreamReadsOneTokenOfFreeTextAndNotifiesOnce) {
    HandRange range = rangeOf("22");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    std::istringstream in("tt+,aks 99");
    in >> range;
    EXPECT_EQ(technical(range), "TT,JJ,QQ,KK,AA,AKs");
    EXPECT_EQ(notified, 1);
    in >> range;
    EXPECT_EQ(technical(range), "99");
    EXPECT_EQ(notified, 2);
    in >> range; // nothing left: the range is emptied, and still told once
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(notified, 3);
}

TEST(HandRange, RandomHandFollowsTheWalk) {
    const HandRange range = rangeOf("QQ,AKs"); // QQ comes first in container order
    HandRangeStringReader reader(range);
    for (unsigned int seed : {1u, 2u, 3u, 99u, 12345u}) {
        Range::RandomSource reference(seed);
        const unsigned int drawn = reference.below(10);
        const std::string expected = drawn < 6 ? std::string{'Q', "dhdsdchshcsc"[2 * drawn], 'Q',
                                                             "dhdsdchshcsc"[2 * drawn + 1]}
                                               : std::string{'A', "ddhhsscc"[2 * (drawn - 6)], 'K',
                                                             "ddhhsscc"[2 * (drawn - 6) + 1]};
        Range::RandomSource random(seed);
        EXPECT_EQ(reader.randomHand(random), expected) << seed;
    }
}

TEST(HandRange, RandomHandsComeFromTheRange) {
    const HandRange range = rangeOf("QQ,AKs,7h6h");
    HandRangeStringReader reader(range);
    Range::RandomSource random(5);
    std::set<std::string> seen;
    for (int i = 0; i < 2000; ++i)
        seen.insert(reader.randomHand(random));
    EXPECT_EQ(seen, (std::set<std::string>{"QdQh", "QdQs", "QdQc", "QhQs", "QhQc", "QsQc", "AdKd",
                                           "AhKh", "AsKs", "AcKc", "7h6h"}));
}

TEST(HandRange, RandomHandsReplayForTheSameSeedAndSpreadEvenly) {
    // One generator is handed in wherever hands are drawn: a fixed seed replays a run, and
    // reading the range again does not reseed anything.
    const HandRange range = rangeOf("22+,A2s+,K9o+");
    Range::RandomSource first(77);
    Range::RandomSource second(77);
    std::map<std::string, int> counts;
    for (int i = 0; i < 20000; ++i) {
        const std::string hand = HandRangeStringReader(range).randomHand(first);
        ASSERT_EQ(HandRangeStringReader(range).randomHand(second), hand);
        ++counts[hand];
    }
    // 78 + 48 + 48 = 174 combinations, each drawn about 115 times.
    ASSERT_EQ(counts.size(), 174u);
    for (const auto& entry : counts) {
        EXPECT_GT(entry.second, 60) << entry.first;
        EXPECT_LT(entry.second, 180) << entry.first;
    }
}

TEST(HandRange, RandomHandOfAnEmptyRangeIsRefused) {
    const HandRange range;
    AssertionRecorder recorder;
    Range::RandomSource random(1);
    EXPECT_EQ(HandRangeStringReader(range).randomHand(random), "dummy, so that warning disappears");
    EXPECT_TRUE(recorder.saw("Random hand of an empty range."));
}
