#pragma once

#include "Platform/Linux/SystemActions/Surroundings.h"

#include <QFlags>
#include <array>

namespace Tavrin {

/// The desktops whose ways the table of system actions knows.
enum class Desktop {
    gnome = 1 << 0,
    plasma = 1 << 1,
    xfce = 1 << 2,
    mate = 1 << 3,
    cinnamon = 1 << 4,
    sway = 1 << 5,
    other = 1 << 6, ///< Any other, or a window manager alone.
};
Q_DECLARE_FLAGS(Desktops, Desktop)
Q_DECLARE_OPERATORS_FOR_FLAGS(Desktops)

/// Every desktop, in the order in which documents list them.
inline constexpr std::array allDesktops{
    Desktop::gnome,
    Desktop::plasma,
    Desktop::xfce,
    Desktop::mate,
    Desktop::cinnamon,
    Desktop::sway,
    Desktop::other,
};

/// The desktop that answers now. Where more than one does (a panel of one on another),
/// $XDG_CURRENT_DESKTOP decides; by itself it proves nothing.
Desktop runningDesktop(Surroundings& surroundings);

} // namespace Tavrin
