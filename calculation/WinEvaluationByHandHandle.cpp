#include "calculation/WinEvaluationByHandHandle.h"

#include "Range/Assertion.h"
#include "calculation/ThreadPool.h"

WinEvaluationByHandHandle::WinEvaluationByHandHandle(ThreadPool* pool, unsigned int id)
    : ThreadHandle(pool, id) {}

void WinEvaluationByHandHandle::Start(const std::string& range1, const std::string& range2,
                                      const std::string& board, const std::string& dead) {
    static_cast<void>(IsRunning());
    QV_ASSERT(valid && pool != nullptr, "Start of a handle without a pool.");
    if (!valid || pool == nullptr) {
        return;
    }
    pool->startWinEvaluationByHand(*this, range1, range2, board, dead);
}

bool WinEvaluationByHandHandle::IsRunning() const {
    return valid && pool != nullptr && pool->isKnown(*this);
}
