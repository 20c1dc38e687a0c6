#include "Platform/Linux/TerminationSignals.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace Tavrin {
namespace {

constexpr std::array signalNumbers{SIGTERM, SIGINT, SIGHUP};

// A signal handler may do little more than write to a descriptor.
std::array<int, 2> pipeEnds{-1, -1};

void forward(int number)
{
    const auto byte = static_cast<char>(number);
    // A full pipe already holds a signal that will end us.
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

void handleWith(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers)
        sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void(int)> handler)
    : m_handler(std::move(handler))
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        char number = 0;
        if (read(pipeEnds[0], &number, 1) == 1)
            m_handler(number);
    });
    handleWith(forward);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    handleWith(SIG_DFL);
    m_notifier.reset();
    for (int& end : pipeEnds)
        close(std::exchange(end, -1));
}

} // namespace Tavrin
