#include "Platform/Linux/SystemActions/BusNames.h"

#include "Platform/Linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QUuid>
#include <algorithm>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// A bus answers in a fraction of a millisecond, but a machine that is short of breath may need more: taken
/// for silent, the bus would make the desktop another one, and the action would change the wrong setting.
constexpr auto connectLimit = 2s;
constexpr int answerLimitMilliseconds = 3000;

} // namespace

BusNames::BusNames(QByteArray address)
    : m_address(std::move(address))
{
}

BusNames::~BusNames()
{
    if (!m_connection.isEmpty())
        QDBusConnection::disconnectFromBus(m_connection);
}

bool BusNames::isOwned(const QString& name)
{
    if (!m_owned)
        m_owned = ask(QStringLiteral("ListNames"));
    if (!name.endsWith(u'*'))
        return m_owned->contains(name);
    const auto beginning = QStringView(name).chopped(1);
    return std::any_of(
        m_owned->begin(), m_owned->end(), [&](const QString& owned) { return owned.startsWith(beginning); });
}

bool BusNames::isStartable(const QString& name)
{
    if (!m_startable)
        m_startable = ask(QStringLiteral("ListActivatableNames"));
    return m_startable->contains(name);
}

QStringList BusNames::ask(const QString& method)
{
    // The toolkit connects without any limit of its own.
    if (m_address.isEmpty() || !SessionBus::answers(m_address, connectLimit))
        return {};
    if (m_connection.isEmpty())
        m_connection = QUuid::createUuid().toString();
    const auto bus = QDBusConnection::connectToBus(QString::fromLocal8Bit(m_address), m_connection);
    if (!bus.isConnected())
        return {};
    const QString service = QStringLiteral("org.freedesktop.DBus");
    const auto call
        = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/DBus"), service, method);
    return bus.call(call, QDBus::Block, answerLimitMilliseconds).arguments().value(0).toStringList();
}

} // namespace Tavrin
