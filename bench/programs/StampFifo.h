#pragma once

#include "Clock.h"

#include "Core/Support/FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/stat.h>

namespace Tavrin::Bench {

/// The reading end of what the stamp programs write.
class StampFifo {
public:
    /// Ends the program if there can be none. Stamps of an earlier run are dropped.
    StampFifo()
        : m_fifo(open())
    {
        if (!m_fifo.isOpen()) {
            std::perror(TAVRIN_STAMP_FIFO);
            std::exit(EXIT_FAILURE);
        }
        while (take()) { }
    }

    /// The next stamp, or nothing within `limit`.
    std::optional<Nanoseconds> wait(Nanoseconds limit) const
    {
        const timespec time{limit / 1'000'000'000, limit % 1'000'000'000};
        pollfd poller{m_fifo.number(), POLLIN, 0};
        return ppoll(&poller, 1, &time, nullptr) > 0 ? take() : std::nullopt;
    }

    /// How many stamps come until there is none for `quiet`.
    int countUntilQuiet(Nanoseconds quiet) const
    {
        int count = 0;
        while (wait(quiet))
            ++count;
        return count;
    }

private:
    static FileDescriptor open()
    {
        if (mkfifo(TAVRIN_STAMP_FIFO, 0666) != 0 && errno != EEXIST)
            return FileDescriptor();
        // For writing, too: there is never an end of file between two writers.
        return FileDescriptor(::open(TAVRIN_STAMP_FIFO, O_RDWR | O_NONBLOCK | O_CLOEXEC));
    }

    std::optional<Nanoseconds> take() const
    {
        Nanoseconds stamp = 0;
        const bool complete = read(m_fifo.number(), &stamp, sizeof stamp) == sizeof stamp;
        return complete ? std::optional(stamp) : std::nullopt;
    }

    FileDescriptor m_fifo;
};

} // namespace Tavrin::Bench
