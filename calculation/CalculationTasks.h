#pragma once

#include "calculation/WinEvaluationInput.h"

#include <VelmaraEvaluatorBase.h>
#include <boost/shared_ptr.hpp>

#include <string>

// The bodies of the background tasks of ThreadPool. Each runs on a worker thread of Qt's
// global pool and sees only its own copies of the texts and the stop flag. The flag is taken
// by value, so that it lives as long as the task, even after the pool is gone. A stop
// (TerminationOccured from the evaluator) is not an error: the task returns what it has,
// and the pool drops that result anyway.
namespace CalculationTasks {

// getEquity with a board of 3 to 5 cards. All-zero record when stopped.
LongedEvaluation equityWithBoard(std::string range1, std::string range2, std::string board,
                                 std::string dead, boost::shared_ptr<volatile bool> stop);

// getEquity without board. All-zero record when stopped.
LongedEvaluation equityWithoutBoard(std::string range1, std::string range2, std::string dead,
                                    boost::shared_ptr<volatile bool> stop);

// getWinEvaluationByHand, with the board overload when `board` is not empty. Empty vector
// when stopped.
WinEvaluationsByHand winEvaluationByHand(std::string range1, std::string range2, std::string board,
                                         std::string dead, boost::shared_ptr<volatile bool> stop);

// getDetailWinEvaluation on a copy of the input's entries. When stopped, the entries as
// far as the evaluator got with them.
DetailWinEvaluations detailWinEvaluation(WinEvaluationInput input,
                                         boost::shared_ptr<volatile bool> stop);

} // namespace CalculationTasks
