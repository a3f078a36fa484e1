#include "app/AnalysisTabs.h"

#include "app/document/AnalysisInputs.h"
#include "calculation/ThreadPool.h"
#include "evfe/ui/EV_FE_CalculationsTab.h"
#include "selection/HandRangeLine.h"
#include "selection/ManagedHandRangeLine.h"
#include "tabs/BoardEvaluationTab.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/EquityEvolutionTab.h"
#include "tabs/EquityGraphTab.h"
#include "tabs/EquityTableTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"
#include "training/EquityTrainingTab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QShortcut>
#include <QSignalMapper>
#include <QTabWidget>

namespace {

// The range a player's line shows (the full range or a group), found by the line's name in
// the window's form; null without such a line.
const Range::HandRange* shownRange(QWidget* window, const char* lineName) {
    auto* line = window->findChild<ManagedHandRangeLine*>(QString::fromLatin1(lineName));
    return line ? line->rangeLine()->handRange() : nullptr;
}

} // namespace

AnalysisTabs::AnalysisTabs(QTabWidget* tabs, const BoardTabs& boardTabs, ThreadPool& pool,
                           HandGroupSchemaPool& schemaPool, HandGroupTickSchemaPool& tickSchemaPool,
                           QWidget* window)
    : QObject(window), tabs(tabs), window(window), pool(pool), schemaPool(schemaPool),
      tickSchemaPool(tickSchemaPool) {
    relayBoardTabs(boardTabs);
    // The evolution tab has the pool from the start: its analysis goes on while it is hidden.
    for (int index = 0; index < tabs->count(); ++index)
        if (auto* evolution = qobject_cast<EquityEvolutionTab*>(tabs->widget(index)))
            evolution->setThreadPool(&pool);
}

void AnalysisTabs::relayBoardTabs(const BoardTabs& boardTabs) {
    for (QComboBox* rangeBox :
         {boardTabs.boardHits->rangeSelection(), boardTabs.winEvaluation->rangeSelection()})
        connect(rangeBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &AnalysisTabs::refreshRequested);
    for (QCheckBox* absolute : {boardTabs.boardHits->absolutePercentages(),
                                boardTabs.twoPlayerBoardHits->absolutePercentages()})
        connect(absolute, &QCheckBox::stateChanged, this, &AnalysisTabs::refreshRequested);
    // The win tab's rows offer their hands like the hit tabs' rows.
    for (BoardEvaluationTab* tab : {static_cast<BoardEvaluationTab*>(boardTabs.boardHits),
                                    static_cast<BoardEvaluationTab*>(boardTabs.twoPlayerBoardHits),
                                    static_cast<BoardEvaluationTab*>(boardTabs.winEvaluation)}) {
        connect(tab, &BoardEvaluationTab::Player1RangeChange, this,
                &AnalysisTabs::Player1RangeChange);
        connect(tab, &BoardEvaluationTab::Player2RangeChange, this,
                &AnalysisTabs::Player2RangeChange);
        connect(tab, &BoardEvaluationTab::NewPlayer1Group, this, &AnalysisTabs::NewPlayer1Group);
        connect(tab, &BoardEvaluationTab::NewPlayer2Group, this, &AnalysisTabs::NewPlayer2Group);
    }
}

void AnalysisTabs::setUpFunctionKeys() {
    auto* mapper = new QSignalMapper(this);
    for (int index = 0; index < tabs->count(); ++index) {
        auto* shortcut = new QShortcut(QKeySequence(QStringLiteral("F%1").arg(index + 1)), window);
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, mapper,
                static_cast<void (QSignalMapper::*)()>(&QSignalMapper::map));
        mapper->setMapping(shortcut, index);
    }
    connect(mapper, &QSignalMapper::mappedInt, tabs, &QTabWidget::setCurrentIndex);
}

QWidget* AnalysisTabs::current() const {
    return tabs->currentWidget();
}

void AnalysisTabs::prepareCurrent() {
    // The graph tab gets the pool as that page gets its content. The training tab has its
    // pool from the window's construction and builds its start page when first shown.
    QWidget* tab = current();
    if (auto* board = qobject_cast<BoardEvaluationTab*>(tab))
        board->setPools(&pool, &tickSchemaPool, &schemaPool);
    else if (auto* table = qobject_cast<EquityTableTab*>(tab))
        table->setThreadPool(&pool);
    else if (auto* graph = qobject_cast<EquityGraphTab*>(tab))
        graph->setThreadPool(&pool);
    else if (auto* training = qobject_cast<EquityTrainingTab*>(tab)) {
        if (!training->hasPage())
            training->StartTraining();
    }
}

void AnalysisTabs::tellCurrent(const AnalysisInputs& inputs, bool alwaysRefresh) {
    // The EV/FE tab gets board and dead cards only (it has the players' ranges from the
    // window's construction); the training tab has inputs of its own. The graph tab gets the
    // ranges the lines show (the full range or a group) and keeps them as text.
    QWidget* tab = current();
    if (auto* board = qobject_cast<BoardEvaluationTab*>(tab)) {
        board->updateEvaluation(inputs.player1, inputs.player2, inputs.board, inputs.deadCards,
                                alwaysRefresh);
    } else if (auto* table = qobject_cast<EquityTableTab*>(tab)) {
        table->updateInputs(inputs.player1, inputs.player2, inputs.board, inputs.deadCards);
    } else if (auto* evolution = qobject_cast<EquityEvolutionTab*>(tab)) {
        evolution->updateInputs(inputs.player1, inputs.player2, inputs.board, inputs.deadCards);
    } else if (auto* graph = qobject_cast<EquityGraphTab*>(tab)) {
        graph->updateInputs(shownRange(window, "player1Range"), shownRange(window, "player2Range"),
                            inputs.board, inputs.deadCards);
    } else if (auto* evfe = qobject_cast<EV_FE_CalculationsTab*>(tab)) {
        evfe->updateBoardConstraints(inputs.board, inputs.deadCards);
    }
}
