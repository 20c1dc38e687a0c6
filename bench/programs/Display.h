#pragma once

#include "Platform/Linux/X11/XcbReply.h"

#include <cstdio>
#include <cstdlib>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace Tavrin::Bench {

/// The X server's key codes of the keys that the measurements press.
inline constexpr xcb_keycode_t superLeft = 133;

/// A connection to $DISPLAY that presses keys and asks about windows.
class Display {
public:
    /// Ends the program if there is no server.
    Display()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection)) {
            std::fputs("no X server\n", stderr);
            std::exit(EXIT_FAILURE);
        }
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    }
    ~Display() { xcb_disconnect(m_connection); }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    xcb_connection_t* xcb() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    /// Sent at once; nothing waits for the server.
    void press(xcb_keycode_t keycode) { send(XCB_KEY_PRESS, keycode); }
    void release(xcb_keycode_t keycode) { send(XCB_KEY_RELEASE, keycode); }

    /// Waits until the server has handled everything that was sent.
    void sync()
    {
        const XcbReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_atom_t atom(const char* name, std::uint16_t length)
    {
        const XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, length, name), nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

private:
    void send(std::uint8_t type, xcb_keycode_t keycode)
    {
        xcb_test_fake_input(m_connection, type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(m_connection);
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace Tavrin::Bench
