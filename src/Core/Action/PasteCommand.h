#pragma once

namespace Tavrin {

/// Presses the desktop's paste command in whatever has the focus, for the user. Main thread.
class PasteCommand {
public:
    virtual ~PasteCommand() = default;

    /// Lets go of the modifiers that the user still holds from the hotkey, and presses paste. Returns at
    /// once; false if no key can be pressed for the user here (permission or means are missing).
    virtual bool post() = 0;
};

} // namespace Tavrin
