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
    Entry& entry = m_entries[application];
    if (now < entry.startingUntil)
        return false;
    entry = {{}, WindowPromise::none, now + patience};
    return true;
}

bool LaunchLedger::isStarting(const QString& application) const
{
    const std::lock_guard lock(m_mutex);
    return m_now() < m_entries.value(application).startingUntil;
}

void LaunchLedger::started(const QString& application, const Launch& launch, WindowPromise promise)
{
    const std::lock_guard lock(m_mutex);
    const auto entry = m_entries.find(application);
    if (entry == m_entries.end())
        return;
    entry->launch = launch;
    entry->promise = promise;
    if (launch.process == 0)
        handOver(*entry);
}

void LaunchLedger::failed(const QString& application)
{
    const std::lock_guard lock(m_mutex);
    m_entries.remove(application);
}

void LaunchLedger::windowSeen(const QString& application)
{
    const std::lock_guard lock(m_mutex);
    if (const auto entry = m_entries.find(application); entry != m_entries.end())
        entry->startingUntil = {};
}

void LaunchLedger::ended(pid_t process)
{
    const std::lock_guard lock(m_mutex);
    for (Entry& entry : m_entries) {
        if (entry.launch.process != process)
            continue;
        entry.launch.process = 0;
        if (entry.promise == WindowPromise::announced)
            handOver(entry);
        else
            entry.startingUntil = {};
    }
}

Launch LaunchLedger::lastLaunch(const QString& application) const
{
    const std::lock_guard lock(m_mutex);
    return m_entries.value(application).launch;
}

void LaunchLedger::handOver(Entry& entry) const
{
    entry.startingUntil = std::min(entry.startingUntil, m_now() + settling);
}

} // namespace Tavrin
