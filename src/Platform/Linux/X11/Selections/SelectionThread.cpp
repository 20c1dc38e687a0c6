#include "Platform/Linux/X11/Selections/SelectionThread.h"

#include "Platform/Linux/X11/Selections/SelectionDesk.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <sys/eventfd.h>

namespace Tavrin {
namespace {

/// Nothing here is deep; the usual 8 MB would be address space without a use.
constexpr std::size_t stackSize = 256 * 1024;

/// For poll(): milliseconds, rounded up so that the deadline has passed then; -1 without one.
int timeout(std::optional<SelectionDesk::Clock::time_point> deadline)
{
    if (!deadline)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - SelectionDesk::Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

} // namespace

std::unique_ptr<SelectionThread> SelectionThread::start()
{
    std::unique_ptr<SelectionThread> thread(new SelectionThread);
    thread->m_wakeUp = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    pthread_attr_t attributes;
    if (!thread->m_wakeUp.isOpen() || pthread_attr_init(&attributes) != 0)
        return nullptr;
    pthread_attr_setstacksize(&attributes, stackSize);
    const auto body = [](void* self) -> void* {
        static_cast<SelectionThread*>(self)->run();
        return nullptr;
    };
    const bool isRunning = pthread_create(&thread->m_thread, &attributes, body, thread.get()) == 0;
    pthread_attr_destroy(&attributes);
    if (!isRunning)
        thread->m_wakeUp.closeNow();
    return isRunning ? std::move(thread) : nullptr;
}

SelectionThread::~SelectionThread()
{
    if (!m_wakeUp.isOpen())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }
    wake();
    pthread_join(m_thread, nullptr);
}

void SelectionThread::post(Job job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    wake();
}

void SelectionThread::wake() const
{
    eventfd_write(m_wakeUp.number(), 1);
}

SelectionThread::Job SelectionThread::takeJob()
{
    const std::lock_guard lock(m_mutex);
    if (m_jobs.empty())
        return {};
    Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    return job;
}

bool SelectionThread::isClosed()
{
    const std::lock_guard lock(m_mutex);
    return m_isClosed;
}

void SelectionThread::runJobs(SelectionDesk& desk)
{
    while (!desk.isReading()) {
        const Job job = takeJob();
        if (!job)
            return;
        job(desk);
    }
}

void SelectionThread::run()
{
    SelectionDesk desk;
    bool isEnding = false;
    for (;;) {
        desk.step();
        runJobs(desk);
        if (!isEnding && isClosed()) {
            isEnding = true;
            desk.endReading();
            runJobs(desk);
            desk.handOver();
        }
        if (isEnding && !desk.isHandingOver())
            return;
        if (desk.isReadyToWait())
            wait(desk);
    }
}

void SelectionThread::wait(const SelectionDesk& desk) const
{
    // poll() leaves out what has a negative number: a connection that is not there.
    std::array<pollfd, 2> watched{{{m_wakeUp.number(), POLLIN, 0}, {desk.descriptor(), POLLIN, 0}}};
    poll(watched.data(), watched.size(), timeout(desk.deadline()));
    eventfd_t count = 0;
    eventfd_read(m_wakeUp.number(), &count);
}

} // namespace Tavrin
