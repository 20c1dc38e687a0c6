#pragma once

#include "Core/HotKey/HotKeyManager.h"

#include <functional>

namespace Tavrin {

class X11Connection;

/// On X11 a program may press keys for others exactly when the server has the XTEST extension; there is
/// no user to ask.
class X11Accessibility : public AccessibilityService {
public:
    /// `openSettings` shows the desktop's page for such permissions.
    X11Accessibility(const X11Connection& connection, std::function<void()> openSettings);

    bool isTrusted() const override;
    bool requestTrust() override;
    void openAccessibilitySettings() override;

private:
    const X11Connection& m_connection;
    std::function<void()> m_openSettings;
};

} // namespace Tavrin
