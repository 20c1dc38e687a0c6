#pragma once

#include <QHash>
#include <QString>
#include <chrono>
#include <functional>
#include <mutex>
#include <sys/types.h>

namespace Tavrin {

/// Knows what has been started and has no window yet, so that an impatient second press does not start
/// a second instance. All functions may be called on any thread.
class LaunchLedger {
public:
    using Clock = std::chrono::steady_clock;
    /// How long a program may take to show a window before a press starts it once more. Ours: most are
    /// there within two seconds, a cold start from a slow disk takes longer.
    static constexpr std::chrono::seconds patience{10};

    explicit LaunchLedger(std::function<Clock::time_point()> now = Clock::now);

    /// Whether the caller may start the application now; if so, it counts as starting from here on.
    bool claim(const QString& application);
    /// The application runs as `process`; 0 where another process (the session bus) has started it.
    void started(const QString& application, pid_t process);
    /// It could not be started.
    void failed(const QString& application);
    /// It has a window: it is not starting any more.
    void windowSeen(const QString& application);
    /// The process has ended and was collected.
    void ended(pid_t process);
    /// The process it was last started as, if that still runs; else 0.
    pid_t processOf(const QString& application) const;

private:
    struct Launch {
        pid_t process = 0;
        bool starting = true;
        Clock::time_point claimedAt;
    };

    mutable std::mutex m_mutex;
    std::function<Clock::time_point()> m_now;
    QHash<QString, Launch> m_launches;
};

} // namespace Tavrin
