#pragma once

#include <QByteArray>

namespace Tavrin {

/// What is there on the running desktop, as far as the choice of a means asks. Any one thread.
class Surroundings {
public:
    virtual ~Surroundings() = default;

    /// A program of this name is in $PATH.
    virtual bool hasProgram(const char* name) = 0;
    /// Somebody owns this name on the session bus.
    virtual bool isOnSessionBus(const char* busName) = 0;
    /// The session bus could start an owner of this name.
    virtual bool canStartOnSessionBus(const char* busName) = 0;
    /// Somebody owns this name on the system bus.
    virtual bool isOnSystemBus(const char* busName) = 0;
    /// The schema is installed and has the key.
    virtual bool hasSetting(const QByteArray& schema, const QByteArray& key) = 0;
    /// Value of the environment's variable; empty if it is not set.
    virtual QByteArray variable(const char* name) = 0;
    /// The X server can turn the display off.
    virtual bool hasDisplayPower() = 0;
};

} // namespace Tavrin
