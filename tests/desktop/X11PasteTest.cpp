#include "support/PasteFixture.h"

namespace Tavrin {
namespace {

using namespace Testing;

/// What programs do with a paste.
class Paste : public PasteTest { };

TEST_F(Paste, ReachesAQtFieldWhateverIsHeld)
{
    QtField field;
    pasteWithEverythingHeld(field);
}

TEST_F(Paste, ReachesAQtFieldOnEveryLayout)
{
    QtField field;
    pasteOnEveryLayout(field);
}

TEST_F(Paste, ReachesAGtkFieldWhateverIsHeld)
{
    GtkField field;
    pasteWithEverythingHeld(field);
}

TEST_F(Paste, ReachesAGtkFieldOnEveryLayout)
{
    GtkField field;
    pasteOnEveryLayout(field);
}

TEST_F(Paste, ReachesXterm)
{
    Terminal terminal(QStringLiteral("xterm"), {QStringLiteral("-e")}, QStringLiteral("XTerm"));
    pasteWithEverythingHeld(terminal);
    pasteOnEveryLayout(terminal);
}

TEST_F(Paste, ReachesATerminalOfTheVteFamily)
{
    Terminal terminal(QStringLiteral("xfce4-terminal"),
        {QStringLiteral("--disable-server"), QStringLiteral("-x")}, QStringLiteral("Xfce4-terminal"));
    pasteWithEverythingHeld(terminal);
    pasteOnEveryLayout(terminal);
}

TEST_F(Paste, KeepsTheMenuBarClosed)
{
    // What the window sees of a held Alt: a lone press and release would open its menu bar.
    const xcb_window_t window = driver.focusedWindow();
    const EventHotKeyRef ref = add({Key::altLeft}, Key::k);
    driver.press(Key::altLeft, keyboard);
    driver.press(Key::k, keyboard);
    ASSERT_TRUE(waitFor([&] { return fired == 1; }));
    driver.takeEvents();
    ASSERT_TRUE(command->post());
    std::string seen;
    for (const auto& event : driver.takeEvents()) {
        const auto type = event->response_type & 0x7F;
        EXPECT_NE(type, XCB_FOCUS_OUT);
        if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)
            seen += (type == XCB_KEY_PRESS ? " +" : " -")
                + std::to_string(reinterpret_cast<const xcb_key_press_event_t&>(*event).detail);
    }
    EXPECT_EQ(seen, " -45 +37 -64 +55 -55 +64 -37");
    driver.release(Key::k, keyboard);
    driver.release(Key::altLeft, keyboard);
    backend->unregisterHotKeys({&ref, 1});
    xcb_destroy_window(driver.xcb(), window);
}

TEST_F(Paste, WorksWithNothingHeld)
{
    QtField field;
    for (int round = 0; round < 3; ++round) {
        const QString text = nextText();
        ASSERT_TRUE(command->post());
        expectPasted(field, text);
        expectNothingHeld();
    }
}

TEST_F(Paste, WorksWhenTheHotkeyWasLetGoBefore)
{
    QtField field;
    add({Key::superLeft, Key::shiftLeft}, Key::k);
    driver.tapOnKeyboard(keyboard, {Key::superLeft, Key::shiftLeft}, Key::k);
    pasteOnPress(field);
}

TEST_F(Paste, WorksWhenTheModifiersAreOnAnotherKeyboard)
{
    QtField field;
    add({Key::superLeft, Key::altLeft}, Key::k);
    driver.press(Key::superLeft, keyboard);
    driver.press(Key::altLeft);
    driver.press(Key::k, keyboard);
    pasteOnPress(field);
    driver.release(Key::superLeft, keyboard);
    driver.release(Key::altLeft);
    driver.release(Key::k, keyboard);
}

TEST_F(Paste, LeavesTheLayoutAloneWhereModifiersSwitchIt)
{
    QtField field;
    for (const char* option : {"grp:alt_shift_toggle", "grp:ctrl_shift_toggle", "grp:ctrl_alt_toggle",
             "grp:win_space_toggle", "grp:alts_toggle", "grp:shifts_toggle", "grp:caps_toggle"}) {
        SCOPED_TRACE(option);
        setLayout((std::string("-layout us,ru -option ") + option).c_str());
        for (const auto& modifiers : std::initializer_list<std::vector<xcb_keycode_t>>{
                 {Key::superLeft}, {Key::shiftLeft}, {Key::altLeft}, {Key::superLeft, Key::shiftLeft}}) {
            pasteWhileHeld(field, modifiers, Key::k, keyboard);
            EXPECT_EQ(queryKeySymbols(*connection).lockedGroup, 0);
        }
    }
}

TEST_F(Paste, AnnouncesNoNewKeyboard)
{
    QtField field;
    driver.tapOnKeyboard(keyboard, {}, Key::shiftLeft);
    XDriver observer;
    xcb_xkb_use_extension_unchecked(observer.xcb(), 1, 0);
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    xcb_xkb_select_events(observer.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, 0, 0, nullptr);
    observer.takeEvents();
    pasteWhileHeld(field, {Key::superLeft, Key::altLeft}, Key::k, keyboard);
    EXPECT_TRUE(observer.takeEvents().empty());
    // The proof that they would have been seen.
    driver.tap({}, Key::shiftLeft);
    EXPECT_FALSE(observer.takeEvents().empty());
}

TEST_F(Paste, LendsThePrimarySelectionForShiftInsertAlone)
{
    setLayout("-layout ru");
    QtField field;
    pasteWhileHeld(field, {Key::superLeft}, Key::k, keyboard);
    EXPECT_EQ(primary.lent, 2);
    EXPECT_EQ(primary.givenBack, 1) << "a second paste must not remember the first one's text";
    EXPECT_TRUE(waitFor([&] { return primary.givenBack == 2; }));
    setLayout("-layout us");
    pasteWhileHeld(field, {Key::superLeft}, Key::k, keyboard);
    EXPECT_EQ(primary.lent, 2);
}

TEST_F(Paste, SaysWhereItCannotBePressed)
{
    EXPECT_EQ(std::system("xmodmap -e 'clear control'"), 0);
    EXPECT_FALSE(command->post());
}

} // namespace
} // namespace Tavrin
