#include "Platform/Linux/X11/PasteStrokes.h"

#include <algorithm>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tavrin {
namespace {

using Direction = X11KeyInjector::Direction;
using Stroke = X11KeyInjector::Stroke;

/// What a held key means for the paste.
enum class Role {
    ordinary,
    control,
    shift,
    /// Alt, Super and the like.
    other,
    /// A shift or another modifier that must not be down together with Control.
    apart,
    untouched
};

Role roleOf(xcb_keysym_t symbol)
{
    switch (symbol) {
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
        return Role::control;
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
        return Role::shift;
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
    case XKB_KEY_Meta_L:
    case XKB_KEY_Meta_R:
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
    case XKB_KEY_Hyper_L:
    case XKB_KEY_Hyper_R:
    case XKB_KEY_ISO_Level3_Shift:
    case XKB_KEY_ISO_Level5_Shift:
    case XKB_KEY_Mode_switch:
        return Role::other;
    case XKB_KEY_NoSymbol:
    case XKB_KEY_Caps_Lock:
    case XKB_KEY_Shift_Lock:
    case XKB_KEY_Num_Lock:
    case XKB_KEY_Scroll_Lock:
        return Role::untouched;
    default:
        // Locks and latches of levels and groups: pressed again, they would act again.
        return symbol >= XKB_KEY_ISO_Lock && symbol <= XKB_KEY_ISO_Level5_Lock ? Role::untouched
                                                                               : Role::ordinary;
    }
}

Role roleOf(xcb_keycode_t keycode, xcb_keycode_t control, const HeldKeys& held, const KeySymbols& symbols)
{
    const Role role = roleOf(symbols.symbol(keycode, symbols.lockedGroup));
    if (role == Role::ordinary || role == Role::untouched)
        return role;
    // Together with a key that was down before it, a modifier's key may have switched the layout instead.
    const std::uint8_t modifiers = symbols.keys[keycode].modifiers;
    if (modifiers && !(modifiers & held.modifiers))
        return Role::untouched;
    return role != Role::control && switchLayoutTogether(keycode, control, symbols) ? Role::apart : role;
}

/// A key of `candidates` that is not down already.
xcb_keycode_t freeKey(const std::vector<xcb_keycode_t>& candidates, const HeldKeys& held)
{
    const auto isFree = [&held](xcb_keycode_t key) {
        return std::ranges::find(held.keys, key, &HeldKeys::Key::keycode) == held.keys.end();
    };
    const auto found = std::ranges::find_if(candidates, isFree);
    return found == candidates.end() ? candidates.front() : *found;
}

/// The strokes as they come together.
class Writer {
public:
    Writer(const PasteKeys& keys, const HeldKeys& held, const KeySymbols& symbols)
        : control(freeKey(keys.controls, held))
        , shift(freeKey(keys.shifts, held))
        , m_keyboard(held.current)
    {
        for (const HeldKeys::Key& key : held.keys)
            m_held.push_back({key, roleOf(key.keycode, control, held, symbols)});
    }

    bool holds(Role role) const
    {
        return std::ranges::any_of(m_held, [role](const Held& held) { return held.role == role; });
    }

    /// True if something is held in this role, and Shift together with it is just Shift.
    bool canTapShiftWith(Role role, const KeySymbols& symbols) const
    {
        const auto switches = [&](const Held& held) {
            return held.role == role && switchLayoutTogether(shift, held.key.keycode, symbols);
        };
        return holds(role) && std::ranges::none_of(m_held, switches);
    }

    void press(xcb_keycode_t keycode) { strokes.push_back({keycode, Direction::press, m_keyboard}); }
    void release(xcb_keycode_t keycode) { strokes.push_back({keycode, Direction::release, m_keyboard}); }

    /// All that the user holds in this role, each on its own keyboard.
    void pressHeld(Role role) { strokeHeld(role, Direction::press); }
    void releaseHeld(Role role) { strokeHeld(role, Direction::release); }

    const xcb_keycode_t control;
    const xcb_keycode_t shift;
    std::vector<Stroke> strokes;

private:
    struct Held {
        HeldKeys::Key key;
        Role role;
    };

    void strokeHeld(Role role, Direction direction)
    {
        for (const Held& held : m_held) {
            if (held.role == role)
                strokes.push_back({held.key.keycode, direction, held.key.keyboard});
        }
    }

    std::vector<Held> m_held;
    KeyboardId m_keyboard;
};

} // namespace

std::vector<Stroke> pasteStrokes(const PasteKeys& keys, const HeldKeys& held, const KeySymbols& symbols)
{
    Writer writer(keys, held, symbols);
    const bool keepsShift = keys.usesShift() && writer.holds(Role::shift);
    const bool pressesControl
        = !writer.holds(Role::control) && (keys.usesControl() || writer.holds(Role::other));

    writer.releaseHeld(Role::ordinary);
    writer.releaseHeld(Role::apart);
    if (pressesControl)
        writer.press(writer.control);
    if (!keepsShift)
        writer.releaseHeld(Role::shift);
    writer.releaseHeld(Role::other);
    if (!keys.usesControl()) {
        writer.releaseHeld(Role::control);
        if (pressesControl)
            writer.release(writer.control);
    }
    if (keys.usesShift() && !keepsShift)
        writer.press(writer.shift);

    writer.press(keys.target);
    writer.release(keys.target);

    if (keys.usesShift() && !keepsShift)
        writer.release(writer.shift);
    if (!keys.usesControl()) {
        writer.pressHeld(Role::control);
        if (pressesControl)
            writer.press(writer.control);
    }
    writer.pressHeld(Role::other);
    if (!keepsShift)
        writer.pressHeld(Role::shift);
    if (pressesControl)
        writer.release(writer.control);
    writer.pressHeld(Role::apart);
    // What Control did not cover is not pressed alone either.
    if (writer.canTapShiftWith(Role::apart, symbols)) {
        writer.press(writer.shift);
        writer.release(writer.shift);
    }
    return std::move(writer.strokes);
}

} // namespace Tavrin
