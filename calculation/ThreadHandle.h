#pragma once

class ThreadPool;

// The identity of one background calculation, valid for one run.
//
// A handle is a value: it is copied freely, also into the result signals of ThreadPool,
// and a copy taken as ThreadHandle answers IsRunning() with `valid` alone. Only the
// derived handles (EquityCalculationHandle and its siblings) ask the pool whether the
// calculation still exists. A default-constructed handle is invalid and equals nothing,
// not even another invalid handle, so a listener that never started a calculation
// drops every result.
//
// All members are called on the main thread, like those of ThreadPool.
class ThreadHandle {
public:
    ThreadHandle() = default;
    ThreadHandle(ThreadPool* pool, unsigned int id);
    ThreadHandle(const ThreadHandle& other) = default;
    ThreadHandle& operator=(const ThreadHandle& other) = default;
    virtual ~ThreadHandle() = default;

    // Asks the pool to stop the calculation; no-op for an invalid handle or one whose
    // calculation has ended. Never waits for the task.
    virtual void Stop();
    // For a plain ThreadHandle: whether it was obtained from a pool.
    virtual bool IsRunning() const;

    // Equal when both are valid and carry the same id.
    bool operator==(const ThreadHandle& other) const;
    bool operator!=(const ThreadHandle& other) const;
    // Orders by id only (the key order of the pool's maps).
    bool operator<(const ThreadHandle& other) const;

    ThreadPool* getPool() const { return pool; }
    unsigned int getId() const { return id; }
    bool isValid() const { return valid; }

protected:
    ThreadPool* pool = nullptr;
    unsigned int id = 0;
    bool valid = false;
};
