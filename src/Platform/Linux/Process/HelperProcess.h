#pragma once

#include "Core/Support/FileDescriptor.h"
#include "Core/Support/Mailbox.h"

#include <QByteArrayList>
#include <QString>
#include <functional>
#include <sys/types.h>
#include <utility>

namespace Tavrin {

class ChildWatcher;

/// A program of ours that works for this one in a process of its own. It ends with this object, with all
/// that it started itself, and is collected. Main thread.
class HelperProcess {
public:
    HelperProcess() = default;
    /// The watcher outlives this. Nobody else waits for the child, so that its number stays its own.
    HelperProcess(ChildWatcher& children, pid_t pid, FileDescriptor channel)
        : m_children(&children)
        , m_pid(pid)
        , m_channel(std::move(channel))
    {
    }
    HelperProcess(HelperProcess&& other) noexcept
        : m_children(other.m_children)
        , m_pid(std::exchange(other.m_pid, -1))
        , m_channel(std::move(other.m_channel))
    {
    }
    HelperProcess& operator=(HelperProcess&& other) noexcept
    {
        std::swap(m_children, other.m_children);
        std::swap(m_pid, other.m_pid);
        m_channel = std::move(other.m_channel);
        return *this;
    }
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;
    ~HelperProcess();

    bool isRunning() const { return m_pid > 0; }
    /// Our end of the channel to the helper; it does not block.
    int channel() const { return m_channel.number(); }

private:
    ChildWatcher* m_children = nullptr;
    pid_t m_pid = -1;
    FileDescriptor m_channel;
};

/// A helper that runs, or why there is none.
struct HelperStart {
    HelperProcess process;
    /// The system's words for the failure; empty if the helper runs.
    QString error;
};

/// How a helper is connected to us.
enum class HelperChannel {
    /// A pipe from its standard output; its standard input is /dev/null.
    answers,
    /// One stream socket as its standard input and output.
    conversation,
};

/// Starts a helper on a thread, because executing a program can wait for a disk, and then hands it to
/// `started` on the mailbox's thread. The watcher outlives the mailbox. A helper for which the mailbox is
/// gone by then is ended.
void startHelper(const QByteArrayList& arguments, HelperChannel channel, ChildWatcher& children,
    const Mailbox::Address& mailbox, std::function<void(HelperStart)> started);

} // namespace Tavrin
