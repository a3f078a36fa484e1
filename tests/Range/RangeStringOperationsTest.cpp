#include "Range/RangeStringOperations.h"

#include "support/AssertionRecorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Range;

namespace {

std::string normalized(std::string text) {
    normalize(text);
    return text;
}

std::string runtimeErrorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return std::string();
}

} // namespace

// --- Worked examples -------------------------------------------------------------------------

struct FreeTextExample {
    const char* free;
    const char* normal;
    const char* technical;
};

class WorkedExample : public ::testing::TestWithParam<FreeTextExample> {};

TEST_P(WorkedExample, NormalizeThenExpand) {
    const FreeTextExample example = GetParam();
    const std::string normal = normalized(example.free);
    EXPECT_EQ(normal, example.normal);
    EXPECT_EQ(expand(normal), example.technical);
}

INSTANTIATE_TEST_SUITE_P(
    RangeText, WorkedExample,
    ::testing::Values(FreeTextExample{"aks, qq", "QQ,AKs", "QQ,AKs"},
                      FreeTextExample{"KAo", "AKo", "AKo"},
                      FreeTextExample{"tt+", "TT+", "TT,JJ,QQ,KK,AA"},
                      FreeTextExample{"55-22", "22-55", "22,33,44,55"},
                      FreeTextExample{"A9s-A2s", "A2s-A9s", "A2s,A3s,A4s,A5s,A6s,A7s,A8s,A9s"},
                      FreeTextExample{"KT+", "KTs+,KTo+", "KTs,KJs,KQs,KTo,KJo,KQo"},
                      FreeTextExample{"A2-A4", "A2s-A4s,A2o-A4o", "A2s,A3s,A4s,A2o,A3o,A4o"},
                      FreeTextExample{"KhAd", "AdKh", "AdKh"},
                      FreeTextExample{"AsAc", "AsAc", "AsAc"},
                      FreeTextExample{"AcAs", "AsAc", "AsAc"}, FreeTextExample{"xyz", "", ""},
                      FreeTextExample{"AK-AK", "AK", "AK"}));

struct CompactExample {
    const char* technical;
    const char* compact;
};

class CompactWorkedExample : public ::testing::TestWithParam<CompactExample> {};

TEST_P(CompactWorkedExample, Compact) {
    EXPECT_EQ(compact(GetParam().technical), GetParam().compact);
}

INSTANTIATE_TEST_SUITE_P(RangeText, CompactWorkedExample,
                         ::testing::Values(CompactExample{"AA,KK,QQ", "QQ+"},
                                           CompactExample{"22,33,44", "22-44"},
                                           CompactExample{"AKs,AQs,AJs", "AJs+"},
                                           CompactExample{"A2s,A3s,A4s", "A2s-A4s"},
                                           CompactExample{"KQo,AKo,KJo", "AKo,KJo+"},
                                           CompactExample{"QQ,AKs,AdKh,AhKd", "QQ,AKs,AhKd,AdKh"}));

// --- normalize ---------------------------------------------------------------------------------

TEST(RangeStringOperations, NormalizeEmptyAndWhiteSpace) {
    EXPECT_EQ(normalized(""), "");
    EXPECT_EQ(normalized("  \t\n "), "");
    EXPECT_EQ(normalized(" A K s "), "AKs");
}

TEST(RangeStringOperations, OnlyCommasGiveEmptyText) {
    EXPECT_EQ(normalized(","), "");
    EXPECT_EQ(normalized(",,,,"), "");
    EXPECT_EQ(normalized(" , , "), "");
}

TEST(RangeStringOperations, EmptyTokensAreDropped) {
    EXPECT_EQ(normalized("AA,,KK"), "AA,KK");
    EXPECT_EQ(normalized(",QQ,"), "QQ");
}

TEST(RangeStringOperations, CanonicalTextStaysUnsorted) {
    EXPECT_EQ(normalized("AKs,QQ"), "AKs,QQ");
    EXPECT_EQ(normalized("AdKh,AA,KQo,22-55"), "AdKh,AA,KQo,22-55");
    // One repair anywhere sorts the whole text.
    EXPECT_EQ(normalized("AKs,QQ,kk"), "KK,QQ,AKs");
}

