#pragma once

#include <VelmaraEvaluatorBase.h>

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class Quorvane;
class QLabel;
class QWidget;
class ThreadHandle;

// Drives a real main window the way a user does: typing into the range lines and the
// board fields, and waiting for the published headline equity.
class MainWindowDriver {
public:
    // Builds the evaluator's board tables once per process (the splash does this in the
    // program), then a fresh window, shown.
    MainWindowDriver();
    ~MainWindowDriver();

    Quorvane& window() { return *mainWindow; }

    // Types `text` key by key into player 1's or 2's range line (which gets the focus).
    void typeRange(int player, const QString& text);
    // Types `cards` into the flop field.
    void typeFlop(const QString& cards);
    void typeTurn(const QString& cards);

    QLabel* equityLabel(int player) const;

    // Waits until the window has published the result of its current calculation; false
    // after `limitMs`.
    bool waitForEquity(int limitMs = 60000);
    // Every EquityCalculationFinished seen since construction (handle ids).
    const std::vector<unsigned int>& finishedIds() const { return finished; }
    // Ids of results that arrived and were accepted by the window's handle comparison.
    const std::vector<unsigned int>& publishedIds() const { return published; }

    // The exact counters for technical range texts, computed here, in this thread.
    static LongedEvaluation exactEquity(const std::string& range1, const std::string& range2,
                                        const std::string& board, const std::string& dead);
    // Technical text of free range text.
    static std::string technical(const std::string& freeText);

    static bool waitUntil(const std::function<bool()>& done, int limitMs);

private:
    std::unique_ptr<Quorvane> mainWindow;
    std::vector<unsigned int> finished;
    std::vector<unsigned int> published;
};
