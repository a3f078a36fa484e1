#pragma once

#include "Range/Tree.h"
#include "app/document/AnalysisFile.h"
#include "app/document/AnalysisInputs.h"
#include "app/document/Memento.h"
#include "app/document/Scenario.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <string>
#include <vector>

// An analysis as the user edits it: the named scenarios and the one shown, the two live
// ranges with their groups, the inputs of the last update, and the file the analysis belongs
// to with whether it has changed since it was last saved.
//
// Widget-free: the main window shows a document and turns the user's edits into calls here;
// the document tells what changed through its signals and knows nothing of widgets. The
// range lines work on the live trees directly, by pointer, for as long as the document
// lives.
//
// Scenarios: the list is never empty after construction; a scenario is chosen by index, as
// in the scenario combo box, which lists the names in list order. The live state goes into
// the scenario shown only through storeLiveState, at every update, so a scenario never needs
// saving when another one is shown.
//
// Main thread only.
class AnalysisDocument : public QObject {
    Q_OBJECT

public:
    explicit AnalysisDocument(QObject* parent = nullptr);

    // --- The live state --------------------------------------------------------------------
    // A player's (1 or 2) range with its groups; node 0 is the full range.
    Range::Tree& range(int player);
    const Range::Tree& range(int player) const;

    // The inputs of the last update; all texts empty at the start.
    const AnalysisInputs& inputs() const { return lastInputs; }
    const std::string& board() const { return lastInputs.board; }
    const std::string& deadCards() const { return lastInputs.deadCards; }
    // Takes `inputs` as those of the last update. False, and nothing changes, when they are
    // the same as before.
    bool takeInputs(const AnalysisInputs& inputs);
    // Puts the live ranges and the last update's board and dead cards into the scenario
    // shown; nothing without one.
    void storeLiveState();

    // --- Scenarios ---------------------------------------------------------------------------
    const std::vector<Scenario>& scenarios() const { return scenarioList; }
    // The scenario shown, or -1 for none.
    int currentIndex() const { return current; }
    // Shows another scenario; an index outside the list means none (-1). Loading its ranges
    // into the live trees is the caller's (the lines must let go of the nodes first).
    void setCurrentIndex(int index);
    const Scenario* currentScenario() const;
    // A copy of the scenario at `index`; an empty scenario outside the list.
    Scenario scenario(int index) const;

    // A new scenario: "Full Range" with the empty range for both players, no cards.
    static Scenario emptyScenario(const std::string& name);
    // The list of a new analysis: one empty scenario "Standard", shown.
    void resetScenarios();
    // Appends an empty scenario of that name and returns its index; an empty name is refused
    // (-1). The scenario shown stays the same.
    int appendScenario(const std::string& name);
    // Appends a complete scenario and returns its index.
    int appendScenario(const Scenario& scenario);
    // False, and nothing changes, for an empty name or an index outside the list.
    bool renameScenario(int index, const std::string& name);
    // Whether deleteScenario(index) would delete: never the last scenario.
    bool canDeleteScenario(int index) const;
    // Erases the scenario; the later ones move down, and the first one is shown.
    bool deleteScenario(int index);

    // --- The file ----------------------------------------------------------------------------
    // Path of the analysis file; empty for an analysis never saved.
    const QString& fileName() const { return file; }
    // No change since the last save, new or open.
    bool isSaved() const { return saved; }
    // The window title: "*" when changed, the file name or "untitled.qva", then
    // " - Quorvane " with its trailing blank.
    QString title() const;
    void markChanged();
    void markSaved(const QString& fileName);

    // --- Undo --------------------------------------------------------------------------------
    // The snapshots of the analysis, oldest first, and the position of the present state.
    const std::vector<Memento>& mementos() const { return mementoList; }
    std::int32_t mementoIndex() const { return position; }
    // Undo leads back to the state before the present one; redo to the one after it.
    bool canUndo() const;
    bool canRedo() const;
    // What undo would take back (the present state's label) and what redo would bring, or
    // empty texts when there is nothing.
    std::string undoLabel() const;
    std::string redoLabel() const;
    // Forgets every snapshot (a new analysis).
    void clearMementos();
    // The whole analysis as file text: the scenarios, the one shown, and the EV/FE page's
    // state text `tabState`.
    std::string text(const std::string& tabState) const;
    // A snapshot of the analysis as it is now, under `label`. It shares the texts of the
    // scenarios that did not change since the last snapshot with that one.
    Memento createMemento(const std::string& label, const std::string& tabState) const;
    // What a snapshot holds, ready to show: the scenarios not shown now whose texts are in
    // it unchanged are taken over from the list (which must then be replaced with the
    // content: replaceScenarios), the others read back. Throws AnalysisFileError (never for
    // a snapshot this program made).
    AnalysisContent contentOf(const Memento& memento);
    // A relevant change: the redo branch behind the present state is cut, the snapshot is
    // appended and becomes the present state (the very first one stays at index 0).
    void recordMemento(const Memento& memento);
    // Steps back or forth and gives the snapshot of the state to restore; only when
    // canUndo() or canRedo().
    const Memento& stepBack();
    const Memento& stepForth();

    // Replaces the scenarios by those of a file or a snapshot and shows `selected` (-1 or
    // an index outside the list: the last one). The live ranges are the caller's to load.
    // `scenarioTexts` are the snapshot's texts of these scenarios, when they come from one.
    void replaceScenarios(std::vector<Scenario> scenarios, int selected,
                          const std::vector<Memento::Part>& scenarioTexts = {});

signals:
    // The title text changed (saved state or file name).
    void titleChanged(const QString& title);
    // Scenarios were added, renamed, deleted or replaced.
    void scenarioListChanged();

private:
    void setSaved(bool value, const QString& fileName);
    // The scenario at `index` changed: its text must be written again.
    void forgetText(int index) const;

    Range::Tree player1Range;
    Range::Tree player2Range;
    AnalysisInputs lastInputs;
    std::vector<Scenario> scenarioList;
    // Per scenario, its compressed text as the last snapshot wrote it, or null when it has
    // changed since (a cache, hence mutable).
    mutable std::vector<Memento::Part> texts;
    int current = -1;
    QString file;
    bool saved = true;
    std::vector<Memento> mementoList;
    std::int32_t position = 0;
};
