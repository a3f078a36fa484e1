#include "evfe/ScenarioLines.h"

ScenarioLines::ScenarioLines() : lines(std::make_unique<LineList>()) {}

ScenarioLines::ScenarioLines(const ScenarioLines& other)
    : lines(std::make_unique<LineList>(other.list())) {}

ScenarioLines::ScenarioLines(ScenarioLines&& other) noexcept = default;

// Assignments keep this holder's list where it is, so that a pointer to it stays valid when a
// scenario is overwritten in place.
ScenarioLines& ScenarioLines::operator=(const ScenarioLines& other) {
    if (this != &other)
        list() = other.list();
    return *this;
}

ScenarioLines& ScenarioLines::operator=(ScenarioLines&& other) noexcept {
    if (this == &other || !other.lines)
        return *this;
    if (lines)
        *lines = std::move(*other.lines);
    else
        lines = std::move(other.lines);
    return *this;
}

ScenarioLines::~ScenarioLines() = default;

LineList& ScenarioLines::list() const {
    if (!lines)
        lines = std::make_unique<LineList>();
    return *lines;
}
