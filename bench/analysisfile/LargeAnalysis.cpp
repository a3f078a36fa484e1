#include "LargeAnalysis.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/Tree.h"
#include "Range/TreeRangeNode.h"
#include "evfe/SampleLines.h"

#include <string>

namespace {

std::vector<Range::NodeMemento> range(const std::string& full,
                                      const std::vector<std::string>& groups) {
    Range::Tree tree;
    Range::TreeRangeNode* root =
        tree.addRange(Range::Tree::noNode, "Full Range", false, Range::GroupColor());
    Range::HandRangeStringManipulator(root->handRange).setFree(full);
    for (const std::string& group : groups) {
        Range::TreeRangeNode* node = tree.addExclusiveRange(0, "Group", Range::TreeRangeNode::Block,
                                                            true, Range::GroupColor());
        Range::HandRangeStringManipulator(node->handRange).setFree(group);
    }
    std::vector<Range::NodeMemento> memento;
    tree.CreateMemento(memento);
    return memento;
}

} // namespace

std::vector<Scenario> largeAnalysis(int scenarios, int linesEach) {
    const LineList sample = SampleLines::golden();
    std::vector<Scenario> list;
    for (int i = 0; i < scenarios; ++i) {
        list.emplace_back(
            "Scenario " + std::to_string(i),
            range("22+,A2s+,K9s+,QTs+,JTs,T9s,98s,ATo+,KJo+", {"TT+,AQs+,AKo", "A2s-A5s", "22-66"}),
            range("22+,A2s+,K2s+,Q8s+,J8s+,T8s+,97s+,86s+,75s+,65s,54s,A9o+,KTo+,"
                  "QTo+,JTo",
                  {"77-JJ,ATs-AJs,KQs"}),
            "Ah7d2c", "");
        auto next = sample.begin();
        for (int line = 0; line < linesEach; ++line) {
            list.back().lines->push_back(*next);
            if (++next == sample.end())
                next = sample.begin();
        }
    }
    return list;
}
