#include "Platform/Linux/X11/X11HotKeyBackend.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "support/Wait.h"
#include "support/XDriver.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;
using Testing::XDriver;
namespace Key = Testing::Key;
using State = HotKeyRegistration::State;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kKey = 40, vKey = 9, f5Key = 96, mKey = 46, aKey = 0;

class Recorder : public HotKeyEventHandler {
public:
    OSStatus hotKeyPressed(const HotKeyEvent* event) override
    {
        ids.push_back(event->hotKeyID.id);
        times.push_back(event->serverTime);
        return noErr;
    }
    void hotKeySettled(EventHotKeyRef ref, State state, OSStatus status) override
    {
        settled.push_back({state, status, ref});
    }
    void hotKeysInvalidated() override { ++invalidations; }

    std::vector<std::uint32_t> ids;
    std::vector<std::uint32_t> times;
    std::vector<HotKeyRegistration> settled;
    int invalidations = 0;
};

class HotKeys : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(std::system("setxkbmap -layout us -option ''"), 0);
        connection = X11Connection::open();
        ASSERT_TRUE(connection);
        connection->watch();
        injector = std::make_unique<X11KeyInjector>(*connection);
        backend = std::make_unique<X11HotKeyBackend>(*connection, *injector);
        ASSERT_EQ(backend->installEventHandler(&recorder), noErr);
    }

    HotKeyRegistration add(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id)
    {
        const HotKeyCombination combination{keyCode, modifiers};
        const auto result = backend->registerHotKeys({&combination, 1}).front();
        backend->setHotKeyID(result.ref, {1, id});
        return result;
    }

    /// Everything that the server had to say has been heard: a marker hotkey's press comes last.
    void settle()
    {
        const auto marker = add(f5Key, controlKey | optionKey | shiftKey | cmdKey, 999);
        ASSERT_NE(marker.ref, 0U);
        driver.tap({Key::controlLeft, Key::altLeft, Key::shiftLeft, Key::superLeft}, Key::f5);
        ASSERT_TRUE(waitFor([&] { return !recorder.ids.empty() && recorder.ids.back() == 999; }));
        recorder.ids.pop_back();
        backend->unregisterHotKeys({&marker.ref, 1});
    }

    XDriver driver;
    Recorder recorder;
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11KeyInjector> injector;
    std::unique_ptr<X11HotKeyBackend> backend;
};

TEST_F(HotKeys, FireOnTheirCombinationAndOnNoOther)
{
    add(kKey, cmdKey | shiftKey, 1);
    add(f5Key, 0, 2);
    driver.tap({Key::superLeft, Key::shiftLeft}, Key::k);
    driver.tap({Key::superLeft}, Key::k);
    driver.tap({Key::superLeft, Key::shiftLeft, Key::altLeft}, Key::k);
    driver.tap({}, Key::k);
    driver.tap({}, Key::f5);
    driver.tap({Key::shiftLeft}, Key::f5);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1, 2));
}

TEST_F(HotKeys, CarryTheTimeOfThePress)
{
    add(kKey, cmdKey, 1);
    driver.tap({Key::superLeft}, Key::k);
    ASSERT_TRUE(waitFor([&] { return recorder.ids.size() == 1; }));
    EXPECT_GT(recorder.times.front(), 0U);
}

TEST_F(HotKeys, MapEachModifier)
{
    const std::pair<std::uint32_t, xcb_keycode_t> modifiers[] = {
        {controlKey, Key::controlLeft},
        {optionKey, Key::altLeft},
        {shiftKey, Key::shiftLeft},
        {cmdKey, Key::superLeft},
    };
    std::uint32_t id = 0;
    for (const auto& [mask, key] : modifiers)
        add(kKey, mask, ++id);
    for (const auto& [mask, key] : modifiers)
        driver.tap({key}, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1, 2, 3, 4));
}

