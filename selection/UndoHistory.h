#pragma once

#include <cstddef>
#include <utility>
#include <vector>

// A list of snapshots with a position: the snapshot at the position is the state shown,
// those before it are what undo goes back to, those after it what redo goes forward to.
// A snapshot recorded after an undo drops everything ahead of the position. A snapshot
// equal to the one at the position is no new step, so an edit that changed nothing leaves
// the list alone (and keeps the steps ahead). `Snapshot` needs ==.
template <typename Snapshot>
class UndoHistory {
public:
    // A list of one snapshot, the state to which undo can go back at the most.
    void reset(Snapshot first) {
        snapshots.clear();
        snapshots.push_back(std::move(first));
        index = 0;
    }

    // False when `snapshot` equals the one at the position and nothing was recorded.
    bool record(Snapshot snapshot) {
        if (!snapshots.empty()) {
            if (snapshots[index] == snapshot)
                return false;
            snapshots.erase(snapshots.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                            snapshots.end());
        }
        snapshots.push_back(std::move(snapshot));
        index = snapshots.size() - 1;
        return true;
    }

    // One step back or forward; the snapshot now at the position, or null where there is
    // no step to take.
    const Snapshot* undo() {
        if (!canUndo())
            return nullptr;
        --index;
        return &snapshots[index];
    }
    const Snapshot* redo() {
        if (!canRedo())
            return nullptr;
        ++index;
        return &snapshots[index];
    }

    bool canUndo() const { return index != 0; }
    bool canRedo() const { return index + 1 < snapshots.size(); }

    const std::vector<Snapshot>& entries() const { return snapshots; }
    std::size_t position() const { return index; }
    std::size_t size() const { return snapshots.size(); }

private:
    std::vector<Snapshot> snapshots;
    std::size_t index = 0;
};
