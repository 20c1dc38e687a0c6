#include "Platform/Linux/Process/HelperProcess.h"

#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>

namespace Tavrin {
namespace {

/// A helper on its way to the mailbox. One that nobody takes ends here.
struct SpawnedHelper {
    SpawnResult child;
    FileDescriptor channel;

    SpawnedHelper() = default;
    Q_DISABLE_COPY_MOVE(SpawnedHelper)
    ~SpawnedHelper()
    {
        if (!child)
            return;
        kill(-child.pid, SIGKILL);
        while (waitpid(child.pid, nullptr, 0) < 0 && errno == EINTR) { }
    }

    HelperStart take(ChildWatcher& children)
    {
        HelperStart start{{}, child.error};
        if (child)
            start.process = HelperProcess(children, std::exchange(child.pid, -1), std::move(channel));
        return start;
    }
};

std::shared_ptr<SpawnedHelper> spawnHelper(const QByteArrayList& arguments, HelperChannel channel)
{
    auto helper = std::make_shared<SpawnedHelper>();
    const bool converses = channel == HelperChannel::conversation;
    std::array<int, 2> ends{-1, -1};
    const int result = converses ? socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data())
                                 : pipe2(ends.data(), O_CLOEXEC);
    if (result != 0) {
        helper->child.error = qt_error_string(errno);
        return helper;
    }
    helper->channel = FileDescriptor(ends[0]);
    const FileDescriptor theirs(ends[1]);
    fcntl(helper->channel.number(), F_SETFL, O_NONBLOCK);
    ChildRequest request;
    request.arguments = arguments;
    request.standardInput = converses ? theirs.number() : -1;
    request.standardOutput = theirs.number();
    helper->child = spawn(request);
    return helper;
}

} // namespace

HelperProcess::~HelperProcess()
{
    if (m_pid < 0)
        return;
    // It leads a process group of its own. Only now is it waited for, so neither number can be another's.
    kill(-m_pid, SIGKILL);
    m_children->watch(m_pid);
}

void startHelper(const QByteArrayList& arguments, HelperChannel channel, ChildWatcher& children,
    const Mailbox::Address& mailbox, std::function<void(HelperStart)> started)
{
    std::thread([arguments, channel, watcher = &children, mailbox, report = std::move(started)] {
        mailbox.post(
            [helper = spawnHelper(arguments, channel), watcher, report] { report(helper->take(*watcher)); });
    }).detach();
}

} // namespace Tavrin
