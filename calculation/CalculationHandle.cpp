#include "calculation/CalculationHandle.h"

#include "Range/Assertion.h"
#include "calculation/ThreadPool.h"

#include <QFuture>
#include <QtConcurrent/QtConcurrentRun>

#include <utility>

template <typename Result>
bool CalculationHandle<Result>::IsRunning() const {
    return valid && pool != nullptr && pool->isKnown(*this);
}

template <typename Result>
void CalculationHandle<Result>::start(Job job) {
    // Evaluated for its own sake only, as in Stop(): the answer changes nothing here.
    static_cast<void>(IsRunning());
    QV_ASSERT(valid && pool != nullptr, "Start of a handle without a pool.");
    if (!valid || pool == nullptr) {
        return;
    }
    const boost::shared_ptr<volatile bool> stop = pool->markRunning(*this);
    if (!stop) {
        return;
    }
    // The task owns a copy of the flag: it outlives the pool if need be.
    const QFuture<Result> future = QtConcurrent::run(std::move(job), stop);
    pool->watch(*this, future);
}

template class CalculationHandle<LongedEvaluation>;
template class CalculationHandle<DetailWinEvaluations>;
template class CalculationHandle<WinEvaluationsByHand>;
