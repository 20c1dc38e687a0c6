#include "Platform/Linux/X11/KeyboardMapping.h"

#include <gtest/gtest.h>
#include <vector>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tavrin {
namespace {

constexpr xcb_keycode_t first = 8;
constexpr int perKeycode = 2;
constexpr int perModifier = 2;

/// A keyboard on which the given keys carry the given symbols, and modifiers the given keys.
struct Keyboard {
    std::vector<xcb_keysym_t> keysyms = std::vector<xcb_keysym_t>(248 * perKeycode, XKB_KEY_NoSymbol);
    std::vector<xcb_keycode_t> modifiers = std::vector<xcb_keycode_t>(8 * perModifier, 0);

    Keyboard& key(xcb_keycode_t code, xcb_keysym_t symbol, int column = 0)
    {
        keysyms[static_cast<std::size_t>((code - first) * perKeycode + column)] = symbol;
        return *this;
    }
    Keyboard& modifier(int index, xcb_keycode_t code, int slot = 0)
    {
        modifiers[static_cast<std::size_t>(index * perModifier + slot)] = code;
        return *this;
    }
    KeyboardMapping mapping() const
    {
        return keyboardMapping(keysyms.data(), static_cast<int>(keysyms.size()), perKeycode, first,
            modifiers.data(), perModifier);
    }
};

TEST(KeyboardMappings, FindTheBitsThatTheServerGives)
{
    const auto mapping = Keyboard()
                             .key(64, XKB_KEY_Alt_L)
                             .key(133, XKB_KEY_Super_L)
                             .key(77, XKB_KEY_Num_Lock, 1)
                             .key(78, XKB_KEY_Scroll_Lock)
                             .modifier(3, 64)
                             .modifier(6, 133, 1)
                             .modifier(4, 77)
                             .modifier(5, 78)
                             .mapping();
    EXPECT_EQ(mapping.alt, XCB_MOD_MASK_1);
    EXPECT_EQ(mapping.super, XCB_MOD_MASK_4);
    EXPECT_EQ(mapping.numLock, XCB_MOD_MASK_2);
    EXPECT_EQ(mapping.scrollLock, XCB_MOD_MASK_3);
    EXPECT_EQ(mapping.locks(), XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_3);
    EXPECT_TRUE(mapping.keys.test(77));
    EXPECT_FALSE(mapping.keys.test(100));
}

TEST(KeyboardMappings, HaveNoBitForWhatNoKeyCarries)
{
    const auto mapping
        = Keyboard().key(133, XKB_KEY_Super_L).key(64, XKB_KEY_Alt_L).modifier(0, 64).mapping();
    EXPECT_EQ(mapping.super, 0);
    EXPECT_EQ(mapping.alt, 0) << "a key on Shift is a Shift key";
    EXPECT_EQ(mapping.locks(), XCB_MOD_MASK_LOCK);
}

TEST(KeyboardMappings, CompareByTheirModifiers)
{
    const auto mapping = Keyboard().key(133, XKB_KEY_Super_L).modifier(6, 133).mapping();
    auto other = mapping;
    other.keys.set(200);
    EXPECT_TRUE(mapping.hasSameModifiers(other));
    other.scrollLock = XCB_MOD_MASK_5;
    EXPECT_FALSE(mapping.hasSameModifiers(other));
}

TEST(KeyboardMappings, SurviveEmptyTables)
{
    EXPECT_EQ(keyboardMapping(nullptr, 0, 0, first, nullptr, 0), KeyboardMapping{});
}

} // namespace
} // namespace Tavrin
