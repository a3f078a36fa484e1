#pragma once

#include "Range/HandRange.h"
#include "handstrength/HandGroupSchemaData.h"
#include "handstrength/HandGroupSchemaPool.h"
#include "handstrength/HandGroupTickSchemaPool.h"

#include <QMouseEvent>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <string>
#include <vector>

class BoardHitEvaluationTable;
class HandGroupSchema;
class HandGroupSchemaSelection;
class HandGroupTickSchemaSelection;
class HandRangeHover;
class HandStrengthLabel;
class QCheckBox;
class QComboBox;

class QHideEvent;
class QMenu;

class ThreadPool;

// The common base of the tabs that show a range on the board through a hand group schema
// ("Board Hits", "Two Player Board Hits", "Win Evaluation"): the inputs, the schema and its
// selection, the mouse work on the rows and the context actions that hand a row's hands
// back to the main window.
//
// Inputs. The window calls updateEvaluation only while the tab is visible, with the
// technical range texts of both players (free or compact text is accepted too and spelled
// out first), the board as concatenated two-character cards and the dead cards. Unless
// `alwaysRefresh`, equal inputs change nothing. A tab that comes into view catches up by the
// window's call with `alwaysRefresh` true.
//
// Pools. Until the window hands its pools (setThreadPool, setTickSchemaPool, setSchemaPool,
// in this order, on every switch to the tab) the tab works on pools of its own holding the
// built-in schemas. The pools and the thread pool are not owned.
//
// The schema object is owned and lives until a schema change replaces it; the expanded and
// ticked states live in it.
class BoardEvaluationTab : public QWidget {
    Q_OBJECT

public:
    explicit BoardEvaluationTab(QWidget* parent = nullptr);
    ~BoardEvaluationTab() override;

    void setThreadPool(ThreadPool* pool);
    void setTickSchemaPool(HandGroupTickSchemaPool* pool);
    void setSchemaPool(HandGroupSchemaPool* pool);
    // The three in the order of the window's tab switch.
    void setPools(ThreadPool* threadPool, HandGroupTickSchemaPool* tickSchemaPool,
                  HandGroupSchemaPool* schemaPool);

    // The update of the window (see above). Bad board or dead card text is reported by an
    // assertion and evaluates as no board.
    void updateEvaluation(const std::string& player1Range, const std::string& player2Range,
                          const std::string& board, const std::string& deadCards,
                          bool alwaysRefresh);
    void updateEvaluation(const Range::HandRange& player1Range,
                          const Range::HandRange& player2Range, const std::string& board,
                          const std::string& deadCards, bool alwaysRefresh);

    // The controls; the first, second and fourth may be null for a tab without them.
    QComboBox* rangeSelection() const { return selectedRange; }
    HandGroupTickSchemaSelection* customSumSelection() const { return tickSchemaSelection; }
    QCheckBox* absolutePercentages() const { return absoluteFlag; }
    HandGroupSchemaSelection* schemaSelection() const { return handGroupSchemaSelection; }
    BoardHitEvaluationTable* table() const { return evaluationTable; }
    const HandGroupSchema* schema() const { return handGroupSchema; }

    // The last inputs, as evaluated (technical texts).
    const std::string& lastRange1() const { return range1; }
    const std::string& lastRange2() const { return range2; }
    const std::string& lastBoard() const { return board; }
    const std::string& lastDeadCards() const { return deadCards; }

    // The hands behind a row after the last evaluation, of the first (1) or second (2)
    // player of the tab's table: for the one-range tabs the player the "Range:" box names.
    Range::HandRange rangeOfRow(const HandStrengthKey& key, int player) const;
    // The row's context menu, its entries wired to the context actions, with the row's
    // ranges taken as "range 1" and "range 2". Owned by the caller.
    virtual QMenu* createContextMenu(const HandStrengthKey& key, QWidget* parent);
    // The hovers shown at the moment (one or two: player 1's first), for the tests. Each is
    // the range hover of the range lines, built with the row's hands, the board and the dead
    // cards of the last evaluation.
    std::vector<HandRangeHover*> shownHovers() const;

    // Where a hover block of `size` goes for the pointer at `pointer` (global) on `screen`:
    // right of and above the pointer. When it would leave the right edge it moves left by
    // its width plus 21; when it would leave the top it moves below the pointer, by its
    // height plus 21 when there is room below, else by half its height plus 5. Whatever is
    // left over is clamped, so the block always lies on the screen when it fits on it.
    static QPoint hoverPlacement(const QPoint& pointer, const QSize& size, const QRect& screen);