TEST(RangeStringOperations, WhiteSpaceAloneIsNotARepair) {
    EXPECT_EQ(normalized("AKs, QQ"), "AKs,QQ");
}

TEST(RangeStringOperations, TooShortAndTooLongTokensAreDropped) {
    EXPECT_EQ(normalized("A,AA"), "AA");
    EXPECT_EQ(normalized("A2s-A9so,KK"), "KK");
}

TEST(RangeStringOperations, NormalOrder) {
    EXPECT_EQ(normalized("AdKh,KQo,KQ,22,AK,AKo,AKs,aa,T9s+,QQ+,J2,7h6h"),
              "AA,22,AK,KQ,J2,AKs,AKo,KQo,QQ+,T9s+,AdKh,7h6h");
}

TEST(RangeStringOperations, PairRules) {
    EXPECT_EQ(normalized("aa"), "AA");
    EXPECT_EQ(normalized("AA+"), "AA+");
    EXPECT_EQ(normalized("aa+"), "AA+");
    EXPECT_EQ(normalized("AAs"), "");
    EXPECT_EQ(normalized("AAo,KK"), "KK");
}

TEST(RangeStringOperations, UnqualifiedPlusSplits) {
    EXPECT_EQ(normalized("AK+"), "AKs+,AKo+");
    EXPECT_EQ(normalized("ka+"), "AKs+,AKo+");
    EXPECT_EQ(normalized("A+K"), "");
    EXPECT_EQ(normalized("+AK"), "");
}

TEST(RangeStringOperations, ClassPlusRules) {
    EXPECT_EQ(normalized("ats+"), "ATs+");
    EXPECT_EQ(normalized("TAS+"), "ATs+");
    EXPECT_EQ(normalized("ATo+"), "ATo+");
    EXPECT_EQ(normalized("AAs+"), "");
    EXPECT_EQ(normalized("ATx+"), "");
    // `+` in the wrong place.
    EXPECT_EQ(normalized("A+Ks"), "");
    EXPECT_EQ(normalized("AK+s"), "");
    EXPECT_EQ(normalized("+AKs"), "");
}

TEST(RangeStringOperations, ClassRules) {
    EXPECT_EQ(normalized("aKS"), "AKs");
    EXPECT_EQ(normalized("2Ao"), "A2o");
    EXPECT_EQ(normalized("AKp"), "");
    EXPECT_EQ(normalized("AXs"), "");
    EXPECT_EQ(normalized("AK-"), "");
}

TEST(RangeStringOperations, TwoCharacterRules) {
    EXPECT_EQ(normalized("ka"), "AK");
    EXPECT_EQ(normalized("2t"), "T2");
    EXPECT_EQ(normalized("AX"), "");
    EXPECT_EQ(normalized("A1"), "");
}

TEST(RangeStringOperations, ConcreteHandRules) {
    EXPECT_EQ(normalized("adKH"), "AdKh");
    EXPECT_EQ(normalized("kDaH"), "AhKd");
    EXPECT_EQ(normalized("AhAd"), "AdAh");
    EXPECT_EQ(normalized("AcAd"), "AdAc");
    EXPECT_EQ(normalized("AsAh"), "AhAs");
    EXPECT_EQ(normalized("AoKd"), "");
    EXPECT_EQ(normalized("1dKd"), "");
    EXPECT_EQ(normalized("A-Ks"), "");
}

TEST(RangeStringOperations, WildcardSpelling) {
    EXPECT_EQ(normalized("axkx"), "AxKx");
    EXPECT_EQ(normalized("AXKX"), "AxKx");
    EXPECT_EQ(normalized("xdxd"), "XdXd");
    EXPECT_EQ(normalized("XdAh"), "AhXd");
    EXPECT_EQ(normalized("XdXx"), "XxXd");
    EXPECT_EQ(normalized("xxxx"), "XxXx");
}

