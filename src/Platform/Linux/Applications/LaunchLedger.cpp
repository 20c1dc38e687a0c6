#include "Platform/Linux/Applications/LaunchLedger.h"

namespace Tavrin {

LaunchLedger::LaunchLedger(std::function<Clock::time_point()> now)
    : m_now(std::move(now))
{
}

bool LaunchLedger::claim(const QString& application)
{
    const std::lock_guard lock(m_mutex);
    const auto now = m_now();
    const auto launch = m_launches.constFind(application);
    if (launch != m_launches.cend() && launch->starting && now - launch->claimedAt < patience)
        return false;
    m_launches.insert(application, {0, true, now});
    return true;
}

void LaunchLedger::started(const QString& application, pid_t process)
{
    const std::lock_guard lock(m_mutex);
    if (const auto launch = m_launches.find(application); launch != m_launches.end())
        launch->process = process;
}

void LaunchLedger::failed(const QString& application)
{
    const std::lock_guard lock(m_mutex);
    m_launches.remove(application);
}

void LaunchLedger::windowSeen(const QString& application)
{
    const std::lock_guard lock(m_mutex);
    const auto launch = m_launches.find(application);
    if (launch == m_launches.end())
        return;
    launch->starting = false;
    if (launch->process == 0)
        m_launches.erase(launch);
}

void LaunchLedger::ended(pid_t process)
{
    const std::lock_guard lock(m_mutex);
    m_launches.removeIf([process](const auto& launch) { return launch.value().process == process; });
}

pid_t LaunchLedger::processOf(const QString& application) const
{
    const std::lock_guard lock(m_mutex);
    return m_launches.value(application).process;
}

} // namespace Tavrin
