#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <xcb/xcb.h>

namespace Tavrin {

/// Who holds a manager selection of a screen: the tray, the desktop's settings (ICCCM 2.8). Knows no event
/// loop: whoever reads the connection's events shows them to it. Selects structure events on the root window,
/// for which one client has one mask only. Main thread.
class ManagerSelection {
public:
    /// `selection` is the atom's name without the screen's number at its end, `ownerEvents` what is wanted of
    /// the owner's window besides its end. `changed` is called whenever the owner is another one, and with
    /// none in between where a new owner has got the window id of the one before.
    ManagerSelection(xcb_connection_t* connection, int screen, const QByteArray& selection,
        std::uint32_t ownerEvents, std::function<void()> changed);

    /// True if there may be a new owner: look() then, once no event is left to read.
    bool concerns(const xcb_generic_event_t& event);
    /// Asks for the owner. The replies may leave events in the queue that wake nobody.
    void look();
    /// The server is gone, and the owner with it.
    void forget();

    /// Window of the owner, 0 for none.
    xcb_window_t owner() const { return m_owner; }

private:
    xcb_window_t askOwner() const;
    void setOwner(xcb_window_t owner);

    xcb_connection_t* m_connection;
    std::uint32_t m_ownerEvents;
    std::function<void()> m_changed;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
};

} // namespace Tavrin
