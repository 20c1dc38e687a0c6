#include "Platform/Linux/Appearance/XSettings.h"

#include "Platform/Linux/Appearance/XSettingsValues.h"
#include "Platform/Linux/X11/XcbReply.h"

namespace Tavrin {
namespace {

/// The manager's selection, without the screen's number.
constexpr const char* selectionName = "_XSETTINGS_S";

/// In units of four bytes. Desktops have some two thousand bytes of settings.
constexpr std::uint32_t longestProperty = 64 * 1024 / 4;

xcb_atom_t atom(xcb_connection_t* connection, const QByteArray& name)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection,
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_atom_t settingsProperty(xcb_connection_t* connection)
{
    return atom(connection, "_XSETTINGS_SETTINGS");
}

/// Nothing if the window is gone.
std::optional<QByteArray> settingsOf(xcb_connection_t* connection, xcb_window_t owner, xcb_atom_t property)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, owner, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty),
        nullptr));
    if (!reply)
        return std::nullopt;
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get()));
}

} // namespace

XSettings::XSettings(X11Connection& connection, std::function<void()> changed)
    : m_connection(connection)
    , m_changed(std::move(changed))
    , m_property(settingsProperty(connection.xcb()))
    , m_manager(connection.xcb(), connection.screenNumber(), selectionName, XCB_EVENT_MASK_PROPERTY_CHANGE,
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
        if (const auto settings = settingsOf(m_connection.xcb(), m_manager.owner(), m_property))
            value = Tavrin::prefersDark(*settings);
        m_connection.deliverQueuedEventsSoon();
    }
    if (std::exchange(m_prefersDark, value) != value)
        m_changed();
}

QByteArray readXSettings()
{
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, &screen), xcb_disconnect);
    if (xcb_connection_has_error(connection.get()))
        return {};
    const xcb_atom_t selection = atom(connection.get(), selectionName + QByteArray::number(screen));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection.get(), xcb_get_selection_owner(connection.get(), selection), nullptr));
    if (!reply || reply->owner == XCB_WINDOW_NONE)
        return {};
    return settingsOf(connection.get(), reply->owner, settingsProperty(connection.get()))
        .value_or(QByteArray());
}

} // namespace Tavrin
