#include "Platform/Linux/Tray/DesktopTrayPresence.h"

#include <QGuiApplication>

#include <chrono>

namespace Tavrin {
namespace {

/// A panel that serves both kinds takes the XEmbed selection and the bus name a few tenths of a second
/// apart; at log-in we must not settle for the first of them.
constexpr std::chrono::milliseconds patienceWithXEmbed{1000};

} // namespace

void DesktopTrayPresence::start()
{
    m_notifiers.emplace(QDBusConnection::sessionBus());
    connect(&*m_notifiers, &StatusNotifierWatch::changed, this, &DesktopTrayPresence::evaluate);
    connect(&m_selection, &TraySelectionWatch::changed, this, &DesktopTrayPresence::evaluate);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &DesktopTrayPresence::evaluate);
    if (QDBusConnection::sessionBus().isConnected())
        m_patience.start(patienceWithXEmbed);
    m_notifiers->start();
    // Under Wayland, X11's tray would want an X11 window of ours.
    if (QGuiApplication::platformName() == u"xcb")
        m_selection.start();
}

void DesktopTrayPresence::evaluate()
{
    const Tray tray = present();
    if (tray == m_tray)
        return;
    const bool hadTray = m_tray.kind != TrayKind::none;
    m_tray = tray;
    if (hadTray)
        Q_EMIT vanished();
    if (tray.kind == TrayKind::none)
        return;
    m_keptKind = tray.kind;
    Q_EMIT appeared(tray.kind);
}

DesktopTrayPresence::Tray DesktopTrayPresence::present() const
{
    if (m_keptKind != TrayKind::xembed && m_notifiers->state() == StatusNotifierWatch::State::present)
        return {TrayKind::statusNotifier, m_notifiers->watcher()};
    if (m_selection.owner() != 0 && isXEmbedWanted())
        return {TrayKind::xembed, QString::number(m_selection.owner())};
    return {};
}

bool DesktopTrayPresence::isXEmbedWanted() const
{
    if (m_keptKind != TrayKind::none)
        return m_keptKind == TrayKind::xembed;
    return m_notifiers->state() == StatusNotifierWatch::State::absent && !m_patience.isActive();
}

} // namespace Tavrin
