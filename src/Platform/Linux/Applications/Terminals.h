#pragma once

#include "Platform/Linux/Applications/ApplicationIndex.h"

namespace Tavrin {

/// The user's terminal, the first that is there of: $TERMINAL, the user's list for xdg-terminal-exec,
/// x-terminal-emulator, a known terminal, any entry in the category of terminals, xdg-terminal-exec
/// itself. The entry where the program has one, else the executable. Reads the disk.
std::optional<QString> userTerminal(const ApplicationIndex& index);

/// Programs that are known to be terminals, the preferred first, and the one that chooses among them last.
QStringList knownTerminalPrograms();

/// What to put before the words of a command so that the user's terminal runs it; empty if there is no
/// terminal. Reads the disk.
QStringList userTerminalWords();

/// The same for a terminal that is started by `command` (not empty). Reads nothing.
QStringList terminalWords(const QStringList& command);

/// An Exec value with `terminal` in front of it; `path` is what its field code %k stands for.
QByteArray execInTerminal(const QStringList& terminal, const QByteArray& exec, const QByteArray& path);

/// The ids, in order, that a list of preferred terminals names (xdg-terminal-exec's
/// "xdg-terminals.list"): one desktop file a line, perhaps with ":" and an action behind it.
QStringList preferredTerminalIds(const QByteArray& list);

} // namespace Tavrin
