#pragma once

#include <QString>
#include <optional>

namespace Tavrin {

/// The system's registration of this program to start at login. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// True exactly when the system will start the program at login.
    virtual bool isEnabled() const = 0;
    /// Registers or removes the program; an error in words on failure, nothing on success.
    virtual std::optional<QString> registerItem() = 0;
    virtual std::optional<QString> unregisterItem() = 0;
};

} // namespace Tavrin
