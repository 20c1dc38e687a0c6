#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <functional>

namespace Tavrin::Testing {

/// Runs the event loop until `condition` holds; false if it does not within `milliseconds`.
inline bool waitFor(const std::function<bool()>& condition, int milliseconds = 10000)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::usleep(200);
    }
    return true;
}

/// Runs the event loop until what `measure` returns is `acceptable` and has not changed for a while: for
/// things that other programs put in their place in several steps. The last value, acceptable or not.
template <typename Value>
Value waitUntilSettled(const std::function<Value()>& measure,
    const std::function<bool(const Value&)>& acceptable, int milliseconds = 10000)
{
    Value value = measure();
    QDeadlineTimer settled(200);
    waitFor(
        [&] {
            Value now = measure();
            if (!(now == value) || !acceptable(now))
                settled.setRemainingTime(200);
            value = std::move(now);
            return settled.hasExpired();
        },
        milliseconds);
    return value;
}

/// Runs the event loop until nothing is left to deliver.
inline void drainEvents()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace Tavrin::Testing
