#pragma once

#include "Platform/Linux/Applications/WindowMatch.h"

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin {

/// A short-lived connection of its own to the X server, so that a worker thread may wait for answers
/// without touching the connection of the user interface. Everything here may take as long as the
/// server does. Where there is no X server, there are no windows and the time is 0.
class XcbSession {
public:
    XcbSession();

    bool isConnected() const;

    /// The windows that the window manager has, last used first, without panels, desktops and the
    /// like (Extended Window Manager Hints, _NET_CLIENT_LIST_STACKING).
    QList<WindowDescription> windowsFromTop();

    /// Asks the window manager, as the user's wish of this moment, to bring the window to the front, also
    /// from another desktop and when it is minimised.
    void activate(std::uint32_t window);

    /// Whether the window manager has this window.
    bool isClient(std::uint32_t window);
    /// The active window; 0 if there is none.
    std::uint32_t activeWindow();
    /// When the user last pressed anything in the window, as its program says; nothing if it does not.
    std::optional<std::uint32_t> lastUserTime(std::uint32_t window);

    /// Waits until something happens among the windows, or the time is over. The first call may return
    /// at once.
    void waitForChange(std::chrono::milliseconds limit);

    /// The server's time now in milliseconds; 0 if it cannot be had.
    std::uint32_t serverTime();

private:
    enum Atom {
        clientList,
        clientListStacking,
        active,
        currentDesktop,
        windowDesktop,
        windowPid,
        startupId,
        userTime,
        userTimeWindow,
        windowType,
        typeDesktop,
        typeDock,
        typeSplash,
        typeNotification,
        atomCount
    };

    void internAtoms();
    std::vector<xcb_window_t> clientsFromTop();
    xcb_get_property_cookie_t request(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);
    QByteArray collect(xcb_get_property_cookie_t cookie);
    std::optional<std::uint32_t> number(
        xcb_window_t window, Atom property, xcb_atom_t type = XCB_ATOM_CARDINAL);
    void send(xcb_window_t window, Atom message, std::uint32_t first, std::uint32_t second);
    void switchToDesktopOf(xcb_window_t window, std::uint32_t serverTime);
    bool isHelper(const QByteArray& types) const;

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    bool m_watchesWindows = false;
    std::array<xcb_atom_t, atomCount> m_atoms{};
};

} // namespace Tavrin
