#pragma once

#include "Platform/Linux/Applications/DesktopLaunch.h"
#include "Platform/Linux/Applications/GLibPointers.h"

#include <gio/gdesktopappinfo.h>

namespace Tavrin {

/// The name under which the session bus starts the application; empty if it is started by its command.
QString busName(GDesktopAppInfo* application);

/// Asks the application to show itself or to open the addresses; the bus starts it if it does not run
/// (Desktop Entry Specification, "D-Bus Activation"). Waits a few seconds at most; what has not failed
/// by then counts as launched. GIO's own launching would do the same, but for entries without
/// StartupNotify it hands over no startup id and never says that it failed.
LaunchResult activateOnBus(
    GDBusConnection* bus, const QString& name, const QByteArrayList& addresses, const QByteArray& startupId);

} // namespace Tavrin
