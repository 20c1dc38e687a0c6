#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace Tavrin {

/// Sees the events of a connection. Main thread.
class X11EventListener {
public:
    virtual ~X11EventListener() = default;
    virtual void handleEvent(const xcb_generic_event_t& event) = 0;
};

/// A connection to the X server of the program's own, watched by the event loop: it works whatever
/// platform plugin the windows use, and no toolkit's event handling stands before it. Main thread.
class X11Connection : public QObject {
    Q_OBJECT

public:
    /// Connects to $DISPLAY; null if there is no server. The extensions' data is on its way when this
    /// returns. Events are delivered once watch() was called.
    static std::unique_ptr<X11Connection> open();
    ~X11Connection() override;

    /// Starts watching the socket; needs the application object.
    void watch();

    xcb_connection_t* xcb() const { return m_connection; }
    xcb_window_t root() const { return m_screen->root; }
    const xcb_setup_t& setup() const { return *xcb_get_setup(m_connection); }
    int screenNumber() const { return m_screenNumber; }

    bool hasXInput2() const { return m_hasXInput2; }
    std::uint8_t xInputOpcode() const { return m_xInputOpcode; }
    /// First event code of the input extension.
    std::uint8_t xInputFirstEvent() const { return m_xInputFirstEvent; }
    bool hasXkb() const { return m_hasXkb; }
    /// First event code of the keyboard extension.
    std::uint8_t xkbFirstEvent() const { return m_xkbFirstEvent; }
    bool hasXTest() const { return m_hasXTest; }

    void addListener(X11EventListener* listener);
    /// It hears of nothing from here on, not even of the event that is being told.
    void removeListener(X11EventListener* listener);

    void flush() { xcb_flush(m_connection); }

    /// Reading a reply can leave events in the queue without waking the socket: call this after every
    /// round trip.
    void deliverQueuedEventsSoon();

Q_SIGNALS:
    /// The server is gone; nothing works any more.
    void lost();

private:
    X11Connection(xcb_connection_t* connection, int screenNumber);
    void initializeExtensions();
    void readEvents();

    xcb_connection_t* m_connection;
    int m_screenNumber;
    const xcb_screen_t* m_screen;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<X11EventListener*> m_listeners;
    bool m_hasXInput2 = false;
    bool m_hasXkb = false;
    bool m_hasXTest = false;
    std::uint8_t m_xInputOpcode = 0;
    std::uint8_t m_xInputFirstEvent = 0;
    std::uint8_t m_xkbFirstEvent = 0;
    bool m_deliveryScheduled = false;
};

} // namespace Tavrin
