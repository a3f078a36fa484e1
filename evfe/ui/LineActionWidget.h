#pragma once

#include "Range/HandRange.h"
#include "calculation/EquityCalculationHandle.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <string>

class EV_FE_ColorCoding;
class HandRangeLine;
class QAction;
class QDoubleSpinBox;
class QLabel;
class QMenu;
class QMovie;
class QToolButton;
class ThreadHandle;
class ThreadPool;
struct LineAction;
namespace Range {
class Tree;
} // namespace Range

// One action of the variant shown on the EV/FE page: who does what ("Player2 calls"), the
// range for it, the buttons that fill that range, its own size where it has one, and for a
// reaction the equities of both range slices and the EV of this reaction alone.
//
// The widget edits its LineAction in place: the range line works on the action's group, the
// size box writes `size`, the Update... slots write the money of the variant and the page's
// rake into the action. The widget owns nothing of the model; the page deletes and rebuilds
// all widgets whenever another variant is shown.
//
// A reaction's equity is that of the first action's range (`otherRange`) against this
// action's range on the street's board, Player1's range first, computed on the ThreadPool:
// each widget runs at most one calculation; a new one stops the old one, and a result whose
// handle is not the widget's current one is dropped. Nothing is calculated for a fold, for
// an empty range on either side, for a range that does not lie inside its parent group, or
// for cards that cannot be analysed: the four labels then show "-".
//
// Main thread only.
class LineActionWidget : public QWidget {
    Q_OBJECT

public:
    // What the page hands a new widget.
    struct Setup {
        LineAction* action = nullptr;
        // "Player1" or "Player2": who takes this action.
        QString player;
        // The acting player's range with its groups, as the main window holds it: the groups
        // "Create Copy from Group" offers. May be null.
        Range::Tree* playerGroups = nullptr;
        ThreadPool* pool = nullptr;
        // Shown in the equity labels while the equity runs; owned by the page.
        QMovie* loadingMovie = nullptr;
        // Owned by the page, which keeps it up to date.
        const EV_FE_ColorCoding* colors = nullptr;
        // The option "Show EV of Single Reactions".
        bool showSingleEV = false;
        // Board cut to the page's street, and the dead cards.
        std::string board;
        std::string deadCards;
        double deadmoney = 0.0;
        double player1sStack = 100.0;
        double player2sStack = 100.0;
        double rakePercentage = 0.0;
        double rakeCap = 0.0;
    };

    LineActionWidget(const Setup& setup, QWidget* parent = nullptr);
    ~LineActionWidget() override;

    LineActionWidget(const LineActionWidget&) = delete;
    LineActionWidget& operator=(const LineActionWidget&) = delete;

    LineAction* lineAction() const { return action; }
    const QString& player() const { return actingPlayer; }
    // The other side of this action's equity.
    const Range::HandRange& getOtherRange() const { return otherRange; }
    const std::string& board() const { return boardText; }
    bool isCalculating() const { return calculating; }
    const EquityCalculationHandle& currentHandle() const { return handle; }
    // Whether the action has the second row (reactions) and equities (not a fold).
    bool hasResultRow() const { return equityP1 != nullptr; }
    bool hasEquity() const;
    // Why nothing is calculated, or an empty text when the equity can run.
    const QString& problem() const { return problemText; }

    // The parts, for the page and for tests.
    QLabel* playerLabel() const { return verbLabel; }
    HandRangeLine* rangeLine() const { return line; }
    QToolButton* copyFromGroupButton() const { return copyButton; }
    QToolButton* selectRangeButton() const { return selectButton; }
    QToolButton* clearRangeButton() const { return clearButton; }
    QToolButton* determineRangeButton() const { return determineButton; }
    // Null without a size of its own.
    QDoubleSpinBox* sizeBox() const { return size; }
    QLabel* sizeLabel() const { return sizeCaption; }
    // Null for the first action.
    QLabel* equityLabel(int player) const { return player == 1 ? equityP1 : equityP2; }
    QLabel* evLabel(int player) const { return player == 1 ? evP1 : evP2; }
    QLabel* combinationsLabel() const { return percentage; }

