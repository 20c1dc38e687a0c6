#include "Platform/Linux/X11/ManagerSelection.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <QStringBuilder>

namespace Tavrin {
namespace {

xcb_window_t rootWindow(xcb_connection_t* connection, int screen)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (screen-- > 0 && screens.rem > 1)
        xcb_screen_next(&screens);
    return screens.data->root;
}

xcb_intern_atom_cookie_t askAtom(xcb_connection_t* connection, const QByteArray& name)
{
    return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
}

xcb_atom_t atom(xcb_connection_t* connection, xcb_intern_atom_cookie_t cookie)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void selectEvents(xcb_connection_t* connection, xcb_window_t window, std::uint32_t events)
{
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
}

} // namespace

ManagerSelection::ManagerSelection(xcb_connection_t* connection, int screen, const QByteArray& selection,
    std::uint32_t ownerEvents, std::function<void()> changed)
    : m_connection(connection)
    , m_ownerEvents(ownerEvents | XCB_EVENT_MASK_STRUCTURE_NOTIFY)
    , m_changed(std::move(changed))
{
    const auto selectionCookie = askAtom(connection, selection + QByteArray::number(screen));
    const auto managerCookie = askAtom(connection, "MANAGER");
    // A new manager announces itself to those who listen for structure events on the root window.
    selectEvents(connection, rootWindow(connection, screen), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    m_selection = atom(connection, selectionCookie);
    m_manager = atom(connection, managerCookie);
}

bool ManagerSelection::concerns(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        return message.type == m_manager && message.data.data32[1] == m_selection;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (destroyed.window != m_owner)
            return false;
        // The next owner often gets the same window id.
        setOwner(XCB_WINDOW_NONE);
        return true;
    }
    default:
        return false;
    }
}

void ManagerSelection::look()
{
    // A second answer that is the same proves that the window lived when we began to listen to it.
    xcb_window_t owner = askOwner();
    while (owner != XCB_WINDOW_NONE) {
        selectEvents(m_connection, owner, m_ownerEvents);
        const xcb_window_t again = askOwner();
        if (again == owner)
            break;
        owner = again;
    }
    setOwner(owner);
}

void ManagerSelection::forget()
{
    setOwner(XCB_WINDOW_NONE);
}

xcb_window_t ManagerSelection::askOwner() const
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, m_selection), nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
}

void ManagerSelection::setOwner(xcb_window_t owner)
{
    if (std::exchange(m_owner, owner) != owner)
        m_changed();
}

} // namespace Tavrin
