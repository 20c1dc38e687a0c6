#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin {

class X11Connection;

/// Presses and releases keys through the XTEST extension, and knows its own presses when they come back
/// as events: a hotkey must not fire on keys that we pressed for the user. Main thread.
class X11KeyInjector {
public:
    enum class Direction { press, release };

    struct Stroke {
        /// Key code of the X server.
        xcb_keycode_t keycode;
        Direction direction;
        /// Id of the keyboard to press it on, below 128; 0 is the one that XTEST has of its own.
        std::uint8_t keyboard = 0;
        bool operator==(const Stroke&) const = default;
    };

    explicit X11KeyInjector(X11Connection& connection);

    /// True if the server lets us press keys.
    bool isAvailable() const;

    /// Makes the strokes ready, in order: they leave in one write with the requests before and after them.
    void inject(std::span<const Stroke> strokes);

    /// Sends what is ready and waits until the server has seen it. Returns the strokes that it refused,
    /// since the keyboard is gone or not ours to press.
    std::vector<Stroke> refusedStrokes();

    /// True if this key event is the echo of a stroke of ours.
    bool isOwn(const xcb_key_press_event_t& event);

private:
    struct Sent {
        std::uint32_t sequence;
        xcb_keycode_t keycode;
    };

    xcb_void_cookie_t send(const Stroke& stroke);

    X11Connection& m_connection;
    std::deque<Sent> m_sent;
    /// Strokes that the server has not confirmed yet.
    std::vector<std::pair<xcb_void_cookie_t, Stroke>> m_unconfirmed;
};

} // namespace Tavrin
