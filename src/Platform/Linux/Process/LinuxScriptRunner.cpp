#include "Platform/Linux/Process/LinuxScriptRunner.h"

#include "Platform/Linux/Process/ChildProcess.h"
#include "Platform/Linux/Process/ChildWatcher.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace Tavrin {
namespace {

struct StartedScript {
    SpawnResult child;
    FileDescriptor output;
};

StartedScript startScript(const QByteArray& shell, const QByteArray& script)
{
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {{-1, QString::fromLocal8Bit(std::strerror(errno))}, {}};
    FileDescriptor readingEnd(ends[0]);
    const FileDescriptor writingEnd(ends[1]);
    ChildRequest request;
    request.arguments = {shell, "-c", script};
    request.standardOutput = writingEnd.number();
    request.standardError = writingEnd.number();
    return {spawn(request), std::move(readingEnd)};
}

} // namespace

LinuxScriptRunner::LinuxScriptRunner(ChildWatcher& watcher, QByteArray shell)
    : m_watcher(watcher)
    , m_shell(std::move(shell))
{
}

void LinuxScriptRunner::runShellScript(const QString& script, Failure failure)
{
    m_workers.run([watcher = &m_watcher, address = m_mailbox.address(), shell = m_shell,
                      text = script.toUtf8(), failure = std::move(failure)] {
        auto started = std::make_shared<StartedScript>(startScript(shell, text));
        address.post([watcher, started, failure] {
            if (!started->child)
                return failure(started->child.error);
            watcher->watch(started->child.pid);
            // Nobody reads it, and nobody closes it while a program may write to it: a child that the
            // script left running would be ended by its next line of output.
            watcher->keepUntilHangUp(std::move(started->output));
        });
    });
}

void LinuxScriptRunner::runAppleScript(const QString& /*source*/, Failure failure)
{
    m_mailbox.address().post([failure = std::move(failure)] {
        failure(QStringLiteral("AppleScript không có trên hệ điều hành này"));
    });
}

} // namespace Tavrin
