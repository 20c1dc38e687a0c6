#pragma once

#include <QDateTime>
#include <functional>

namespace Tavrin {

/// Time as actions see it. Main thread.
class ActionClock {
public:
    virtual ~ActionClock() = default;

    /// Seconds since 1 January 1970, that only ever go forward.
    virtual double secondsSince1970() const = 0;
    /// Date and time of the wall clock, in the system's time zone.
    virtual QDateTime now() const = 0;
    /// Calls `block` after so many seconds.
    virtual void after(double seconds, std::function<void()> block) = 0;
};

/// The real time.
class SystemClock : public ActionClock {
public:
    double secondsSince1970() const override;
    QDateTime now() const override;
    void after(double seconds, std::function<void()> block) override;
};

} // namespace Tavrin