TEST(RangeStringOperations, OneCardTwiceIsNoHandAndIsDropped) {
    // A hand holding one card twice can never be dealt: it is a bad token like any other.
    EXPECT_EQ(normalized("AdAd"), "");
    EXPECT_EQ(normalized("adad"), "");
    EXPECT_EQ(normalized("AdAd,KK"), "KK");
    // Wildcards whose places could hold one card twice still mean the other hands.
    EXPECT_EQ(normalized("AxAx"), "AxAx");
    EXPECT_EQ(normalized("XhXh"), "XhXh");
}

TEST(RangeStringOperations, SpanRules) {
    EXPECT_EQ(normalized("22-55"), "22-55");
    EXPECT_EQ(normalized("kk-99"), "99-KK");
    EXPECT_EQ(normalized("a2s-a5s"), "A2s-A5s");
    EXPECT_EQ(normalized("2As-5As"), "A2s-A5s");
    EXPECT_EQ(normalized("AKs-AKs"), "AKs");
    EXPECT_EQ(normalized("K9o-KQo"), "K9o-KQo");
    EXPECT_EQ(normalized("KQo-K9o"), "K9o-KQo");
    EXPECT_EQ(normalized("A2-A9"), "A2s-A9s,A2o-A9o");
    EXPECT_EQ(normalized("A9-A2"), "A2s-A9s,A2o-A9o");
}

TEST(RangeStringOperations, SpansThatCannotBeRepairedAreDropped) {
    EXPECT_EQ(normalized("A2s-A9o"), ""); // different classes
    EXPECT_EQ(normalized("A2s-A9"), "");  // different lengths
    EXPECT_EQ(normalized("A2s-K9s"), ""); // different first values
    EXPECT_EQ(normalized("22-A9"), "");   // pair against non-pair, different first values
    EXPECT_EQ(normalized("AA-A2"), "");   // pair against non-pair
    EXPECT_EQ(normalized("KKs-AAs"), ""); // pairs with class letters
    EXPECT_EQ(normalized("A2--A9"), "");  // two separators
    EXPECT_EQ(normalized("A2s+A9s"), ""); // no separator
    EXPECT_EQ(normalized("A2x-A9x"), "");
    EXPECT_EQ(normalized("A-22"), "");
}

TEST(RangeStringOperations, NewTokensGoAfterTheLastAndAreSorted) {
    EXPECT_EQ(normalized("A2-A4,QQ,kt+"), "QQ,A2s-A4s,A2o-A4o,KTs+,KTo+");
}

TEST(RangeStringOperations, NormalizeIsIdempotentOnNormalText) {
    const std::string normal = normalized("kt+, 55-22, a9s-a2s, KhAd, qq, xyz, AK");
    EXPECT_EQ(normal, "QQ,AK,A2s-A9s,KTs+,KTo+,22-55,AdKh");
    EXPECT_EQ(normalized(normal), normal);
}

// --- expand ------------------------------------------------------------------------------------

TEST(RangeStringOperations, ExpandEmpty) {
    EXPECT_EQ(expand(""), "");
}

TEST(RangeStringOperations, ExpandPlusTokens) {
    EXPECT_EQ(expand("AKs+"), "AKs");
    EXPECT_EQ(expand("AA+"), "AA");
    EXPECT_EQ(expand("KTs+"), "KTs,KJs,KQs");
    EXPECT_EQ(expand("KTo+"), "KTo,KJo,KQo");
    EXPECT_EQ(expand("32s+"), "32s");
    EXPECT_EQ(expand("22+"), "22,33,44,55,66,77,88,99,TT,JJ,QQ,KK,AA");
}

TEST(RangeStringOperations, ExpandKeepsPlainTokensFirst) {
    EXPECT_EQ(expand("QQ+,AK,AdKh"), "AK,AdKh,QQ,KK,AA");
}

TEST(RangeStringOperations, ExpandSpans) {
    EXPECT_EQ(expand("22-22"), "22");
    EXPECT_EQ(expand("A2s-A4s"), "A2s,A3s,A4s");
    EXPECT_EQ(expand("K9o-KQo"), "K9o,KTo,KJo,KQo");
}

