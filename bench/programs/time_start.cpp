// Starts a program, prints how many nanoseconds it takes to come so far, and ends it again.
//   time_start press KEYCODE COMMAND...   until a press of Super and the key starts something
//   time_start window NAME COMMAND...   until a window whose name begins so is mapped
#include "Clock.h"
#include "Display.h"
#include "StampFifo.h"

#include <csignal>
#include <cstring>
#include <functional>
#include <optional>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>

using namespace Tavrin;
using namespace Tavrin::Bench;

namespace {

constexpr Nanoseconds patience = 10'000 * millisecond;

/// The program must not get faster or slower because of how often it is pressed at: one key in so long.
constexpr Nanoseconds pressInterval = 1 * millisecond;

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

std::optional<Nanoseconds> pressUntilAnswered(Display& display, const StampFifo& stamps, xcb_keycode_t key)
{
    const Nanoseconds limit = now() + patience;
    std::optional<Nanoseconds> stamp;
    while (!stamp && now() < limit) {
        display.press(key);
        display.release(key);
        stamp = stamps.wait(pressInterval);
    }
    return stamp;
}

std::optional<Nanoseconds> timePress(xcb_keycode_t key, char** command)
{
    Display display;
    const StampFifo stamps;
    display.press(superLeft);
    display.sync();
    std::optional<Nanoseconds> stamp;
    {
        const Child child(command);
        stamp = pressUntilAnswered(display, stamps, key);
        if (stamp)
            *stamp -= child.started();
    }
    display.release(superLeft);
    display.sync();
    return stamp;
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
    const bool isPress = std::strcmp(argv[1], "press") == 0;
    const auto duration = isPress ? timePress(static_cast<xcb_keycode_t>(std::atoi(argv[2])), argv + 3)
                                  : timeWindow(argv[2], argv + 3);
    if (duration)
        std::printf("%lld\n", *duration);
    else
        std::puts("lost");
    return EXIT_SUCCESS;
}
