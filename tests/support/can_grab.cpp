// can_grab KEYCODE MODIFIER: exits 0 if another program may take the combination on the X server now.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection))
        return 2;
    const std::uint16_t modifiers = std::strcmp(argv[2], "mod4") == 0 ? XCB_MOD_MASK_4 : 0;
    const auto cookie = xcb_grab_key_checked(connection, 0,
        xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root, modifiers,
        static_cast<xcb_keycode_t>(std::atoi(argv[1])), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_generic_error_t* error = xcb_request_check(connection, cookie);
    const bool isFree = !error;
    std::free(error);
    xcb_disconnect(connection);
    return isFree ? 0 : 1;
}
