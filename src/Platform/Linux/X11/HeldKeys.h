#pragma once

#include "Platform/Linux/X11/X11Connection.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin {

/// Id of a keyboard; 0 is the one that the XTEST extension has of its own.
using KeyboardId = std::uint8_t;

/// What is down on the keyboards whose keys programs see as one.
struct HeldKeys {
    struct Key {
        xcb_keycode_t keycode;
        KeyboardId keyboard;
        bool operator==(const Key&) const = default;
    };

    std::vector<Key> keys;
    /// The modifiers that these keys have put on.
    std::uint8_t modifiers = 0;
    /// The keyboard that was used last; 0 if it is none of them. Programs see its layout: a key on any
    /// other would make the server tell everybody of a new keyboard.
    KeyboardId current = 0;
};

/// What a keyboard reports.
struct KeyReport {
    HeldKeys::Key key;
    bool isPress;
};

/// Of the held keys that we have let go and pressed again: those that the user let go before we pressed
/// them, so that no release of theirs will come any more. `reports` are all since the keys were held.
std::vector<HeldKeys::Key> releasedMeanwhile(
    std::span<const HeldKeys::Key> held, std::span<const KeyReport> reports);

/// Looks at the keyboards on a connection of its own: another one's requests are not to be answered by
/// reports. Main thread.
class KeyboardWatch {
public:
    /// Asks which keys are down, in a few round trips, and listens from then on. Without a server, or
    /// without its input extension, no key is held.
    KeyboardWatch();
    ~KeyboardWatch();

    const HeldKeys& held() const { return m_held; }

    /// What has been reported since then; one round trip.
    std::vector<KeyReport> takeReports();

private:
    void findKeyboards();
    void selectReports();
    void queryHeldKeys();

    std::unique_ptr<X11Connection> m_connection;
    std::vector<KeyboardId> m_keyboards;
    HeldKeys m_held;
    /// Number of the first request that the held keys were asked with.
    std::uint32_t m_firstQuery = 0;
};

} // namespace Tavrin
