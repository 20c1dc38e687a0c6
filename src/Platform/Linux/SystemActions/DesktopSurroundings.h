#pragma once

#include "Platform/Linux/SystemActions/BusNames.h"
#include "Platform/Linux/SystemActions/Surroundings.h"

namespace Tavrin {

/// The desktop that this program runs on, as it is now: made for one choice and thrown away, so that nothing
/// it knows grows old. It reads folders and asks buses: not for the main thread.
class DesktopSurroundings : public Surroundings {
public:
    /// Whether the display can be turned off is known on the main thread only.
    explicit DesktopSurroundings(bool hasDisplayPower);

    bool hasProgram(const char* name) override;
    bool isOnSessionBus(const char* busName) override;
    bool canStartOnSessionBus(const char* busName) override;
    bool isOnSystemBus(const char* busName) override;
    bool hasSetting(const QByteArray& schema, const QByteArray& key) override;
    QByteArray variable(const char* name) override { return qgetenv(name); }
    bool hasDisplayPower() override { return m_hasDisplayPower; }

private:
    BusNames m_session;
    BusNames m_system;
    bool m_hasDisplayPower;
};

} // namespace Tavrin
