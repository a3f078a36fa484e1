#include "app/AnalysisTabs.h"

#include "app/document/AnalysisInputs.h"
#include "calculation/ThreadPool.h"
#include "tabs/BoardEvaluationTab.h"
#include "tabs/BoardHitsTab.h"
#include "tabs/EquityTableTab.h"
#include "tabs/TwoPlayerBoardHitsTab.h"
#include "tabs/WinEvaluationTab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QShortcut>
#include <QSignalMapper>
#include <QTabWidget>

AnalysisTabs::AnalysisTabs(QTabWidget* tabs, const BoardTabs& boardTabs, ThreadPool& pool,
                           HandGroupSchemaPool& schemaPool, HandGroupTickSchemaPool& tickSchemaPool,
                           QWidget* window)
    : QObject(window), tabs(tabs), window(window), pool(pool), schemaPool(schemaPool),
      tickSchemaPool(tickSchemaPool) {
    relayBoardTabs(boardTabs);
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
    // The graph tab gets the pool, and the training tab builds its start page, as those
    // pages get their content.
    QWidget* tab = current();
    if (auto* board = qobject_cast<BoardEvaluationTab*>(tab))
        board->setPools(&pool, &tickSchemaPool, &schemaPool);
    else if (auto* table = qobject_cast<EquityTableTab*>(tab))
        table->setThreadPool(&pool);
}

void AnalysisTabs::tellCurrent(const AnalysisInputs& inputs, bool alwaysRefresh) {
    // The evolution, EV/FE and graph tabs get their calls (the four texts; board and dead
    // cards; the two ranges with board and dead cards) as those pages get their content; the
    // training tab has inputs of its own.
    QWidget* tab = current();
    if (auto* board = qobject_cast<BoardEvaluationTab*>(tab)) {
        board->updateEvaluation(inputs.player1, inputs.player2, inputs.board, inputs.deadCards,
                                alwaysRefresh);
    } else if (auto* table = qobject_cast<EquityTableTab*>(tab)) {
        table->updateInputs(inputs.player1, inputs.player2, inputs.board, inputs.deadCards);
    }
}