TEST_F(HotKeys, FireWhateverLocksAreOn)
{
    // Scroll Lock has a modifier bit only where a layout gives it one.
    ASSERT_EQ(
        std::system("xmodmap -e 'clear mod3' -e 'keycode 78 = Scroll_Lock' -e 'add mod3 = Scroll_Lock'"), 0);
    ASSERT_TRUE(waitFor([&] { return recorder.invalidations == 1; }));
    add(kKey, cmdKey, 1);
    std::vector<std::uint32_t> expected;
    for (int combination = 0; combination < 8; ++combination) {
        const std::pair<int, xcb_keycode_t> locks[]
            = {{1, Key::capsLock}, {2, Key::numLock}, {4, Key::scrollLock}};
        for (const auto& [bit, key] : locks) {
            if (combination & bit)
                driver.tap({}, key);
        }
        driver.tap({Key::superLeft}, Key::k);
        expected.push_back(1);
        for (const auto& [bit, key] : locks) {
            if (combination & bit)
                driver.tap({}, key);
        }
    }
    settle();
    EXPECT_EQ(recorder.ids, expected);
}

class PressCounter : public X11EventListener {
public:
    void handleEvent(const xcb_generic_event_t& event) override
    {
        presses += (event.response_type & 0x7F) == XCB_KEY_PRESS ? 1 : 0;
    }
    int presses = 0;
};

TEST_F(HotKeys, FireOnceHoweverLongTheKeyIsHeld)
{
    ASSERT_EQ(std::system("xset r rate 150 50"), 0);
    PressCounter counter;
    connection->addListener(&counter);
    add(kKey, cmdKey, 1);
    driver.press(Key::superLeft);
    driver.press(Key::k);
    ASSERT_TRUE(waitFor([&] { return counter.presses >= 30; })) << "the server must repeat the held key";
    driver.release(Key::k);
    driver.release(Key::superLeft);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1));

    driver.tap({Key::superLeft}, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1, 1));
    connection->removeListener(&counter);
}

TEST_F(HotKeys, GiveTheKeyboardBackWhileTheKeyIsStillDown)
{
    const xcb_window_t window = driver.focusedWindow();
    add(kKey, cmdKey, 1);
    driver.press(Key::superLeft);
    driver.press(Key::k);
    ASSERT_TRUE(waitFor([&] { return recorder.ids.size() == 1; }));
    connection->flush();
    driver.takeEvents();

    driver.press(Key::a);
    bool arrived = false;
    for (const auto& event : driver.takeEvents()) {
        const auto type = event->response_type & 0x7F;
        EXPECT_NE(type, XCB_FOCUS_OUT);
        if (type == XCB_KEY_PRESS)
            arrived |= reinterpret_cast<const xcb_key_press_event_t&>(*event).detail == Key::a;
    }
    EXPECT_TRUE(arrived) << "a key pressed while the hotkey is held must reach the focused window";
    driver.release(Key::a);
    driver.release(Key::k);
    driver.release(Key::superLeft);
    xcb_destroy_window(driver.xcb(), window);
}

TEST_F(HotKeys, DoNotFireOnKeysThatWePressed)
{
    add(vKey, controlKey, 1);
    using Direction = X11KeyInjector::Direction;
    const std::array strokes{
        X11KeyInjector::Stroke{Key::controlLeft, Direction::press},
        X11KeyInjector::Stroke{Key::v, Direction::press},
        X11KeyInjector::Stroke{Key::v, Direction::release},
        X11KeyInjector::Stroke{Key::controlLeft, Direction::release},
    };
    ASSERT_TRUE(injector->isAvailable());
    injector->inject(strokes);
    settle();
    EXPECT_THAT(recorder.ids, IsEmpty());

    // What any other program presses is as good as a key.
    driver.tap({Key::controlLeft}, Key::v);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1));

    // And both at once stay told apart.
    injector->inject(strokes);
    driver.tap({Key::controlLeft}, Key::v);
    injector->inject(strokes);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1, 1));
}

