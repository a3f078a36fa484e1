#include "Range/HandRangeStringManipulator.h"

#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/RangeStringOperations.h"
#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

using namespace Range;

namespace {

std::string technical(const HandRange& range) {
    return HandRangeStringReader(range).technicalText();
}

std::string compactOf(const HandRange& range) {
    return HandRangeStringReader(range).compactText();
}

HandRange rangeOf(const std::string& freeText) {
    HandRange range;
    HandRangeStringManipulator(range).setFree(freeText);
    return range;
}

} // namespace

TEST(HandRangeStringManipulator, TechnicalTextInContainerOrder) {
    EXPECT_EQ(technical(rangeOf("AKs,QQ,22,AKo,32o")), "22,32o,QQ,AKs,AKo");
    EXPECT_EQ(technical(rangeOf("AK")), "AKs,AKo");
    EXPECT_EQ(technical(rangeOf("AdKh,AhKh,KdKc")), "KdKc,AhKh,AdKh");
    EXPECT_EQ(technical(HandRange()), "");
}

TEST(HandRangeStringManipulator, CompactText) {
    EXPECT_EQ(compactOf(rangeOf("tt+, ats+, kqo")), "TT+,ATs+,KQo");
    EXPECT_EQ(compactOf(rangeOf("22-55,A2s-A5s")), "22-55,A2s-A5s");
    EXPECT_EQ(compactOf(HandRange()), "");
}

TEST(HandRangeStringManipulator, FullRangeCompactsRowByRow) {
    EXPECT_EQ(compactOf(HandRange(true)),
              "22+,A2s+,K2s+,Q2s+,J2s+,T2s+,92s+,82s+,72s+,62s+,52s+,42s+,32s,"
              "A2o+,K2o+,Q2o+,J2o+,T2o+,92o+,82o+,72o+,62o+,52o+,42o+,32o");
}

TEST(HandRangeStringManipulator, StreamWritesCompactText) {
    const HandRange range = rangeOf("QQ,KK,AA,AKs");
    std::ostringstream out;
    out << HandRangeStringReader(range);
    EXPECT_EQ(out.str(), "QQ+,AKs");
}

TEST(HandRangeStringManipulator, StreamReadsFreeText) {
    HandRange range = rangeOf("22");
    std::istringstream in("  kk+,a2s-a3s  QQ");
    in >> HandRangeStringManipulator(range);
    EXPECT_EQ(technical(range), "KK,AA,A2s,A3s");
}

TEST(HandRangeStringManipulator, SetReplacesAddExtends) {
    HandRange range;
    HandRangeStringManipulator manipulator(range);
    manipulator.set("AA,KQs");
    EXPECT_EQ(technical(range), "KQs,AA");
    manipulator.add("AdKh,22");
    EXPECT_EQ(technical(range), "22,KQs,AA,AdKh");
    manipulator.set("QQ");
    EXPECT_EQ(technical(range), "QQ");
    EXPECT_EQ(range.combinationCount(), 6u);
}

TEST(HandRangeStringManipulator, SetFreeAddFreeSetNormal) {
    HandRange range;
    HandRangeStringManipulator manipulator(range);
    manipulator.setFree("qq+ , a2-a3");
    EXPECT_EQ(technical(range), "QQ,KK,AA,A2s,A2o,A3s,A3o");
    manipulator.addFree("22");
    EXPECT_EQ(technical(range), "22,QQ,KK,AA,A2s,A2o,A3s,A3o");
    manipulator.setNormal("JJ+", true);
    EXPECT_EQ(technical(range), "JJ,QQ,KK,AA");
    manipulator.setNormal("22-33", false);
    EXPECT_EQ(technical(range), "22,33,JJ,QQ,KK,AA");
}

TEST(HandRangeStringManipulator, AddingAnEmptyTextResetsTheRange) {
    HandRange range = rangeOf("AA,KK");
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    HandRangeStringManipulator(range).add("");
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(notified, 0);
    range = rangeOf("AA");
    HandRangeStringManipulator(range).addFree("xyz");
    EXPECT_TRUE(range.isEmpty());
    range = rangeOf("AA");
    HandRangeStringManipulator(range).set("");
    EXPECT_TRUE(range.isEmpty());
    EXPECT_EQ(notified, 0);
}

