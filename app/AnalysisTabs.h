#pragma once

#include "Range/HandRange.h"

#include <QObject>

#include <string>

struct AnalysisInputs;
class BoardHitsTab;
class HandGroupSchemaPool;
class HandGroupTickSchemaPool;
class QTabWidget;
class QWidget;
class ThreadPool;
class TwoPlayerBoardHitsTab;
class WinEvaluationTab;

// The analysis tabs of the main window, as the window talks to them: only the visible tab
// is told of new inputs, each in the call it offers; a tab coming into view is first handed
// what it shares with the window (the pool, the schema pools) and then catches up.
//
// The board tabs' own controls and their context actions reach the window through the
// signals below; F1 to F8 switch to the tabs from anywhere in the program.
//
// The pools must outlive this object.
class AnalysisTabs : public QObject {
    Q_OBJECT

public:
    struct BoardTabs {
        BoardHitsTab* boardHits;
        TwoPlayerBoardHitsTab* twoPlayerBoardHits;
        WinEvaluationTab* winEvaluation;
    };

    // `window` receives the tab keys.
    AnalysisTabs(QTabWidget* tabs, const BoardTabs& boardTabs, ThreadPool& pool,
                 HandGroupSchemaPool& schemaPool, HandGroupTickSchemaPool& tickSchemaPool,
                 QWidget* window);

    QWidget* current() const;
    // Hands the visible tab what it shares with the window.
    void prepareCurrent();
    // Tells the visible tab the inputs; `alwaysRefresh` makes a board tab evaluate again
    // although they did not change.
    void tellCurrent(const AnalysisInputs& inputs, bool alwaysRefresh);
    // F and the tab's number plus one, application wide: F1 is the first tab.
    void setUpFunctionKeys();

signals:
    // A board tab's "Range:" box or "Absolute Percentages" changed: it must evaluate again
    // although no input changed.
    void refreshRequested();
    // The hands behind a board tab's row, offered as a player's range or as a new group.
    void Player1RangeChange(Range::HandRange range);
    void Player2RangeChange(Range::HandRange range);
    void NewPlayer1Group(std::string groupName, Range::HandRange range);
    void NewPlayer2Group(std::string groupName, Range::HandRange range);

private:
    void relayBoardTabs(const BoardTabs& boardTabs);

    QTabWidget* tabs;
    QWidget* window;
    ThreadPool& pool;
    HandGroupSchemaPool& schemaPool;
    HandGroupTickSchemaPool& tickSchemaPool;
};
