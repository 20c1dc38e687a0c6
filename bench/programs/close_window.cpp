// close_window ID: asks a window to close, as the user's click on its button does.
#include "Display.h"

#include <cstring>

using namespace Tavrin::Bench;

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    Display display;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(std::strtoul(argv[1], nullptr, 0));
    message.type = display.atom("WM_PROTOCOLS", std::strlen("WM_PROTOCOLS"));
    message.data.data32[0] = display.atom("WM_DELETE_WINDOW", std::strlen("WM_DELETE_WINDOW"));
    xcb_send_event(display.xcb(), 0, message.window, 0, reinterpret_cast<const char*>(&message));
    display.sync();
    return EXIT_SUCCESS;
}
