#pragma once

#include "Range/HandRange.h"
#include "training/EquityTrainingItemResults.h"
#include "training/EquityTrainingPrompts.h"
#include "training/EquityTrainingRandomness.h"

#include <QPointer>
#include <QWidget>

#include <string>
#include <vector>

class EquityTrainingItem;
class EquityTrainingResults;
class EquityTrainingStart;
class ThreadPool;
namespace Range {
class RandomSource;
}

// The "Equity Training" tab. It has inputs of its own and no part in the window's equity
// loop: it shows one of its three pages at a time, the start page (ranges, board, random
// cards), the page of the running training, and the results page.
//
// The start page is built when the tab first comes into view (StartTraining) and kept, with
// its ranges, from one training to the next; the other two pages are built anew for each
// training and go away when it ends or is cancelled.
//
// The window hands the tab its ThreadPool once. Deals draw from the RandomSource handed in
// (the program's shared one unless set), so that a fixed seed replays a training.
class EquityTrainingTab : public QWidget {
    Q_OBJECT

public:
    explicit EquityTrainingTab(QWidget* parent = nullptr);
    ~EquityTrainingTab() override;

    void setThreadPool(ThreadPool* pool);
    ThreadPool* getThreadPool() const { return pool.data(); }
    // Not owned; must outlive the tab.
    void setRandomSource(Range::RandomSource* random);
    void setPrompts(EquityTrainingPrompts prompts);

    // Whether any page exists yet.
    bool hasPage() const;
    // The pages as they are now: null when not built; the start page is hidden while
    // another page shows.
    EquityTrainingStart* startPage() const { return start; }
    EquityTrainingItem* itemPage() const;
    EquityTrainingResults* resultsPage() const;
    // The page on display, or null.
    QWidget* currentPage() const;

public slots:
    // Builds the item page for these inputs and deals its first item.
    void onTrainingStarted(const Range::HandRange& heroRange, const Range::HandRange& villainRange1,
                           const Range::HandRange& villainRange2, const std::string& board,
                           const std::string& deadCards, EquityTrainingRandomness randomness);
    // Shows the start page, building it on first use; any other page goes.
    void StartTraining();
    // Shows the results of the finished training.
    void FinishTraining(const std::vector<EquityTrainingItemResults>& itemResults);

private:
    // Takes the item and results pages out; they are deleted once control returns to the
    // event loop, since their own signals may have led here.
    void dropTrainingPages();
    void showPage(QWidget* page);

    QPointer<ThreadPool> pool;
    Range::RandomSource* random;
    EquityTrainingPrompts prompts;
    EquityTrainingStart* start = nullptr;
    QPointer<EquityTrainingItem> item;
    QPointer<EquityTrainingResults> results;
};
