#pragma once

#include "Platform/Linux/Applications/ApplicationAliases.h"
#include "Platform/Linux/Applications/ApplicationIndex.h"

namespace Tavrin {

/// Desktop file or executable of the application the user has chosen for a role; nothing if there is
/// none. Reads the disk and GIO's lists: for worker threads.
std::optional<QString> defaultApplication(DefaultRole role, const ApplicationIndex& index);

} // namespace Tavrin
