#pragma once

#include "evfe/LineList.h"

#include <memory>

// The EV/FE lines of one scenario.
//
// The list lives on the heap, so that its address survives when the scenario moves (the
// scenarios of an analysis are a vector that grows): the EV/FE tab keeps a pointer to the
// lines of the scenario shown and writes into them. Copying a scenario copies every line
// deeply, range groups included. Like a pointer, the holder's constness does not reach the
// lines: the analysis hands its scenarios out read-only, and the tab still edits the lines of
// the one shown. Assigning to a holder keeps its list where it is; only the end of the
// holder (a scenario deleted or the whole list replaced) ends the list.
class ScenarioLines {
public:
    ScenarioLines();
    ScenarioLines(const ScenarioLines& other);
    ScenarioLines(ScenarioLines&& other) noexcept;
    ScenarioLines& operator=(const ScenarioLines& other);
    ScenarioLines& operator=(ScenarioLines&& other) noexcept;
    ~ScenarioLines();

    // The lines; a moved-from holder starts a new, empty list.
    LineList& list() const;
    LineList* get() const { return &list(); }
    LineList& operator*() const { return list(); }
    LineList* operator->() const { return &list(); }

private:
    mutable std::unique_ptr<LineList> lines;
};
