#include "app/document/AnalysisDocument.h"

#include "Range/GroupColor.h"

#include <algorithm>
#include <utility>

namespace {

const char* const untitled = "untitled.qva";

} // namespace

AnalysisDocument::AnalysisDocument(QObject* parent) : QObject(parent) {
    // Each live range starts as one group "Parent" holding nothing.
    player1Range.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    player2Range.addRange(Range::Tree::noNode, "Parent", false, Range::GroupColor());
    resetScenarios();
}

Range::Tree& AnalysisDocument::range(int player) {
    return player == 2 ? player2Range : player1Range;
}

const Range::Tree& AnalysisDocument::range(int player) const {
    return player == 2 ? player2Range : player1Range;
}

bool AnalysisDocument::takeInputs(const AnalysisInputs& inputs) {
    if (inputs == lastInputs)
        return false;
    lastInputs = inputs;
    return true;
}

void AnalysisDocument::storeLiveState() {
    if (current < 0 || current >= static_cast<int>(scenarioList.size()))
        return;
    Scenario& scenario = scenarioList[static_cast<std::size_t>(current)];
    player1Range.CreateMemento(scenario.player1);
    player2Range.CreateMemento(scenario.player2);
    scenario.board = lastInputs.board;
    scenario.deadCards = lastInputs.deadCards;
    forgetText(current);
}

void AnalysisDocument::setCurrentIndex(int index) {
    // The scenario left may still have taken results since its last snapshot.
    forgetText(current);
    current = (index >= 0 && index < static_cast<int>(scenarioList.size())) ? index : -1;
    forgetText(current);
}

const Scenario* AnalysisDocument::currentScenario() const {
    return current >= 0 ? &scenarioList[static_cast<std::size_t>(current)] : nullptr;
}

Scenario AnalysisDocument::scenario(int index) const {
    if (index < 0 || index >= static_cast<int>(scenarioList.size()))
        return Scenario();
    return scenarioList[static_cast<std::size_t>(index)];
}

Scenario AnalysisDocument::emptyScenario(const std::string& name) {
    return Scenario(name, Scenario::emptyRange(), Scenario::emptyRange(), "", "");
}

void AnalysisDocument::resetScenarios() {
    scenarioList.clear();
    scenarioList.push_back(emptyScenario("Standard"));
    texts.assign(1, Memento::Part());
    current = 0;
    emit scenarioListChanged();
}

int AnalysisDocument::appendScenario(const std::string& name) {
    if (name.empty())
        return -1;
    return appendScenario(emptyScenario(name));
}

int AnalysisDocument::appendScenario(const Scenario& scenario) {
    scenarioList.push_back(scenario);
    texts.emplace_back();
    emit scenarioListChanged();
    return static_cast<int>(scenarioList.size()) - 1;
}

bool AnalysisDocument::renameScenario(int index, const std::string& name) {
    if (name.empty() || index < 0 || index >= static_cast<int>(scenarioList.size()))
        return false;
    scenarioList[static_cast<std::size_t>(index)].name = name;
    forgetText(index);
    emit scenarioListChanged();
    return true;
}

bool AnalysisDocument::canDeleteScenario(int index) const {
    return index >= 0 && index < static_cast<int>(scenarioList.size()) && scenarioList.size() > 1;
}

bool AnalysisDocument::deleteScenario(int index) {
    if (!canDeleteScenario(index))
        return false;
    scenarioList.erase(scenarioList.begin() + index);
    texts.erase(texts.begin() + index);
    current = 0;
    emit scenarioListChanged();
    return true;
}

QString AnalysisDocument::title() const {
    QString text = saved ? QString() : QStringLiteral("*");
    text += file.isEmpty() ? QString::fromLatin1(untitled) : file;
    text += QStringLiteral(" - Quorvane ");
    return text;
}

void AnalysisDocument::markChanged() {
    setSaved(false, file);
}

