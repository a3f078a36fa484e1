#pragma once

#include <QByteArray>

#include <memory>
#include <string>
#include <vector>

// A snapshot of the whole analysis for undo and redo: what changed, shown in the menu
// entries, and the analysis as file text.
//
// The undo list has no limit in length and a snapshot is the whole file each time, so the
// text is kept in pieces: one compressed text per scenario, shared with the snapshots
// before it while that scenario does not change, plus the selected index and the EV/FE
// page's state. data() puts the file text together. A snapshot can also hold a whole text
// as it was given (setData, or the two-argument constructor).
class Memento {
public:
    // One scenario's text, compressed; shared between snapshots.
    using Part = std::shared_ptr<const QByteArray>;

    Memento() = default;
    Memento(std::string label, const std::string& data);
    Memento(std::string label, std::vector<Part> scenarios, int selectedScenario,
            std::string tabState);

    const std::string& label() const { return labelText; }
    // The analysis as file text.
    std::string data() const;
    void setLabel(const std::string& text) { labelText = text; }
    void setData(const std::string& text);

    // The pieces; no parts for a snapshot given as a whole text.
    const std::vector<Part>& parts() const { return scenarioParts; }
    int selectedScenario() const { return selected; }
    const std::string& tabState() const { return tabStateText; }

    // Bytes this snapshot holds on its own, without the parts it shares.
    std::size_t ownSize() const;

    static Part pack(const std::string& text);
    static std::string unpack(const Part& part);

private:
    std::string labelText;
    std::vector<Part> scenarioParts;
    int selected = -1;
    std::string tabStateText;
    // A whole text, when the snapshot was given one.
    Part whole;
};
