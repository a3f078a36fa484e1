#include "calculation/ThreadHandle.h"

#include "calculation/ThreadPool.h"

ThreadHandle::ThreadHandle(ThreadPool* pool, unsigned int id) : pool(pool), id(id), valid(true) {}

void ThreadHandle::Stop() {
    // Evaluated for its own sake only: a derived handle may have ended already, and stopping
    // an ended calculation is a no-op of the pool anyway.
    static_cast<void>(IsRunning());
    if (valid && pool != nullptr) {
        pool->stop(*this);
    }
}

bool ThreadHandle::IsRunning() const {
    return valid;
}

bool ThreadHandle::operator==(const ThreadHandle& other) const {
    return valid && other.valid && id == other.id;
}

bool ThreadHandle::operator!=(const ThreadHandle& other) const {
    return !(*this == other);
}

bool ThreadHandle::operator<(const ThreadHandle& other) const {
    return id < other.id;
}
