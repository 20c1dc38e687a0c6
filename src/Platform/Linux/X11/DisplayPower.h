#pragma once

#include "Platform/Linux/X11/X11Connection.h"

namespace Tavrin {

/// Puts the displays of an X server to sleep through its extension for display power (DPMS). The next key or
/// movement of the pointer wakes them. Main thread.
class DisplayPower {
public:
    /// The connection outlives this.
    explicit DisplayPower(X11Connection& connection);

    /// True if the server can switch displays off. Virtual ones and XWayland cannot. Asks the server.
    bool isAvailable() const;

    /// Switches them off now; false if the server cannot or does not want to.
    bool turnOff();

private:
    X11Connection& m_connection;
};

} // namespace Tavrin
