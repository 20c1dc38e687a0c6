#include "Core/Support/WorkerPool.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

namespace Tavrin {
namespace {

/// How long a thread waits for another job before it ends and gives its memory back.
constexpr std::chrono::seconds idleLimit{10};
/// How long the end of the program waits for jobs that are about to be done.
constexpr std::chrono::milliseconds farewell{200};

} // namespace

struct WorkerPool::State {
    std::mutex mutex;
    std::condition_variable jobArrived;
    std::condition_variable jobDone;
    std::deque<std::function<void()>> jobs;
    int mostThreads = 0;
    int threads = 0;
    int idle = 0;
    bool closed = false;
};

WorkerPool::WorkerPool(int mostThreads)
    : m_state(std::make_shared<State>())
{
    m_state->mostThreads = mostThreads;
}

WorkerPool::~WorkerPool()
{
    std::unique_lock lock(m_state->mutex);
    m_state->closed = true;
    m_state->jobs.clear();
    m_state->jobArrived.notify_all();
    m_state->jobDone.wait_for(lock, farewell, [this] { return m_state->threads == 0; });
}

void WorkerPool::run(std::function<void()> job)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->jobs.push_back(std::move(job));
    m_state->jobArrived.notify_one();
    if (m_state->idle >= static_cast<int>(m_state->jobs.size()) || m_state->threads == m_state->mostThreads)
        return;
    try {
        // Detached, because a thread that hangs in the system can never be joined.
        std::thread(work, m_state).detach();
        ++m_state->threads;
    } catch (const std::system_error&) {
        // The system gives no further thread now: the job waits for one that runs, or for the next call.
        return;
    }
}

void WorkerPool::work(const std::shared_ptr<State>& state)
{
    std::unique_lock lock(state->mutex);
    for (;;) {
        ++state->idle;
        state->jobArrived.wait_for(lock, idleLimit, [&] { return state->closed || !state->jobs.empty(); });
        --state->idle;
        if (state->jobs.empty())
            break;
        auto job = std::move(state->jobs.front());
        state->jobs.pop_front();
        lock.unlock();
        job();
        // What the job owns goes before the lock is taken again.
        job = {};
        lock.lock();
    }
    --state->threads;
    state->jobDone.notify_all();
}

} // namespace Tavrin
