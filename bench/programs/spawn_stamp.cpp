// Starts the stamp program by hand, as any program would, and reads what it says.
//   spawn_stamp COUNT COMMAND...   one line a start: nanoseconds from the call to the stamp, or "lost"
#include "Clock.h"
#include "StampFifo.h"

#include <spawn.h>
#include <sys/wait.h>

using namespace Tavrin::Bench;

int main(int argc, char** argv)
{
    if (argc < 3)
        return EXIT_FAILURE;
    constexpr Nanoseconds patience = 1000 * millisecond;
    constexpr Nanoseconds pause = 20 * millisecond;
    const StampFifo stamps;
    for (int turn = 0; turn < std::atoi(argv[1]); ++turn) {
        pid_t child = 0;
        const Nanoseconds called = now();
        if (posix_spawn(&child, argv[2], nullptr, nullptr, argv + 2, environ) != 0)
            return EXIT_FAILURE;
        if (const auto stamp = stamps.wait(patience))
            std::printf("%lld\n", *stamp - called);
        else
            std::puts("lost");
        waitpid(child, nullptr, 0);
        sleepFor(pause);
    }
    return EXIT_SUCCESS;
}
