#pragma once

#include "Core/Storage/ActivationPolicy.h"

namespace Tavrin {

/// The application as the desktop sees it. Main thread.
class ApplicationShell {
public:
    virtual ~ApplicationShell() = default;

    virtual ActivationPolicy activationPolicy() const = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// True if a window of ours has the focus.
    virtual bool isActive() const = 0;
    /// Takes our windows off the screen, so that the focus goes back to where it was before.
    virtual void hide() = 0;
    /// The desktop's own short sound.
    virtual void beep() = 0;
};

} // namespace Tavrin
