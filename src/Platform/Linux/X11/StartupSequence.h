#pragma once

#include <QByteArray>

namespace Tavrin {

class X11Connection;

/// Tells the desktop that the start which it gave this id is over (Startup Notification Protocol): until then
/// it shows that a program is coming. The toolkit does so with its first window; a start that shows none has
/// to by itself. Returns once the server has it, so that the process may end. Main thread.
void endStartupSequence(X11Connection& connection, const QByteArray& id);

} // namespace Tavrin
