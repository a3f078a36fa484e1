#include "calculation/WinEvaluationHandle.h"

#include "calculation/CalculationTasks.h"
#include "calculation/WinEvaluationInput.h"

void WinEvaluationHandle::Start(const std::string& range1, const std::string& range2,
                                const std::string& board, const std::string& dead,
                                const DetailWinEvaluations& evaluations) {
    launch(&CalculationTasks::detailWinEvaluation,
           WinEvaluationInput{range1, range2, board, dead, evaluations});
}
