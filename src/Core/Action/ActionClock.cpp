#include "Core/Action/ActionClock.h"

#include <QTimer>

#include <chrono>

namespace Tavrin {
namespace {

double seconds(auto timePoint)
{
    return std::chrono::duration<double>(timePoint.time_since_epoch()).count();
}

} // namespace

double SystemClock::secondsSince1970() const
{
    // A wall clock that is set back must not make what waits for it wait for hours.
    static const double start = seconds(std::chrono::system_clock::now());
    static const double steadyStart = seconds(std::chrono::steady_clock::now());
    return start + (seconds(std::chrono::steady_clock::now()) - steadyStart);
}

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

void SystemClock::after(double seconds, std::function<void()> block)
{
    const auto delay = std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
    QTimer::singleShot(delay, Qt::PreciseTimer, std::move(block));
}

} // namespace Tavrin
