#pragma once

#include <QIcon>

namespace Tavrin {

/// The program's mark, a white ⌘ on a blue rounded square, at 16, 22, 24, 32, 48 and 64 pixels. Serves
/// the tray and the window alike. Needs a QGuiApplication; main thread.
QIcon trayIcon();

} // namespace Tavrin
