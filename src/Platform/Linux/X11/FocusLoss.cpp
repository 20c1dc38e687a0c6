#include "Platform/Linux/X11/FocusLoss.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <string_view>
#include <unistd.h>

namespace Tavrin {
namespace {

/// A focus that moves on while we begin to watch it is tried again so often.
constexpr int mostAttempts = 4;

xcb_window_t focusedWindow(xcb_connection_t* connection)
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace

FocusLoss::FocusLoss(X11Connection& connection, std::function<void()> lost)
    : m_connection(connection)
    , m_lost(std::move(lost))
{
    m_connection.addListener(this);
    follow();
    m_connection.deliverQueuedEventsSoon();
}

FocusLoss::~FocusLoss()
{
    m_connection.removeListener(this);
}

void FocusLoss::handleEvent(const xcb_generic_event_t& event)
{
    if ((event.response_type & 0x7F) != XCB_FOCUS_OUT)
        return;
    const auto mode = reinterpret_cast<const xcb_focus_out_event_t&>(event).mode;
    if (mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB)
        return;
    const bool isOurs = isOwnWindow(follow());
    m_connection.deliverQueuedEventsSoon();
    if (isOurs)
        return;
    // A copy: the callback may be the end of this object.
    const auto lost = m_lost;
    lost();
}

/// Asks for the focus events of the window that has the focus, and returns it.
xcb_window_t FocusLoss::follow()
{
    xcb_connection_t* const xcb = m_connection.xcb();
    xcb_window_t window = focusedWindow(xcb);
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::uint32_t events = XCB_EVENT_MASK_FOCUS_CHANGE;
        // Nobody's focus is no window; the error says so and changes nothing.
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(
            xcb, xcb_change_window_attributes_checked(xcb, window, XCB_CW_EVENT_MASK, &events)));
        const xcb_window_t now = focusedWindow(xcb);
        if (now == window)
            break;
        window = now;
    }
    return window;
}

/// By _NET_WM_PID (Extended Window Manager Hints), which the toolkit puts on every window of its own.
bool FocusLoss::isOwnWindow(xcb_window_t window)
{
    constexpr std::string_view name = "_NET_WM_PID";
    xcb_connection_t* const xcb = m_connection.xcb();
    const XcbReply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(xcb, xcb_intern_atom(xcb, 1, name.size(), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return false;
    const XcbReply<xcb_get_property_reply_t> property(xcb_get_property_reply(
        xcb, xcb_get_property(xcb, 0, window, atom->atom, XCB_ATOM_CARDINAL, 0, 1), nullptr));
    return property && xcb_get_property_value_length(property.get()) == sizeof(std::uint32_t)
        && *static_cast<const std::uint32_t*>(xcb_get_property_value(property.get()))
        == static_cast<std::uint32_t>(getpid());
}

} // namespace Tavrin
