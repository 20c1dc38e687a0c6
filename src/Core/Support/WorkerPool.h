#pragma once

#include <QtGlobal>
#include <functional>
#include <memory>

namespace Tavrin {

/// Runs jobs on threads of its own, each at once on another thread while one is free, so that a job
/// that hangs delays no other. No thread exists before the first job; idle ones end after a while.
class WorkerPool {
public:
    /// Enough for many hung jobs at once; further jobs wait for a thread.
    static constexpr int threadLimit = 16;

    /// With at most so many threads, at least one.
    explicit WorkerPool(int mostThreads = threadLimit);
    /// Gives running jobs a moment, then leaves hung ones to themselves; waiting jobs are dropped.
    ~WorkerPool();
    Q_DISABLE_COPY_MOVE(WorkerPool)

    /// Returns at once. The job may outlive the pool: it must own or share what it uses.
    void run(std::function<void()> job);

private:
    struct State;
    static void work(const std::shared_ptr<State>& state);

    std::shared_ptr<State> m_state;
};

} // namespace Tavrin
