#pragma once

#include "calculation/CalculationHandle.h"

#include <VelmaraEvaluatorBase.h>

#include <string>

// Handle of one getDetailWinEvaluation calculation. Results arrive through
// ThreadPool::WinEvaluationFinished.
class WinEvaluationHandle : public CalculationHandle<DetailWinEvaluations> {
public:
    using CalculationHandle::CalculationHandle;

    // Runs getDetailWinEvaluation in the background on copies of the texts and of
    // `evaluations` (entries prepared with keys and names, counters zero). The board must
    // hold at least a flop. Only a fresh handle may be started, once.
    void Start(const std::string& range1, const std::string& range2, const std::string& board,
               const std::string& dead, const DetailWinEvaluations& evaluations);
};
