#include "Platform/Linux/X11/X11KeyInjector.h"

#include "Platform/Linux/X11/X11Connection.h"

#include <algorithm>
#include <xcb/xtest.h>

namespace Tavrin {

X11KeyInjector::X11KeyInjector(X11Connection& connection)
    : m_connection(connection)
{
}

bool X11KeyInjector::isAvailable() const
{
    return m_connection.hasXTest();
}

void X11KeyInjector::send(const Stroke& stroke)
{
    const std::uint8_t type = stroke.direction == Direction::press ? XCB_KEY_PRESS : XCB_KEY_RELEASE;
    const auto cookie
        = xcb_test_fake_input(m_connection.xcb(), type, stroke.keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    m_sent.push_back({cookie.sequence, stroke.keycode});
}

void X11KeyInjector::finish()
{
    // Events carry the number of the last request that the server has seen from us. One more request
    // gives what other programs press from now on a number that no stroke has.
    xcb_no_operation(m_connection.xcb());
    m_connection.flush();
}

bool X11KeyInjector::isOwn(const xcb_key_press_event_t& event)
{
    // The server makes a stroke's events while it handles the request, so they carry its number.
    const auto sequence = reinterpret_cast<const xcb_generic_event_t&>(event).full_sequence;
    const auto isOlder
        = [sequence](const Sent& sent) { return static_cast<std::int32_t>(sent.sequence - sequence) < 0; };
    while (!m_sent.empty() && isOlder(m_sent.front()))
        m_sent.pop_front();
    return std::ranges::any_of(
        m_sent, [&](const Sent& sent) { return sent.sequence == sequence && sent.keycode == event.detail; });
}

} // namespace Tavrin
