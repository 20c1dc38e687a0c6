#include "Platform/Linux/Appearance/XSettings.h"

#include "Platform/Linux/Appearance/XSettingsValues.h"
#include "Platform/Linux/X11/XcbReply.h"

namespace Tavrin {
namespace {

/// In units of four bytes. Desktops have some two thousand bytes of settings.
constexpr std::uint32_t longestProperty = 64 * 1024 / 4;

xcb_atom_t settingsProperty(xcb_connection_t* connection)
{
    constexpr std::string_view name = "_XSETTINGS_SETTINGS";
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, name.size(), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

} // namespace

XSettings::XSettings(X11Connection& connection, std::function<void()> changed)
    : m_connection(connection)
    , m_changed(std::move(changed))
    , m_property(settingsProperty(connection.xcb()))
    , m_manager(connection.xcb(), connection.screenNumber(), "_XSETTINGS_S", XCB_EVENT_MASK_PROPERTY_CHANGE,
          [this] { read(); })
{
    m_connection.addListener(this);
    look();
}

XSettings::~XSettings()
{
    m_connection.removeListener(this);
}

void XSettings::handleEvent(const xcb_generic_event_t& event)
{
    if (m_manager.concerns(event))
        return look();
    if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == m_manager.owner() && change.atom == m_property)
        read();
}

void XSettings::look()
{
    m_manager.look();
    m_connection.deliverQueuedEventsSoon();
}

void XSettings::read()
{
    std::optional<bool> value;
    if (m_manager.owner() != XCB_WINDOW_NONE) {
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.xcb(),
            xcb_get_property(m_connection.xcb(), 0, m_manager.owner(), m_property, XCB_GET_PROPERTY_TYPE_ANY,
                0, longestProperty),
            nullptr));
        if (reply)
            value = Tavrin::prefersDark(
                QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                    xcb_get_property_value_length(reply.get())));
        m_connection.deliverQueuedEventsSoon();
    }
    if (std::exchange(m_prefersDark, value) != value)
        m_changed();
}

} // namespace Tavrin
