#include "Fetch/FetchOutput.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <thread>

namespace Tavrin {
namespace {

void waitForHangUp(int pipe)
{
    // No event is asked for: that the last reader has gone comes unasked.
    pollfd poller{pipe, 0, 0};
    while (poll(&poller, 1, -1) < 0 && errno == EINTR) { }
    std::_Exit(EXIT_FAILURE);
}

} // namespace

FetchOutput::FetchOutput()
    : m_pipe(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
{
    const FileDescriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    dup2(nowhere.number(), STDOUT_FILENO);
}

void FetchOutput::endWithReader() const
{
    // Not the kernel's signal at the parent's death: that follows the thread that started us, which may end
    // long before its process.
    std::thread(waitForHangUp, m_pipe.number()).detach();
}

bool FetchOutput::write(const QByteArray& bytes) const
{
    return m_pipe.write(bytes);
}

} // namespace Tavrin
