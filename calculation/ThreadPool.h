#pragma once

#include "calculation/CalculationMetaTypes.h"
#include "calculation/EquityCalculationHandle.h"
#include "calculation/ThreadHandle.h"
#include "calculation/WinEvaluationByHandHandle.h"
#include "calculation/WinEvaluationHandle.h"
#include "calculation/WinEvaluationInput.h"

#include <QObject>
#include <VelmaraEvaluatorBase.h>
#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

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

signals:
    void EquityCalculationFinished(const ThreadHandle& handle, const LongedEvaluation& result);
    void WinEvaluationFinished(const ThreadHandle& handle, const DetailWinEvaluations& result);
    void WinEvaluationByHandFinished(const ThreadHandle& handle,
                                     const WinEvaluationsByHand& result);

public slots:
    // Connected to the finished() of every task's watcher.
    void calculationFinished();

private:
    friend class EquityCalculationHandle;
    friend class WinEvaluationHandle;
    friend class WinEvaluationByHandHandle;

    enum State { Created = 0, Running = 1, Stopped = 2 };

    struct Calculation {
        boost::shared_ptr<volatile bool> stop;
        int state = Created;
    };

    void startEquityCalculation(const ThreadHandle& handle, const std::string& range1,
                                const std::string& range2, const std::string& board,
                                const std::string& dead);
    void startWinEvaluation(const ThreadHandle& handle, const WinEvaluationInput& input);
    void startWinEvaluationByHand(const ThreadHandle& handle, const std::string& range1,
                                  const std::string& range2, const std::string& board,
                                  const std::string& dead);

    // Sets the entry to running and returns its flag; null (and an assertion) when the
    // handle has no entry.
    boost::shared_ptr<volatile bool> markRunning(const ThreadHandle& handle);
    unsigned int newCalculation();

    template <typename Result>
    void watch(const ThreadHandle& handle, const QFuture<Result>& future);

    std::map<ThreadHandle, Calculation> calculations;
    std::map<QObject*, ThreadHandle> watchers;
    unsigned int nextId = 0;
};
