#pragma once

#include "Platform/Linux/Applications/ApplicationAliases.h"
#include "Platform/Linux/Applications/DesktopEntry.h"

namespace Tavrin {

/// Something that can be started: a desktop entry, or an executable file (an AppImage is one).
struct ApplicationTarget {
    std::optional<DesktopEntry> entry;
    /// Absolute; empty if there is an entry.
    QString executable;

    /// Names the application. Whichever links lead to an entry or a folder; but a link to a program is
    /// one of its own, since all Snaps are links to the same program.
    QString key() const;
};

/// All functions here read the disk: they are for worker threads.
namespace ApplicationLocator {

/// Desktop file or executable of the application with this identifier of ours or of another desktop;
/// nothing if there is none.
std::optional<QString> locateIdentifier(const QString& identifier);

/// The same by the application's name, as menus or another desktop's application folder have it.
std::optional<QString> locateName(const QString& name);

/// What lies at an absolute path: a desktop file or an executable. A path of another desktop's
/// application ("….app") that is not there is looked up by its name. Nothing if it is neither.
std::optional<ApplicationTarget> resolve(const QString& location);

/// The choice of the user's that a request for another desktop's application (by identifier, name or
/// path) stands for, if there is nothing here to choose; else none.
DefaultRole missingRole(const QString& target);

/// The name in the path of another desktop's application: "/Applications/Safari.app/" gives "Safari";
/// nothing for other paths. Reads nothing.
std::optional<QString> foreignApplicationName(const QString& path);

} // namespace ApplicationLocator
} // namespace Tavrin
