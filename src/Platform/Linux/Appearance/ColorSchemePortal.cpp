#include "Platform/Linux/Appearance/ColorSchemePortal.h"

#include "Platform/Linux/DesktopPortal.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <limits>

namespace Tavrin {
namespace {

// Names and values of the XDG desktop portal's documentation, flatpak.github.io/xdg-desktop-portal.
QString settingsInterface()
{
    return QStringLiteral("org.freedesktop.portal.Settings");
}

QString appearanceNamespace()
{
    return QStringLiteral("org.freedesktop.appearance");
}

QString colorSchemeKey()
{
    return QStringLiteral("color-scheme");
}

/// Every portal so far has this one; it is deprecated in favour of the other.
QString oldMethod()
{
    return QStringLiteral("Read");
}

QString newMethod()
{
    return QStringLiteral("ReadOne");
}

constexpr uint darkScheme = 1;
constexpr uint lightScheme = 2;

/// Nothing waits for the answer, so one that comes late is as good: a portal that is only being started may
/// take seconds.
constexpr int anyTime = std::numeric_limits<int>::max();

std::optional<bool> prefersDark(QVariant value)
{
    // The deprecated method wraps the value twice.
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    switch (value.toUInt()) {
    case darkScheme:
        return true;
    case lightScheme:
        return false;
    default:
        return std::nullopt;
    }
}

} // namespace

ColorSchemePortal::ColorSchemePortal(const QDBusConnection& bus)
    : m_bus(bus)
{
}

void ColorSchemePortal::start()
{
    if (!m_bus.isConnected())
        return;
    auto* const owners
        = new QDBusServiceWatcher(portalService(), m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(newOwner); });
    // From any sender: naming the service would make Qt wait for the bus to tell its owner, and
    // whoever sends it only makes us ask once more.
    m_bus.connect({}, portalPath(), settingsInterface(), QStringLiteral("SettingChanged"),
        {appearanceNamespace(), colorSchemeKey()}, {}, this, SLOT(ask()));
    ask();
}

void ColorSchemePortal::ownerChanged(const QString& newOwner)
{
    // One that has gone is not started again by us.
    if (!newOwner.isEmpty())
        return ask();
    ++m_question;
    settle(std::nullopt);
}

void ColorSchemePortal::ask()
{
    ask(oldMethod());
}

void ColorSchemePortal::ask(const QString& method)
{
    QDBusMessage message
        = QDBusMessage::createMethodCall(portalService(), portalPath(), settingsInterface(), method);
    message << appearanceNamespace() << colorSchemeKey();
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, anyTime), this);
    connect(call, &QDBusPendingCallWatcher::finished, this,
        [this, method, question = ++m_question](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (question == m_question)
                answered(finished, method);
        });
}

void ColorSchemePortal::answered(QDBusPendingCallWatcher* call, const QString& method)
{
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (reply.error().type() == QDBusError::UnknownMethod && method == oldMethod())
        return ask(newMethod());
    settle(reply.isValid() ? Tavrin::prefersDark(reply.value().variant()) : std::nullopt);
}

void ColorSchemePortal::settle(std::optional<bool> prefersDark)
{
    if (std::exchange(m_prefersDark, prefersDark) != prefersDark)
        Q_EMIT changed();
}

} // namespace Tavrin