TEST(HandRangeStringManipulator, InsertNotifiesOnceThroughTheFilter) {
    HandRange range;
    int notified = 0;
    range.setChangeNotifier([&] { ++notified; });
    range.setSuitFilter([](const Element& element) { return element.suited ? 0u : element.suits; });
    HandRangeStringManipulator(range).setFree("AA,KK,AKs,AKo,QJs");
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(technical(range), "KK,AA,AKo");
    HandRangeStringManipulator(range).addFree("T9");
    EXPECT_EQ(notified, 2);
    EXPECT_EQ(technical(range), "T9o,KK,AA,AKo");
}

TEST(HandRangeStringManipulator, AhXxAndAdXxKeepEveryPairWithTheirAce) {
    // A wildcard hand is every hand whose cards fit the places in either order: the ace of
    // hearts with each of the three other aces, whatever order the suits come in.
    const HandRange ah = rangeOf("AhXx");
    EXPECT_EQ(ah.find(valueToBinaryMask('A'), false)->suits,
              suitPairToBit('d', 'h') | suitPairToBit('h', 's') | suitPairToBit('h', 'c'));
    EXPECT_EQ(ah.combinationCount(), 48u + 3u);
    const HandRange ad = rangeOf("AdXx");
    EXPECT_EQ(ad.find(valueToBinaryMask('A'), false)->suits,
              suitPairToBit('d', 'h') | suitPairToBit('d', 's') | suitPairToBit('d', 'c'));
    EXPECT_EQ(ad.combinationCount(), 48u + 3u);
    EXPECT_EQ(rangeOf("XdXx").combinationCount(), 585u); // 1326 less the 741 without a diamond
    EXPECT_EQ(rangeOf("XxKh").combinationCount(), 51u);
}

TEST(HandRangeStringManipulator, XxXxGivesTheFullRange) {
    const HandRange range = rangeOf("XxXx");
    EXPECT_EQ(range.combinationCount(), 1326u);
    EXPECT_EQ(range.suitsVector(), HandRange(true).suitsVector());
}

TEST(HandRangeStringManipulator, SameCardTwiceAddsNothing) {
    HandRange range = rangeOf("AdAd");
    EXPECT_TRUE(range.isEmpty());
    range = rangeOf("AdAd,KK");
    EXPECT_EQ(technical(range), "KK");
}

TEST(HandRangeStringManipulator, WildcardSuitsInTheRange) {
    const HandRange range = rangeOf("XdXd");
    EXPECT_EQ(range.combinationCount(), 78u); // all suited diamond combinations
}

TEST(HandRangeStringManipulator, InsertAssertsOnWrongOrder) {
    AssertionRecorder recorder;
    HandRange range;
    HandRangeStringManipulator(range).set("KA");
    EXPECT_TRUE(
        recorder.saw("HandRangeStringManipulator::Insert(Element&) with wrong parameters."));
    EXPECT_EQ(technical(range), "AKs,AKo"); // goes on with the same values
    recorder.clear();
    HandRangeStringManipulator(range).set("KAs");
    EXPECT_TRUE(recorder.saw(
        "HandRangeStringManipulator::Insert(std::string, bool) with wrong parameters."));
    recorder.clear();
    HandRangeStringManipulator(range).set("KdAh");
    EXPECT_TRUE(recorder.saw(
        "HandRangeStringManipulator::Insert(std::string, bool) with wrong parameters."));
    recorder.clear();
    HandRangeStringManipulator(range).set("AKs");
    HandRangeStringManipulator(range).set("AA");
    HandRangeStringManipulator(range).set("AdAh");
    EXPECT_TRUE(recorder.messages().empty());
}

TEST(HandRangeStringManipulator, InsertSkipsNonTechnicalTokens) {
    AssertionRecorder recorder;
    HandRange range;
    HandRangeStringManipulator(range).set("A,QQ,A2s-A4s,,KK,22-33");
    EXPECT_EQ(recorder.messages(),
              std::vector<std::string>(4, "Part of technical range not really technical."));
    EXPECT_EQ(technical(range), "QQ,KK");
}

TEST(HandRangeStringManipulator, ElementTextsThroughTheRange) {
    const HandRange range = rangeOf("AKs,AhKd,QQ");
    EXPECT_EQ(range.elementToText(*range.find(valueToBinaryMask('Q'), false)), "QQ");
    EXPECT_EQ(range.elementToText(*range.find(6144, false)), "AhKd");
    EXPECT_EQ(elementToHoverText(*range.find(6144, true)), "AKs (4)");
}
