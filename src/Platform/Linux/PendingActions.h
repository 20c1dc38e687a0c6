#pragma once

#include "Core/Action/SystemActions.h"

namespace Tavrin {

/// Says that no action is known.
class PendingSystemActions : public SystemActions {
public:
    void perform(SystemActionType action, Failure failure) override
    {
        failure(QStringLiteral("Bản này chưa chạy được hành động “%1”").arg(title(action)));
    }
};

} // namespace Tavrin
