#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin {

class X11Connection;

/// What every key of the keyboard gives, in each of its groups (layouts that the user switches between),
/// and which group is on.
struct KeySymbols {
    struct Key {
        /// Number of groups in the low four bits, what happens beyond them in the others (XKB protocol,
        /// "Key Symbol Map").
        std::uint8_t groupInfo = 0;
        /// Levels of a group.
        std::uint8_t width = 0;
        /// Where the key's symbols begin, group by group.
        std::size_t first = 0;
        /// Of each group: how modifiers choose the level.
        std::array<std::uint8_t, 4> types{};
        /// Bits that the key sets in the modifier state; some modifiers (the third level's) set none here.
        std::uint8_t modifiers = 0;
    };

    /// How modifiers choose a level. Only `mask` counts; a set of them that is not listed is level 0.
    struct Type {
        struct Entry {
            std::uint8_t modifiers;
            std::uint8_t level;
        };
        std::uint8_t mask = 0;
        std::vector<Entry> entries;
    };

    /// By key code.
    std::array<Key, 256> keys;
    std::vector<Type> types;
    std::vector<xcb_keysym_t> symbols;
    /// The group that is on while no key is held.
    std::uint8_t lockedGroup = 0;

    /// What the key gives in `group` while `modifiers` are on; NoSymbol where it gives nothing.
    xcb_keysym_t symbol(xcb_keycode_t keycode, std::uint8_t group, std::uint8_t modifiers = 0) const;

    /// The keys that give `symbol` alone in `group`, by key code.
    std::vector<xcb_keycode_t> keysFor(xcb_keysym_t symbol, std::uint8_t group) const;
    /// The key that gives `symbol` in the group that is on, else in any other.
    std::optional<xcb_keycode_t> keyFor(xcb_keysym_t symbol) const;
};

/// Asks the server; one round trip. No keys if it cannot tell.
KeySymbols queryKeySymbols(X11Connection& connection);

} // namespace Tavrin
