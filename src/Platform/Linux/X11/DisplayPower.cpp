#include "Platform/Linux/X11/DisplayPower.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <xcb/dpms.h>

namespace Tavrin {
namespace {

bool succeeds(xcb_connection_t* connection, xcb_void_cookie_t cookie)
{
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
    return !error;
}

} // namespace

DisplayPower::DisplayPower(X11Connection& connection)
    : m_connection(connection)
{
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

} // namespace Tavrin
