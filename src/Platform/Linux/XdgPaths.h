#pragma once

#include <QString>

namespace Tavrin::XdgPaths {

/// $XDG_DATA_HOME, by default ~/.local/share (XDG Base Directory Specification).
QString dataHome();
/// $XDG_CONFIG_HOME, by default ~/.config.
QString configHome();
/// $XDG_CACHE_HOME, by default ~/.cache.
QString cacheHome();
/// $XDG_RUNTIME_DIR; empty without one.
QString runtimeDirectory();

} // namespace Tavrin::XdgPaths
