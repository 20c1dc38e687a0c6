#pragma once

#include <QObject>
#include <cstdint>
#include <memory>
#include <xcb/xcb.h>

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
    std::uint32_t owner() const { return m_owner; }

Q_SIGNALS:
    /// Also emitted, with owner() 0 first, when a new tray has got the window id of the one before.
    void changed();

private:
    void listen(int screen);
    void drain();
    bool concernsTray(const xcb_generic_event_t& event);
    void look();
    std::uint32_t askOwner() const;
    void setOwner(std::uint32_t owner);

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::uint32_t m_selection = 0;
    std::uint32_t m_manager = 0;
    std::uint32_t m_owner = 0;
};

} // namespace Tavrin
