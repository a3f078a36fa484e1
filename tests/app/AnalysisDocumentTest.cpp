#include "app/document/AnalysisDocument.h"

#include "Range/HandRangeStringManipulator.h"
#include "Range/HandRangeStringReader.h"
#include "Range/TreeRangeNode.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

// The document is driven here without any window: what the main window shows is a view of
// this state.

namespace {

std::string compactOf(const Range::Tree& tree, unsigned int node = 0) {
    return Range::HandRangeStringReader(tree.handRange(node)).compactText();
}

std::string nameOf(const Range::Tree& tree, unsigned int node) {
    return static_cast<const Range::TreeRangeNode*>(tree.node(node))->name;
}

void setRange(Range::Tree& tree, const std::string& text) {
    Range::HandRangeStringManipulator(&tree.handRange(0)).setFree(text);
}

} // namespace

TEST(AnalysisDocument, StartsWithOneEmptyStandardScenarioAndSaved) {
    AnalysisDocument document;
    ASSERT_EQ(document.scenarios().size(), 1u);
    EXPECT_EQ(document.currentIndex(), 0);
    const Scenario& standard = document.scenarios().front();
    EXPECT_EQ(standard.name, "Standard");
    ASSERT_EQ(standard.player1.size(), 1u);
    EXPECT_EQ(standard.player1.front().name, "Full Range");
    EXPECT_EQ(standard.board, "");
    EXPECT_EQ(standard.deadCards, "");
    EXPECT_TRUE(document.isSaved());
    EXPECT_EQ(document.fileName(), "");
    EXPECT_EQ(document.title(), "untitled.qva - Quorvane ");
    // The live ranges start as one group "Parent" holding nothing.
    for (int player : {1, 2}) {
        ASSERT_EQ(document.range(player).count(), 1u);
        EXPECT_EQ(nameOf(document.range(player), 0), "Parent");
        EXPECT_TRUE(document.range(player).handRange(0).isEmpty());
    }
    EXPECT_NE(&document.range(1), &document.range(2));
}

TEST(AnalysisDocument, TheTitleCarriesTheStarAndTheFileName) {
    AnalysisDocument document;
    QSignalSpy titles(&document, &AnalysisDocument::titleChanged);
    document.markChanged();
    EXPECT_EQ(document.title(), "*untitled.qva - Quorvane ");
    document.markChanged(); // already changed: the title stays, no signal
    document.markSaved(QStringLiteral("/home/ann/spots.qva"));
    EXPECT_TRUE(document.isSaved());
    EXPECT_EQ(document.title(), "/home/ann/spots.qva - Quorvane ");
    ASSERT_EQ(titles.count(), 2);
    EXPECT_EQ(titles.at(0).at(0).toString(), "*untitled.qva - Quorvane ");
    EXPECT_EQ(titles.at(1).at(0).toString(), "/home/ann/spots.qva - Quorvane ");
}

TEST(AnalysisDocument, InputsAreTakenOnlyWhenTheyChange) {
    AnalysisDocument document;
    const AnalysisInputs inputs{"AA", "KK", "Ah7d2c", "Ts"};
    EXPECT_TRUE(document.takeInputs(inputs));
    EXPECT_FALSE(document.takeInputs(inputs));
    EXPECT_EQ(document.board(), "Ah7d2c");
    EXPECT_EQ(document.deadCards(), "Ts");
    AnalysisInputs other = inputs;
    other.deadCards = "";
    EXPECT_TRUE(document.takeInputs(other));
    EXPECT_EQ(document.inputs(), other);
}

