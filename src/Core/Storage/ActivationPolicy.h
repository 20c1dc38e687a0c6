#pragma once

namespace Tavrin {

/// Whether the program shows among the running applications (Dock, task bar) or only in the tray.
enum class ActivationPolicy { regular, accessory };

} // namespace Tavrin
