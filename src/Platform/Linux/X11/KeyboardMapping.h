#pragma once

#include <bitset>
#include <cstdint>
#include <xcb/xcb.h>

namespace Tavrin {

class X11Connection;

/// What the server says of the keyboard: which bit each modifier has, and which keys exist.
struct KeyboardMapping {
    /// Bits of a key event's state; 0 where no key carries the modifier.
    std::uint16_t alt = 0;
    std::uint16_t super = 0;
    std::uint16_t numLock = 0;
    std::uint16_t scrollLock = 0;
    /// Key codes (of the X server) that produce anything at all.
    std::bitset<256> keys;

    bool operator==(const KeyboardMapping&) const = default;

    /// The bits that locks set and that must not matter to a hotkey; Caps Lock is always among them.
    std::uint16_t locks() const { return XCB_MOD_MASK_LOCK | numLock | scrollLock; }
    bool hasSameModifiers(const KeyboardMapping& other) const;
};

/// Reads the two tables as the core protocol gives them. `keysyms` holds `perKeycode` symbols for each
/// key code from `firstKeycode` on; `modifierKeycodes` holds eight runs of `perModifier` key codes.
KeyboardMapping keyboardMapping(const xcb_keysym_t* keysyms, int keysymCount, int perKeycode,
    xcb_keycode_t firstKeycode, const xcb_keycode_t* modifierKeycodes, int perModifier);

/// Asks the server; one round trip. An empty mapping if the server is gone.
KeyboardMapping queryKeyboardMapping(X11Connection& connection);

} // namespace Tavrin
