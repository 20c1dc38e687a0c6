#pragma once

#include "Core/Support/FileDescriptor.h"
#include "Core/Support/Mailbox.h"

#include <QHash>
#include <QObject>
#include <functional>
#include <memory>
#include <sys/types.h>
#include <unordered_map>

class QSocketNotifier;

namespace Tavrin {

/// Collects children when they end, so that none stays a zombie, without blocking and without a
/// SIGCHLD handler: every child is waited for by its own pid, so nobody else's children are taken.
/// Lives on the main thread; nothing is opened before the first child.
class ChildWatcher : public QObject {
    Q_OBJECT

public:
    /// `exitCode` as a shell has it: the child's own, or 128 + the signal that ended it.
    using Completion = std::function<void(int exitCode)>;
    /// Gives a descriptor that becomes readable when the child ends, or -1.
    using OpenPidDescriptor = std::function<int(pid_t)>;

    /// `open` is pidfd_open(2) by default. A child for which it fails gets a waiting thread.
    explicit ChildWatcher(OpenPidDescriptor open = {}, QObject* parent = nullptr);
    /// Children that still run go on running; their completions are not called any more.
    ~ChildWatcher() override;

    /// Collects the child when it ends and then calls `completion`, once, on the main thread. The
    /// child must be ours and not waited for by anyone else.
    void watch(pid_t pid, Completion completion = {});

    /// Keeps the reading end of a pipe open, unread, until the last writer is gone, then closes it.
    void keepUntilHangUp(FileDescriptor readingEnd);

    /// Children not collected yet.
    int runningCount() const { return static_cast<int>(m_running.size()); }
    /// Reading ends kept open.
    int keptCount() const { return static_cast<int>(m_kept.size()); }

private:
    struct Child {
        pid_t pid;
        FileDescriptor descriptor;
    };

    bool listen(int descriptor, std::uint32_t events);
    void readEvents();
    void handleEvent(int descriptor);
    void waitOnThread(pid_t pid);
    void finish(pid_t pid, int exitCode);

    OpenPidDescriptor m_openPidDescriptor;
    FileDescriptor m_poll;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unordered_map<int, Child> m_children;
    std::unordered_map<int, FileDescriptor> m_kept;
    QHash<pid_t, Completion> m_running;
    Mailbox m_mailbox;
};

} // namespace Tavrin
