#pragma once

#include "calculation/ThreadHandle.h"

#include <VelmaraEvaluatorBase.h>
#include <boost/shared_ptr.hpp>

#include <functional>

// What the handles of the three calculations have in common: they run while the pool still
// knows their calculation, and they start their task in one way, whatever it computes.
// `Result` is what the task returns; it decides which of the pool's signals carries it.
//
// Only the three result types of the evaluator are instantiated (CalculationHandle.cpp):
// the pool has a signal for exactly those.
template <typename Result>
class CalculationHandle : public ThreadHandle {
public:
    CalculationHandle() = default;
    CalculationHandle(ThreadPool* pool, unsigned int id) : ThreadHandle(pool, id) {}

    // Valid and still known to the pool: true from creation until the result has been
    // emitted (or for ever, for a handle stopped before it was started).
    bool IsRunning() const override;

protected:
    // Runs `task` on Qt's global thread pool with copies of `arguments` followed by the
    // calculation's stop flag, and has the pool watch it. Only a handle fresh from the pool's
    // create function may be started, and only once.
    template <typename... Parameters, typename... Arguments>
    void launch(Result (*task)(Parameters...), const Arguments&... arguments) {
        start([task, arguments...](const boost::shared_ptr<volatile bool>& stop) {
            return task(arguments..., stop);
        });
    }

private:
    // The task with its arguments bound, waiting for the stop flag that Start hands out.
    using Job = std::function<Result(const boost::shared_ptr<volatile bool>& stop)>;

    void start(Job job);
};

extern template class CalculationHandle<LongedEvaluation>;
extern template class CalculationHandle<DetailWinEvaluations>;
extern template class CalculationHandle<WinEvaluationsByHand>;
