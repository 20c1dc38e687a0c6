#include "support/PasteFixture.h"
#include "support/Program.h"

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

namespace Tavrin {
namespace {

using namespace Testing;
using namespace std::chrono_literals;

/// Nothing may stay down, whatever happens in the middle of a paste.
class InterruptedPaste : public PasteTest {
protected:
    std::chrono::microseconds randomMoment(std::chrono::microseconds latest)
    {
        return std::chrono::microseconds(
            std::uniform_int_distribution<std::int64_t>(0, latest.count())(m_random));
    }

private:
    std::mt19937 m_random{20};
};

TEST_F(InterruptedPaste, LeavesNothingDownWhenTheUserLetsGoMeanwhile)
{
    // A window that takes the keys and does nothing with them.
    const xcb_window_t window = driver.focusedWindow();
    const std::vector<xcb_keycode_t> modifiers{Key::superLeft, Key::altLeft, Key::shiftLeft};
    XDriver user;
    for (int round = 0; round < 300 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        for (const xcb_keycode_t modifier : modifiers)
            driver.press(modifier, keyboard);
        std::thread hand([&, moment = randomMoment(1500us)] {
            std::this_thread::sleep_for(moment);
            for (const xcb_keycode_t modifier : modifiers)
                user.release(modifier, keyboard);
        });
        EXPECT_TRUE(command->post());
        hand.join();
        drainEvents();
        expectNothingHeld();
    }
    xcb_destroy_window(driver.xcb(), window);
}

TEST_F(InterruptedPaste, LeavesNothingDownWhenTheProgramIsKilled)
{
    const xcb_window_t window = driver.focusedWindow();
    const std::vector<xcb_keycode_t> modifiers{Key::superLeft, Key::altLeft, Key::shiftLeft, Key::k};
    for (int round = 0; round < 100 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        for (const xcb_keycode_t modifier : modifiers)
            driver.press(modifier, keyboard);
        const auto before = driver.takeEvents().size();
        Program child(QCoreApplication::applicationDirPath() + u"/paste_forever", {});
        std::size_t strokes = 0;
        // The window manager may still be looking for a new focus after an earlier test's window.
        EXPECT_TRUE(waitFor([&] {
            driver.focus(window);
            return (strokes += driver.takeEvents().size()) > before;
        }));
        std::this_thread::sleep_for(randomMoment(3000us));
        kill(child.pid(), SIGKILL);
        EXPECT_TRUE(waitFor([&] { return child.hasEnded(); }));
        for (const xcb_keycode_t modifier : modifiers)
            driver.release(modifier, keyboard);
        // Its last requests may still be on their way.
        EXPECT_TRUE(waitFor([&] { return KeyboardWatch().held().keys.empty(); }, 2000));
    }
    xcb_destroy_window(driver.xcb(), window);
}

} // namespace
} // namespace Tavrin
