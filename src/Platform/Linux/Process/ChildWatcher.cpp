#include "Platform/Linux/Process/ChildWatcher.h"

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <optional>
#include <sys/epoll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>

namespace Tavrin {
namespace {

int openPidDescriptor(pid_t pid)
{
    return static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
}

/// Collects the child; nothing if it still runs and `options` has WNOHANG. A child that somebody
/// else has collected counts as ended well, or it would be waited for for ever.
std::optional<int> collect(pid_t pid, int options)
{
    siginfo_t info{};
    int result = 0;
    do
        result = waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | options);
    while (result < 0 && errno == EINTR);
    if (result < 0)
        return 0;
    if (info.si_pid == 0)
        return std::nullopt;
    constexpr int signalBase = 128;
    return info.si_code == CLD_EXITED ? info.si_status : signalBase + info.si_status;
}

} // namespace

ChildWatcher::ChildWatcher(OpenPidDescriptor open, QObject* parent)
    : QObject(parent)
    , m_openPidDescriptor(open ? std::move(open) : openPidDescriptor)
{
}

ChildWatcher::~ChildWatcher() = default;

void ChildWatcher::watch(pid_t pid, Completion completion)
{
    m_running.emplace(pid, std::move(completion));
    FileDescriptor descriptor(m_openPidDescriptor(pid));
    if (!descriptor.isOpen() || !listen(descriptor.number(), EPOLLIN))
        return waitOnThread(pid);
    const int number = descriptor.number();
    m_children.emplace(number, Child{pid, std::move(descriptor)});
}

void ChildWatcher::keepUntilHangUp(FileDescriptor readingEnd)
{
    const int number = readingEnd.number();
    // No event is asked for: EPOLLHUP and EPOLLERR come unasked, and written data must not wake us.
    if (number >= 0) {
        listen(number, 0);
        m_kept.emplace(number, std::move(readingEnd));
    }
}

bool ChildWatcher::listen(int descriptor, std::uint32_t events)
{
    if (!m_poll.isOpen()) {
        m_poll = FileDescriptor(epoll_create1(EPOLL_CLOEXEC));
        if (!m_poll.isOpen())
            return false;
        m_notifier = std::make_unique<QSocketNotifier>(m_poll.number(), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &ChildWatcher::readEvents);
    }
    epoll_event event{};
    event.events = events;
    event.data.fd = descriptor;
    return epoll_ctl(m_poll.number(), EPOLL_CTL_ADD, descriptor, &event) == 0;
}

void ChildWatcher::readEvents()
{
    std::array<epoll_event, 16> events{};
    const int count = epoll_wait(m_poll.number(), events.data(), static_cast<int>(events.size()), 0);
    for (int index = 0; index < count; ++index)
        handleEvent(events[static_cast<std::size_t>(index)].data.fd);
}

void ChildWatcher::handleEvent(int descriptor)
{
    if (m_kept.erase(descriptor) > 0)
        return;
    const auto child = m_children.find(descriptor);
    if (child == m_children.end())
        return;
    const pid_t pid = child->second.pid;
    const auto exitCode = collect(pid, WNOHANG);
    if (!exitCode)
        return;
    m_children.erase(child);
    finish(pid, *exitCode);
}

void ChildWatcher::waitOnThread(pid_t pid)
{
    const auto report = [this, pid](int exitCode) { finish(pid, exitCode); };
    std::thread([pid, report, address = m_mailbox.address()] {
        const int exitCode = collect(pid, 0).value_or(0);
        address.post([report, exitCode] { report(exitCode); });
    }).detach();
}

void ChildWatcher::finish(pid_t pid, int exitCode)
{
    if (const Completion completion = m_running.take(pid))
        completion(exitCode);
}

} // namespace Tavrin
