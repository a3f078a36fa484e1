#include "calculation/EquityCalculationHandle.h"

#include "calculation/CalculationTasks.h"

void EquityCalculationHandle::Start(const std::string& range1, const std::string& range2,
                                    const std::string& board, const std::string& dead) {
    // The evaluator has a separate overload for the empty board.
    if (board.empty()) {
        launch(&CalculationTasks::equityWithoutBoard, range1, range2, dead);
    } else {
        launch(&CalculationTasks::equityWithBoard, range1, range2, board, dead);
    }
}
