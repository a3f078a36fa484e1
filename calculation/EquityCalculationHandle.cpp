#include "calculation/EquityCalculationHandle.h"

#include "Range/Assertion.h"
#include "calculation/ThreadPool.h"

EquityCalculationHandle::EquityCalculationHandle(ThreadPool* pool, unsigned int id)
    : ThreadHandle(pool, id) {}

void EquityCalculationHandle::Start(const std::string& range1, const std::string& range2,
                                    const std::string& board, const std::string& dead) {
    static_cast<void>(IsRunning());
    QV_ASSERT(valid && pool != nullptr, "Start of a handle without a pool.");
    if (!valid || pool == nullptr) {
        return;
    }
    pool->startEquityCalculation(*this, range1, range2, board, dead);
}

bool EquityCalculationHandle::IsRunning() const {
    return valid && pool != nullptr && pool->isKnown(*this);
}
