#include "Platform/Linux/Tray/TraySelectionWatch.h"

#include "Platform/Linux/X11/XcbReply.h"

#include <QSocketNotifier>

namespace Tavrin {

void TraySelectionWatch::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

TraySelectionWatch::TraySelectionWatch() = default;
TraySelectionWatch::~TraySelectionWatch() = default;

void TraySelectionWatch::start()
{
    int screen = 0;
    m_connection.reset(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    m_tray.emplace(m_connection.get(), screen, "_NET_SYSTEM_TRAY_S", 0U, [this] { Q_EMIT changed(); });
    m_notifier = std::make_unique<QSocketNotifier>(
        xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &TraySelectionWatch::drain);
    m_tray->look();
    drain();
}

void TraySelectionWatch::drain()
{
    // Looking reads from the socket and may queue events that the notifier never tells of.
    bool isStale = true;
    while (isStale) {
        isStale = false;
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())})
            isStale = m_tray->concerns(*event) || isStale;
        if (isStale)
            m_tray->look();
    }
    if (xcb_connection_has_error(m_connection.get())) {
        m_notifier->setEnabled(false);
        m_tray->forget();
    }
}

} // namespace Tavrin
