#pragma once

#include "Platform/Linux/X11/X11Connection.h"

#include <QTimer>
#include <functional>
#include <vector>

namespace Tavrin {

/// Puts the displays of an X server to sleep through its extension for display power (DPMS). The next key or
/// movement of the pointer wakes them. Main thread.
class DisplayPower : private X11EventListener {
public:
    /// The connection outlives this.
    explicit DisplayPower(X11Connection& connection);
    ~DisplayPower() override;
    Q_DISABLE_COPY_MOVE(DisplayPower)

    /// True if the server can switch displays off. Virtual ones and XWayland cannot. Asks the server.
    bool isAvailable() const;

    /// Switches them off now; false if the server cannot or does not want to.
    bool turnOff();

    /// The same once no key is down, so that letting go of the hotkey does not wake them again, or after two
    /// seconds. `done` is told once what turnOff() said, never from within this call.
    void turnOffWhenKeysAreUp(std::function<void(bool isOff)> done);

private:
    void handleEvent(const xcb_generic_event_t& event) override;
    bool areKeysUp() const;
    void selectRawReleases(bool select);
    void turnOffIfKeysAreUp();
    void endWaiting();

    X11Connection& m_connection;
    std::vector<std::function<void(bool)>> m_waiting;
    QTimer m_limit;
};

} // namespace Tavrin
