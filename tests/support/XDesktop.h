#pragma once

#include <QString>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin::Testing {

/// A second look at the private desktop's windows, from beside the program under test.
class XDesktop {
public:
    XDesktop()
        : m_connection(xcb_connect(nullptr, nullptr), xcb_disconnect)
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root)
    {
    }

    /// Windows of this class (the second half of WM_CLASS), the topmost first.
    std::vector<xcb_window_t> windows(const QString& className)
    {
        auto list = cardinals(m_root, "_NET_CLIENT_LIST_STACKING");
        // Xfwm4 leaves the very first window out of the stacking list until there is a second one.
        for (const xcb_window_t window : cardinals(m_root, "_NET_CLIENT_LIST")) {
            if (std::find(list.begin(), list.end(), window) == list.end())
                list.push_back(window);
        }
        std::reverse(list.begin(), list.end());
        std::erase_if(list, [&](xcb_window_t window) { return classOf(window) != className; });
        return list;
    }

    bool hasWindows() { return !cardinals(m_root, "_NET_CLIENT_LIST").empty(); }

    QString classOf(xcb_window_t window)
    {
        const QByteArray names = property(window, XCB_ATOM_WM_CLASS);
        return QString::fromLatin1(names.split('\0').value(1));
    }

    /// _NET_WM_NAME.
    QString titleOf(xcb_window_t window) { return QString::fromUtf8(property(window, atom("_NET_WM_NAME"))); }

    xcb_window_t activeWindow() { return first(m_root, "_NET_ACTIVE_WINDOW"); }
    std::uint32_t currentDesktop() { return first(m_root, "_NET_CURRENT_DESKTOP"); }
    std::uint32_t desktopOf(xcb_window_t window) { return first(window, "_NET_WM_DESKTOP"); }
    pid_t processOf(xcb_window_t window) { return static_cast<pid_t>(first(window, "_NET_WM_PID")); }

    bool isMinimised(xcb_window_t window)
    {
        const auto states = cardinals(window, "_NET_WM_STATE");
        return std::find(states.begin(), states.end(), atom("_NET_WM_STATE_HIDDEN")) != states.end();
    }

    void activate(xcb_window_t window) { ask(window, "_NET_ACTIVE_WINDOW", 2, 0); }
    void moveToDesktop(xcb_window_t window, std::uint32_t desktop)
    {
        ask(window, "_NET_WM_DESKTOP", desktop, 2);
    }
    void minimise(xcb_window_t window)
    {
        constexpr std::uint32_t iconicState = 3;
        ask(window, "WM_CHANGE_STATE", iconicState, 0);
    }
    /// As its program says that the user has pressed something in it.
    void setUserTime(xcb_window_t window, std::uint32_t time)
    {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_USER_TIME"),
            XCB_ATOM_CARDINAL, 32, 1, &time);
        xcb_flush(m_connection.get());
    }
    /// As its program says where it runs.
    void setMachine(xcb_window_t window, std::string_view name)
    {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLIENT_MACHINE,
            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(name.size()), name.data());
        xcb_flush(m_connection.get());
    }

private:
    template <typename Type>
    using Reply = std::unique_ptr<Type, decltype([](void* memory) { std::free(memory); })>;

    xcb_atom_t atom(std::string_view name)
    {
        const auto cookie
            = xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
        return reply->atom;
    }

    QByteArray property(xcb_window_t window, xcb_atom_t name)
    {
        const auto cookie
            = xcb_get_property(m_connection.get(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
        const Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(m_connection.get(), cookie, nullptr));
        if (!reply)
            return {};
        return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
    }

    std::vector<std::uint32_t> cardinals(xcb_window_t window, std::string_view name)
    {
        const QByteArray bytes = property(window, atom(name));
        std::vector<std::uint32_t> result(static_cast<std::size_t>(bytes.size()) / sizeof(std::uint32_t));
        std::copy_n(
            bytes.constData(), result.size() * sizeof(std::uint32_t), reinterpret_cast<char*>(result.data()));
        return result;
    }

    std::uint32_t first(xcb_window_t window, std::string_view name)
    {
        const auto values = cardinals(window, name);
        return values.empty() ? 0 : values.front();
    }

    void ask(xcb_window_t window, std::string_view message, std::uint32_t value, std::uint32_t second)
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom(message);
        event.data.data32[0] = value;
        event.data.data32[1] = second;
        xcb_send_event(m_connection.get(), 0, m_root,
            XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
            reinterpret_cast<const char*>(&event));
        xcb_flush(m_connection.get());
    }

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_connection;
    xcb_window_t m_root;
};

} // namespace Tavrin::Testing