TEST(RangeStringOperations, ExpandOfAHighEndFirstSpanThrows) {
    EXPECT_EQ(runtimeErrorOf([] { expand("55-22"); }), "Invalid value description.");
    EXPECT_EQ(runtimeErrorOf([] { expand("A9s-A2s"); }), "Invalid value description.");
}

TEST(RangeStringOperations, ExpandOfBadValueLettersThrows) {
    EXPECT_EQ(runtimeErrorOf([] { expand("kk+"); }), "Invalid value description.");
}

TEST(RangeStringOperations, ExpandWildcards) {
    // Never the same card twice: AdXd has no AdAd.
    EXPECT_EQ(expand("AdXd"), "Ad2d,Ad3d,Ad4d,Ad5d,Ad6d,Ad7d,Ad8d,Ad9d,AdTd,AdJd,AdQd,AdKd");
    EXPECT_EQ(expand("AxKx"), "AdKd,AdKh,AdKc,AdKs,AhKd,AhKh,AhKc,AhKs,AcKd,AcKh,AcKc,AcKs,"
                              "AsKd,AsKh,AsKc,AsKs");
    // The higher card first; of equal values the suit first in d, h, s, c.
    const std::string xdAh = expand("XdAh");
    EXPECT_EQ(xdAh.substr(0, 10), "Ah2d,Ah3d,");
    EXPECT_EQ(xdAh.substr(xdAh.size() - 9), "AhKd,AdAh");
    EXPECT_EQ(expand("Xd2h").substr(0, 9), "2d2h,3d2h");
    EXPECT_EQ(expand("AxK"), ""); // a wildcard token of a wrong length vanishes
    EXPECT_EQ(expand("AxK,QQ"), "QQ");
}

TEST(RangeStringOperations, AhXxAndAdXxBothListTheirPairAsAdAh) {
    // The pair of two aces is spelled one way, whichever place held which ace.
    const std::string ah = "," + expand("AhXx") + ",";
    const std::string ad = "," + expand("AdXx") + ",";
    EXPECT_NE(ah.find(",AdAh,"), std::string::npos);
    EXPECT_EQ(ah.find(",AhAd,"), std::string::npos);
    EXPECT_EQ(ah.find(",AhAh,"), std::string::npos);
    EXPECT_NE(ad.find(",AdAh,"), std::string::npos);
}

TEST(RangeStringOperations, XxXxExpandsToEveryHandOnce) {
    const std::string all = expand("XxXx");
    EXPECT_EQ(countCombinations(all).first, 1326u);
    EXPECT_EQ(all.size(), 1326u * 5 - 1);
}

TEST(RangeStringOperations, ATokenListedTwiceIsSpelledOutOnce) {
    EXPECT_EQ(expand("QQ,QQ"), "QQ");
    EXPECT_EQ(expand("QQ,QQ+"), "QQ,KK,AA");
    EXPECT_EQ(expand("XxXx,XxXx,AdKd"), expand("AdKd,XxXx"));
    EXPECT_EQ(countCombinations(expand("AdKd,XxXx,XxXx")).first, 1326u);
}

TEST(RangeStringOperations, ExpandOfGroupTextAsserts) {
    AssertionRecorder recorder;
    EXPECT_EQ(expand("Group 1"), "Group 1");
    EXPECT_TRUE(recorder.saw("str is corrupted with a group."));
}

TEST(RangeStringOperations, ExpandHasNoTrailingSeparator) {
    EXPECT_EQ(expand("AA,"), "AA");
    EXPECT_EQ(expand(",TT+"), "TT,JJ,QQ,KK,AA");
}

// --- compact -----------------------------------------------------------------------------------

TEST(RangeStringOperations, CompactEmpty) {
    EXPECT_EQ(compact(""), "");
}

TEST(RangeStringOperations, CompactSingleTokens) {
    EXPECT_EQ(compact("AA"), "AA");
    EXPECT_EQ(compact("22"), "22");
    EXPECT_EQ(compact("AKs"), "AKs");
    EXPECT_EQ(compact("AdKh"), "AdKh");
}

