#pragma once

#include "calculation/ThreadHandle.h"

#include <string>

// Handle of one getEquity calculation. Results arrive through
// ThreadPool::EquityCalculationFinished.
class EquityCalculationHandle : public ThreadHandle {
public:
    EquityCalculationHandle() = default;
    EquityCalculationHandle(ThreadPool* pool, unsigned int id);

    // Runs getEquity in the background on copies of the texts: technical range texts, the
    // board (empty, or 3 to 5 cards) and the dead cards. Only a handle fresh from
    // ThreadPool::createEquityCalculationHandle may be started, and only once.
    void Start(const std::string& range1, const std::string& range2, const std::string& board,
               const std::string& dead);
    // Valid and still known to the pool: true from creation until the result has been
    // emitted (or for ever, for a handle stopped before it was started).
    bool IsRunning() const override;
};
