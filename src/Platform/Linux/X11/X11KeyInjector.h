#pragma once

#include <cstdint>
#include <deque>
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
    };

    explicit X11KeyInjector(X11Connection& connection);

    /// True if the server lets us press keys.
    bool isAvailable() const;

    /// Sends the strokes in order, without waiting for the server.
    template <typename Strokes>
    void inject(const Strokes& strokes)
    {
        for (const Stroke& stroke : strokes)
            send(stroke);
        finish();
    }

    /// True if this key event is the echo of a stroke of ours.
    bool isOwn(const xcb_key_press_event_t& event);

private:
    struct Sent {
        std::uint32_t sequence;
        xcb_keycode_t keycode;
    };

    void send(const Stroke& stroke);
    void finish();

    X11Connection& m_connection;
    std::deque<Sent> m_sent;
};

} // namespace Tavrin
