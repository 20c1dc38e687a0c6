#include "Platform/Linux/Process/HelperProcess.h"

#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <thread>

namespace Tavrin {
namespace {

struct SpawnedHelper {
    SpawnResult child;
    FileDescriptor channel;
};

SpawnedHelper spawnHelper(const QByteArrayList& arguments, HelperChannel channel)
{
    const bool converses = channel == HelperChannel::conversation;
    std::array<int, 2> ends{-1, -1};
    const int result = converses ? socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data())
                                 : pipe2(ends.data(), O_CLOEXEC);
    if (result != 0)
        return {{-1, qt_error_string(errno)}, {}};
    FileDescriptor ours(ends[0]);
    const FileDescriptor theirs(ends[1]);
    fcntl(ours.number(), F_SETFL, O_NONBLOCK);
    ChildRequest request;
    request.arguments = arguments;
    request.standardInput = converses ? theirs.number() : -1;
    request.standardOutput = theirs.number();
    return {spawn(request), std::move(ours)};
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
        const auto helper = std::make_shared<SpawnedHelper>(spawnHelper(arguments, channel));
        mailbox.post([helper, watcher, report] {
            if (helper->child)
                report({HelperProcess(*watcher, helper->child.pid, std::move(helper->channel)), {}});
            else
                report({{}, helper->child.error});
        });
    }).detach();
}

} // namespace Tavrin
