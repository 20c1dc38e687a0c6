#pragma once

#include "Core/Action/SystemActions.h"

#include <functional>

namespace Tavrin {

/// What the program does itself for a system action, without another program. Main thread.
class NativeControls {
public:
    virtual ~NativeControls() = default;

    /// The X server of this session can turn the display off.
    virtual bool hasDisplayPower() = 0;
    /// Turns the display off through the X server; `done` comes later, once.
    virtual void turnDisplayOff(std::function<void(bool isOff)> done) = 0;
    /// Calls `block` later, once, as soon as no key is down, and after a moment at the latest: letting go of
    /// a key wakes a display that has just been turned off.
    virtual void whenKeysAreUp(std::function<void()> block) = 0;
    /// Changes the volume of the default output as the action says.
    virtual void changeVolume(SystemActionType action, SystemActions::Failure failure) = 0;
};

} // namespace Tavrin
