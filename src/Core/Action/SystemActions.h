#pragma once

#include "Core/Model/ActionType.h"

#include <QString>
#include <functional>

namespace Tavrin {

/// The desktop's own way to carry out each system action. Main thread.
class SystemActions {
public:
    using Failure = std::function<void(const QString& reason)>;

    virtual ~SystemActions() = default;

    /// Starts the action and returns at once; no tool, however slow, holds another action up. The failure
    /// arrives on the main thread, at most once, with a reason in words.
    virtual void perform(SystemActionType action, Failure failure) = 0;
};

} // namespace Tavrin
