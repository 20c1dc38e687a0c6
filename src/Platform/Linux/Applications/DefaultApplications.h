#pragma once

#include "Platform/Linux/Applications/ApplicationAliases.h"
#include "Platform/Linux/Applications/ApplicationIndex.h"

namespace Tavrin {

/// Desktop file or executable of the application the user has chosen for a role; nothing if there is
/// none. Reads the disk and GIO's lists: for worker threads.
std::optional<QString> defaultApplication(DefaultRole role, const ApplicationIndex& index);

/// The user's terminal, the first that is there of: $TERMINAL, the user's list for xdg-terminal-exec,
/// x-terminal-emulator, a known terminal, any entry in the category of terminals, xdg-terminal-exec
/// itself. The entry where the program has one, else the executable. Reads the disk.
std::optional<QString> userTerminal(const ApplicationIndex& index);

/// The ids, in order, that a list of preferred terminals names (xdg-terminal-exec's
/// "xdg-terminals.list"): one desktop file a line, perhaps with ":" and an action behind it.
QStringList preferredTerminalIds(const QByteArray& list);

} // namespace Tavrin
