#include "Platform/Linux/InstanceGuard.h"

#include "Platform/Linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <mutex>
#include <thread>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

QString serviceName()
{
    return QStringLiteral("app.tavrin.Tavrin");
}

QString objectPath()
{
    return QStringLiteral("/app/tavrin/Tavrin");
}

constexpr auto startupIdKey = "desktop-startup-id";
constexpr auto activationTokenKey = "activation-token";

/// How long the first instance may take to answer a second start.
constexpr int answerLimitMilliseconds = 600;

constexpr auto busAddressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// A bus answers in a fraction of a millisecond.
constexpr auto busLimit = 250ms;

void wakeFirstInstance(const QDBusConnection& bus, const ActivationContext& context)
{
    auto call = QDBusMessage::createMethodCall(serviceName(), objectPath(),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setArguments({QVariantMap{
        {QLatin1String(startupIdKey), context.token}, {QLatin1String(activationTokenKey), context.token}}});
    bus.call(call, QDBus::Block, answerLimitMilliseconds);
}

} // namespace

/// What the guard and its thread share. The guard may be gone when a bus at last answers.
struct InstanceGuard::Lease {
    std::mutex mutex;
    InstanceGuard* guard = nullptr;
};

InstanceGuard::Role InstanceGuard::claimName(Lease& lease, const ActivationContext& context)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return InstanceGuard::Role::unknown;
    {
        // The object first: whoever finds the name must find it answering.
        const std::lock_guard lock(lease.mutex);
        if (!lease.guard)
            return InstanceGuard::Role::unknown;
        bus.registerObject(objectPath(), lease.guard, QDBusConnection::ExportScriptableSlots);
    }
    const auto reply = bus.interface()->registerService(serviceName());
    if (!reply.isValid())
        return InstanceGuard::Role::unknown;
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return InstanceGuard::Role::first;
    wakeFirstInstance(bus, context);
    return InstanceGuard::Role::second;
}

InstanceGuard::InstanceGuard(const ActivationContext& context)
    : m_token(context.token)
    , m_lease(std::make_shared<Lease>())
{
    m_lease->guard = this;
    std::promise<Role> promise;
    m_role = promise.get_future().share();
    // Without an address libdbus would start a bus of its own, which nobody else is on; with a bus that
    // hangs the toolkit would, too. An address that cannot be stands in for both until the toolkit has
    // tried it once, and remembers that there is no bus.
    const QByteArray address = SessionBus::address();
    if (address.isEmpty() || !SessionBus::answers(address, busLimit)) {
        m_hiddenAddress = qgetenv(busAddressVariable);
        qputenv(busAddressVariable, "disabled:");
    }
    std::thread([lease = m_lease, context, answer = std::move(promise)]() mutable {
        answer.set_value(claimName(*lease, context));
    }).detach();
}

InstanceGuard::~InstanceGuard()
{
    const std::lock_guard lock(m_lease->mutex);
    m_lease->guard = nullptr;
}

InstanceGuard::Role InstanceGuard::role(std::chrono::milliseconds limit)
{
    if (m_role.wait_for(limit) != std::future_status::ready)
        return Role::unknown;
    restoreBusAddress();
    return m_role.get();
}

void InstanceGuard::restoreBusAddress()
{
    if (!m_hiddenAddress)
        return;
    if (m_hiddenAddress->isEmpty())
        qunsetenv(busAddressVariable);
    else
        qputenv(busAddressVariable, *m_hiddenAddress);
    m_hiddenAddress.reset();
}

void InstanceGuard::setActivationHandler(std::function<void(const ActivationContext&)> handler)
{
    m_handler = std::move(handler);
    if (std::exchange(m_hasEarlyActivation, false))
        m_handler(m_earlyActivation);
}

void InstanceGuard::Activate(const QVariantMap& platformData)
{
    QString token = platformData.value(QLatin1String(activationTokenKey)).toString();
    if (token.isEmpty())
        token = platformData.value(QLatin1String(startupIdKey)).toString();
    const ActivationContext context{startupTime(token), token};
    if (m_handler)
        return m_handler(context);
    m_hasEarlyActivation = true;
    m_earlyActivation = context;
}

void InstanceGuard::Open(const QStringList& /*uris*/, const QVariantMap& platformData)
{
    // The program has no documents; being asked to open one is being asked to come forward.
    Activate(platformData);
}

void InstanceGuard::ActivateAction(
    const QString& /*name*/, const QVariantList& /*parameters*/, const QVariantMap& platformData)
{
    Activate(platformData);
}

ActivationContext takeActivationFromEnvironment()
{
    QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    if (token.isEmpty())
        token = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    return {startupTime(token), token};
}

std::uint32_t startupTime(const QString& startupId)
{
    const qsizetype position = startupId.lastIndexOf(u"_TIME");
    return position < 0 ? 0 : startupId.mid(position + 5).toUInt();
}

} // namespace Tavrin
