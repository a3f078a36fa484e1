#include "training/EquityTrainingTab.h"

#include "Range/RandomSource.h"
#include "calculation/ThreadPool.h"
#include "training/EquityTrainingItem.h"
#include "training/EquityTrainingResults.h"
#include "training/EquityTrainingStart.h"

#include <QVBoxLayout>

#include <utility>

EquityTrainingTab::EquityTrainingTab(QWidget* parent)
    : QWidget(parent), random(&Range::RandomSource::shared()),
      prompts(EquityTrainingPrompts::standard()) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
}

EquityTrainingTab::~EquityTrainingTab() = default;

void EquityTrainingTab::setThreadPool(ThreadPool* threadPool) {
    pool = threadPool;
    if (start)
        start->setThreadPool(threadPool);
}

void EquityTrainingTab::setRandomSource(Range::RandomSource* source) {
    random = source;
    if (start)
        start->setRandomSource(source);
}

void EquityTrainingTab::setPrompts(EquityTrainingPrompts newPrompts) {
    prompts = std::move(newPrompts);
    if (start)
        start->setPrompts(prompts);
}

bool EquityTrainingTab::hasPage() const {
    return start || item || results;
}

EquityTrainingItem* EquityTrainingTab::itemPage() const {
    return item.data();
}

EquityTrainingResults* EquityTrainingTab::resultsPage() const {
    return results.data();
}

QWidget* EquityTrainingTab::currentPage() const {
    if (item && !item->isHidden())
        return item;
    if (results && !results->isHidden())
        return results;
    if (start && !start->isHidden())
        return start;
    return nullptr;
}

void EquityTrainingTab::showPage(QWidget* page) {
    for (QWidget* other : {static_cast<QWidget*>(start), static_cast<QWidget*>(item.data()),
                           static_cast<QWidget*>(results.data())})
        if (other && other != page)
            other->hide();
    page->show();
}

void EquityTrainingTab::dropTrainingPages() {
    for (QWidget* page :
         {static_cast<QWidget*>(item.data()), static_cast<QWidget*>(results.data())})
        if (page) {
            page->hide();
            layout()->removeWidget(page);
            page->deleteLater();
        }
    item = nullptr;
    results = nullptr;
}

void EquityTrainingTab::StartTraining() {
    dropTrainingPages();
    if (!start) {
        start = new EquityTrainingStart(this);
        start->setThreadPool(pool);
        start->setRandomSource(random);
        start->setPrompts(prompts);
        layout()->addWidget(start);
        connect(start, &EquityTrainingStart::trainingStarted, this,
                &EquityTrainingTab::onTrainingStarted);
    }
    showPage(start);
}

void EquityTrainingTab::onTrainingStarted(const Range::HandRange& heroRange,
                                          const Range::HandRange& villainRange1,
                                          const Range::HandRange& villainRange2,
                                          const std::string& board, const std::string& deadCards,
                                          EquityTrainingRandomness randomness) {
    dropTrainingPages();
    item = new EquityTrainingItem(pool, *random, heroRange, villainRange1, villainRange2, board,
                                  deadCards, randomness, prompts, this);
    layout()->addWidget(item);
    connect(item, &EquityTrainingItem::trainingFinished, this, &EquityTrainingTab::FinishTraining);
    connect(item, &EquityTrainingItem::trainingCanceled, this, &EquityTrainingTab::StartTraining);
    showPage(item);
    item->ProceedToInputState();
}

void EquityTrainingTab::FinishTraining(const std::vector<EquityTrainingItemResults>& itemResults) {
    dropTrainingPages();
    results = new EquityTrainingResults(itemResults, this);
    layout()->addWidget(results);
    connect(results, &EquityTrainingResults::startNewTraining, this,
            &EquityTrainingTab::StartTraining);
    showPage(results);
}
