#include "Platform/Linux/X11/StartupSequence.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbReply.h"

#include <algorithm>
#include <string_view>

namespace Tavrin {
namespace {

xcb_intern_atom_cookie_t ask(xcb_connection_t* xcb, std::string_view name)
{
    return xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t answer(xcb_connection_t* xcb, xcb_intern_atom_cookie_t cookie)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The protocol's text, with the zero at its end.
QByteArray removal(QByteArray id)
{
    id.replace('\\', "\\\\").replace('"', "\\\"");
    return "remove: ID=\"" + id + '"' + '\0';
}

} // namespace

void endStartupSequence(X11Connection& connection, const QByteArray& id)
{
    if (id.isEmpty())
        return;
    xcb_connection_t* xcb = connection.xcb();
    const auto beginCookie = ask(xcb, "_NET_STARTUP_INFO_BEGIN");
    const auto restCookie = ask(xcb, "_NET_STARTUP_INFO");

    // Any window of ours tells this message from others that are sent at the same time.
    const xcb_window_t window = xcb_generate_id(xcb);
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);

    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = window;
    message.type = answer(xcb, beginCookie);
    const xcb_atom_t rest = answer(xcb, restCookie);
    const QByteArray text = removal(id);
    constexpr qsizetype pieceSize = sizeof message.data.data8;
    for (qsizetype sent = 0; sent < text.size(); sent += pieceSize) {
        const QByteArray piece = text.mid(sent, pieceSize);
        std::fill(std::begin(message.data.data8), std::end(message.data.data8), std::uint8_t{0});
        std::copy(piece.begin(), piece.end(), std::begin(message.data.data8));
        xcb_send_event(xcb, 0, connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
            reinterpret_cast<const char*>(&message));
        message.type = rest;
    }
    xcb_destroy_window(xcb, window);
    const XcbReply<xcb_get_input_focus_reply_t> roundTrip(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

} // namespace Tavrin