    // The menu of "Create Copy from Group": one entry per group of the acting player's range.
    // The caller owns it.
    QMenu* createGroupMenu(QWidget* parent) const;
    // The label of a size box for a verb: "Raisesize To", "3-Betsize To", "Betsize", each
    // behind two non-breaking blanks.
    static QString sizeCaptionFor(const std::string& verb);
    // The text of a reaction's EV: six significant digits ("11.7327", "-0.5").
    static QString singleEVText(float value);
    // The text of an entry of the group menu, before it is cut to 70 characters.
    static QString groupEntryText(unsigned int index, const std::string& name,
                                  const std::string& rangeText);

    void setSingleEVVisible(bool visible);
    // The width the player label needs, and the width it gets: the page gives all its
    // widgets the same, so that the range lines and the result columns line up.
    int playerLabelHint() const;
    void setPlayerLabelWidth(int width);

signals:
    void RangeChanged(LineActionWidget& widget);
    void RangeChanged(const Range::HandRange& range);
    void EquityCalculationStarted();
    void EquityCalculationFinished();
    void SizeChanged(double size);

public slots:
    void reactToThisRangeChange();
    void reactToThisSizeChange(double value);
    void reactToFinishedEquityCalculation(const ThreadHandle& finished,
                                          const LongedEvaluation& result);
    void onSelectGroupContextMenu();
    void onApplyRangeFromAction(QAction* entry);
    void UpdateOtherRange(const Range::HandRange& range);
    void UpdateBoardConstraints(const std::string& board, const std::string& deadCards);
    void UpdatePreviousMoney(double value);
    void UpdateDeadMoney(double value);
    void UpdateRakePercentage(double value);
    void UpdateRakeCap(double value);
    void UpdatePlayer1sLastInvestment(double value);
    void UpdatePlayer2sLastInvestment(double value);
    void UpdatePlayer1sEffectiveStackLeft(double value);
    void UpdatePlayer2sEffectiveStackLeft(double value);
    // Prints the EV of this reaction again from the action's numbers.
    void RecalculateEV();
    // Puts the canonical text of the range back into the line.
    void ValidateRange();
    // The range becomes what the parent group holds and no other group under it does.
    void DetermineRange();
    void OpenRangeSelectionDialog();
    void ClearRange();

private:
    void buildTopRow(const Setup& setup);
    void buildResultRow();
    // A change that did not come from typing: the line shows the range, then as typed.
    void rangeReplaced();
    void recountCombinations();
    // Why the equity cannot run now, or empty.
    QString findProblem() const;
    void restartEquity();
    void showNoEquity(const QString& reason);
    void showEquities();
    void showCombinations();
    void showValidity();
    // Sets a money field and prints the EV again, unless the equity is on its way.
    void storeAndRecalculate(float& field, float value);

    LineAction* action;
    QString actingPlayer;
    Range::Tree* playerGroups;
    QPointer<ThreadPool> pool;
    QMovie* loadingMovie;
    const EV_FE_ColorCoding* colors;
    Range::HandRange otherRange;
    std::string boardText;
    std::string deadCardText;
    EquityCalculationHandle handle;
    bool calculating = false;
    bool showSingleEV = false;
    // The texts the last equity was started on; the same texts start nothing new.
    std::string equityKey;
    QString problemText;

    QLabel* verbLabel = nullptr;
    HandRangeLine* line = nullptr;
    QToolButton* copyButton = nullptr;
    QToolButton* selectButton = nullptr;
    QToolButton* clearButton = nullptr;
    QToolButton* determineButton = nullptr;
    QLabel* sizeCaption = nullptr;
    QDoubleSpinBox* size = nullptr;
    QLabel* equityP1 = nullptr;
    QLabel* equityP2 = nullptr;
    QLabel* evP1 = nullptr;
    QLabel* evP2 = nullptr;
    QLabel* percentage = nullptr;
    QWidget* indent = nullptr;
    QWidget* evCaptions[2] = {nullptr, nullptr};
};
