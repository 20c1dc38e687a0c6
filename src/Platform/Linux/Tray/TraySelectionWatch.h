#pragma once

#include "Platform/Linux/X11/ManagerSelection.h"

#include <QObject>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace Tavrin {

/// Whether an XEmbed tray owns _NET_SYSTEM_TRAY_S<screen>, on an X connection of its own to $DISPLAY's
/// default screen. Main thread; waits for nobody but the X server.
class TraySelectionWatch : public QObject {
    Q_OBJECT

public:
    TraySelectionWatch();
    ~TraySelectionWatch() override;

    /// Called once. If there is no X server, there is no tray either.
    void start();

    /// Window of the tray, 0 for none.
    std::uint32_t owner() const { return m_tray ? m_tray->owner() : 0; }

Q_SIGNALS:
    /// Also emitted, with owner() 0 first, when a new tray has got the window id of the one before.
    void changed();

private:
    void drain();

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::optional<ManagerSelection> m_tray;
};

} // namespace Tavrin
