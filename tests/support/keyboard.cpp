// Presses keys on the server's own keyboard, as a hand does, for tests that are not written in C++.
//   keyboard press KEYCODE... release KEYCODE...    strokes in this order
//   keyboard held                                   prints the key codes that are down on any keyboard
#include "Platform/Linux/X11/HeldKeys.h"
#include "support/XDriver.h"

#include <cstdio>
#include <string_view>

int main(int argc, char** argv)
{
    Tavrin::Testing::XDriver driver;
    const std::uint8_t device = driver.realKeyboard();
    bool presses = true;
    for (int index = 1; index < argc; ++index) {
        const std::string_view word(argv[index]);
        if (word == "held") {
            const Tavrin::KeyboardWatch keyboards;
            for (const auto& key : keyboards.held().keys)
                std::printf("%d\n", int{key.keycode});
        } else if (word == "press" || word == "release") {
            presses = word == "press";
        } else {
            const auto keycode = static_cast<xcb_keycode_t>(std::atoi(argv[index]));
            presses ? driver.press(keycode, device) : driver.release(keycode, device);
        }
    }
}
