#pragma once

#include "Platform/Linux/SystemActions/NativeControls.h"

namespace Tavrin {

/// Says that neither the display's power nor the volume is in our hands.
class PendingControls : public NativeControls {
public:
    bool hasDisplayPower() override { return false; }
    void turnDisplayOff(std::function<void(bool isOff)> done) override { done(false); }
    void whenKeysAreUp(std::function<void()> block) override { block(); }
    void changeVolume(SystemActionType action, SystemActions::Failure failure) override
    {
        failure(QStringLiteral("Bản này chưa chạy được hành động “%1”").arg(title(action)));
    }
};

} // namespace Tavrin
