#pragma once

#include <QByteArray>
#include <chrono>

namespace Tavrin::SessionBus {

/// The session bus's address: $DBUS_SESSION_BUS_ADDRESS, or the socket in the runtime folder; empty if
/// there is none.
QByteArray address();

/// True unless a local socket's owner fails to answer an authentication request within `limit`. The
/// toolkit connects without any limit of its own, and would hang with the bus.
bool answers(const QByteArray& address, std::chrono::milliseconds limit);

} // namespace Tavrin::SessionBus