TEST_F(HotKeys, FireFromARealKeyboardAsWell)
{
    const std::uint8_t keyboard = driver.realKeyboard();
    ASSERT_NE(keyboard, 0);
    add(kKey, cmdKey, 1);
    driver.tapOnKeyboard(keyboard, {Key::superLeft}, Key::k);
    driver.tap({Key::superLeft}, Key::k);
    driver.tapOnKeyboard(keyboard, {Key::superLeft}, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1, 1, 1));
    EXPECT_EQ(recorder.invalidations, 0) << "switching keyboards is no change of the keyboard";
}

TEST_F(HotKeys, StaySilentWhileAnotherProgramHoldsTheKeyboard)
{
    add(kKey, cmdKey, 1);
    const XcbReply<xcb_grab_keyboard_reply_t> grabbed(xcb_grab_keyboard_reply(driver.xcb(),
        xcb_grab_keyboard(
            driver.xcb(), 0, driver.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    ASSERT_EQ(grabbed->status, XCB_GRAB_STATUS_SUCCESS);
    driver.tap({Key::superLeft}, Key::k);
    xcb_ungrab_keyboard(driver.xcb(), XCB_CURRENT_TIME);
    settle();
    EXPECT_THAT(recorder.ids, IsEmpty());
}

TEST_F(HotKeys, ReportWhatIsTakenAndRegisterTheRest)
{
    XDriver other;
    ASSERT_TRUE(other.grab(XCB_MOD_MASK_4 | XCB_MOD_MASK_2, Key::k)); // one variant is enough
    const HotKeyCombination combinations[] = {{aKey, cmdKey}, {kKey, cmdKey}, {mKey, cmdKey}};
    const auto results = backend->registerHotKeys(combinations);
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results[0].state, State::registered);
    EXPECT_EQ(results[1].state, State::pending) << "the owner may be a program that has just been killed";
    EXPECT_EQ(results[2].state, State::registered);
    ASSERT_TRUE(waitFor([&] { return recorder.settled.size() == 1; }));
    EXPECT_EQ(recorder.settled[0].ref, results[1].ref);
    EXPECT_EQ(recorder.settled[0].state, State::failed);
    EXPECT_EQ(recorder.settled[0].status, eventHotKeyExistsErr);
    // The variants that were free went back; the server takes two programs' requests in its own order.
    EXPECT_TRUE(waitFor([&] { return other.grab(XCB_MOD_MASK_4, Key::k); }));
}

TEST_F(HotKeys, TakeOverFromAProgramThatHasJustEnded)
{
    auto other = std::make_unique<XDriver>();
    ASSERT_TRUE(other->grab(XCB_MOD_MASK_4, Key::k));
    EXPECT_EQ(add(kKey, cmdKey, 1).state, State::pending);
    other.reset();
    ASSERT_TRUE(waitFor([&] { return recorder.settled.size() == 1; }));
    EXPECT_EQ(recorder.settled[0].state, State::registered);
    driver.tap({Key::superLeft}, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(1));
}

TEST_F(HotKeys, ReportTheSameCombinationTwiceAsTaken)
{
    // Key code 0 and the foreign code of the same position are one key.
    const HotKeyCombination combinations[]
        = {{kKey, cmdKey}, {kKey, cmdKey}, {aKey, cmdKey}, {0x10000 + 30, cmdKey | 0x40}};
    const auto results = backend->registerHotKeys(combinations);
    EXPECT_EQ(results[0].status, noErr);
    EXPECT_EQ(results[1].status, eventHotKeyExistsErr);
    EXPECT_EQ(results[2].status, noErr);
    EXPECT_EQ(results[3].status, eventHotKeyExistsErr);
    EXPECT_EQ(results[1].ref, 0U);
    backend->setHotKeyID(results[0].ref, {1, 7});
    driver.tap({Key::superLeft}, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(7));
}

TEST_F(HotKeys, RefuseKeysThatTheKeyboardLacks)
{
    for (const std::uint32_t keyCode :
        {4294967295U, 0x10000U, 0x10000U + 248, 0x10000U + 0x2FF, 63U, 127U, 0xFFFFU})
        EXPECT_EQ(add(keyCode, cmdKey, 1).status, eventHotKeyInvalidErr) << keyCode;
    EXPECT_EQ(add(kKey, cmdKey, 1).status, noErr);
}

TEST_F(HotKeys, RefuseAModifierThatTheKeyboardLacks)
{
    ASSERT_EQ(std::system("xmodmap -e 'clear mod4'"), 0);
    ASSERT_TRUE(waitFor([&] { return recorder.invalidations == 1; }));
    EXPECT_EQ(add(kKey, cmdKey, 1).status, eventHotKeyInvalidErr);
    EXPECT_EQ(add(kKey, controlKey, 1).status, noErr);
}

TEST_F(HotKeys, SurviveLayoutSwitchesAtTheSamePositions)
{
    add(kKey, cmdKey, 1);
    for (const char* layout : {"dvorak", "fr", "ru", "vn", "us,ru", "us"}) {
        ASSERT_EQ(std::system((std::string("setxkbmap ") + layout).c_str()), 0);
        recorder.ids.clear();
        driver.tap({Key::superLeft}, Key::k);
        settle();
        EXPECT_THAT(recorder.ids, ElementsAre(1)) << layout;
    }
    EXPECT_EQ(recorder.invalidations, 0);
}

TEST_F(HotKeys, AreVoidWhenTheModifiersMove)
{
    add(kKey, cmdKey, 1);
    ASSERT_EQ(std::system("xmodmap -e 'clear mod3' -e 'clear mod4' -e 'add mod3 = Super_L Super_R'"), 0);
    ASSERT_TRUE(waitFor([&] { return recorder.invalidations == 1; }));
    EXPECT_EQ(add(kKey, cmdKey, 2).status, noErr);
    driver.tap({Key::superLeft}, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, ElementsAre(2));
}

TEST_F(HotKeys, AreFreeForOthersAtOnceWhenUnregistered)
{
    XDriver other;
    const auto result = add(kKey, cmdKey, 1);
    EXPECT_FALSE(other.grab(XCB_MOD_MASK_4, Key::k));
    backend->unregisterHotKeys({&result.ref, 1});
    // One round trip of ours, so that the request has been handled; no event loop in between.
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection->xcb(), xcb_get_input_focus(connection->xcb()), nullptr));
    EXPECT_TRUE(other.grab(XCB_MOD_MASK_4, Key::k));
    EXPECT_TRUE(other.grab(XCB_MOD_MASK_4 | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2, Key::k));
    driver.tap({Key::superLeft}, Key::k);
    other.ungrab(XCB_MOD_MASK_4, Key::k);
    settle();
    EXPECT_THAT(recorder.ids, IsEmpty());
}

TEST_F(HotKeys, RegisterAThousandInOneBatch)
{
    std::vector<HotKeyCombination> combinations;
    for (std::uint32_t modifiers = 1; modifiers < 16 && combinations.size() < 1000; ++modifiers) {
        const std::uint32_t mask = (modifiers & 1 ? cmdKey : 0U) | (modifiers & 2 ? shiftKey : 0U)
            | (modifiers & 4 ? optionKey : 0U) | (modifiers & 8 ? controlKey : 0U);
        for (std::uint32_t evdev = 2; evdev < 84 && combinations.size() < 1000; ++evdev)
            combinations.push_back({0x10000 + evdev, mask});
    }
    ASSERT_EQ(combinations.size(), 1000U);
    const auto results = backend->registerHotKeys(combinations);
    EXPECT_EQ(std::ranges::count(results, noErr, &HotKeyRegistration::status), 1000);
}

TEST(X11ConnectionTest, IsNotThereWithoutADisplay)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4095");
    EXPECT_EQ(X11Connection::open(), nullptr);
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace Tavrin
