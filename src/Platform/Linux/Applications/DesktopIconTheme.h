#pragma once

#include <QString>

namespace Tavrin {

/// The icon theme that the user has chosen in the desktop's settings; empty if nobody says. Reads the disk
/// and may ask the display server: for worker threads.
QString desktopIconTheme();

} // namespace Tavrin
