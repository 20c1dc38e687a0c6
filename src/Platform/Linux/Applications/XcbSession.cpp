#include "Platform/Linux/Applications/XcbSession.h"

#include <QSysInfo>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <string_view>

namespace Tavrin {
namespace {

template <typename Type>
using Reply = std::unique_ptr<Type, decltype([](void* memory) { std::free(memory); })>;

/// The words of a property in 32-bit format.
std::vector<std::uint32_t> words(const QByteArray& bytes)
{
    std::vector<std::uint32_t> result(static_cast<std::size_t>(bytes.size()) / sizeof(std::uint32_t));
    if (!result.empty())
        std::memcpy(result.data(), bytes.constData(), result.size() * sizeof(std::uint32_t));
    return result;
}

/// Whether a window's WM_CLIENT_MACHINE is this machine. A number of a process on another means nothing
/// here.
bool isThisHost(const QByteArray& machine)
{
    const QByteArray own = QSysInfo::machineHostName().toLocal8Bit();
    return machine == "localhost" || (!machine.isEmpty() && machine == own);
}

xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    auto iterator = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (iterator.rem > 1 && number-- > 0)
        xcb_screen_next(&iterator);
    return iterator.data;
}

} // namespace

XcbSession::XcbSession()
{
    int screen = 0;
    m_connection.reset(xcb_connect(nullptr, &screen));
    if (!isConnected())
        return;
    m_root = screenOf(m_connection.get(), screen)->root;
    internAtoms();
}

bool XcbSession::isConnected() const
{
    return xcb_connection_has_error(m_connection.get()) == 0;
}

void XcbSession::internAtoms()
{
    static constexpr std::array<std::string_view, atomCount> names{"_NET_CLIENT_LIST",
        "_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW", "_NET_CURRENT_DESKTOP", "_NET_WM_DESKTOP",
        "_NET_WM_PID", "_NET_STARTUP_ID", "_NET_WM_USER_TIME", "_NET_WM_USER_TIME_WINDOW",
        "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_DOCK",
        "_NET_WM_WINDOW_TYPE_SPLASH", "_NET_WM_WINDOW_TYPE_NOTIFICATION"};
    std::array<xcb_intern_atom_cookie_t, atomCount> cookies{};
    for (std::size_t index = 0; index < names.size(); ++index)
        cookies[index] = xcb_intern_atom(
            m_connection.get(), 0, static_cast<std::uint16_t>(names[index].size()), names[index].data());
    for (std::size_t index = 0; index < names.size(); ++index) {
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection.get(), cookies[index], nullptr));
        if (reply)
            m_atoms[index] = reply->atom;
    }
}

xcb_get_property_cookie_t XcbSession::request(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    // In words of 32 bits: room for more windows than anybody opens.
    constexpr std::uint32_t lengthLimit = 65536;
    return xcb_get_property(m_connection.get(), 0, window, property, type, 0, lengthLimit);
}

QByteArray XcbSession::collect(xcb_get_property_cookie_t cookie)
{
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get())};
}

bool XcbSession::isHelper(const QByteArray& types) const
{
    const auto list = words(types);
    return std::any_of(list.begin(), list.end(), [this](xcb_atom_t type) {
        return type != XCB_ATOM_NONE
            && std::find(m_atoms.begin() + typeDesktop, m_atoms.end(), type) != m_atoms.end();
    });
}

std::vector<xcb_window_t> XcbSession::clientsFromTop()
{
    const auto listCookie = request(m_root, m_atoms[clientList], XCB_ATOM_WINDOW);
    const auto stackingCookie = request(m_root, m_atoms[clientListStacking], XCB_ATOM_WINDOW);
    const auto activeCookie = request(m_root, m_atoms[active], XCB_ATOM_WINDOW);
    auto clients = words(collect(stackingCookie));
    std::reverse(clients.begin(), clients.end());
    // Xfwm4 leaves the very first window out of the stacking list until there is a second one.
    for (const xcb_window_t window : words(collect(listCookie))) {
        if (std::find(clients.begin(), clients.end(), window) == clients.end())
            clients.insert(clients.begin(), window);
    }
    // Where the focus follows the mouse, the window in use may lie below others.
    const auto inUse = words(collect(activeCookie));
    if (const auto used = std::find_first_of(clients.begin(), clients.end(), inUse.begin(), inUse.end());
        used != clients.end())
        std::rotate(clients.begin(), used, used + 1);
    return clients;
}

