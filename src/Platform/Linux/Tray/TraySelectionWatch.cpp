#include "Platform/Linux/Tray/TraySelectionWatch.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <cstdlib>

namespace Tavrin {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Type>
using Owned = std::unique_ptr<Type, Free>;

xcb_screen_t* screenNumber(xcb_connection_t* connection, int number)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0 && screens.rem > 1)
        xcb_screen_next(&screens);
    return screens.data;
}

xcb_atom_t atom(xcb_connection_t* connection, xcb_intern_atom_cookie_t cookie)
{
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void selectStructureEvents(xcb_connection_t* connection, xcb_window_t window)
{
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace

void TraySelectionWatch::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

TraySelectionWatch::TraySelectionWatch() = default;
TraySelectionWatch::~TraySelectionWatch() = default;

void TraySelectionWatch::start()
{
    int screen = 0;
    m_connection.reset(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    listen(screen);
    look();
    drain();
}

void TraySelectionWatch::listen(int screen)
{
    xcb_connection_t* const connection = m_connection.get();
    const QByteArray selection = "_NET_SYSTEM_TRAY_S" + QByteArray::number(screen);
    const QByteArray manager = "MANAGER";
    const auto selectionCookie
        = xcb_intern_atom(connection, 0, std::uint16_t(selection.size()), selection.constData());
    const auto managerCookie
        = xcb_intern_atom(connection, 0, std::uint16_t(manager.size()), manager.constData());
    // A new tray announces itself to those who listen for structure events on the root window (ICCCM 2.8).
    selectStructureEvents(connection, screenNumber(connection, screen)->root);
    m_selection = atom(connection, selectionCookie);
    m_manager = atom(connection, managerCookie);
    m_notifier
        = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &TraySelectionWatch::drain);
}

void TraySelectionWatch::drain()
{
    // Looking reads from the socket and may queue events that the notifier never tells of.
    bool isStale = true;
    while (isStale) {
        isStale = false;
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())})
            isStale = concernsTray(*event) || isStale;
        if (isStale)
            look();
    }
    if (xcb_connection_has_error(m_connection.get())) {
        m_notifier->setEnabled(false);
        setOwner(XCB_WINDOW_NONE);
    }
}

bool TraySelectionWatch::concernsTray(const xcb_generic_event_t& event)
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
        // The next tray often gets the same window id.
        setOwner(XCB_WINDOW_NONE);
        return true;
    }
    default:
        return false;
    }
}

void TraySelectionWatch::look()
{
    // A second answer that is the same proves that the window lived when we began to listen to it.
    xcb_window_t owner = askOwner();
    while (owner != XCB_WINDOW_NONE) {
        selectStructureEvents(m_connection.get(), owner);
        const xcb_window_t again = askOwner();
        if (again == owner)
            break;
        owner = again;
    }
    setOwner(owner);
}

std::uint32_t TraySelectionWatch::askOwner() const
{
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), m_selection), nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
}

void TraySelectionWatch::setOwner(std::uint32_t owner)
{
    if (m_owner == owner)
        return;
    m_owner = owner;
    Q_EMIT changed();
}

} // namespace Tavrin