void AnalysisDocument::markSaved(const QString& fileName) {
    setSaved(true, fileName);
}

bool AnalysisDocument::canUndo() const {
    return position != 0;
}

bool AnalysisDocument::canRedo() const {
    return !mementoList.empty() && position != static_cast<std::int32_t>(mementoList.size()) - 1;
}

std::string AnalysisDocument::undoLabel() const {
    return canUndo() ? mementoList[static_cast<std::size_t>(position)].label() : std::string();
}

std::string AnalysisDocument::redoLabel() const {
    return canRedo() ? mementoList[static_cast<std::size_t>(position) + 1].label() : std::string();
}

void AnalysisDocument::clearMementos() {
    mementoList.clear();
    position = 0;
}

std::string AnalysisDocument::text(const std::string& tabState) const {
    return AnalysisFile::write(scenarioList, current, tabState);
}

void AnalysisDocument::forgetText(int index) const {
    if (index >= 0 && index < static_cast<int>(texts.size()))
        texts[static_cast<std::size_t>(index)].reset();
}

Memento AnalysisDocument::createMemento(const std::string& label,
                                        const std::string& tabState) const {
    // The scenario shown is written every time: the EV/FE page changes its lines in place.
    // Every other scenario changes only through this class, which forgets its text then.
    forgetText(current);
    for (std::size_t i = 0; i < scenarioList.size(); ++i)
        if (!texts[i])
            texts[i] = Memento::pack(AnalysisFile::scenarioText(scenarioList[i]));
    return Memento(label, texts, current, tabState);
}

AnalysisContent AnalysisDocument::contentOf(const Memento& memento) {
    if (memento.parts().empty())
        return AnalysisFile::read(memento.data());
    AnalysisContent content;
    content.selectedScenario = memento.selectedScenario();
    content.tabState = memento.tabState();
    content.snapshotParts = memento.parts();
    for (const Memento::Part& part : memento.parts()) {
        // A scenario other than the one shown whose text is this part is that very scenario.
        const auto same = std::find(texts.begin(), texts.end(), part);
        const auto index = static_cast<int>(same - texts.begin());
        if (same != texts.end() && index != current) {
            content.scenarios.push_back(std::move(scenarioList[static_cast<std::size_t>(index)]));
            // Taken: its text no longer stands for anything in the list.
            texts[static_cast<std::size_t>(index)].reset();
        } else {
            content.scenarios.push_back(
                AnalysisFile::readScenarioText(Memento::unpack(part), content.problems));
        }
    }
    if (content.selectedScenario >= static_cast<int>(content.scenarios.size()))
        content.selectedScenario = -1;
    return content;
}

void AnalysisDocument::recordMemento(const Memento& memento) {
    if (position + 1 < static_cast<std::int32_t>(mementoList.size()))
        mementoList.erase(mementoList.begin() + position + 1, mementoList.end());
    mementoList.push_back(memento);
    if (mementoList.size() != 1)
        ++position;
}

const Memento& AnalysisDocument::stepBack() {
    --position;
    return mementoList[static_cast<std::size_t>(position)];
}

const Memento& AnalysisDocument::stepForth() {
    ++position;
    return mementoList[static_cast<std::size_t>(position)];
}

void AnalysisDocument::replaceScenarios(std::vector<Scenario> scenarios, int selected,
                                        const std::vector<Memento::Part>& scenarioTexts) {
    scenarioList = std::move(scenarios);
    texts = scenarioTexts;
    texts.resize(scenarioList.size());
    const int count = static_cast<int>(scenarioList.size());
    current = selected >= 0 && selected < count ? selected : count - 1;
    emit scenarioListChanged();
}

void AnalysisDocument::setSaved(bool value, const QString& fileName) {
    const QString before = title();
    saved = value;
    file = fileName;
    const QString after = title();
    if (after != before)
        emit titleChanged(after);
}
