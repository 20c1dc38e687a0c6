#pragma once

#include <cstdint>
#include <optional>

namespace Tavrin::KeyPositions {

/// First virtual key code of keys that the US ANSI board lacks: such a key is this plus its evdev code.
inline constexpr std::uint32_t firstForeignKeyCode = 0x10000;

/// Largest evdev key code (KEY_MAX of linux/input-event-codes.h).
inline constexpr std::uint32_t largestEvdevCode = 0x2FF;

/// The evdev code of the key at this virtual key code's position; nothing if there is no such key.
std::optional<std::uint32_t> evdevCode(std::uint32_t keyCode);

/// The virtual key code of an evdev code: its position on the US ANSI board, or a foreign key code.
std::uint32_t keyCode(std::uint32_t evdevCode);

} // namespace Tavrin::KeyPositions
