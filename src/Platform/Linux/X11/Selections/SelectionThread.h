#pragma once

#include "Core/Support/FileDescriptor.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <pthread.h>

namespace Tavrin {

class SelectionDesk;

/// The thread that owns and reads selections. A thread of its own, because a window of ours that asks for
/// the clipboard waits on the main thread until its owner has answered, and the owner may be us.
class SelectionThread {
public:
    /// Runs on the thread, in the order of the posts, when no reading is under way.
    using Job = std::function<void(SelectionDesk&)>;

    /// Null if the system gives no further thread or descriptor.
    static std::unique_ptr<SelectionThread> start();
    /// Runs the jobs that wait, ends readings, hands the clipboard over; returns soon in any case.
    ~SelectionThread();
    SelectionThread(const SelectionThread&) = delete;
    SelectionThread& operator=(const SelectionThread&) = delete;

    /// Any thread.
    void post(Job job);

private:
    SelectionThread() = default;
    void run();
    void runJobs(SelectionDesk& desk);
    Job takeJob();
    bool isClosed();
    void wait(const SelectionDesk& desk) const;
    void wake() const;

    std::mutex m_mutex;
    std::deque<Job> m_jobs;
    bool m_isClosed = false;
    FileDescriptor m_wakeUp;
    pthread_t m_thread{};
};

} // namespace Tavrin
