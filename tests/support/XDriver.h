#pragma once

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbReply.h"

#include <QElapsedTimer>
#include <QThread>
#include <cstring>
#include <functional>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace Tavrin::Testing {

/// X key codes of some positions (evdev code + 8).
namespace Key {
inline constexpr xcb_keycode_t controlLeft = 37, shiftLeft = 50, altLeft = 64, superLeft = 133, capsLock = 66,
                               numLock = 77, scrollLock = 78, k = 45, m = 58, v = 55, f5 = 71, a = 38, q = 24,
                               insert = 118, space = 65;
}

/// A second program on the X server: presses keys as a user does, and looks at what is there.
class XDriver {
public:
    XDriver()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const auto* input = xcb_get_extension_data(m_connection, &xcb_input_id);
        m_inputFirstEvent = input->first_event;
    }
    ~XDriver() { xcb_disconnect(m_connection); }
    XDriver(const XDriver&) = delete;
    XDriver& operator=(const XDriver&) = delete;

    xcb_connection_t* xcb() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    /// `device` is a keyboard's id; 0 is XTEST's own keyboard.
    void press(xcb_keycode_t keycode, std::uint8_t device = 0)
    {
        const int type = device ? m_inputFirstEvent + XCB_INPUT_DEVICE_KEY_PRESS : XCB_KEY_PRESS;
        fake(static_cast<std::uint8_t>(type), keycode, device);
    }
    void release(xcb_keycode_t keycode, std::uint8_t device = 0)
    {
        const int type = device ? m_inputFirstEvent + XCB_INPUT_DEVICE_KEY_RELEASE : XCB_KEY_RELEASE;
        fake(static_cast<std::uint8_t>(type), keycode, device);
    }

    /// Presses and releases `keycode` while `modifiers` are held.
    void tap(const std::vector<xcb_keycode_t>& modifiers, xcb_keycode_t keycode)
    {
        for (const auto modifier : modifiers)
            press(modifier);
        press(keycode);
        release(keycode);
        for (auto modifier = modifiers.rbegin(); modifier != modifiers.rend(); ++modifier)
            release(*modifier);
    }

    /// The same on the keyboard device that is not XTEST's own: what a real keyboard looks like.
    void tapOnKeyboard(
        std::uint8_t device, const std::vector<xcb_keycode_t>& modifiers, xcb_keycode_t keycode)
    {
        for (const auto modifier : modifiers)
            press(modifier, device);
        press(keycode, device);
        release(keycode, device);
        for (const auto modifier : modifiers)
            release(modifier, device);
    }

    /// Id of the slave keyboard that is not XTEST's; 0 if there is none.
    std::uint8_t realKeyboard() const
    {
        const XcbReply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
            m_connection, xcb_input_xi_query_device(m_connection, XCB_INPUT_DEVICE_ALL), nullptr));
        for (auto info = xcb_input_xi_query_device_infos_iterator(reply.get()); info.rem;
             xcb_input_xi_device_info_next(&info)) {
            const std::string name(xcb_input_xi_device_info_name(info.data), info.data->name_len);
            if (info.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD
                && name.find("XTEST") == std::string::npos)
                return static_cast<std::uint8_t>(info.data->deviceid);
        }
        return 0;
    }

    /// Waits until the server has handled everything that was sent.
    void sync()
    {
        const XcbReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    /// Grabs a combination as another hotkey program would; true if it was free.
    bool grab(std::uint16_t modifiers, xcb_keycode_t keycode)
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_connection,
            xcb_grab_key_checked(
                m_connection, 0, m_root, modifiers, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        return !error;
    }
    void ungrab(std::uint16_t modifiers, xcb_keycode_t keycode)
    {
        xcb_ungrab_key(m_connection, keycode, m_root, modifiers);
        sync();
    }

    /// A mapped window that has the focus and collects its key and focus events.
    xcb_window_t focusedWindow()
    {
        const xcb_window_t window = xcb_generate_id(m_connection);
        const std::uint32_t values[] = {1, // override-redirect: no window manager moves the focus
            XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE
                | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 10, 10, 200, 100, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
            values);
        xcb_map_window(m_connection, window);
        sync();
        focus(window);
        takeEvents();
        return window;
    }

    void focus(xcb_window_t window)
    {
        xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        sync();
    }

    /// All events that have arrived, after a round trip.
    std::vector<XcbReply<xcb_generic_event_t>> takeEvents()
    {
        sync();
        std::vector<XcbReply<xcb_generic_event_t>> events;
        while (auto* event = xcb_poll_for_event(m_connection))
            events.emplace_back(event);
        return events;
    }

private:
    void fake(std::uint8_t type, xcb_keycode_t keycode, std::uint8_t device)
    {
        xcb_test_fake_input(m_connection, type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, device);
        sync();
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    std::uint8_t m_inputFirstEvent = 0;
};

} // namespace Tavrin::Testing
