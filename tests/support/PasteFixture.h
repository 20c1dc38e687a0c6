#pragma once

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/KeyPositions.h"
#include "Platform/Linux/X11/HeldKeys.h"
#include "Platform/Linux/X11/PrimarySelection.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"
#include "Platform/Linux/X11/X11PasteCommand.h"
#include "Platform/Linux/X11/Xkb.h"
#include "support/PasteTargets.h"
#include "support/XDriver.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace Tavrin::Testing {

/// Every set of modifiers that a hotkey can have.
inline std::vector<std::vector<xcb_keycode_t>> modifierSets()
{
    std::vector<std::vector<xcb_keycode_t>> result;
    constexpr xcb_keycode_t keys[] = {Key::superLeft, Key::shiftLeft, Key::altLeft, Key::controlLeft};
    for (unsigned bits = 1; bits < 16; ++bits) {
        std::vector<xcb_keycode_t>& set = result.emplace_back();
        for (unsigned index = 0; index < 4; ++index) {
            if (bits >> index & 1U)
                set.push_back(keys[index]);
        }
    }
    return result;
}

/// The primary selection of this process.
class LentSelection : public PrimarySelection {
public:
    void lend(const QString& text, std::function<void()> ready) override
    {
        ++lent;
        QGuiApplication::clipboard()->setText(text, QClipboard::Selection);
        QMetaObject::invokeMethod(qApp, std::move(ready), Qt::QueuedConnection);
    }
    void giveBack() override { ++givenBack; }

    int lent = 0;
    int givenBack = 0;
};

/// A hotkey that pastes, and a hand that holds it.
class PasteTest : public testing::Test, protected HotKeyEventHandler {
protected:
    void SetUp() override
    {
        setLayout("-layout us");
        connection = X11Connection::open();
        ASSERT_TRUE(connection);
        connection->watch();
        injector = std::make_unique<X11KeyInjector>(*connection);
        backend = std::make_unique<X11HotKeyBackend>(*connection, *injector);
        ASSERT_EQ(backend->installEventHandler(this), noErr);
        command = std::make_unique<X11PasteCommand>(
            PasteServices{*connection, *injector, *backend, pasteboard, primary});
        keyboard = driver.realKeyboard();
        ASSERT_NE(keyboard, 0);
    }

    void TearDown() override
    {
        expectNothingHeld();
        setLayout("-layout us");
    }

    static void setLayout(const char* options)
    {
        ASSERT_EQ(std::system((std::string("setxkbmap -option '' ") + options).c_str()), 0);
    }

    OSStatus hotKeyPressed(const HotKeyEvent* /*event*/) override
    {
        ++fired;
        return noErr;
    }
    void hotKeySettled(
        EventHotKeyRef /*ref*/, HotKeyRegistration::State /*state*/, OSStatus /*status*/) override
    {
    }
    void hotKeysInvalidated() override { ++invalidations; }

    /// Keys are those of the X server; Carbon's modifiers are found from them.
    EventHotKeyRef add(const std::vector<xcb_keycode_t>& modifiers, xcb_keycode_t key)
    {
        std::uint32_t mask = 0;
        for (const xcb_keycode_t modifier : modifiers) {
            mask |= modifier == Key::controlLeft ? controlKey : 0U;
            mask |= modifier == Key::altLeft ? optionKey : 0U;
            mask |= modifier == Key::shiftLeft ? shiftKey : 0U;
            mask |= modifier == Key::superLeft ? cmdKey : 0U;
        }
        constexpr std::uint32_t foreignKey = 0x10000, evdevOffset = 8;
        const HotKeyCombination combination{foreignKey + key - evdevOffset, mask};
        const auto result = backend->registerHotKeys({&combination, 1}).front();
        EXPECT_EQ(result.status, noErr);
        return result.ref;
    }

    /// What pastes insert from now on; different each time.
    QString nextText()
    {
        const QString text = QStringLiteral("‹%1 ắ›").arg(++m_texts);
        pasteboard.contents.string = text;
        QGuiApplication::clipboard()->setText(text);
        return text;
    }

    /// The target must have this text more than before, and nothing else.
    void expectPasted(PasteTarget& target, const QString& text)
    {
        m_expected += text;
        if (!waitFor([&] { return target.text() == m_expected; }, 5000))
            ADD_FAILURE() << "expected " << qPrintable(m_expected) << "\n but got "
                          << qPrintable(target.text());
    }

    /// Holds the hotkey, pastes, taps it again with the modifiers held, pastes again, and lets go.
    void pasteWhileHeld(PasteTarget& target, const std::vector<xcb_keycode_t>& modifiers, xcb_keycode_t key,
        std::uint8_t device)
    {
        // What follows a failure says nothing more, and takes its time.
        if (HasFailure())
            return;
        const EventHotKeyRef ref = add(modifiers, key);
        for (const xcb_keycode_t modifier : modifiers)
            driver.press(modifier, device);
        for (int round = 0; round < 2; ++round) {
            driver.press(key, device);
            pasteOnPress(target);
            driver.release(key, device);
        }
        for (const xcb_keycode_t modifier : modifiers)
            driver.release(modifier, device);
        expectNothingHeld();
        backend->unregisterHotKeys({&ref, 1});
    }

