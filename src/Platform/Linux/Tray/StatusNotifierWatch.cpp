#include "Platform/Linux/Tray/StatusNotifierWatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace Tavrin {
namespace {

// Names of the StatusNotifierItem specification, freedesktop.org.
QString watcherService()
{
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}

QString watcherPath()
{
    return QStringLiteral("/StatusNotifierWatcher");
}

} // namespace

StatusNotifierWatch::StatusNotifierWatch(const QDBusConnection& bus)
    : m_bus(bus)
{
}

void StatusNotifierWatch::start()
{
    if (!m_bus.isConnected()) {
        settle(State::absent, {});
        return;
    }
    auto* const owners
        = new QDBusServiceWatcher(watcherService(), m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(newOwner); });
    // From any sender: naming the service would make Qt wait for the bus to tell its owner, and
    // whoever sends it only makes us ask once more.
    m_bus.connect({}, watcherPath(), watcherService(), QStringLiteral("StatusNotifierHostRegistered"), this,
        SLOT(ask()));
    ask();
}

void StatusNotifierWatch::ownerChanged(const QString& newOwner)
{
    if (!newOwner.isEmpty()) {
        ask();
        return;
    }
    ++m_question;
    settle(State::absent, {});
}

void StatusNotifierWatch::ask()
{
    QDBusMessage message = QDBusMessage::createMethodCall(watcherService(), watcherPath(),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << watcherService() << QStringLiteral("IsStatusNotifierHostRegistered");
    message.setAutoStartService(false);
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this,
        [this, question = ++m_question](QDBusPendingCallWatcher* finished) { answered(finished, question); });
}

void StatusNotifierWatch::answered(QDBusPendingCallWatcher* call, int question)
{
    call->deleteLater();
    if (question != m_question)
        return;
    const QDBusPendingReply<QDBusVariant> reply = *call;
    const QDBusError::ErrorType error = reply.error().type();
    if (error == QDBusError::NoReply || error == QDBusError::Timeout) {
        // A watcher that hangs may still come round. Until then the state stays as it is: a
        // QSystemTrayIcon made now would ask the same question and wait for the answer.
        ask();
        return;
    }
    const bool hasHost = reply.isValid() && reply.value().variant().toBool();
    settle(hasHost ? State::present : State::absent, hasHost ? reply.reply().service() : QString());
}

void StatusNotifierWatch::settle(State state, const QString& watcher)
{
    if (m_state == state && m_watcher == watcher)
        return;
    m_state = state;
    m_watcher = watcher;
    Q_EMIT changed();
}

} // namespace Tavrin
