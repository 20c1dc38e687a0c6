#include "Platform/Linux/X11/KeyReleaseWait.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <xcb/xinput.h>

namespace Tavrin {
namespace {

/// Nobody who wants something to happen holds its keys longer.
constexpr auto keysLimit = std::chrono::seconds(2);

} // namespace

KeyReleaseWait::KeyReleaseWait(X11Connection& connection)
    : m_connection(connection)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(keysLimit);
    m_limit.callOnTimeout([this] { proceed(); });
}

KeyReleaseWait::~KeyReleaseWait()
{
    if (!m_waiting.empty())
        selectRawReleases(false);
}

void KeyReleaseWait::whenKeysAreUp(std::function<void()> block)
{
    m_waiting.push_back(std::move(block));
    if (m_waiting.size() > 1)
        return;
    // Events first: a release between the query and the selection would never be noticed.
    selectRawReleases(true);
    m_limit.start();
    QMetaObject::invokeMethod(
        &m_limit, [this] { proceedIfKeysAreUp(); }, Qt::QueuedConnection);
}

void KeyReleaseWait::handleEvent(const xcb_generic_event_t& event)
{
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if ((event.response_type & 0x7F) == XCB_GE_GENERIC && generic.extension == m_connection.xInputOpcode()
        && generic.event_type == XCB_INPUT_RAW_KEY_RELEASE)
        proceedIfKeysAreUp();
}

bool KeyReleaseWait::areKeysUp() const
{
    xcb_connection_t* xcb = m_connection.xcb();
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    m_connection.deliverQueuedEventsSoon();
    return reply && std::ranges::all_of(reply->keys, [](std::uint8_t keys) { return keys == 0; });
}

void KeyReleaseWait::selectRawReleases(bool select)
{
    if (select)
        m_connection.addListener(this);
    else
        m_connection.removeListener(this);
    if (!m_connection.hasXInput2())
        return;
    // Of all devices, not of all masters: a client has one selection for each, and that one is the hotkeys'.
    struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } events{{XCB_INPUT_DEVICE_ALL, 1}, select ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE} : 0U};
    xcb_input_xi_select_events(m_connection.xcb(), m_connection.root(), 1, &events.header);
    m_connection.flush();
}

void KeyReleaseWait::proceedIfKeysAreUp()
{
    if (!m_waiting.empty() && areKeysUp())
        proceed();
}

void KeyReleaseWait::proceed()
{
    const auto waiting = std::exchange(m_waiting, {});
    m_limit.stop();
    selectRawReleases(false);
    for (const auto& block : waiting)
        block();
}

} // namespace Tavrin