    // How many calculations the tab has started (an update with equal inputs starts none).
    std::size_t calculationsStarted() const { return calculations; }

    // The player (1 or 2) that the "Range:" box names; 1 without the box.
    int selectedPlayer() const;

    // Input texts: technical range text (any accepted spelling spelled out), and whether a
    // board and its dead cards can be analysed (Range::CardText::problemOf finds nothing).
    static std::string technicalRange(const std::string& text);
    static bool cardsAreValid(const std::string& board, const std::string& deadCards);

signals:
    void Player1RangeChange(Range::HandRange range);
    void Player2RangeChange(Range::HandRange range);
    void NewPlayer1Group(std::string name, Range::HandRange range);
    void NewPlayer2Group(std::string name, Range::HandRange range);

public slots:
    // Runs the update again with the stored inputs, refreshing.
    void DoRefresh();
    void handStrengthLabelClicked(HandStrengthLabel* clickedLabel, QMouseEvent* event);
    void handStrengthLabelHovered(HandStrengthLabel* clickedLabel, QMouseEvent* event);
    void handStrengthLabelHoverLost(HandStrengthLabel* clickedLabel, QEvent* event);
    void reactToFinishedWinEvaluation();
    void onCopyRange1ToClipboardAction();
    void onUseRange1AsPlayer1RangeAction();
    void onUseRange1AsPlayer2RangeAction();
    void onUseRange1AsNewPlayer1GroupAction();
    void onUseRange1AsNewPlayer2GroupAction();
    void onCopyRange2ToClipboardAction();
    void onUseRange2AsPlayer1RangeAction();
    void onUseRange2AsPlayer2RangeAction();
    void onUseRange2AsNewPlayer2GroupAction();
    void onUseRange2AsNewPlayer1GroupAction();
    void reactToChangedSchema(HandGroupSchemaData schemaData);
    void reactToChangedTickSchema(HandGroupTickSchemaPool::HandGroupTickSchema schema);

protected:
    // Called by the derived constructor once its form stands. Wires the controls, takes the
    // tab's own pools and makes the first schema.
    void setControls(QComboBox* rangeBox, HandGroupSchemaSelection* schemaBox,
                     HandGroupTickSchemaSelection* tickBox, QCheckBox* absoluteBox,
                     BoardHitEvaluationTable* rowsTable);

    // Starts the derived tab's evaluation with the four inputs; `flat` is the state of the
    // absolute flag (false without it).
    virtual void startCalculation(const std::string& player1Range, const std::string& player2Range,
                                  const std::string& board, const std::string& deadCards,
                                  bool flat) = 0;
    // Runs the context menu of a row at a global position.
    virtual void showContextMenu(const HandStrengthKey& key, const QPoint& globalPosition);
    // The hands of a row that its hovers show, one range per player the table shows.
    virtual std::vector<Range::HandRange> hoverRanges(const HandStrengthKey& key) const;
    // The table's rows again from the schema.
    virtual void rebuildTable();
    // A new schema was made; the win tab clears its results here.
    virtual void schemaReplaced() {}
    // The schema's WinEvaluationFinished, before reactToFinishedWinEvaluation.
    virtual void takeWinEvaluation(const DetailWinEvaluations&) {}

    HandGroupSchema* mutableSchema() const { return handGroupSchema; }
    // Hovers do not outlive the tab's visibility.
    void hideEvent(QHideEvent* event) override;

    Range::HandRange groupRange1;
    Range::HandRange groupRange2;

private:
    void installSchema(HandGroupSchema* schema);
    void closeHovers();
    // Asks for a group name; a rejected dialog gives an empty name.
    std::string askGroupName();

    QComboBox* selectedRange = nullptr;
    HandGroupTickSchemaSelection* tickSchemaSelection = nullptr;
    BoardHitEvaluationTable* evaluationTable = nullptr;
    QCheckBox* absoluteFlag = nullptr;
    QPointer<ThreadPool> threadPool;
    HandGroupSchemaPool* schemaPool = nullptr;
    HandGroupTickSchemaPool* tickSchemaPool = nullptr;
    HandGroupSchema* handGroupSchema = nullptr;
    HandGroupSchemaSelection* handGroupSchemaSelection = nullptr;
    std::string range1;
    std::string range2;
    std::string deadCards;
    std::string board;
    std::size_t calculations = 0;
    std::vector<QPointer<HandRangeHover>> hovers;
    QPointer<HandStrengthLabel> hoveredLabel;

    HandGroupSchemaPool ownSchemaPool;
    HandGroupTickSchemaPool ownTickSchemaPool;
};
