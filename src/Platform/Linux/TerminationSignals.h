#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace Tavrin {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread. One object in a process.
class TerminationSignals {
public:
    /// `handler` is called with the signal's number. Needs the application object.
    explicit TerminationSignals(std::function<void(int)> handler);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::function<void(int)> m_handler;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Tavrin
