#include "Platform/Linux/X11/DisplayPower.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <xcb/dpms.h>
#include <xcb/xinput.h>

namespace Tavrin {
namespace {

/// Nobody who wants the displays off holds the keys longer.
constexpr auto keysLimit = std::chrono::seconds(2);

bool succeeds(xcb_connection_t* connection, xcb_void_cookie_t cookie)
{
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
    return !error;
}

} // namespace

DisplayPower::DisplayPower(X11Connection& connection)
    : m_connection(connection)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(keysLimit);
    m_limit.callOnTimeout([this] { endWaiting(); });
}

DisplayPower::~DisplayPower()
{
    if (!m_waiting.empty())
        selectRawReleases(false);
}

bool DisplayPower::isAvailable() const
{
    xcb_connection_t* xcb = m_connection.xcb();
    const auto* extension = xcb_get_extension_data(xcb, &xcb_dpms_id);
    if (!extension || !extension->present)
        return false;
    const XcbReply<xcb_dpms_capable_reply_t> reply(
        xcb_dpms_capable_reply(xcb, xcb_dpms_capable(xcb), nullptr));
    m_connection.deliverQueuedEventsSoon();
    return reply && reply->capable;
}

bool DisplayPower::turnOff()
{
    if (!isAvailable())
        return false;
    xcb_connection_t* xcb = m_connection.xcb();
    const XcbReply<xcb_dpms_info_reply_t> info(xcb_dpms_info_reply(xcb, xcb_dpms_info(xcb), nullptr));
    bool isOff = info != nullptr;
    if (isOff && !info->state) {
        // No level can be forced while the extension is off. Who has switched it off does not want the
        // displays to sleep by themselves, and with no times they will not.
        isOff = succeeds(xcb, xcb_dpms_set_timeouts_checked(xcb, 0, 0, 0))
            && succeeds(xcb, xcb_dpms_enable_checked(xcb));
    }
    isOff = isOff && succeeds(xcb, xcb_dpms_force_level_checked(xcb, XCB_DPMS_DPMS_MODE_OFF));
    m_connection.deliverQueuedEventsSoon();
    return isOff;
}

void DisplayPower::turnOffWhenKeysAreUp(std::function<void(bool isOff)> done)
{
    m_waiting.push_back(std::move(done));
    if (m_waiting.size() > 1)
        return;
    // Events first: a release between the query and the selection would never be noticed.
    selectRawReleases(true);
    m_limit.start();
    QMetaObject::invokeMethod(
        &m_limit, [this] { turnOffIfKeysAreUp(); }, Qt::QueuedConnection);
}

void DisplayPower::handleEvent(const xcb_generic_event_t& event)
{
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if ((event.response_type & 0x7F) == XCB_GE_GENERIC && generic.extension == m_connection.xInputOpcode()
        && generic.event_type == XCB_INPUT_RAW_KEY_RELEASE)
        turnOffIfKeysAreUp();
}

bool DisplayPower::areKeysUp() const
{
    xcb_connection_t* xcb = m_connection.xcb();
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    m_connection.deliverQueuedEventsSoon();
    return reply && std::ranges::all_of(reply->keys, [](std::uint8_t keys) { return keys == 0; });
}

void DisplayPower::selectRawReleases(bool select)
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

void DisplayPower::turnOffIfKeysAreUp()
{
    if (!m_waiting.empty() && areKeysUp())
        endWaiting();
}

void DisplayPower::endWaiting()
{
    const auto waiting = std::exchange(m_waiting, {});
    m_limit.stop();
    selectRawReleases(false);
    const bool isOff = turnOff();
    for (const auto& done : waiting)
        done(isOff);
}

} // namespace Tavrin
