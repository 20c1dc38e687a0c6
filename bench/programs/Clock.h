#pragma once

#include <ctime>

namespace Tavrin::Bench {

using Nanoseconds = long long;

inline constexpr Nanoseconds millisecond = 1'000'000;

/// The clock that the stamp program reads, too.
inline Nanoseconds now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

inline void sleepFor(Nanoseconds duration)
{
    const timespec time{duration / 1'000'000'000, duration % 1'000'000'000};
    nanosleep(&time, nullptr);
}

} // namespace Tavrin::Bench
