#include "Platform/Linux/X11/KeyboardMapping.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/XcbReply.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tavrin {
namespace {

constexpr int modifierCount = 8;
/// Shift, Lock and Control have fixed bits; the other five mean what their keys' symbols say.
constexpr int firstFreeModifier = 3;

void note(KeyboardMapping& mapping, xcb_keysym_t keysym, std::uint16_t bit)
{
    // The first bit that carries a symbol counts: a second one would be a key of the same name that
    // most programs do not look at.
    const auto set = [bit](std::uint16_t& modifier) { modifier = modifier ? modifier : bit; };
    switch (keysym) {
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
        return set(mapping.alt);
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
        return set(mapping.super);
    case XKB_KEY_Num_Lock:
        return set(mapping.numLock);
    case XKB_KEY_Scroll_Lock:
        return set(mapping.scrollLock);
    default:
        return;
    }
}

} // namespace

bool KeyboardMapping::hasSameModifiers(const KeyboardMapping& other) const
{
    return alt == other.alt && super == other.super && locks() == other.locks();
}

KeyboardMapping keyboardMapping(const xcb_keysym_t* keysyms, int keysymCount, int perKeycode,
    xcb_keycode_t firstKeycode, const xcb_keycode_t* modifierKeycodes, int perModifier)
{
    KeyboardMapping mapping;
    const int keyCount = perKeycode > 0 ? keysymCount / perKeycode : 0;
    for (int key = 0; key < keyCount; ++key) {
        for (int column = 0; column < perKeycode; ++column) {
            if (keysyms[key * perKeycode + column] != XKB_KEY_NoSymbol)
                mapping.keys.set(std::size_t{firstKeycode} + static_cast<std::size_t>(key));
        }
    }
    for (int modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        for (int slot = 0; slot < perModifier; ++slot) {
            const int key = modifierKeycodes[modifier * perModifier + slot] - firstKeycode;
            if (key < 0 || key >= keyCount)
                continue;
            for (int column = 0; column < perKeycode; ++column)
                note(mapping, keysyms[key * perKeycode + column], static_cast<std::uint16_t>(1U << modifier));
        }
    }
    return mapping;
}

KeyboardMapping queryKeyboardMapping(X11Connection& connection)
{
    xcb_connection_t* const xcb = connection.xcb();
    const xcb_keycode_t first = connection.setup().min_keycode;
    const auto count = static_cast<std::uint8_t>(connection.setup().max_keycode - first + 1);
    const auto keyboardCookie = xcb_get_keyboard_mapping(xcb, first, count);
    const auto modifierCookie = xcb_get_modifier_mapping(xcb);
    const XcbReply<xcb_get_keyboard_mapping_reply_t> keyboard(
        xcb_get_keyboard_mapping_reply(xcb, keyboardCookie, nullptr));
    const XcbReply<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(xcb, modifierCookie, nullptr));
    connection.deliverQueuedEventsSoon();
    if (!keyboard || !modifiers)
        return {};
    return keyboardMapping(xcb_get_keyboard_mapping_keysyms(keyboard.get()),
        xcb_get_keyboard_mapping_keysyms_length(keyboard.get()), keyboard->keysyms_per_keycode, first,
        xcb_get_modifier_mapping_keycodes(modifiers.get()), modifiers->keycodes_per_modifier);
}

} // namespace Tavrin
