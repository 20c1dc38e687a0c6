#pragma once

#include <QString>

namespace Tavrin {

// Where the XDG desktop portal is on the session bus; flatpak.github.io/xdg-desktop-portal.
inline QString portalService()
{
    return QStringLiteral("org.freedesktop.portal.Desktop");
}

inline QString portalPath()
{
    return QStringLiteral("/org/freedesktop/portal/desktop");
}

} // namespace Tavrin
