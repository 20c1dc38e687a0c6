#include "Platform/Linux/X11/X11Connection.h"

#include "Platform/Linux/X11/XcbReply.h"
#include "Platform/Linux/X11/Xkb.h"

#include <algorithm>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace Tavrin {
namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int index = 0; index < number; ++index)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open()
{
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screenNumber));
}

X11Connection::X11Connection(xcb_connection_t* connection, int screenNumber)
    : m_connection(connection)
    , m_screenNumber(screenNumber)
    , m_screen(screenOf(connection, screenNumber))
{
    xcb_prefetch_extension_data(m_connection, &xcb_input_id);
    xcb_prefetch_extension_data(m_connection, &xcb_xkb_id);
    xcb_prefetch_extension_data(m_connection, &xcb_test_id);
    initializeExtensions();
}

X11Connection::~X11Connection()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

void X11Connection::initializeExtensions()
{
    const auto* input = xcb_get_extension_data(m_connection, &xcb_input_id);
    const auto* xkb = xcb_get_extension_data(m_connection, &xcb_xkb_id);
    const auto* test = xcb_get_extension_data(m_connection, &xcb_test_id);
    m_hasXTest = test && test->present;

    // Both requests are sent before the first reply is read: one round trip.
    xcb_input_xi_query_version_cookie_t inputCookie{};
    xcb_xkb_use_extension_cookie_t xkbCookie{};
    if (input && input->present)
        inputCookie = xcb_input_xi_query_version(m_connection, 2, 2);
    if (xkb && xkb->present)
        xkbCookie = xcb_xkb_use_extension(m_connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    if (input && input->present) {
        const XcbReply<xcb_input_xi_query_version_reply_t> reply(
            xcb_input_xi_query_version_reply(m_connection, inputCookie, nullptr));
        m_hasXInput2 = reply && reply->major_version >= 2;
        m_xInputOpcode = input->major_opcode;
        m_xInputFirstEvent = input->first_event;
    }
    if (xkb && xkb->present) {
        const XcbReply<xcb_xkb_use_extension_reply_t> reply(
            xcb_xkb_use_extension_reply(m_connection, xkbCookie, nullptr));
        m_hasXkb = reply && reply->supported;
        m_xkbFirstEvent = xkb->first_event;
    }
}

void X11Connection::watch()
{
    m_notifier
        = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Connection::readEvents);
    deliverQueuedEventsSoon();
}

void X11Connection::addListener(X11EventListener* listener)
{
    m_listeners.push_back(listener);
}

void X11Connection::removeListener(X11EventListener* listener)
{
    std::erase(m_listeners, listener);
}

void X11Connection::deliverQueuedEventsSoon()
{
    if (m_deliveryScheduled || !m_notifier)
        return;
    m_deliveryScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_deliveryScheduled = false;
            readEvents();
        },
        Qt::QueuedConnection);
}

void X11Connection::readEvents()
{
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        // A listener may remove itself or others, which are gone then.
        for (X11EventListener* listener : std::vector(m_listeners)) {
            if (std::ranges::find(m_listeners, listener) != m_listeners.end())
                listener->handleEvent(*event);
        }
    }
    if (m_notifier->isEnabled() && xcb_connection_has_error(m_connection)) {
        m_notifier->setEnabled(false);
        Q_EMIT lost();
    }
}

} // namespace Tavrin
