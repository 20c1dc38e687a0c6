#include "Platform/Linux/X11/PasteChord.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tavrin {
namespace {

struct ClassRule {
    /// In lower case; matches either half of WM_CLASS.
    QLatin1StringView name;
    PasteChord chord;
};

/// In a terminal Control+V belongs to what runs in it.
constexpr std::array classRules{
    // Built on VTE.
    ClassRule{QLatin1StringView("gnome-terminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("gnome-terminal-server"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("kgx"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("org.gnome.console"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("org.gnome.ptyxis"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("xfce4-terminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("mate-terminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("lxterminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("tilix"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("com.gexperts.tilix"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("terminator"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("guake"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("tilda"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("sakura"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("roxterm"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("termite"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("io.elementary.terminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("deepin-terminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("terminology"), PasteChord::controlShiftV},
    // Built on Qt.
    ClassRule{QLatin1StringView("konsole"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("yakuake"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("qterminal"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("cool-retro-term"), PasteChord::controlShiftV},
    // That draw for themselves.
    ClassRule{QLatin1StringView("alacritty"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("kitty"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("org.wezfurlong.wezterm"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("foot"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("com.mitchellh.ghostty"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("contour"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("rio"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("hyper"), PasteChord::controlShiftV},
    ClassRule{QLatin1StringView("tabby"), PasteChord::controlShiftV},
    // That know the primary selection alone.
    ClassRule{QLatin1StringView("xterm"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("uxterm"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("urxvt"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("rxvt"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("st"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("st-256color"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("mlterm"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("aterm"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("eterm"), PasteChord::shiftInsert},
    ClassRule{QLatin1StringView("mrxvt"), PasteChord::shiftInsert},
    // Control+V scrolls there.
    ClassRule{QLatin1StringView("emacs"), PasteChord::shiftInsert},
};

/// The keys that give `left` or `right` alone, and carry the modifier.
std::vector<xcb_keycode_t> modifierKeys(
    const KeySymbols& symbols, std::uint8_t modifier, xcb_keysym_t left, xcb_keysym_t right)
{
    std::vector<xcb_keycode_t> result;
    for (const xcb_keysym_t symbol : {left, right}) {
        for (const xcb_keycode_t key : symbols.keysFor(symbol, symbols.lockedGroup)) {
            if (symbols.keys[key].modifiers & modifier)
                result.push_back(key);
        }
    }
    return result;
}

bool switchesGroup(xcb_keysym_t symbol)
{
    return symbol >= XKB_KEY_ISO_Group_Latch && symbol <= XKB_KEY_ISO_Last_Group_Lock;
}

} // namespace

PasteChord pasteChordOf(const QString& instance, const QString& className)
{
    const auto isNamed = [&](const ClassRule& rule) {
        return className.compare(rule.name, Qt::CaseInsensitive) == 0
            || instance.compare(rule.name, Qt::CaseInsensitive) == 0;
    };
    const auto* const rule = std::ranges::find_if(classRules, isNamed);
    return rule == classRules.end() ? PasteChord::controlV : rule->chord;
}

bool switchLayoutTogether(xcb_keycode_t key, xcb_keycode_t other, const KeySymbols& symbols)
{
    const auto switches = [&symbols](xcb_keycode_t second, xcb_keycode_t first) {
        return switchesGroup(symbols.symbol(second, symbols.lockedGroup, symbols.keys[first].modifiers));
    };
    return switches(key, other) || switches(other, key);
}

std::optional<PasteKeys> findPasteKeys(PasteChord wanted, const KeySymbols& symbols)
{
    PasteKeys keys;
    keys.controls = modifierKeys(symbols, XCB_MOD_MASK_CONTROL, XKB_KEY_Control_L, XKB_KEY_Control_R);
    keys.shifts = modifierKeys(symbols, XCB_MOD_MASK_SHIFT, XKB_KEY_Shift_L, XKB_KEY_Shift_R);
    if (keys.controls.empty() || keys.shifts.empty())
        return std::nullopt;

    const bool canCombine = wanted != PasteChord::controlShiftV
        || !switchLayoutTogether(keys.controls.front(), keys.shifts.front(), symbols);
    if (const auto v = symbols.keyFor(XKB_KEY_v); v && wanted != PasteChord::shiftInsert && canCombine) {
        keys.chord = wanted;
        keys.target = *v;
        return keys;
    }
    if (const auto insert = symbols.keyFor(XKB_KEY_Insert)) {
        keys.chord = PasteChord::shiftInsert;
        keys.target = *insert;
        return keys;
    }
    return std::nullopt;
}

} // namespace Tavrin
