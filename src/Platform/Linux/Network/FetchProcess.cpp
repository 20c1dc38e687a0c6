#include "Platform/Linux/Network/FetchProcess.h"

#include "Fetch/FetchOrder.h"
#include "Platform/Linux/Network/RunningFetch.h"
#include "Platform/Linux/Process/ChildProcess.h"

#include <QFile>
#include <QPointer>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <thread>

namespace Tavrin {
namespace {

struct StartedHelper {
    SpawnResult child;
    FileDescriptor output;
};

StartedHelper startHelper(const QByteArrayList& arguments)
{
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {{-1, qt_error_string(errno)}, {}};
    FileDescriptor readingEnd(ends[0]);
    const FileDescriptor writingEnd(ends[1]);
    fcntl(readingEnd.number(), F_SETFL, O_NONBLOCK);
    ChildRequest request;
    request.arguments = arguments;
    request.standardOutput = writingEnd.number();
    return {spawn(request), std::move(readingEnd)};
}

} // namespace

FetchProcess::FetchProcess(ChildWatcher& children, const QString& helper)
    : m_children(children)
    , m_helper(QFile::encodeName(helper))
{
}

std::unique_ptr<ManifestFetch> FetchProcess::fetch(
    const QUrl& address, const Limits& limits, Completion completion)
{
    auto fetch = std::make_unique<RunningFetch>(limits, std::move(completion));
    const QByteArrayList arguments = QByteArrayList{m_helper} + fetchArguments({address, limits.size});
    // On a thread, because executing a program can wait for a disk. The start may end after the fetch, so it
    // is reported to the source, which then has a helper to end.
    std::thread([arguments, children = &m_children, mailbox = m_mailbox.address(),
                    waiting = QPointer<RunningFetch>(fetch.get())] {
        const auto started = std::make_shared<StartedHelper>(startHelper(arguments));
        mailbox.post([started, children, waiting] {
            if (!started->child) {
                if (waiting)
                    waiting->helperMissing(started->child.error);
                return;
            }
            FetchHelper helper(*children, started->child.pid, std::move(started->output));
            if (waiting)
                waiting->listen(std::move(helper));
        });
    }).detach();
    return fetch;
}

} // namespace Tavrin