TEST(RangeStringOperations, CompactRuns) {
    EXPECT_EQ(compact("KK,QQ"), "QQ-KK");
    EXPECT_EQ(compact("AA,KK,QQ,99,88"), "QQ+,88-99");
    EXPECT_EQ(compact("AA,QQ"), "AA,QQ");
    EXPECT_EQ(compact("KQs,KJs,KTs"), "KTs+");
    EXPECT_EQ(compact("KJs,KTs"), "KTs-KJs");
    EXPECT_EQ(compact("AKo,AQo,AKs"), "AKs,AQo+");
}

TEST(RangeStringOperations, CompactPutsSuitedBeforeOffsuit) {
    EXPECT_EQ(compact("AKo,AKs"), "AKs,AKo");
    EXPECT_EQ(compact("32o,AKs"), "AKs,32o");
}

TEST(RangeStringOperations, CompactNeverJoinsAcrossTheClassBorder) {
    EXPECT_EQ(compact("AQs,AJo"), "AQs,AJo");
    EXPECT_EQ(compact("AK,AQs"), "AK,AQs");
}

TEST(RangeStringOperations, CompactFirstConcreteHandGoesLast) {
    EXPECT_EQ(compact("AdKh,QhJh,7s6s"), "QhJh,7s6s,AdKh");
    EXPECT_EQ(compact("7s6s,AA,AdKh"), "AA,7s6s,AdKh");
}

TEST(RangeStringOperations, FullRangeCompacts) {
    std::string technical;
    const std::string values = "AKQJT98765432";
    for (char v : values)
        technical += std::string(2, v) + ",";
    for (std::size_t i = 0; i < values.size(); ++i)
        for (std::size_t j = i + 1; j < values.size(); ++j)
            technical += std::string{values[i], values[j], 's'} + "," +
                         std::string{values[i], values[j], 'o'} + ",";
    technical.pop_back();
    EXPECT_EQ(compact(technical), "22+,A2s+,K2s+,Q2s+,J2s+,T2s+,92s+,82s+,72s+,62s+,52s+,42s+,32s,"
                                  "A2o+,K2o+,Q2o+,J2o+,T2o+,92o+,82o+,72o+,62o+,52o+,42o+,32o");
}

// --- countCombinations and sharesSuitPair -------------------------------------------------------

TEST(RangeStringOperations, CountCombinations) {
    EXPECT_EQ(countCombinations("").first, 0u);
    EXPECT_EQ(countCombinations("").second, 0.0f);
    EXPECT_EQ(countCombinations("AA").first, 6u);
    EXPECT_EQ(countCombinations("AK").first, 16u);
    EXPECT_EQ(countCombinations("AKs").first, 4u);
    EXPECT_EQ(countCombinations("AKo").first, 12u);
    EXPECT_EQ(countCombinations("AdKh").first, 1u);
    const auto all = countCombinations("QQ,AK,AKs,AdKh");
    EXPECT_EQ(all.first, 27u);
    EXPECT_EQ(all.second, 27.0f / 1326.0f);
}

TEST(RangeStringOperations, CountCombinationsOfBadTokensAsserts) {
    AssertionRecorder recorder;
    EXPECT_EQ(countCombinations("AKx,AA").first, 6u);
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{"false"});
    recorder.clear();
    EXPECT_EQ(countCombinations("A,KK,AKso0").first, 6u);
    EXPECT_EQ(recorder.messages(), (std::vector<std::string>{"false", "false"}));
}

TEST(RangeStringOperations, SharesSuitPair) {
    EXPECT_TRUE(sharesSuitPair("dh", "dh"));
    EXPECT_TRUE(sharesSuitPair("ddhs", "cchs"));
    EXPECT_FALSE(sharesSuitPair("dh", "hd"));
    EXPECT_FALSE(sharesSuitPair("", "dh"));
    EXPECT_FALSE(sharesSuitPair("dh", ""));
    EXPECT_FALSE(sharesSuitPair("ddhh", "dhhd"));
    // Pairs are aligned on two characters: "dhhd" does not hold "hh".
    EXPECT_FALSE(sharesSuitPair("hh", "dhhd"));
}
