#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <chrono>
#include <functional>
#include <mutex>
#include <sys/types.h>

namespace Tavrin {

/// What one start of an application left to know it by.
struct Launch {
    /// 0 where another process (the session bus) has started it, or once it has ended.
    pid_t process = 0;
    QByteArray startupId;
};

/// Whether a program that has done its part will show a window of its own accord: desktop entries
/// announce one by StartupNotify, everything else may be a script that ends in silence.
enum class WindowPromise { none, announced };

/// Knows what has been started and has no window yet, so that an impatient second press does not start
/// a second instance. All functions may be called on any thread.
class LaunchLedger {
public:
    using Clock = std::chrono::steady_clock;
    /// How long a program may take to show a window before a press starts it once more. Ours: most are
    /// there within two seconds, a cold start from a slow disk takes longer.
    static constexpr std::chrono::seconds patience{10};
    /// The same once the request was handed over to a process that runs already: the bus has answered,
    /// or the program has ended while its window is announced. Ours.
    static constexpr std::chrono::seconds settling{2};

    explicit LaunchLedger(std::function<Clock::time_point()> now = Clock::now);

    /// Whether the caller may start the application now; if so, it counts as starting from here on.
    bool claim(const QString& application);
    /// Whether a press waits for its window.
    bool isStarting(const QString& application) const;
    /// The application that was claimed runs.
    void started(const QString& application, const Launch& launch, WindowPromise promise);
    /// It could not be started.
    void failed(const QString& application);
    /// It has a window: it is not starting any more.
    void windowSeen(const QString& application);
    /// The process has ended and was collected.
    void ended(pid_t process);
    /// How it was last started, if we did.
    Launch lastLaunch(const QString& application) const;

private:
    struct Entry {
        Launch launch;
        WindowPromise promise = WindowPromise::none;
        /// Until then a press waits for the window.
        Clock::time_point startingUntil;
    };

    void handOver(Entry& entry) const;

    mutable std::mutex m_mutex;
    std::function<Clock::time_point()> m_now;
    /// One for each application that was ever started, so that their number has a bound.
    QHash<QString, Entry> m_entries;
};

} // namespace Tavrin
