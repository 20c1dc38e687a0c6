// Presses Super and a key, and waits for the text as a text field does: for the paste key, then for what
// the owner of the clipboard answers.
//   time_quick_text KEYCODE COUNT   one line a press: nanoseconds from the press to the text, or "lost"
#include "Clock.h"
#include "Display.h"

#include <optional>
#include <poll.h>

using namespace Tavrin::Bench;

namespace {

constexpr xcb_keycode_t pasteKey = 55; // V

/// Long enough for any answer that will still come.
constexpr Nanoseconds patience = 2000 * millisecond;

/// Between two presses: longer than the program takes the second one for a bounce of the key.
constexpr Nanoseconds restBetween = 450 * millisecond;

/// A window with the focus that takes what is pasted into it.
class Field {
public:
    explicit Field(Display& display)
        : m_display(display)
        , m_window(xcb_generate_id(display.xcb()))
        , m_clipboard(display.atom("CLIPBOARD", 9))
        , m_text(display.atom("UTF8_STRING", 11))
    {
        // Override-redirect: no window manager moves the focus.
        const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS};
        xcb_create_window(display.xcb(), XCB_COPY_FROM_PARENT, m_window, display.root(), 10, 10, 200, 100, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
            values);
        xcb_map_window(display.xcb(), m_window);
        display.sync();
        xcb_set_input_focus(display.xcb(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
        display.sync();
    }

    /// The moment at which a text is here, or nothing within `patience`.
    std::optional<Nanoseconds> waitForText()
    {
        const Nanoseconds limit = now() + patience;
        while (const auto event = nextEvent(limit)) {
            const std::uint8_t type = event->response_type & 0x7F;
            if (type == XCB_KEY_PRESS) {
                const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(*event);
                if (press.detail == pasteKey && press.state & XCB_MOD_MASK_CONTROL)
                    ask(press.time);
            } else if (type == XCB_SELECTION_NOTIFY && hasText()) {
                return now();
            }
        }
        return std::nullopt;
    }

private:
    using Event = Tavrin::XcbReply<xcb_generic_event_t>;

    Event nextEvent(Nanoseconds limit)
    {
        while (true) {
            if (Event event{xcb_poll_for_event(m_display.xcb())})
                return event;
            const Nanoseconds left = limit - now();
            if (left <= 0)
                return nullptr;
            const timespec time{left / 1'000'000'000, left % 1'000'000'000};
            pollfd poller{xcb_get_file_descriptor(m_display.xcb()), POLLIN, 0};
            ppoll(&poller, 1, &time, nullptr);
        }
    }

    void ask(xcb_timestamp_t time)
    {
        xcb_convert_selection(m_display.xcb(), m_window, m_clipboard, m_text, m_text, time);
        xcb_flush(m_display.xcb());
    }

    bool hasText()
    {
        const Tavrin::XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_display.xcb(),
            xcb_get_property(m_display.xcb(), 1, m_window, m_text, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
            nullptr));
        return reply && xcb_get_property_value_length(reply.get()) > 0;
    }

    Display& m_display;
    xcb_window_t m_window;
    xcb_atom_t m_clipboard;
    xcb_atom_t m_text;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return EXIT_FAILURE;
    const auto key = static_cast<xcb_keycode_t>(std::atoi(argv[1]));
    const int count = std::atoi(argv[2]);
    Display display;
    Field field(display);
    for (int turn = 0; turn < count; ++turn) {
        display.press(superLeft);
        display.sync();
        const Nanoseconds pressed = now();
        display.press(key);
        const auto arrived = field.waitForText();
        display.release(key);
        display.release(superLeft);
        display.sync();
        if (arrived)
            std::printf("%lld\n", *arrived - pressed);
        else
            std::puts("lost");
        sleepFor(restBetween);
    }
    return EXIT_SUCCESS;
}
