#pragma once

#include "Platform/Linux/X11/KeySymbols.h"

#include <QString>
#include <optional>
#include <xcb/xcb.h>

namespace Tavrin {

/// The combinations that make programs paste.
enum class PasteChord { controlV, controlShiftV, shiftInsert };

/// A chord on the keyboard that is there.
struct PasteKeys {
    PasteChord chord = PasteChord::controlV;
    /// V or Insert.
    xcb_keycode_t target = 0;
    /// The keys to press for the modifiers, the preferred ones first; never empty.
    std::vector<xcb_keycode_t> controls;
    std::vector<xcb_keycode_t> shifts;

    bool usesControl() const { return chord != PasteChord::shiftInsert; }
    bool usesShift() const { return chord != PasteChord::controlV; }
};

/// The chord that a program with this WM_CLASS (instance and class) takes as paste.
PasteChord pasteChordOf(const QString& instance, const QString& className);

/// True if the layout changes when one of the keys goes down while the other is held. Users choose such
/// pairs to switch between layouts.
bool switchLayoutTogether(xcb_keycode_t key, xcb_keycode_t other, const KeySymbols& symbols);

/// `wanted`, or Shift+Insert where the keyboard cannot press that; nothing if it cannot press either.
std::optional<PasteKeys> findPasteKeys(PasteChord wanted, const KeySymbols& symbols);

} // namespace Tavrin
