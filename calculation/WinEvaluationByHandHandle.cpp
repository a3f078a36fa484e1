#include "calculation/WinEvaluationByHandHandle.h"

#include "calculation/CalculationTasks.h"

void WinEvaluationByHandHandle::Start(const std::string& range1, const std::string& range2,
                                      const std::string& board, const std::string& dead) {
    launch(&CalculationTasks::winEvaluationByHand, range1, range2, board, dead);
}
