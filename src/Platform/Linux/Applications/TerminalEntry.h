#pragma once

#include "Platform/Linux/Applications/GLibPointers.h"

#include <gio/gdesktopappinfo.h>

namespace Tavrin {

/// Whether the application's desktop entry asks for a terminal.
bool runsInTerminal(GDesktopAppInfo* application);

/// The same application with the user's terminal in front of its command, since GIO looks only for the
/// few terminals that it knows. Null if there is no terminal. Reads the disk.
GObjectPointer<GDesktopAppInfo> openedByTerminal(GDesktopAppInfo* application);

} // namespace Tavrin
