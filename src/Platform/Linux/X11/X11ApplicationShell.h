#pragma once

#include "Core/Shell/ApplicationShell.h"
#include "Core/Shell/MainWindow.h"

#include <array>
#include <xcb/xcb.h>

namespace Tavrin {

/// The program's window towards the window manager (Extended Window Manager Hints): out of the task bar
/// and pager while the program is an accessory, in front when it is shown. Speaks on the toolkit's
/// connection, so that requests stay in order with the window's own. Does nothing where the toolkit is
/// not on X11. Main thread; needs the application object.
class X11ApplicationShell : public ApplicationShell, public WindowShell {
public:
    ActivationPolicy activationPolicy() const override { return m_policy; }
    void setActivationPolicy(ActivationPolicy policy) override;
    bool isActive() const override;
    void hide() override;
    void beep() override;

    void windowWillShow(std::uintptr_t windowId) override;
    void activateWindow(std::uintptr_t windowId, const ActivationContext& context) override;

private:
    enum Atom { netWmState, skipTaskbar, skipPager, netActiveWindow, atomCount };

    bool connect();
    void sendToRoot(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data);

    ActivationPolicy m_policy = ActivationPolicy::regular;
    xcb_window_t m_window = XCB_NONE;
    xcb_window_t m_root = XCB_NONE;
    xcb_connection_t* m_connection = nullptr;
    std::array<xcb_atom_t, atomCount> m_atoms{};
};

} // namespace Tavrin
