#pragma once

#include "calculation/CalculationHandle.h"

#include <VelmaraEvaluatorBase.h>

#include <string>

// Handle of one getEquity calculation. Results arrive through
// ThreadPool::EquityCalculationFinished.
class EquityCalculationHandle : public CalculationHandle<LongedEvaluation> {
public:
    using CalculationHandle::CalculationHandle;

    // Runs getEquity in the background on copies of the texts: technical range texts, the
    // board (empty, or 3 to 5 cards) and the dead cards. Only a handle fresh from
    // ThreadPool::createEquityCalculationHandle may be started, and only once.
    void Start(const std::string& range1, const std::string& range2, const std::string& board,
               const std::string& dead);
};
