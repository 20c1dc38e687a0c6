// can_grab KEYCODE MODIFIERS: exits 0 if another program may take the combination on the X server now.
// MODIFIERS are any of shift, ctrl, alt and mod4, in one word.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <xcb/xcb.h>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection))
        return 2;
    std::uint16_t modifiers = 0;
    for (const auto& [name, mask] : {std::pair{"shift", XCB_MOD_MASK_SHIFT}, {"ctrl", XCB_MOD_MASK_CONTROL},
             {"alt", XCB_MOD_MASK_1}, {"mod4", XCB_MOD_MASK_4}})
        modifiers |= std::strstr(argv[2], name) ? mask : 0;
    const auto cookie = xcb_grab_key_checked(connection, 0,
        xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root, modifiers,
        static_cast<xcb_keycode_t>(std::atoi(argv[1])), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_generic_error_t* error = xcb_request_check(connection, cookie);
    const bool isFree = !error;
    std::free(error);
    xcb_disconnect(connection);
    return isFree ? 0 : 1;
}
