#pragma once

#include "Platform/Linux/Sound/VolumeControl.h"
#include "Platform/Linux/SystemActions/NativeControls.h"
#include "Platform/Linux/X11/DisplayPower.h"
#include "Platform/Linux/X11/KeyReleaseWait.h"

namespace Tavrin {

/// The program's own controls on an X server. Each is made when it is first used.
class X11Controls : public NativeControls {
public:
    /// Both outlive this.
    X11Controls(X11Connection& connection, ChildWatcher& children);

    bool hasDisplayPower() override;
    void turnDisplayOff(std::function<void(bool isOff)> done) override;
    void whenKeysAreUp(std::function<void()> block) override;
    void changeVolume(SystemActionType action, SystemActions::Failure failure) override;

private:
    X11Connection& m_connection;
    ChildWatcher& m_children;
    DisplayPower m_displayPower;
    std::unique_ptr<KeyReleaseWait> m_keys;
    std::unique_ptr<VolumeControl> m_volume;
};

} // namespace Tavrin
