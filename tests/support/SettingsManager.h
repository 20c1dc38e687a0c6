#pragma once

#include <QByteArray>
#include <QStringBuilder>
#include <QtEndian>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace Tavrin::Testing {

/// The bytes of an XSETTINGS property, setting by setting.
class SettingsBytes {
public:
    explicit SettingsBytes(bool isBigEndian = false)
        : m_isBigEndian(isBigEndian)
    {
    }

    SettingsBytes& integer(const QByteArray& name, std::uint32_t value)
    {
        head(0, name);
        m_settings += number(value);
        return *this;
    }
    SettingsBytes& text(const QByteArray& name, const QByteArray& value)
    {
        head(1, name);
        m_settings += number(static_cast<std::uint32_t>(value.size())) + padded(value);
        return *this;
    }
    SettingsBytes& color(const QByteArray& name)
    {
        head(2, name);
        m_settings += QByteArray(8, '\x7f');
        return *this;
    }
    /// Of a kind that no version of the protocol has.
    SettingsBytes& unknown(const QByteArray& name)
    {
        head(9, name);
        return *this;
    }

    QByteArray bytes() const
    {
        return QByteArray(1, m_isBigEndian ? 1 : 0) + QByteArray(3, '\0') + number(std::uint32_t(7))
            + number(m_count) + m_settings;
    }

private:
    template <typename Number>
    QByteArray number(Number value) const
    {
        QByteArray result(sizeof value, '\0');
        if (m_isBigEndian)
            qToBigEndian(value, result.data());
        else
            qToLittleEndian(value, result.data());
        return result;
    }
    static QByteArray padded(const QByteArray& text)
    {
        return text + QByteArray((4 - text.size() % 4) % 4, '\0');
    }
    void head(char type, const QByteArray& name)
    {
        m_settings += QByteArray(1, type) + '\0' + number(static_cast<std::uint16_t>(name.size()))
            + padded(name) + number(std::uint32_t(3));
        ++m_count;
    }

    bool m_isBigEndian;
    QByteArray m_settings;
    std::uint32_t m_count = 0;
};

/// A desktop's manager of XSETTINGS on $DISPLAY, which ends with this object.
class SettingsManager {
public:
    explicit SettingsManager(const SettingsBytes& settings)
        : m_connection(xcb_connect(nullptr, nullptr), xcb_disconnect)
        , m_window(xcb_generate_id(m_connection.get()))
    {
        xcb_connection_t* const connection = m_connection.get();
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_create_window(connection, 0, m_window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
            XCB_COPY_FROM_PARENT, 0, nullptr);
        set(settings);
        xcb_set_selection_owner(connection, m_window, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = root;
        event.type = atom("MANAGER");
        event.data.data32[1] = atom("_XSETTINGS_S0");
        event.data.data32[2] = m_window;
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<char*>(&event));
        reachServer();
    }

    void set(const SettingsBytes& settings)
    {
        const QByteArray bytes = settings.bytes();
        const xcb_atom_t property = atom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, property, property, 8,
            static_cast<std::uint32_t>(bytes.size()), bytes.constData());
        reachServer();
    }

private:
    xcb_atom_t atom(std::string_view name)
    {
        auto* const reply = xcb_intern_atom_reply(m_connection.get(),
            xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        const xcb_atom_t result = reply->atom;
        std::free(reply);
        return result;
    }
    /// When it returns, the server has done all that it was asked for.
    void reachServer()
    {
        std::free(
            xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_connection;
    xcb_window_t m_window;
};

} // namespace Tavrin::Testing
