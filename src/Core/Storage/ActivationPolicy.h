#pragma once

namespace Tavrin {

/// Whether the program shows among the running applications (Dock, task bar) or only in the tray.
enum class ActivationPolicy { regular, accessory };

/// The application as the desktop sees it. Main thread.
class ApplicationShell {
public:
    virtual ~ApplicationShell() = default;

    virtual ActivationPolicy activationPolicy() const = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
};

} // namespace Tavrin
