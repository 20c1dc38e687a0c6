#include "support/PasteFixture.h"

#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <thread>

namespace Tavrin {
namespace {

using namespace Testing;
using namespace std::chrono_literals;

constexpr std::uint32_t f5Key = 96;

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
        const pid_t child = fork();
        if (child == 0) {
            // A program of its own that pastes and pastes until it is killed.
            const auto own = X11Connection::open();
            X11KeyInjector ownInjector(*own);
            X11HotKeyBackend ownBackend(*own, ownInjector);
            // With a hotkey the server reports keys to it: the paste must not be cut off by that.
            const HotKeyCombination combination{f5Key, cmdKey};
            ownBackend.registerHotKeys({&combination, 1});
            X11PasteCommand ownCommand({*own, ownInjector, ownBackend, pasteboard, primary});
            while (true)
                ownCommand.post();
        }
        ASSERT_GT(child, 0);
        std::size_t strokes = 0;
        EXPECT_TRUE(waitFor([&] { return (strokes += driver.takeEvents().size()) > before; }));
        std::this_thread::sleep_for(randomMoment(3000us));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        for (const xcb_keycode_t modifier : modifiers)
            driver.release(modifier, keyboard);
        // Its last requests may still be on their way.
        EXPECT_TRUE(waitFor([&] { return KeyboardWatch().held().keys.empty(); }, 2000));
    }
    xcb_destroy_window(driver.xcb(), window);
}

} // namespace
} // namespace Tavrin
