#include "AnalysisFileSamples.h"

#include "../evfe/FileTestSupport.h"
#include "../evfe/SampleLines.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "evfe/EV_FE_TabState.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace AnalysisFileSamples {

namespace {

struct Group {
    std::string name;
    std::string text;
};

// A "Full Range" with exclusive groups below it, the shape every player's range has.
std::vector<Range::NodeMemento> rangeWithGroups(const std::string& full,
                                                const std::vector<Group>& groups) {
    Range::Tree tree;
    Range::TreeRangeNode* root =
        tree.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    Range::HandRangeStringManipulator(root->handRange).setFree(full);
    for (const Group& group : groups) {
        Range::TreeRangeNode* node = tree.addExclusiveRange(
            0, group.name, Range::TreeRangeNode::Block, true, Range::GroupColor());
        Range::HandRangeStringManipulator(node->handRange).setFree(group.text);
    }
    std::vector<Range::NodeMemento> memento;
    tree.CreateMemento(memento);
    return memento;
}

const char* const handTexts[] = {"AA",   "KK",   "QQ+",  "22-66", "AKs",  "AQo+",    "A2s-A5s",
                                 "KQs",  "T9s",  "76s",  "AhKh",  "7c7d", "JJ-88",   "K9s+",
                                 "QTo+", "54s",  "AsQs", "T8s+",  "99",   "A9o-ATo", "65s-87s",
                                 "KJo",  "8h8s", "AdKc", "Q9s"};

std::string randomRangeText(std::mt19937& random) {
    std::string text;
    const int tokens = static_cast<int>(random() % 6);
    for (int i = 0; i < tokens; ++i) {
        if (!text.empty())
            text += ',';
        text += handTexts[random() % (sizeof(handTexts) / sizeof(handTexts[0]))];
    }
    return text;
}

std::string randomName(std::mt19937& random) {
    static const std::string pieces[] = {"Flop",
                                         " ",
                                         "c-bet",
                                         "<",
                                         ">",
                                         "&",
                                         "\"",
                                         "'",
                                         "3-Bet",
                                         "Turn",
                                         "\xc3\xa9t\xc3\xa9",
                                         "\xe2\x82\xac",
                                         "Probe",
                                         "100bb",
                                         "x",
                                         "/",
                                         "=",
                                         ";"};
    std::string name;
    const int count = 1 + static_cast<int>(random() % 5);
    for (int i = 0; i < count; ++i)
        name += pieces[random() % (sizeof(pieces) / sizeof(pieces[0]))];
    return name;
}

std::string randomCards(std::mt19937& random, std::vector<int>& used, int count) {
    static const char ranks[] = "23456789TJQKA";
    static const char suits[] = "cdhs";
    std::string text;
    while (count > 0) {
        const int card = static_cast<int>(random() % 52);
        if (std::find(used.begin(), used.end(), card) != used.end())
            continue;
        used.push_back(card);
        text += ranks[card / 4];
        text += suits[card % 4];
        --count;
    }
    return text;
}

} // namespace

std::vector<Scenario> threeScenarios() {
    std::vector<Scenario> scenarios;
    scenarios.emplace_back(
        "Flop c-bet",
        rangeWithGroups("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+",
                        {{"Value", "TT+,AQs+,AKo"}, {"Bluffs", "A2s-A5s"}, {"Give up", "22-66"}}),
        rangeWithGroups("22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,86s+,75s+,65s,54s,A9o+,KTo+,QTo+,JTo",
                        {{"Calls", "77-JJ,ATs-AJs,KQs"}}),
        "Ah7d2c", "");
    *scenarios.back().lines = SampleLines::golden();
    scenarios.emplace_back("Turn <probe> & \"check\"", rangeWithGroups("AA,KK", {}),
                           rangeWithGroups("QQ+,AKs", {}), "Ah7d2cKs", "Qh");
    scenarios.emplace_back("Standard", Scenario::emptyRange(), Scenario::emptyRange(), "", "");
    return scenarios;
}

std::string tabState() {
    EV_FE_TabState state;
    state.rakePercentage = 4.5;
    state.rakeCap = 3.0;
    state.selectedStreet = 2;
    state.selectedPlayer = 1;
    state.selectedLine = 0;
    state.selectedVariant = 1;
    return state.toText();
}

std::string groupsText(const std::vector<Range::NodeMemento>& memento) {
    Range::Tree tree;
    tree.RestoreMemento(memento);
    std::string text;
    for (unsigned int node = 0; node < tree.count(); ++node) {
        if (!text.empty())
            text += "; ";
        const auto* range = static_cast<const Range::TreeRangeNode*>(tree.node(node));
        text += range->name + ": " + Range::HandRangeStringReader(range->handRange).compactText();
    }
    return text;
}

std::string dataPath(const std::string& name) {
    return std::string(QUORVANE_APP_DATA) + "/" + name;
}

std::string readData(const std::string& name) {
    std::ifstream file(dataPath(name), std::ios::binary);
    EXPECT_TRUE(file.good()) << "cannot read " << dataPath(name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

Random randomAnalysis(std::mt19937& random) {
    Random sample;
    const LineList lines = SampleLines::golden();
    const int count = 1 + static_cast<int>(random() % 6);
    for (int i = 0; i < count; ++i) {
        std::vector<int> used;
        static const int boardSizes[] = {0, 3, 4, 5};
        const std::string board = randomCards(random, used, boardSizes[random() % 4]);
        const std::string dead = randomCards(random, used, static_cast<int>(random() % 3));
        const bool withLines = random() % 2 == 0;
        std::vector<Group> groups1;
        std::vector<Group> groups2;
        for (int g = static_cast<int>(random() % 4); g > 0; --g)
            groups1.push_back({randomName(random), randomRangeText(random)});
        for (int g = static_cast<int>(random() % 4); g > 0; --g)
            groups2.push_back({randomName(random), randomRangeText(random)});
        // Lines keep their subranges only within the full ranges they were made for.
        const std::string full1 =
            withLines ? "22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+" : randomRangeText(random);
        const std::string full2 =
            withLines ? "22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,86s+,75s+,65s,54s,A9o+,KTo+,QTo+,JTo"
                      : randomRangeText(random);
        sample.scenarios.emplace_back(randomName(random), rangeWithGroups(full1, groups1),
                                      rangeWithGroups(full2, groups2), board, dead);
        if (withLines) {
            for (const Line& line : lines)
                if (random() % 2 == 0)
                    sample.scenarios.back().lines->push_back(line);
        }
    }
    sample.selected = static_cast<int>(random() % static_cast<unsigned int>(count + 1)) - 1;
    if (random() % 3 != 0) {
        EV_FE_TabState state;
        if (random() % 2 == 0)
            state.rakePercentage = static_cast<double>(random() % 100) / 10.0;
        if (random() % 2 == 0)
            state.rakeCap = static_cast<double>(random() % 50) / 4.0;
        state.selectedStreet = static_cast<int>(random() % 4);
        state.selectedPlayer = static_cast<int>(random() % 3) - 1;
        state.selectedLine = static_cast<int>(random() % 4) - 1;
        state.selectedVariant = static_cast<int>(random() % 3) - 1;
        sample.tabState = state.toText();
    }
    return sample;
}

} // namespace AnalysisFileSamples
