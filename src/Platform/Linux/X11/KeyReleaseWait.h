#pragma once

#include "Platform/Linux/X11/X11Connection.h"

#include <QTimer>
#include <functional>
#include <vector>

namespace Tavrin {

/// Puts off what a key that is let go would undo. Main thread.
class KeyReleaseWait : private X11EventListener {
public:
    /// The connection outlives this.
    explicit KeyReleaseWait(X11Connection& connection);
    /// Blocks that still wait are dropped.
    ~KeyReleaseWait() override;
    Q_DISABLE_COPY_MOVE(KeyReleaseWait)

    /// Calls `block` once when no key is down, or after two seconds; never from within this call.
    void whenKeysAreUp(std::function<void()> block);

private:
    void handleEvent(const xcb_generic_event_t& event) override;
    bool areKeysUp() const;
    void selectRawReleases(bool select);
    void proceedIfKeysAreUp();
    void proceed();

    X11Connection& m_connection;
    std::vector<std::function<void()>> m_waiting;
    QTimer m_limit;
};

} // namespace Tavrin
