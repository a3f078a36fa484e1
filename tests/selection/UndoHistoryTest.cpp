#include "selection/UndoHistory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using History = UndoHistory<std::string>;

std::vector<std::string> entriesOf(const History& history) {
    return history.entries();
}

// Records each text in turn after a reset to "start".
History historyOf(std::initializer_list<const char*> texts) {
    History history;
    history.reset("start");
    for (const char* text : texts)
        history.record(text);
    return history;
}

// The snapshot an undo or a redo lands on, "(no step)" where it returned none.
std::string landing(const std::string* shown) {
    return shown ? *shown : std::string("(no step)");
}

// A snapshot with two parts, equal only when both are.
struct Snapshot {
    std::vector<int> tree;
    unsigned int shown = 0;
    bool operator==(const Snapshot& other) const {
        return tree == other.tree && shown == other.shown;
    }
};

} // namespace

TEST(UndoHistory, ANewHistoryHasNoStepToTake) {
    History history;
    EXPECT_EQ(history.size(), 0u);
    EXPECT_EQ(history.position(), 0u);
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo(), nullptr);
    EXPECT_EQ(history.redo(), nullptr);
    EXPECT_EQ(history.position(), 0u);
}

TEST(UndoHistory, TheFirstRecordWithoutAResetIsTheStartingPoint) {
    History history;
    EXPECT_TRUE(history.record("first"));
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"first"}));
    EXPECT_EQ(history.position(), 0u);
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
}

TEST(UndoHistory, ResetLeavesOnlyTheGivenSnapshot) {
    History history = historyOf({"a", "b"});
    history.undo();
    history.reset("again");
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"again"}));
    EXPECT_EQ(history.position(), 0u);
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo(), nullptr);
}

TEST(UndoHistory, RecordingAppendsAndMovesThePositionToTheNewSnapshot) {
    History history;
    history.reset("start");
    EXPECT_TRUE(history.record("a"));
    EXPECT_TRUE(history.record("b"));
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"start", "a", "b"}));
    EXPECT_EQ(history.position(), 2u);
    EXPECT_TRUE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
}

TEST(UndoHistory, ASnapshotEqualToTheCurrentOneIsNoStep) {
    History history = historyOf({"a"});
    EXPECT_FALSE(history.record("a"));
    EXPECT_EQ(history.size(), 2u);
    EXPECT_EQ(history.position(), 1u);
    // Equal to an older one but not to the current one: a step like any other.
    EXPECT_TRUE(history.record("start"));
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"start", "a", "start"}));
}

TEST(UndoHistory, UndoAndRedoWalkTheListAndStopAtItsEnds) {
    History history = historyOf({"a", "b"});
    EXPECT_EQ(landing(history.undo()), "a");
    EXPECT_EQ(history.position(), 1u);
    EXPECT_TRUE(history.canUndo());
    EXPECT_TRUE(history.canRedo());
    EXPECT_EQ(landing(history.undo()), "start");
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(history.undo(), nullptr);
    EXPECT_EQ(history.position(), 0u);

    EXPECT_EQ(landing(history.redo()), "a");
    EXPECT_EQ(landing(history.redo()), "b");
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.redo(), nullptr);
    EXPECT_EQ(history.position(), 2u);
    // Walking changes nothing in the list.
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"start", "a", "b"}));
}

TEST(UndoHistory, ANewSnapshotAfterAnUndoDropsWhatLayAhead) {
    History history = historyOf({"a", "b", "c"});
    history.undo();
    history.undo(); // at "a"
    EXPECT_TRUE(history.record("x"));
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"start", "a", "x"}));
    EXPECT_EQ(history.position(), 2u);
    EXPECT_FALSE(history.canRedo());
}

TEST(UndoHistory, AnUnchangedSnapshotAfterAnUndoKeepsWhatLiesAhead) {
    History history = historyOf({"a", "b"});
    history.undo(); // at "a"
    EXPECT_FALSE(history.record("a"));
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"start", "a", "b"}));
    EXPECT_EQ(history.position(), 1u);
    EXPECT_TRUE(history.canRedo());
    // The step ahead recorded again is a new step: the old one is dropped first.
    EXPECT_TRUE(history.record("b"));
    EXPECT_EQ(entriesOf(history), (std::vector<std::string>{"start", "a", "b"}));
    EXPECT_EQ(history.position(), 2u);
}

TEST(UndoHistory, AnUndoAtTheStartOfANewBranchGoesBackToWhereItForked) {
    History history = historyOf({"a", "b"});
    history.undo();
    history.undo(); // at "start"
    history.record("y");
    EXPECT_EQ(landing(history.undo()), "start");
    EXPECT_EQ(landing(history.redo()), "y");
    EXPECT_EQ(history.size(), 2u);
}

TEST(UndoHistory, SnapshotsDifferingInAnyPartAreSteps) {
    UndoHistory<Snapshot> history;
    history.reset(Snapshot{{1, 2}, 0});
    EXPECT_FALSE(history.record(Snapshot{{1, 2}, 0}));
    EXPECT_TRUE(history.record(Snapshot{{1, 2}, 1})); // only the node shown changed
    EXPECT_TRUE(history.record(Snapshot{{1, 3}, 1})); // only the tree changed
    EXPECT_EQ(history.size(), 3u);
    const Snapshot* shown = history.undo();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->tree, (std::vector<int>{1, 2}));
    EXPECT_EQ(shown->shown, 1u);
}
