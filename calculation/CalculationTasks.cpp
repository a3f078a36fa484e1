#include "calculation/CalculationTasks.h"

namespace CalculationTasks {

LongedEvaluation equityWithBoard(std::string range1, std::string range2, std::string board,
                                 std::string dead, boost::shared_ptr<volatile bool> stop) {
    try {
        return getEquity(range1, range2, board, dead, *stop);
    } catch (TerminationOccured&) {
    }
    return LongedEvaluation();
}

LongedEvaluation equityWithoutBoard(std::string range1, std::string range2, std::string dead,
                                    boost::shared_ptr<volatile bool> stop) {
    try {
        return getEquity(range1, range2, dead, *stop);
    } catch (TerminationOccured&) {
    }
    return LongedEvaluation();
}

WinEvaluationsByHand winEvaluationByHand(std::string range1, std::string range2, std::string board,
                                         std::string dead, boost::shared_ptr<volatile bool> stop) {
    try {
        if (!board.empty()) {
            return getWinEvaluationByHand(range1, range2, board, dead, *stop);
        }
        return getWinEvaluationByHand(range1, range2, dead, *stop);
    } catch (TerminationOccured&) {
    }
    return WinEvaluationsByHand();
}

DetailWinEvaluations detailWinEvaluation(WinEvaluationInput input,
                                         boost::shared_ptr<volatile bool> stop) {
    DetailWinEvaluations result = input.evaluations;
    try {
        getDetailWinEvaluation(input.range1, input.range2, input.board, input.dead, result, *stop);
    } catch (TerminationOccured&) {
    }
    return result;
}

} // namespace CalculationTasks