TEST(AnalysisDocument, TheLiveStateGoesIntoTheScenarioShownOnly) {
    AnalysisDocument document;
    ASSERT_EQ(document.appendScenario("River spot"), 1);
    setRange(document.range(1), "QQ+,AKs");
    setRange(document.range(2), "22+");
    document.takeInputs({"", "", "Ah7d2c", "9s"});
    document.storeLiveState(); // into "Standard", the scenario shown
    const Scenario standard = document.scenario(0);
    EXPECT_EQ(standard.board, "Ah7d2c");
    EXPECT_EQ(standard.deadCards, "9s");
    Range::Tree restored;
    restored.RestoreMemento(standard.player1);
    EXPECT_EQ(compactOf(restored), "QQ+,AKs");
    // The other scenario did not move.
    EXPECT_EQ(document.scenario(1).board, "");
    Range::Tree untouched;
    untouched.RestoreMemento(document.scenario(1).player1);
    EXPECT_TRUE(untouched.handRange(0).isEmpty());
    EXPECT_EQ(nameOf(untouched, 0), "Full Range");
    // Without a scenario shown nothing is stored.
    document.setCurrentIndex(7);
    EXPECT_EQ(document.currentIndex(), -1);
    EXPECT_EQ(document.currentScenario(), nullptr);
    document.takeInputs({"", "", "Kc9c4c", ""});
    document.storeLiveState();
    EXPECT_EQ(document.scenario(0).board, "Ah7d2c");
    EXPECT_EQ(document.scenario(1).board, "");
}

TEST(AnalysisDocument, ScenariosAreAddedRenamedAndDeletedByIndex) {
    AnalysisDocument document;
    QSignalSpy changes(&document, &AnalysisDocument::scenarioListChanged);
    EXPECT_EQ(document.appendScenario(""), -1); // an empty name is refused
    EXPECT_EQ(document.appendScenario("Flop"), 1);
    EXPECT_EQ(document.appendScenario("Flop"), 2); // two of one name are fine
    EXPECT_EQ(document.currentIndex(), 0);         // adding does not show the new one
    EXPECT_FALSE(document.renameScenario(1, ""));
    EXPECT_FALSE(document.renameScenario(3, "Turn"));
    EXPECT_TRUE(document.renameScenario(2, "Turn"));
    EXPECT_EQ(document.scenario(2).name, "Turn");
    document.setCurrentIndex(2);
    EXPECT_TRUE(document.deleteScenario(1));
    ASSERT_EQ(document.scenarios().size(), 2u);
    EXPECT_EQ(document.scenario(1).name, "Turn"); // the later ones move down
    EXPECT_EQ(document.currentIndex(), 0);        // the first one is shown after a delete
    EXPECT_EQ(changes.count(), 4);                // two appends, a rename, a delete
    EXPECT_TRUE(document.deleteScenario(0));
    EXPECT_FALSE(document.canDeleteScenario(0)); // the last one stays
    EXPECT_FALSE(document.deleteScenario(0));
    EXPECT_FALSE(document.canDeleteScenario(-1));
    ASSERT_EQ(document.scenarios().size(), 1u);
    EXPECT_EQ(document.scenario(0).name, "Turn");
    // Scenario operations leave the saved state alone.
    EXPECT_TRUE(document.isSaved());
}

TEST(AnalysisDocument, ResetGivesTheListOfANewAnalysis) {
    AnalysisDocument document;
    document.appendScenario("A");
    document.appendScenario("B");
    document.setCurrentIndex(2);
    document.resetScenarios();
    ASSERT_EQ(document.scenarios().size(), 1u);
    EXPECT_EQ(document.scenario(0).name, "Standard");
    EXPECT_EQ(document.currentIndex(), 0);
    EXPECT_EQ(document.scenario(-1).name, ""); // outside the list: an empty scenario
}

TEST(AnalysisDocument, NothingToUndoOrRedoAtTheStart) {
    AnalysisDocument document;
    EXPECT_TRUE(document.mementos().empty());
    EXPECT_EQ(document.mementoIndex(), 0);
    EXPECT_FALSE(document.canUndo());
    EXPECT_FALSE(document.canRedo());
    EXPECT_EQ(document.undoLabel(), "");
    EXPECT_EQ(document.redoLabel(), "");
}
