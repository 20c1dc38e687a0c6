// Starts a program, prints how many nanoseconds it takes to come so far, and ends it again; prints nothing
// if it does not come so far.
//   time_start press KEYCODE COMMAND...   until the first press of Super and the key that is not lost, and
//                                         until what the first one starts has begun
//   time_start window NAME COMMAND...   until a window whose name begins so is mapped
#include "Clock.h"
#include "Display.h"
#include "StampFifo.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <optional>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <vector>

using namespace Tavrin;
using namespace Tavrin::Bench;

namespace {

constexpr Nanoseconds patience = 10'000 * millisecond;

/// The program must not get faster or slower because of how often it is pressed at: one key in so long.
constexpr Nanoseconds pressInterval = 1 * millisecond;
constexpr Nanoseconds quietTime = 100 * millisecond;

class Child {
public:
    explicit Child(char** command)
        : m_started(now())
    {
        if (posix_spawnp(&m_pid, command[0], nullptr, nullptr, command, environ) != 0)
            std::exit(EXIT_FAILURE);
    }
    ~Child()
    {
        kill(m_pid, SIGTERM);
        waitpid(m_pid, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Right before it was started.
    Nanoseconds started() const { return m_started; }

private:
    Nanoseconds m_started;
    pid_t m_pid = -1;
};

/// Nanoseconds after the start of the program.
struct LiveTimes {
    Nanoseconds firstPressThatFires = 0;
    Nanoseconds firstStamp = 0;
};

std::optional<LiveTimes> pressUntilAnswered(Display& display, const StampFifo& stamps, xcb_keycode_t key)
{
    const Nanoseconds limit = now() + patience;
    std::vector<Nanoseconds> presses;
    std::optional<Nanoseconds> stamp;
    while (!stamp && now() < limit) {
        presses.push_back(now());
        display.press(key);
        display.release(key);
        stamp = stamps.wait(pressInterval);
    }
    if (!stamp)
        return std::nullopt;
    // A program that is busy with its window answers what has queued up meanwhile later, but press by
    // press: so many stamps, so many of the last presses were not lost.
    const auto answered = static_cast<std::size_t>(1 + stamps.countUntilQuiet(quietTime));
    return LiveTimes{presses[presses.size() - std::min(answered, presses.size())], *stamp};
}

std::optional<LiveTimes> timePresses(xcb_keycode_t key, char** command)
{
    Display display;
    const StampFifo stamps;
    display.press(superLeft);
    display.sync();
    std::optional<LiveTimes> times;
    {
        const Child child(command);
        times = pressUntilAnswered(display, stamps, key);
        if (times)
            times = LiveTimes{
                times->firstPressThatFires - child.started(), times->firstStamp - child.started()};
    }
    display.release(superLeft);
    display.sync();
    return times;
}

std::string windowName(Display& display, xcb_window_t window)
{
    constexpr std::string_view property = "_NET_WM_NAME";
    constexpr std::uint32_t longest = 256;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(display.xcb(),
        xcb_get_property(display.xcb(), 0, window, display.atom(property.data(), property.size()),
            XCB_GET_PROPERTY_TYPE_ANY, 0, longest),
        nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::optional<Nanoseconds> waitForWindow(Display& display, const std::string& name)
{
    const Nanoseconds limit = now() + patience;
    while (now() < limit) {
        pollfd poller{xcb_get_file_descriptor(display.xcb()), POLLIN, 0};
        poll(&poller, 1, /*milliseconds=*/100);
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(display.xcb())}) {
            const Nanoseconds seen = now();
            if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY)
                continue;
            const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(*event);
            if (!map.override_redirect && windowName(display, map.window).starts_with(name))
                return seen;
        }
    }
    return std::nullopt;
}

std::optional<Nanoseconds> timeWindow(const std::string& name, char** command)
{
    Display display;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display.xcb(), display.root(), XCB_CW_EVENT_MASK, &events);
    display.sync();
    const Child child(command);
    auto mapped = waitForWindow(display, name);
    if (mapped)
        *mapped -= child.started();
    return mapped;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4)
        return EXIT_FAILURE;
    if (std::strcmp(argv[1], "press") == 0) {
        if (const auto times = timePresses(static_cast<xcb_keycode_t>(std::atoi(argv[2])), argv + 3))
            std::printf("%lld %lld\n", times->firstPressThatFires, times->firstStamp);
    } else if (const auto mapped = timeWindow(argv[2], argv + 3)) {
        std::printf("%lld\n", *mapped);
    }
    return EXIT_SUCCESS;
}
