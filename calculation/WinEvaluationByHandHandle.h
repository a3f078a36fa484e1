#pragma once

#include "calculation/CalculationHandle.h"

#include <VelmaraEvaluatorBase.h>

#include <string>

// Handle of one getWinEvaluationByHand calculation. Results arrive through
// ThreadPool::WinEvaluationByHandFinished.
class WinEvaluationByHandHandle : public CalculationHandle<WinEvaluationsByHand> {
public:
    using CalculationHandle::CalculationHandle;

    // Runs getWinEvaluationByHand in the background on copies of the texts; an empty board
    // selects the overload without board. Only a fresh handle may be started, once.
    void Start(const std::string& range1, const std::string& range2, const std::string& board,
               const std::string& dead);
};
