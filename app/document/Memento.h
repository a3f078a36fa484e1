#pragma once

#include <string>
#include <utility>

// A snapshot of the whole analysis for undo and redo: what changed, shown in the menu
// entries, and the analysis as file text.
class Memento {
public:
    Memento() = default;
    Memento(std::string label, std::string data)
        : labelText(std::move(label)), dataText(std::move(data)) {}

    const std::string& label() const { return labelText; }
    const std::string& data() const { return dataText; }
    void setLabel(const std::string& text) { labelText = text; }
    void setData(const std::string& text) { dataText = text; }

private:
    std::string labelText;
    std::string dataText;
};
