#pragma once

#include "calculation/CalculationMetaTypes.h"
#include "calculation/EquityCalculationHandle.h"
#include "calculation/ThreadHandle.h"
#include "calculation/WinEvaluationByHandHandle.h"
#include "calculation/WinEvaluationHandle.h"

#include <QObject>
#include <VelmaraEvaluatorBase.h>
#include <boost/shared_ptr.hpp>

#include <map>

template <typename T>
class QFuture;

// The one scheduler of long calculations. It owns no threads: each calculation is one
// QtConcurrent::run task on Qt's global thread pool (one thread per processor, further tasks
// queue there). What it adds is the identity of a calculation (a handle the requester
// keeps), a stop flag per calculation, and the rule that a stopped calculation never
// reports.
//
// Results are broadcast: every listener receives every result and keeps only the one whose
// handle equals the handle it holds. The usual pattern of a listener is
//     if (handle.IsRunning()) handle.Stop();
//     handle = pool->createEquityCalculationHandle();
//     handle.Start(range1, range2, board, dead);
// so that a calculation that is replaced is both stopped and, should it get through,
// rejected by the handle comparison.
//
// Main thread only: all members, and the signals are emitted there. Nothing here waits for a
// task, neither a stop nor the destructor.
class ThreadPool : public QObject {
    Q_OBJECT

public:
    explicit ThreadPool(QObject* parent = nullptr);
    // Sets every stop flag and forgets all calculations without waiting for their tasks;
    // a task that ends later keeps its flag alive by its own reference, and its result is
    // dropped with its future.
    ~ThreadPool() override;

    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;

    // Each takes the next id and makes a calculation entry in state created, with a fresh
    // stop flag holding false.
    EquityCalculationHandle createEquityCalculationHandle();
    WinEvaluationHandle createWinEvaluationHandle();
    WinEvaluationByHandHandle createWinEvaluationByHandHandle();

    // Marks the calculation stopped and raises its flag; the task runs on until the
    // evaluator polls the flag. Unknown handles (finished, invalid) are a no-op.
    void stop(const ThreadHandle& handle);
    // Whether a calculation entry exists for the handle's id.
    bool isKnown(const ThreadHandle& handle) const;

    // The two steps of a handle's Start, in this order. markRunning() sets the entry to
    // running and hands out its stop flag for the task; null (and an assertion) when the
    // handle has no entry, and then nothing may be started.
    boost::shared_ptr<volatile bool> markRunning(const ThreadHandle& handle);
    // Watches the task just started for the handle. Its result type fixes, here and now,
    // the signal that will carry the result: one of the three above, the only types this is
    // defined for. A calculation keeps the result type of its first task; a task of another
    // type for the same entry is an asserted fault and is left to run unwatched.
    template <typename Result>
    void watch(const ThreadHandle& handle, const QFuture<Result>& future);

signals:
    void EquityCalculationFinished(const ThreadHandle& handle, const LongedEvaluation& result);
    void WinEvaluationFinished(const ThreadHandle& handle, const DetailWinEvaluations& result);
    void WinEvaluationByHandFinished(const ThreadHandle& handle,
                                     const WinEvaluationsByHand& result);

public slots:
    // Connected to the finished() of every task's watcher.
    void calculationFinished();

private:
    enum State { Created = 0, Running = 1, Stopped = 2 };

    // Reads the result of a finished task from its watcher and emits it.
    using Publisher = void (ThreadPool::*)(QObject* watcher, const ThreadHandle& handle);

    struct Calculation {
        boost::shared_ptr<volatile bool> stop;
        int state = Created;
        // Set when the task is watched, for the task's result type.
        Publisher publish = nullptr;
    };

    unsigned int newCalculation();

    template <typename Result>
    void publishResult(QObject* watcher, const ThreadHandle& handle);
    void emitFinished(const ThreadHandle& handle, const LongedEvaluation& result);
    void emitFinished(const ThreadHandle& handle, const DetailWinEvaluations& result);
    void emitFinished(const ThreadHandle& handle, const WinEvaluationsByHand& result);

    std::map<ThreadHandle, Calculation> calculations;
    std::map<QObject*, ThreadHandle> watchers;
    unsigned int nextId = 0;
};
