#pragma once

#include <QString>

namespace Tavrin {

class X11Connection;

/// The two halves of a window's WM_CLASS.
struct WindowClass {
    QString instance;
    QString name;
};

/// Of the window that gets what is typed: the input focus or the nearest window around it that has a
/// class; where nothing has the focus, the window that the window manager calls the active one. Some
/// round trips. Empty if there is none.
WindowClass focusedWindowClass(X11Connection& connection);

} // namespace Tavrin
