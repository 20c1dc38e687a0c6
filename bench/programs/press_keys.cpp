// Presses Super and a key, and reads what the started stamp programs say.
//   press_keys latency KEYCODE COUNT   one line a press: nanoseconds from the press to the stamp, or "lost"
//   press_keys hold KEYCODE MILLISECONDS   how many stamps one held key with auto-repeat causes
//   press_keys flood KEYCODE COUNT   presses as fast as they are answered: how many were answered
//   press_keys taps KEYCODE COUNT   presses as fast as the server takes them: when the first was, in
//   nanoseconds
#include "Clock.h"
#include "Display.h"
#include "StampFifo.h"

#include <cstring>

using namespace Tavrin::Bench;

namespace {

/// Long enough for any answer that will still come.
constexpr Nanoseconds patience = 1000 * millisecond;
constexpr Nanoseconds quietTime = 300 * millisecond;

struct Driver {
    Display display;
    StampFifo stamps;
};

/// Varied, so that the presses do not fall into step with anyone's timer; the same in every run.
Nanoseconds pause(int turn)
{
    constexpr Nanoseconds shortest = 20 * millisecond;
    constexpr Nanoseconds spread = 13 * millisecond;
    constexpr Nanoseconds step = 7919 * 1000; // a prime, so that all of the spread is visited
    return shortest + turn * step % spread;
}

void measureLatency(Driver& driver, xcb_keycode_t key, int count)
{
    for (int turn = 0; turn < count; ++turn) {
        driver.display.press(superLeft);
        driver.display.sync();
        sleepFor(pause(turn));
        const Nanoseconds pressed = now();
        driver.display.press(key);
        const auto stamp = driver.stamps.wait(patience);
        driver.display.release(key);
        driver.display.release(superLeft);
        driver.display.sync();
        if (stamp)
            std::printf("%lld\n", *stamp - pressed);
        else
            std::puts("lost");
        sleepFor(pause(turn + count) / 2);
    }
}

void measureHold(Driver& driver, xcb_keycode_t key, int milliseconds)
{
    const std::uint32_t on = XCB_AUTO_REPEAT_MODE_ON;
    xcb_change_keyboard_control(driver.display.xcb(), XCB_KB_AUTO_REPEAT_MODE, &on);
    driver.display.press(superLeft);
    driver.display.press(key);
    driver.display.sync();
    sleepFor(milliseconds * millisecond);
    driver.display.release(key);
    driver.display.release(superLeft);
    driver.display.sync();
    std::printf("%d\n", driver.stamps.countUntilQuiet(quietTime));
}

void flood(Driver& driver, xcb_keycode_t key, int count)
{
    int answered = 0;
    driver.display.press(superLeft);
    for (int turn = 0; turn < count; ++turn) {
        driver.display.press(key);
        answered += driver.stamps.wait(patience).has_value();
        driver.display.release(key);
        driver.display.sync();
    }
    driver.display.release(superLeft);
    driver.display.sync();
    std::printf("%d\n", answered);
}

void tap(Driver& driver, xcb_keycode_t key, int count)
{
    driver.display.press(superLeft);
    driver.display.sync();
    std::printf("%lld\n", now());
    for (int turn = 0; turn < count; ++turn) {
        driver.display.press(key);
        driver.display.release(key);
        driver.display.sync();
    }
    driver.display.release(superLeft);
    driver.display.sync();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return EXIT_FAILURE;
    const auto key = static_cast<xcb_keycode_t>(std::atoi(argv[2]));
    const int number = std::atoi(argv[3]);
    Driver driver;
    if (std::strcmp(argv[1], "latency") == 0)
        measureLatency(driver, key, number);
    else if (std::strcmp(argv[1], "hold") == 0)
        measureHold(driver, key, number);
    else if (std::strcmp(argv[1], "flood") == 0)
        flood(driver, key, number);
    else if (std::strcmp(argv[1], "taps") == 0)
        tap(driver, key, number);
    else
        return EXIT_FAILURE;
    return EXIT_SUCCESS;
}
