#include "Platform/Linux/X11/X11KeyInjector.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbReply.h"

#include <algorithm>
#include <xcb/xinput.h>
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

void X11KeyInjector::inject(std::span<const Stroke> strokes)
{
    for (const Stroke& stroke : strokes)
        m_unconfirmed.emplace_back(send(stroke), stroke);
    // Events carry the number of the last request that the server has seen from us. One more request
    // gives what other programs press from now on a number that no stroke has.
    xcb_no_operation(m_connection.xcb());
}

std::vector<X11KeyInjector::Stroke> X11KeyInjector::refusedStrokes()
{
    m_connection.flush();
    // From the last to the first: that check is the one round trip, all others are answered by then.
    std::vector<Stroke> refused;
    for (; !m_unconfirmed.empty(); m_unconfirmed.pop_back()) {
        const auto& [cookie, stroke] = m_unconfirmed.back();
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_connection.xcb(), cookie));
        if (error)
            refused.push_back(stroke);
    }
    m_connection.deliverQueuedEventsSoon();
    return refused;
}

xcb_void_cookie_t X11KeyInjector::send(const Stroke& stroke)
{
    const bool isPress = stroke.direction == Direction::press;
    // XTEST takes the input extension's event codes for keys of a certain device.
    const int type = stroke.keyboard ? m_connection.xInputFirstEvent()
            + (isPress ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE)
                                     : (isPress ? XCB_KEY_PRESS : XCB_KEY_RELEASE);
    const auto cookie = xcb_test_fake_input_checked(m_connection.xcb(), static_cast<std::uint8_t>(type),
        stroke.keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, stroke.keyboard);
    m_sent.push_back({cookie.sequence, stroke.keycode});
    return cookie;
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
