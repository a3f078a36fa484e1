#include "calculation/WinEvaluationHandle.h"

#include "Range/Assertion.h"
#include "calculation/ThreadPool.h"

WinEvaluationHandle::WinEvaluationHandle(ThreadPool* pool, unsigned int id)
    : ThreadHandle(pool, id) {}

void WinEvaluationHandle::Start(const std::string& range1, const std::string& range2,
                                const std::string& board, const std::string& dead,
                                const DetailWinEvaluations& evaluations) {
    static_cast<void>(IsRunning());
    QV_ASSERT(valid && pool != nullptr, "Start of a handle without a pool.");
    if (!valid || pool == nullptr) {
        return;
    }
    pool->startWinEvaluation(*this, WinEvaluationInput{range1, range2, board, dead, evaluations});
}

bool WinEvaluationHandle::IsRunning() const {
    return valid && pool != nullptr && pool->isKnown(*this);
}