QList<WindowDescription> XcbSession::windowsFromTop()
{
    if (!isConnected())
        return {};
    struct Cookies {
        xcb_window_t window;
        xcb_get_property_cookie_t windowClass, pid, machine, startupId, type;
    };
    std::vector<Cookies> asked;
    for (const xcb_window_t window : clientsFromTop())
        asked.push_back({window, request(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING),
            request(window, m_atoms[windowPid], XCB_ATOM_CARDINAL),
            request(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_GET_PROPERTY_TYPE_ANY),
            request(window, m_atoms[startupId], XCB_GET_PROPERTY_TYPE_ANY),
            request(window, m_atoms[windowType], XCB_ATOM_ATOM)});

    QList<WindowDescription> result;
    for (const Cookies& cookies : asked) {
        const QByteArrayList names = collect(cookies.windowClass).split('\0');
        const auto pids = words(collect(cookies.pid));
        const bool isLocal = isThisHost(collect(cookies.machine));
        const QByteArray id = collect(cookies.startupId);
        if (isHelper(collect(cookies.type)))
            continue;
        result.append(
            {cookies.window, QString::fromLatin1(names.value(0)), QString::fromLatin1(names.value(1)),
                isLocal && !pids.empty() ? static_cast<pid_t>(pids.front()) : 0, id});
    }
    return result;
}

std::optional<std::uint32_t> XcbSession::number(xcb_window_t window, Atom property, xcb_atom_t type)
{
    const auto values = words(collect(request(window, m_atoms[property], type)));
    return values.empty() ? std::nullopt : std::optional(values.front());
}

void XcbSession::send(xcb_window_t window, Atom message, std::uint32_t first, std::uint32_t second)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = m_atoms[message];
    event.data.data32[0] = first;
    event.data.data32[1] = second;
    xcb_send_event(m_connection.get(), 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&event));
}

void XcbSession::switchToDesktopOf(xcb_window_t window, std::uint32_t serverTime)
{
    constexpr std::uint32_t onAllDesktops = 0xFFFFFFFF;
    const auto desktop = number(window, windowDesktop);
    if (desktop && desktop != onAllDesktops && desktop != number(m_root, currentDesktop))
        send(m_root, currentDesktop, *desktop, serverTime);
}

void XcbSession::activate(std::uint32_t window)
{
    if (!isConnected())
        return;
    // The time of the press would be too old for some (the Metacity family) as soon as the user has
    // typed on in the window before.
    const std::uint32_t time = serverTime();
    // Openbox does not leave the desktop for the sake of a window; it only marks that as urgent.
    switchToDesktopOf(window, time);
    // Source 2 is a pager, one that acts for the user: window managers refuse the others an old time.
    constexpr std::uint32_t sourcePager = 2;
    send(window, active, sourcePager, time);
    // An answer to a later request says that the server has passed the messages on.
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
}

bool XcbSession::isClient(std::uint32_t window)
{
    if (!isConnected())
        return false;
    const auto clients = clientsFromTop();
    return std::find(clients.begin(), clients.end(), window) != clients.end();
}

std::uint32_t XcbSession::activeWindow()
{
    return isConnected() ? number(m_root, active, XCB_ATOM_WINDOW).value_or(0) : 0;
}

std::optional<std::uint32_t> XcbSession::lastUserTime(std::uint32_t window)
{
    if (!isConnected())
        return std::nullopt;
    return number(number(window, userTimeWindow, XCB_ATOM_WINDOW).value_or(window), userTime);
}

void XcbSession::waitForChange(std::chrono::milliseconds limit)
{
    if (!isConnected())
        return;
    if (!m_watchesWindows) {
        // The window manager keeps its lists in properties of the root window.
        m_watchesWindows = true;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection.get(), m_root, XCB_CW_EVENT_MASK, &events);
        xcb_flush(m_connection.get());
        return;
    }
    bool changed = false;
    const auto takeEvents = [&] {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())})
            changed = true;
    };
    takeEvents();
    pollfd poller{xcb_get_file_descriptor(m_connection.get()), POLLIN, 0};
    if (!changed && poll(&poller, 1, static_cast<int>(limit.count())) > 0)
        takeEvents();
}

std::uint32_t XcbSession::serverTime()
{
    if (!isConnected())
        return 0;
    xcb_connection_t* connection = m_connection.get();
    const xcb_window_t window = xcb_generate_id(connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, 0, window, m_root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(
        connection, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(connection);
    std::uint32_t time = 0;
    constexpr std::uint8_t typeMask = 0x7f;
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection)}) {
        if ((event->response_type & typeMask) == XCB_PROPERTY_NOTIFY) {
            time = reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
            break;
        }
    }
    xcb_destroy_window(connection, window);
    xcb_flush(connection);
    return time;
}

} // namespace Tavrin
