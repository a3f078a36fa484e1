#pragma once

#include "evfe/EV_FE_ColorCoding.h"
#include "evfe/LineList.h"

#include <QAction>
#include <QMetaObject>
#include <QPointer>
#include <QTextBrowser>
#include <QWidget>

#include <string>
#include <vector>

class HorizontalLineHeader;
class LineActionWidget;
class QComboBox;
class QMovie;
class ThreadPool;
struct Scenario;
enum class Street : int;
namespace Range {
class HandRange;
class Tree;
} // namespace Range
namespace Ui {
class EV_FE_CalculationsTab;
}

// The "EV/FE Calculations" page: the betting lines of the scenario shown, one street and one
// first actor at a time. The top holds the rake, the street, the first actor, the line and
// the variant with their buttons, and the money of the variant (pot, stacks, last
// investments); below, one LineActionWidget per action of the variant shown; at the bottom
// the overall result: the fold equity and the EV of both players, coloured by the EV colour
// coding.
//
// The page edits the scenario's lines in place (setLines): the window hands it the list of
// the scenario shown and hands it again whenever the scenarios change. The action widgets
// are rebuilt for every other variant; the model alone survives. Group 0 of a variant's
// range sets is kept equal to the players' full ranges of the window (setFullRanges).
//
// Overall results wait for the subrange equities: while any action widget calculates, the
// four result labels show the loading picture, and the overall result is computed once the
// last one has finished. Every structural change is reported with its undo label through
// SomeThingMementoRelevantChanged, every change of the file's content through
// SomeThingChanged.
//
// Main thread only.
class EV_FE_CalculationsTab : public QWidget {
    Q_OBJECT

public:
    explicit EV_FE_CalculationsTab(QWidget* parent = nullptr);
    ~EV_FE_CalculationsTab() override;

    EV_FE_CalculationsTab(const EV_FE_CalculationsTab&) = delete;
    EV_FE_CalculationsTab& operator=(const EV_FE_CalculationsTab&) = delete;

    // What the window shares with the page: the pool of the subrange equities, the players'
    // ranges with their groups (node 0 of each is the full range; the trees must outlive the
    // page's use of them), the window's explanation text and its "Show Plot Explanation"
    // action, which belong to the plot window.
    void setUp(ThreadPool* pool, Range::Tree* player1Groups, Range::Tree* player2Groups,
               QTextBrowser* explanation, QAction* showPlotExplanation);
    // The players' ranges with their groups; the page takes group 0 of each as a full range,
    // from the next list it shows or the next update on.
    void setFullRanges(Range::Tree* player1Groups, Range::Tree* player2Groups);
    // The lines of the scenario shown, edited in place; null for none. Must be called again
    // whenever the list may have moved or been replaced: the widgets of the old list are
    // dropped first, and the line and variant shown stay if the new list has them.
    void setLines(LineList* lines);
    LineList* lineList() const { return lines; }
    // The scenario shown: its board and dead cards (the street radios follow the board), then
    // its lines, as setLines. The window calls this whether the page is visible or not, so
    // that a state restored while the page is hidden finds the streets of the right board.
    void showScenario(const Scenario& scenario);
    // The window's update of the visible tab: the board (the street radios follow its
    // length) and the dead cards. The widgets recount and restart what changed.
    void updateBoardConstraints(const std::string& board, const std::string& deadCards);

    // The page's state as the analysis file keeps it (the element `EV_FE_Tab`), and back.
    // Restoring reports no change: it is part of opening or undoing.
    std::string stateText() const;
    void restoreState(const std::string& text);

    // --- What is shown, for the window and for tests ----------------------------------------
    Street selectedStreet() const;
    // "Player1" or "Player2".
    QString firstActor() const;
    Line* selectedLine() const;
    LineVariant* selectedVariant() const;
    LineActionWidget* firstActionWidget() const { return firstWidget; }
    const std::vector<LineActionWidget*>& reactionWidgets() const { return reactions; }
    std::vector<HorizontalLineHeader*> headers() const { return listHeaders; }
    int runningSubrangeCalculations() const { return running; }
    // The board cut to the street shown: no card preflop, three on the flop, and so on.
    std::string streetBoard() const;
    const std::string& deadCards() const { return deadCardText; }
    const EV_FE_ColorCoding& colorCoding() const { return colors; }
    QMovie* loadingMovie() const { return movie; }
    Ui::EV_FE_CalculationsTab* form() const { return ui; }

