#pragma once

#include <QString>

namespace Tavrin::XdgPaths {

/// $XDG_DATA_HOME, by default ~/.local/share (XDG Base Directory Specification).
QString dataHome();
/// $XDG_CONFIG_HOME, by default ~/.config.
QString configHome();

} // namespace Tavrin::XdgPaths
