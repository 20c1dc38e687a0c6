#include "Platform/Linux/X11/X11KeyCapture.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "support/Wait.h"
#include "support/XDriver.h"

#include <gmock/gmock.h>
#include <string_view>
#include <unistd.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;
using Testing::XDriver;
namespace Key = Testing::Key;
using Combination = std::pair<std::uint32_t, std::uint32_t>;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kKey = 40, aKey = 0;
constexpr xcb_keycode_t keyEscape = 9, keyMuhenkan = 102, keyReturn = 36, markerKey = 191; // F13

class Capture : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(std::system("setxkbmap -layout us -option ''"), 0); }

    void start()
    {
        capture.start(
            {[this](std::uint32_t key, std::uint32_t modifiers) { captured.emplace_back(key, modifiers); },
                [this] { ++ends; }});
    }

    /// Everything that was pressed has been seen: a marker's press comes last.
    std::vector<Combination> seen()
    {
        driver.tap({}, markerKey);
        EXPECT_TRUE(waitFor([&] { return !captured.empty() && captured.back() == marker; }));
        captured.pop_back();
        return std::exchange(captured, {});
    }

    XDriver driver;
    X11KeyCapture capture;
    std::vector<Combination> captured;
    int ends = 0;
    /// F13: virtual key 105.
    const Combination marker{105, 0};
};

TEST_F(Capture, SeesKeysByPositionWithWhatIsHeld)
{
    start();
    driver.tap({Key::superLeft, Key::shiftLeft}, Key::k);
    driver.tap({}, Key::a);
    driver.tap({Key::controlLeft, Key::altLeft}, Key::m);
    driver.tap({}, keyEscape);
    EXPECT_THAT(seen(),
        ElementsAre(Combination{kKey, cmdKey | shiftKey}, Combination{aKey, 0},
            Combination{46, controlKey | optionKey}, Combination{53, 0}));
    ASSERT_EQ(std::system("setxkbmap -layout fr"), 0);
    driver.tap({Key::superLeft}, Key::q);
    EXPECT_THAT(seen(), ElementsAre(Combination{12, cmdKey}));
}

TEST_F(Capture, MayBeEndedByAKey)
{
    XDriver other;
    other.focusedWindow();
    for (int round = 0; round < 3; ++round) {
        capture.start({[this](std::uint32_t key, std::uint32_t modifiers) {
                           captured.emplace_back(key, modifiers);
                           capture.stop();
                       },
            [this] { ++ends; }});
        driver.tap({Key::superLeft}, Key::k);
        EXPECT_TRUE(waitFor([&] { return captured.size() == 1; }));
        captured.clear();
        other.takeEvents();
        driver.tap({}, Key::m);
        EXPECT_FALSE(other.takeEvents().empty());
    }
    EXPECT_EQ(ends, 0);
}

TEST_F(Capture, LeavesLocksOut)
{
    start();
    for (const auto lock : {Key::capsLock, Key::numLock}) {
        driver.tap({}, lock);
        driver.tap({Key::superLeft}, Key::k);
        driver.tap({}, lock);
    }
    EXPECT_THAT(seen(), ElementsAre(Combination{kKey, cmdKey}, Combination{kKey, cmdKey}));
}

TEST_F(Capture, TakesNoModifierAloneForAKey)
{
    start();
    for (const auto modifier : {Key::superLeft, Key::shiftLeft, Key::altLeft, Key::controlLeft, Key::capsLock,
             Key::numLock, Key::capsLock, Key::numLock})
        driver.tap({}, modifier);
    EXPECT_THAT(seen(), IsEmpty());
}

TEST_F(Capture, NumbersAKeyWithoutAPositionByItsEvdevCode)
{
    start();
    driver.tap({Key::superLeft}, keyMuhenkan);
    EXPECT_THAT(seen(), ElementsAre(Combination{0x10000 + keyMuhenkan - 8, cmdKey}));
}

TEST_F(Capture, DoesNotTakeTheKeyThatStartedIt)
{
    ASSERT_EQ(std::system("xset r rate 150 50"), 0);
    XDriver field;
    field.focusedWindow();
    driver.press(keyReturn);
    std::size_t repeats = 0;
    ASSERT_TRUE(waitFor([&] { return (repeats += field.takeEvents().size()) >= 8; }))
        << "the server must repeat";
    start();
    // As long as some ten repeats take; all of them go to the capture now.
    QDeadlineTimer held(200);
    waitFor([&] { return held.hasExpired(); });
    driver.release(keyReturn);
    EXPECT_THAT(seen(), IsEmpty());
    driver.tap({}, keyReturn);
    EXPECT_THAT(seen(), ElementsAre(Combination{36, 0}));
}

