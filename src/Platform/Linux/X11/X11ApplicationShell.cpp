#include "Platform/Linux/X11/X11ApplicationShell.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <QApplication>
#include <QWindow>

#include <algorithm>
#include <cstring>
#include <vector>

namespace Tavrin {
namespace {

/// Actions of a _NET_WM_STATE message.
constexpr std::uint32_t removeState = 0;
constexpr std::uint32_t addState = 1;

/// Source indication: a pager or the like acting on the user's direct wish, which no window manager
/// mistakes for a program that pushes itself forward.
constexpr std::uint32_t sourceUser = 2;
constexpr std::uint32_t sourceApplication = 1;

} // namespace

bool X11ApplicationShell::connect()
{
    if (m_connection)
        return true;
    const auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return false;
    m_connection = x11->connection();
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;

    constexpr std::array<const char*, atomCount> names{
        "_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER", "_NET_ACTIVE_WINDOW"};
    std::array<xcb_intern_atom_cookie_t, atomCount> cookies{};
    for (std::size_t index = 0; index < names.size(); ++index)
        cookies[index] = xcb_intern_atom(
            m_connection, 0, static_cast<std::uint16_t>(std::strlen(names[index])), names[index]);
    for (std::size_t index = 0; index < names.size(); ++index) {
        const XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection, cookies[index], nullptr));
        m_atoms[index] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    return true;
}

void X11ApplicationShell::setActivationPolicy(ActivationPolicy policy)
{
    m_policy = policy;
    if (m_window == XCB_NONE || !connect())
        return;
    const std::uint32_t action = policy == ActivationPolicy::accessory ? addState : removeState;
    sendToRoot(m_window, m_atoms[netWmState],
        {action, m_atoms[skipTaskbar], m_atoms[skipPager], sourceApplication, 0});
}

bool X11ApplicationShell::isActive() const
{
    return QGuiApplication::focusWindow() != nullptr;
}

void X11ApplicationShell::hide()
{
    // Our main window answers a request to close by hiding itself, and keeps its place.
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow* window : windows) {
        if (window->isVisible())
            window->close();
    }
}

void X11ApplicationShell::beep()
{
    // The server's bell: desktops listen for it and play the sound of the user's theme.
    QApplication::beep();
}

void X11ApplicationShell::windowWillShow(std::uintptr_t windowId)
{
    m_window = static_cast<xcb_window_t>(windowId);
    if (!connect())
        return;
    // Before mapping the property is ours to write, and the window manager has forgotten what it held
    // before; the toolkit adds to what it finds.
    std::vector<xcb_atom_t> states;
    if (m_policy == ActivationPolicy::accessory)
        states = {m_atoms[skipTaskbar], m_atoms[skipPager]};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, m_atoms[netWmState], XCB_ATOM_ATOM, 32,
        static_cast<std::uint32_t>(states.size()), states.data());
}

void X11ApplicationShell::activateWindow(std::uintptr_t windowId, const ActivationContext& context)
{
    if (!connect())
        return;
    sendToRoot(static_cast<xcb_window_t>(windowId), m_atoms[netActiveWindow],
        {sourceUser, context.serverTime, 0, 0, 0});
}

void X11ApplicationShell::sendToRoot(
    xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(m_connection, 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}

} // namespace Tavrin
