#include "calculation/ThreadPool.h"

#include "Range/Assertion.h"
#include "calculation/CalculationTasks.h"

#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

namespace CalculationMetaTypes {
void registerAll() {
    qRegisterMetaType<ThreadHandle>("ThreadHandle");
    qRegisterMetaType<LongedEvaluation>("LongedEvaluation");
    qRegisterMetaType<DetailWinEvaluations>("DetailWinEvaluations");
    qRegisterMetaType<WinEvaluationsByHand>("WinEvaluationsByHand");
}
} // namespace CalculationMetaTypes

ThreadPool::ThreadPool(QObject* parent) : QObject(parent) {
    CalculationMetaTypes::registerAll();
}

ThreadPool::~ThreadPool() {
    for (auto& entry : calculations) {
        *entry.second.stop = true;
    }
    // Deleting a watcher detaches it from its future without waiting for the task.
    for (auto& entry : watchers) {
        delete entry.first;
    }
    watchers.clear();
    calculations.clear();
}

unsigned int ThreadPool::newCalculation() {
    const unsigned int id = nextId++;
    Calculation calculation;
    calculation.stop = boost::shared_ptr<volatile bool>(new volatile bool(false));
    calculation.state = Created;
    calculations[ThreadHandle(this, id)] = calculation;
    return id;
}

EquityCalculationHandle ThreadPool::createEquityCalculationHandle() {
    return EquityCalculationHandle(this, newCalculation());
}

WinEvaluationHandle ThreadPool::createWinEvaluationHandle() {
    return WinEvaluationHandle(this, newCalculation());
}

WinEvaluationByHandHandle ThreadPool::createWinEvaluationByHandHandle() {
    return WinEvaluationByHandHandle(this, newCalculation());
}

void ThreadPool::stop(const ThreadHandle& handle) {
    auto entry = calculations.find(handle);
    if (entry == calculations.end()) {
        return;
    }
    entry->second.state = Stopped;
    *entry->second.stop = true;
}

bool ThreadPool::isKnown(const ThreadHandle& handle) const {
    return calculations.find(handle) != calculations.end();
}

boost::shared_ptr<volatile bool> ThreadPool::markRunning(const ThreadHandle& handle) {
    auto entry = calculations.find(handle);
    QV_ASSERT(entry != calculations.end(), "Start of an unknown calculation.");
    if (entry == calculations.end()) {
        return boost::shared_ptr<volatile bool>();
    }
    entry->second.state = Running;
    return entry->second.stop;
}

template <typename Result>
void ThreadPool::watch(const ThreadHandle& handle, const QFuture<Result>& future) {
    auto* watcher = new QFutureWatcher<Result>();
    watchers[watcher] = ThreadHandle(handle);
    // Connect before the future is set: a task that is already done when setFuture() runs
    // still delivers finished().
    connect(watcher, &QFutureWatcher<Result>::finished, this, &ThreadPool::calculationFinished);
    watcher->setFuture(future);
}

void ThreadPool::startEquityCalculation(const ThreadHandle& handle, const std::string& range1,
                                        const std::string& range2, const std::string& board,
                                        const std::string& dead) {
    boost::shared_ptr<volatile bool> flag = markRunning(handle);
    if (!flag) {
        return;
    }
    QFuture<LongedEvaluation> future =
        board.empty()
            ? QtConcurrent::run(&CalculationTasks::equityWithoutBoard, range1, range2, dead, flag)
            : QtConcurrent::run(&CalculationTasks::equityWithBoard, range1, range2, board, dead,
                                flag);
    watch(handle, future);
}

void ThreadPool::startWinEvaluation(const ThreadHandle& handle, const WinEvaluationInput& input) {
    boost::shared_ptr<volatile bool> flag = markRunning(handle);
    if (!flag) {
        return;
    }
    watch(handle, QtConcurrent::run(&CalculationTasks::detailWinEvaluation, input, flag));
}

void ThreadPool::startWinEvaluationByHand(const ThreadHandle& handle, const std::string& range1,
                                          const std::string& range2, const std::string& board,
                                          const std::string& dead) {
    boost::shared_ptr<volatile bool> flag = markRunning(handle);
    if (!flag) {
        return;
    }
    watch(handle, QtConcurrent::run(&CalculationTasks::winEvaluationByHand, range1, range2, board,
                                    dead, flag));
}

void ThreadPool::calculationFinished() {
    QObject* watcher = sender();
    auto watched = watchers.find(watcher);
    if (watched == watchers.end()) {
        return;
    }
    // A copy: listeners may start new calculations while the signal runs.
    const ThreadHandle handle = watched->second;
    auto entry = calculations.find(handle);
    if (entry == calculations.end()) {
        // Started twice and already reported: only the watcher is left to clean up.
        watchers.erase(watched);
        watcher->deleteLater();
        return;
    }
    if (entry->second.state != Running && entry->second.state != Stopped) {
        return;
    }
    if (entry->second.state == Running) {
        if (auto* equity = dynamic_cast<QFutureWatcher<LongedEvaluation>*>(watcher)) {
            const LongedEvaluation result = equity->future().resultAt(0);
            emit EquityCalculationFinished(handle, result);
        } else if (auto* win = dynamic_cast<QFutureWatcher<DetailWinEvaluations>*>(watcher)) {
            const DetailWinEvaluations result = win->future().resultAt(0);
            emit WinEvaluationFinished(handle, result);
        } else if (auto* byHand = dynamic_cast<QFutureWatcher<WinEvaluationsByHand>*>(watcher)) {
            const WinEvaluationsByHand result = byHand->future().resultAt(0);
            emit WinEvaluationByHandFinished(handle, result);
        }
    }
    // The emission may have re-entered the pool (new handles, new tasks): look both entries
    // up again rather than trusting the iterators taken before it.
    watchers.erase(watcher);
    calculations.erase(handle);
    // This slot runs inside the watcher's own signal: delete it once that has returned.
    watcher->deleteLater();
}
