#include "Platform/Linux/X11/FocusedWindow.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbReply.h"

#include <QByteArrayList>
#include <string_view>

namespace Tavrin {
namespace {

/// Programs put their focus into a window a few levels below the one that has the class.
constexpr int deepest = 16;
/// Of a property, in words of 32 bits.
constexpr std::uint32_t longestClass = 64;

/// _NET_ACTIVE_WINDOW of the root (Extended Window Manager Hints).
xcb_window_t activeWindow(X11Connection& connection)
{
    constexpr std::string_view name = "_NET_ACTIVE_WINDOW";
    xcb_connection_t* const xcb = connection.xcb();
    const XcbReply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(xcb, xcb_intern_atom(xcb, 1, name.size(), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return XCB_WINDOW_NONE;
    const auto cookie = xcb_get_property(xcb, 0, connection.root(), atom->atom, XCB_ATOM_WINDOW, 0, 1);
    const XcbReply<xcb_get_property_reply_t> property(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!property || xcb_get_property_value_length(property.get()) != sizeof(xcb_window_t))
        return XCB_WINDOW_NONE;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(property.get()));
}

xcb_window_t focusedWindow(X11Connection& connection)
{
    xcb_connection_t* const xcb = connection.xcb();
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    const bool isWindow = focus && focus->focus != XCB_WINDOW_NONE
        && focus->focus != XCB_INPUT_FOCUS_POINTER_ROOT && focus->focus != connection.root();
    return isWindow ? focus->focus : activeWindow(connection);
}

} // namespace

WindowClass focusedWindowClass(X11Connection& connection)
{
    xcb_connection_t* const xcb = connection.xcb();
    WindowClass result;
    xcb_window_t window = focusedWindow(connection);
    for (int depth = 0; depth < deepest && window != XCB_WINDOW_NONE && window != connection.root();
         ++depth) {
        const auto classCookie
            = xcb_get_property(xcb, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longestClass);
        const auto treeCookie = xcb_query_tree(xcb, window);
        const XcbReply<xcb_get_property_reply_t> names(xcb_get_property_reply(xcb, classCookie, nullptr));
        const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(xcb, treeCookie, nullptr));
        if (names && names->value_len > 0) {
            const QByteArrayList halves
                = QByteArray(static_cast<const char*>(xcb_get_property_value(names.get())),
                    xcb_get_property_value_length(names.get()))
                      .split('\0');
            result = {QString::fromLatin1(halves.value(0)), QString::fromLatin1(halves.value(1))};
            break;
        }
        window = tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
    }
    connection.deliverQueuedEventsSoon();
    return result;
}

} // namespace Tavrin
