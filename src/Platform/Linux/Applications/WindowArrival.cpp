#include "Platform/Linux/Applications/WindowArrival.h"

namespace Tavrin {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds step{100};
/// How long the window manager may take to activate a window that it manages already. Ours: all do it
/// in one go with managing the window.
constexpr std::chrono::milliseconds grace{250};

/// The server's clock turns over every 49 days.
bool isLater(std::uint32_t time, std::uint32_t other)
{
    return static_cast<std::int32_t>(time - other) > 0;
}

} // namespace

WindowArrival::WindowArrival(std::uint32_t serverTime)
    : m_pressTime(serverTime ? serverTime : m_session.serverTime())
    , m_activeBefore(m_session.activeWindow())
{
}

std::uint32_t WindowArrival::await(const ApplicationIdentity& identity, const std::function<bool()>& goesOn)
{
    while (m_session.isConnected() && goesOn()) {
        if (const auto window = findWindow(identity, m_session.windowsFromTop(), describeProcess))
            return window;
        m_session.waitForChange(step);
    }
    return 0;
}

void WindowArrival::bringForward(std::uint32_t window)
{
    const auto limit = Clock::now() + grace;
    while (m_session.isConnected() && m_session.activeWindow() != window) {
        if (const auto left = limit - Clock::now(); left > Clock::duration::zero()) {
            m_session.waitForChange(std::chrono::ceil<std::chrono::milliseconds>(left));
            continue;
        }
        if (userStayed())
            m_session.activate(window);
        return;
    }
}

bool WindowArrival::userStayed()
{
    const auto active = m_session.activeWindow();
    if (active == 0)
        return true;
    const auto lastUse = m_session.lastUserTime(active);
    if (lastUse && isLater(*lastUse, m_pressTime))
        return false;
    // Where the window before is gone, the window manager has chosen the next one, not the user.
    return active == m_activeBefore || !m_session.isClient(m_activeBefore);
}

} // namespace Tavrin
