#include "calculation/ThreadPool.h"

#include "Range/Assertion.h"

#include <QFuture>
#include <QFutureWatcher>

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
void ThreadPool::publishResult(QObject* watcher, const ThreadHandle& handle) {
    const Result result = static_cast<QFutureWatcher<Result>*>(watcher)->future().resultAt(0);
    emitFinished(handle, result);
}

void ThreadPool::emitFinished(const ThreadHandle& handle, const LongedEvaluation& result) {
    emit EquityCalculationFinished(handle, result);
}

void ThreadPool::emitFinished(const ThreadHandle& handle, const DetailWinEvaluations& result) {
    emit WinEvaluationFinished(handle, result);
}

void ThreadPool::emitFinished(const ThreadHandle& handle, const WinEvaluationsByHand& result) {
    emit WinEvaluationByHandFinished(handle, result);
}

template <typename Result>
void ThreadPool::watch(const ThreadHandle& handle, const QFuture<Result>& future) {
    const Publisher publisher = &ThreadPool::publishResult<Result>;
    auto entry = calculations.find(handle);
    if (entry != calculations.end()) {
        // The publisher reads every watcher of the entry as one of this type.
        const Publisher chosen = entry->second.publish;
        QV_ASSERT(chosen == nullptr || chosen == publisher,
                  "Start of a calculation with another result type.");
        if (chosen != nullptr && chosen != publisher) {
            return;
        }
        entry->second.publish = publisher;
    }
    auto* watcher = new QFutureWatcher<Result>();
    watchers[watcher] = ThreadHandle(handle);
    // Connect before the future is set: a task that is already done when setFuture() runs
    // still delivers finished().
    connect(watcher, &QFutureWatcher<Result>::finished, this, &ThreadPool::calculationFinished);
    watcher->setFuture(future);
}

template void ThreadPool::watch(const ThreadHandle&, const QFuture<LongedEvaluation>&);
template void ThreadPool::watch(const ThreadHandle&, const QFuture<DetailWinEvaluations>&);
template void ThreadPool::watch(const ThreadHandle&, const QFuture<WinEvaluationsByHand>&);

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
    if (entry->second.state == Running && entry->second.publish != nullptr) {
        (this->*entry->second.publish)(watcher, handle);
    }
    // The emission may have re-entered the pool (new handles, new tasks): look both entries
    // up again rather than trusting the iterators taken before it.
    watchers.erase(watcher);
    calculations.erase(handle);
    // This slot runs inside the watcher's own signal: delete it once that has returned.
    watcher->deleteLater();
}
