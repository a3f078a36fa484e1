#pragma once

#include "calculation/EquityCalculationHandle.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <VelmaraEvaluatorBase.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

class PlotContextMenu;
class PlotMessage;
class QCPBars;
class QCPTextElement;
class QCustomPlot;
class QPoint;
class QTimer;
class ThreadHandle;
class ThreadPool;

namespace Ui {
class EquityEvolutionTab;
}

// The "Equity Evolutions" tab: how the equity of one player's range against the other's
// develops on each possible next card. One bar per card of the deck, grouped by rank, coloured
// by suit; cards that cannot come (on the board, dead) keep an empty bar.
//
// The analysis runs card by card: one getEquity at a time under the tab's own handle, and
// each result starts the calculation of the next card, so the picture grows bar by bar and
// the main thread never waits. A change of the inputs or of the player aborts a running
// analysis and clears the picture; nothing restarts until a button is pressed.
//
// The window hands over its ThreadPool once (setThreadPool) and tells the tab the four input
// texts while it is visible (updateInputs). Main thread only.
class EquityEvolutionTab : public QWidget {
    Q_OBJECT

public:
    // The 52 cards, two characters each, from the aces down to the deuces, d h s c within a
    // rank: a card's character position divided by 8 is its rank, modulo 8 its suit (0, 2,
    // 4, 6 for d, h, s, c).
    static const std::string deck;
    // `cardIndex` while no analysis runs.
    static constexpr int idle = 888;

    // What the bar of a card stands for.
    enum class BarKind { Equity, OnBoard, DeadCard, NoMatchup };

    explicit EquityEvolutionTab(QWidget* parent = nullptr);
    ~EquityEvolutionTab() override;

    EquityEvolutionTab(const EquityEvolutionTab&) = delete;
    EquityEvolutionTab& operator=(const EquityEvolutionTab&) = delete;

    // The pool that runs the calculations; a running analysis on another pool is aborted.
    void setThreadPool(ThreadPool* pool);
    ThreadPool* getThreadPool() const { return threadPool.data(); }

    // The window's update: range texts of player 1 and player 2 (any spelling), board and
    // dead card texts ("Ah7d2c", may be empty). Opens the turn button from a flop on and the
    // river button from a turn on. Changed texts abort a running analysis and clear the
    // picture, which belonged to the old texts.
    void updateInputs(const std::string& player1, const std::string& player2,
                      const std::string& board, const std::string& deadCards);

    // --- State, for the window and for tests ---------------------------------------------
    int currentCardIndex() const { return cardIndex; }
    // From a button press until the last card is in or the analysis is aborted.
    bool isAnalysing() const { return cardIndex >= -2 && cardIndex < 104; }
    const EquityCalculationHandle& currentHandle() const { return handle; }
    QCustomPlot* plot() const;
    // The bars of a suit, 0 to 3 for d, h, s, c: x positions and heights in rank order, as
    // far as the analysis got.
    QCPBars* bars(int suit) const { return suitBars[suit]; }
    const std::vector<double>& positions(int suit) const { return xPositions[suit]; }
    const std::vector<double>& heights(int suit) const { return yValues[suit]; }
    // The height of a card's bar ("Ks"); NaN when the card has no bar (yet).
    double barOf(const std::string& card) const;
    // What a card's bar stands for; meaningful only while barOf() is a number.
    BarKind kindOf(const std::string& card) const;
    // The hover text at a position of the plot's pixels: "Ks: 62.40 %", or why a card has
    // an empty bar; empty off the bars.
    QString toolTipAt(const QPoint& position) const;
    // "Card;Equity" and one line per card with a bar, in deck order, equity in percent with
    // two decimals (empty for a card without equity); empty without bars.
    QString csvText() const;
    // The sentence shown in the empty plot; empty while bars are shown.
    QString message() const;
    QString title() const;
    PlotContextMenu* contextMenu() const { return menu; }

public slots:
    void analyzeTurnCards();
    void abortCurrentCalculation();
    void analyzeRiverCards();
    void onFinishedTurnCalculation(const ThreadHandle& handle, const LongedEvaluation& result);
    void onFinishedRiverCalculation(const ThreadHandle& handle, const LongedEvaluation& result);

private:
    // The analyses differ only in how many board characters they keep: 6 for the turn, 8
    // for the river.
    void analyze(int baseLength);
    void onFinished(int baseLength, const ThreadHandle& finished, const LongedEvaluation& result);
    // Moves `cardIndex` to the next card that can come, giving the ones that cannot an empty
    // bar.
    void advanceCard(int baseLength);
    void startCurrentCard(int baseLength);
    std::string boardWithCurrentCard(int baseLength) const;
    void addBar(double value, BarKind kind);
    void clearBars();
    // Why an analysis cannot start with the stored texts; empty when it can.
    QString refusal() const;
    void showState();
    QString playerName(int offset = 0) const;

    std::unique_ptr<Ui::EquityEvolutionTab> ui;
    QPointer<ThreadPool> threadPool;
    EquityCalculationHandle handle;
    // The four texts of the last update, ranges in technical form.
    std::string range1;
    std::string range2;
    std::string board;
    std::string deadCards;
    int cardIndex = idle;
    std::array<std::vector<double>, 4> xPositions;
    std::array<std::vector<double>, 4> yValues;
    std::array<QCPBars*, 4> suitBars{};
    // By deck position / 2: what each bar stands for.
    std::array<BarKind, 52> kinds{};
    std::array<bool, 52> hasBar{};
    // Why the last press of a button started nothing; shown until the next change.
    QString refused;
    QCPTextElement* titleElement = nullptr;
    QTimer* drawTimer = nullptr;
    std::unique_ptr<PlotMessage> messageItem;
    PlotContextMenu* menu = nullptr;
};