    // Where the messages of the page send the user.
    static QString supportAddress();

signals:
    void EquityChanged(const LineVariant& variant);
    void Player1sEffectiveStackSizeChanged(const LineVariant& variant);
    void Player2sEffectiveStackSizeChanged(const LineVariant& variant);
    void DeadmoneyChanged(const LineVariant& variant);
    void LineSizeChanged(const LineVariant& variant, const LineAction& action);
    void SomeThingChanged();
    void SomeThingMementoRelevantChanged(std::string changeLabel);

public slots:
    void UpdateLines();
    void UpdateVariants();
    void UpdateUI();
    void SubrangeCalculationStarted();
    void SubrangeCalculationFinished();
    void updateOverallResults();
    void reactToDeadmoneyChange(double value);
    void reactToPlayer1sEffectiveStackSizeChange(double value);
    void reactToPlayer2sEffectiveStackSizeChange(double value);
    void reactToPlayer1sLastInvestmentChange(double value);
    void updateMinimums();
    void showPotToolTip();
    void updateActionSizeMaximums();
    void reactToPlayer2sLastInvestmentChange(double value);
    void reactToLineSizeChange();
    void reactToChanges();
    void createVariant();
    void editVariant();
    void deleteVariant();
    void onRakeInfo();
    void addLine();
    void deleteLine();
    // Reads the option "Show EV of Single Reactions" and the colour coding again and shows
    // the numbers with them.
    void DoRefresh();

    // The line names the add button offers on the street shown: not those in the line box.
    Q_INVOKABLE std::vector<std::string> getAllLineNamesButCurrentOnes() const;

private:
    void wireControls();
    // The boxes alone, without building the list.
    void fillLineBox();
    void fillVariantBox();
    void enableVariantButtons();
    // Selects `index` in the box, or else the entry `otherwise`, if there is one; no signal.
    static void selectIn(QComboBox* box, int index, const QString& otherwise);
    void clearActionWidgets();
    LineActionWidget* addActionWidget(LineVariant& variant, std::size_t index);
    void wireActionWidget(LineActionWidget* widget);
    // One width for the player labels of all widgets.
    void alignActionWidgets();
    void wirePageToBoxes();
    // A money box's value into the variant shown, then the size limits (when they follow
    // it), the overall result and SomeThingChanged; the variant, or null when none is shown.
    LineVariant* storeMoney(float LineVariant::*field, double value, bool limitsFollow);
    void showSizeLabels(const LineVariant& variant);
    void showEmptyHint();
    // Group 0 of the variant's sets from the window's full ranges.
    void assignFullRanges(LineVariant& variant) const;
    Range::HandRange fullRange(int player) const;
    // Board and full ranges to the widgets of the variant shown.
    void refreshInputs();
    // Enables the streets the board has cards for; true when the selection had to fall back.
    bool followBoardWithStreets();
    void setStreet(Street street);
    // The reason the overall result cannot be shown, or empty.
    QString overallProblem() const;
    void showOverallProblem(const QString& reason);
    void countRunningCalculations();
    void selectVariantNamed(const QString& name);
    void reportStructuralChange(const char* label);
    // The name the user typed, or empty when cancelled or refused (with the message shown).
    QString askVariantName(const QString& proposal, const QString& okText, const QString& title,
                           const Line& line, const LineVariant* renamed);

    Ui::EV_FE_CalculationsTab* ui;
    QPointer<ThreadPool> pool;
    Range::Tree* player1Groups = nullptr;
    Range::Tree* player2Groups = nullptr;
    QPointer<QTextBrowser> explanationText;
    QPointer<QAction> plotExplanationAction;
    LineList* lines = nullptr;
    std::string boardText;
    std::string deadCardText;
    int running = 0;
    QMovie* movie = nullptr;
    EV_FE_ColorCoding colors;
    bool showSingleEV = false;
    int potHintCounter = 0;
    LineActionWidget* firstWidget = nullptr;
    std::vector<LineActionWidget*> reactions;
    std::vector<HorizontalLineHeader*> listHeaders;
    // The page's own connections to the money boxes, made after the widgets' ones.
    std::vector<QMetaObject::Connection> pageConnections;
};
