#pragma once

#include "Platform/Linux/X11/HeldKeys.h"
#include "Platform/Linux/X11/PasteChord.h"
#include "Platform/Linux/X11/X11KeyInjector.h"

#include <vector>

namespace Tavrin {

/// The strokes that paste while the keys in `held` are down, in order.
///
/// A modifier that the user holds is let go and pressed again on the keyboard that holds it: the user's
/// own release then ends it, and a hotkey tapped again while it is held is still one. Control stays down
/// around that, for a menu bar takes the focus when Alt was pressed and let go alone, and a desktop opens
/// its overview for Super; except where Control together with that modifier switches the layout. Other
/// keys are let go first, since the server may be repeating them, and are not pressed again. Keys of locks
/// and layout switches are left alone.
std::vector<X11KeyInjector::Stroke> pasteStrokes(
    const PasteKeys& keys, const HeldKeys& held, const KeySymbols& symbols);

} // namespace Tavrin