class IgnoredHotKey : public HotKeyEventHandler {
public:
    OSStatus hotKeyPressed(const HotKeyEvent*) override
    {
        ++presses;
        return noErr;
    }
    void hotKeySettled(EventHotKeyRef, HotKeyRegistration::State, OSStatus) override { }
    void hotKeysInvalidated() override { }
    int presses = 0;
};

TEST_F(Capture, KeepsOwnAndForeignHotkeysFromFiring)
{
    const auto connection = X11Connection::open();
    connection->watch();
    X11KeyInjector injector(*connection);
    X11HotKeyBackend backend(*connection, injector);
    IgnoredHotKey own;
    backend.installEventHandler(&own);
    const HotKeyCombination combination{kKey, cmdKey};
    ASSERT_EQ(backend.registerHotKeys({&combination, 1}).front().status, noErr);
    XDriver other;
    ASSERT_TRUE(other.grab(XCB_MOD_MASK_4, Key::m));

    start();
    driver.tap({Key::superLeft}, Key::k);
    driver.tap({Key::superLeft}, Key::m);
    EXPECT_THAT(seen(), ElementsAre(Combination{kKey, cmdKey}, Combination{46, cmdKey}));
    drainEvents();
    EXPECT_EQ(own.presses, 0);
    EXPECT_TRUE(other.takeEvents().empty());

    capture.stop();
    driver.tap({Key::superLeft}, Key::k);
    driver.tap({Key::superLeft}, Key::m);
    EXPECT_TRUE(waitFor([&] { return own.presses == 1; }));
    EXPECT_FALSE(other.takeEvents().empty());
    EXPECT_TRUE(captured.empty());
}

TEST_F(Capture, EndsWhenTheKeyboardCannotBeHad)
{
    XDriver menu;
    const auto hold = [&] {
        const XcbReply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(menu.xcb(),
            xcb_grab_keyboard(
                menu.xcb(), 0, menu.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    };
    ASSERT_TRUE(hold());
    start();
    EXPECT_EQ(ends, 0);
    EXPECT_TRUE(waitFor([&] { return ends == 1; }));

    start();
    xcb_ungrab_keyboard(menu.xcb(), XCB_CURRENT_TIME);
    menu.sync();
    EXPECT_TRUE(waitFor([&] {
        driver.tap({}, markerKey);
        drainEvents();
        return !captured.empty();
    })) << "a menu that closes leaves the keyboard to us";
    EXPECT_EQ(ends, 1);
}

/// Says of a window that this program has made it.
void claim(XDriver& driver, xcb_window_t window)
{
    const auto pid = static_cast<std::uint32_t>(getpid());
    constexpr std::string_view name = "_NET_WM_PID";
    const XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        driver.xcb(), xcb_intern_atom(driver.xcb(), 0, name.size(), name.data()), nullptr));
    xcb_change_property(
        driver.xcb(), XCB_PROP_MODE_REPLACE, window, atom->atom, XCB_ATOM_CARDINAL, 32, 1, &pid);
    driver.sync();
}

TEST_F(Capture, EndsWhenTheFocusGoesToAnotherProgram)
{
    XDriver own;
    const xcb_window_t second = own.focusedWindow();
    const xcb_window_t first = own.focusedWindow();
    claim(own, first);
    claim(own, second);
    start();
    own.focus(second);
    own.focus(first);
    driver.tap({}, Key::k);
    EXPECT_THAT(seen(), ElementsAre(Combination{kKey, 0})) << "between windows of ours it goes on";
    EXPECT_EQ(ends, 0);

    XDriver other;
    other.focusedWindow();
    ASSERT_TRUE(waitFor([&] { return ends == 1; }));
    driver.tap({}, Key::k);
    EXPECT_FALSE(other.takeEvents().empty());
    drainEvents();
    EXPECT_TRUE(captured.empty());
}

TEST_F(Capture, EndsWhenItsWindowGoesAway)
{
    XDriver own;
    const xcb_window_t window = own.focusedWindow();
    claim(own, window);
    start();
    xcb_unmap_window(own.xcb(), window);
    own.sync();
    EXPECT_TRUE(waitFor([&] { return ends == 1; }));
}

TEST_F(Capture, GivesTheKeyboardBackBeforeStopReturns)
{
    start();
    capture.stop();
    XDriver other;
    other.focusedWindow();
    driver.tap({}, Key::k);
    EXPECT_FALSE(other.takeEvents().empty());
    EXPECT_TRUE(captured.empty());
}

} // namespace
} // namespace Tavrin