    /// With every hotkey, every lock, and from both keyboards.
    void pasteWithEverythingHeld(PasteTarget& target)
    {
        for (const auto& modifiers : modifierSets()) {
            SCOPED_TRACE(testing::PrintToString(modifiers));
            pasteWhileHeld(target, modifiers, Key::k, keyboard);
        }
        // Keys that the paste itself presses, a key without modifiers, and a keyboard that programs press.
        pasteWhileHeld(target, {Key::controlLeft}, Key::v, keyboard);
        pasteWhileHeld(target, {Key::superLeft}, Key::v, keyboard);
        pasteWhileHeld(target, {Key::controlLeft, Key::shiftLeft}, Key::v, keyboard);
        pasteWhileHeld(target, {Key::shiftLeft}, Key::insert, keyboard);
        pasteWhileHeld(target, {Key::superLeft}, Key::insert, keyboard);
        pasteWhileHeld(target, {}, Key::f5, keyboard);
        pasteWhileHeld(target, {Key::superLeft, Key::altLeft}, Key::k, 0);
        pasteWhileHeld(target, {Key::controlLeft}, Key::v, 0);
        for (const std::vector<xcb_keycode_t>& locks : {std::vector{Key::capsLock}, std::vector{Key::numLock},
                 std::vector{Key::capsLock, Key::numLock}}) {
            SCOPED_TRACE(testing::PrintToString(locks));
            toggle(locks);
            pasteWhileHeld(target, {Key::superLeft}, Key::k, keyboard);
            pasteWhileHeld(target, {Key::shiftLeft, Key::altLeft}, Key::k, keyboard);
            pasteWhileHeld(target, {Key::controlLeft}, Key::v, keyboard);
            toggle(locks);
        }
    }

    /// With the layouts that differ in where V is, or have none.
    void pasteOnEveryLayout(PasteTarget& target)
    {
        for (const char* layout : {"-layout fr", "-layout us -variant dvorak", "-layout vn", "-layout ru",
                 "-layout us,ru", "-layout us"}) {
            SCOPED_TRACE(layout);
            setLayout(layout);
            const bool isSecond = std::string_view(layout).ends_with(",ru");
            if (isSecond)
                lockGroup(1);
            pasteWhileHeld(target, {Key::superLeft}, Key::k, keyboard);
            pasteWhileHeld(target, {Key::shiftLeft, Key::altLeft}, Key::k, keyboard);
            pasteWhileHeld(target, {Key::controlLeft}, Key::v, keyboard);
            toggle({Key::capsLock, Key::numLock});
            pasteWhileHeld(target, {Key::superLeft, Key::controlLeft}, Key::k, keyboard);
            toggle({Key::capsLock, Key::numLock});
            if (isSecond)
                lockGroup(0);
        }
    }

    void toggle(const std::vector<xcb_keycode_t>& locks)
    {
        for (const xcb_keycode_t lock : locks)
            driver.tapOnKeyboard(keyboard, {}, lock);
    }

    void lockGroup(std::uint8_t group)
    {
        xcb_xkb_latch_lock_state(
            connection->xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, /*lockGroup=*/1, group, 0, 0, 0);
        connection->flush();
        EXPECT_TRUE(waitFor([&] { return queryKeySymbols(*connection).lockedGroup == group; }));
    }

    /// Waits for the hotkey and pastes once.
    void pasteOnPress(PasteTarget& target)
    {
        ++m_pressed;
        EXPECT_TRUE(waitFor([&] { return fired == m_pressed; }))
            << "the hotkey must fire, and for presses alone";
        const QString text = nextText();
        EXPECT_TRUE(command->post());
        expectPasted(target, text);
    }

    /// No key is down on any keyboard.
    void expectNothingHeld()
    {
        const HeldKeys held = KeyboardWatch().held();
        EXPECT_TRUE(held.keys.empty())
            << "key " << int{held.keys.empty() ? xcb_keycode_t{} : held.keys[0].keycode} << " is still down";
        EXPECT_EQ(held.modifiers, 0);
    }

    XDriver driver;
    FakePasteboard pasteboard;
    LentSelection primary;
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11KeyInjector> injector;
    std::unique_ptr<X11HotKeyBackend> backend;
    std::unique_ptr<X11PasteCommand> command;
    std::uint8_t keyboard = 0;
    int fired = 0;
    int invalidations = 0;

private:
    QString m_expected;
    int m_texts = 0;
    int m_pressed = 0;
};

} // namespace Tavrin::Testing
