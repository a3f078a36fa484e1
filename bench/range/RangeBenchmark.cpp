// Range text in repaints and hovers: parse of long free text and compaction of a range.

#include "Range/HandRange.h"
#include "Range/HandRangeElementConversion.h"
#include "Range/HandRangeStringManipulator.h"
#include "Range/RangeStringOperations.h"

#include <benchmark/benchmark.h>

#include <cctype>
#include <string>

namespace {

// The full range written as its 1326 concrete hands, in canonical spelling.
std::string fullRangeAsHands() {
    const Range::HandRange full(true);
    std::string text;
    for (const Range::Element& element : full) {
        const std::string values = Range::valuesToText(element.values);
        const std::string suits = Range::suitsToText(element.suits, true);
        for (std::size_t i = 0; i < suits.size(); i += 2)
            text += std::string{values[0], suits[i], values[1], suits[i + 1]} + ",";
    }
    text.pop_back();
    return text;
}

// The same hands as a user might type them: lower case, lower card first, blanks.
std::string fullRangeAsSloppyHands() {
    const std::string canonical = fullRangeAsHands();
    std::string text;
    for (std::size_t i = 0; i + 3 < canonical.size(); i += 5) {
        const std::string hand = canonical.substr(i, 4);
        text += std::string{static_cast<char>(std::tolower(hand[2])), hand[3],
                            static_cast<char>(std::tolower(hand[0])), hand[1]};
        text += ", ";
    }
    return text;
}

void parse(benchmark::State& state, const std::string& freeText) {
    Range::HandRange range;
    Range::HandRangeStringManipulator manipulator(range);
    for (auto _ : state) {
        std::string text = freeText;
        Range::normalize(text);
        manipulator.set(Range::expand(text));
        benchmark::DoNotOptimize(range.combinationCount());
    }
    if (range.combinationCount() != 1326)
        state.SkipWithError("the parsed range is not the full range");
}

void BM_ParseFullRangeAs1326Hands(benchmark::State& state) {
    parse(state, fullRangeAsHands());
}
BENCHMARK(BM_ParseFullRangeAs1326Hands)->Unit(benchmark::kMicrosecond);

void BM_ParseFullRangeAs1326SloppyHands(benchmark::State& state) {
    parse(state, fullRangeAsSloppyHands());
}
BENCHMARK(BM_ParseFullRangeAs1326SloppyHands)->Unit(benchmark::kMicrosecond);

// A paste that repeats one wildcard token: 10,000 times "XxXx," (50 KB, ending in a comma).
void BM_ParseRepeatedWildcardPaste(benchmark::State& state) {
    std::string text;
    for (int i = 0; i < 10000; ++i)
        text += "XxXx,";
    parse(state, text);
}
BENCHMARK(BM_ParseRepeatedWildcardPaste)->Unit(benchmark::kMillisecond);

// One megabyte of every token shape the grammar knows, in sloppy spelling, repeated: what a
// player might paste from a spreadsheet or a forum post.
void BM_ParseOneMegabyteOfMixedTokens(benchmark::State& state) {
    const std::string block = "aks, qq+, 22-55, A2s-A9s, kt+, xdxx, AhKd, axkx, XxXx, t9o, "
                              "J8s+, 76, 5s4s, 98-95, xsxs, garbage, AdAd, A+Ks, ,";
    std::string text;
    while (text.size() < (1u << 20))
        text += block;
    parse(state, text);
}
BENCHMARK(BM_ParseOneMegabyteOfMixedTokens)->Unit(benchmark::kMillisecond);

void BM_CompactTextOfFullRange(benchmark::State& state) {
    const Range::HandRange full(true);
    const Range::HandRangeStringReader reader(full);
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.compactText());
}
BENCHMARK(BM_CompactTextOfFullRange)->Unit(benchmark::kMicrosecond);

void BM_CompactTextOfSplitRange(benchmark::State& state) {
    // Every class with half of its combinations: the longest technical text there is.
    Range::HandRange range;
    for (auto it = range.begin(); it != range.end(); ++it)
        range.setSuits(it, it->possibleSuits & 0x5555);
    const Range::HandRangeStringReader reader(range);
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.compactText());
}
BENCHMARK(BM_CompactTextOfSplitRange)->Unit(benchmark::kMicrosecond);

void BM_CombinationCountAfterChange(benchmark::State& state) {
    Range::HandRange range(true);
    const auto aks =
        range.find(Range::valueToBinaryMask('A') | Range::valueToBinaryMask('K'), true);
    unsigned int suits = 0x8421;
    for (auto _ : state) {
        suits ^= 1;
        range.setSuits(aks, suits);
        benchmark::DoNotOptimize(range.combinationCount());
    }
}
BENCHMARK(BM_CombinationCountAfterChange);

} // namespace
