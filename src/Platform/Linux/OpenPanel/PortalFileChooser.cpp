#include "Platform/Linux/OpenPanel/PortalFileChooser.h"

#include "Platform/Linux/DesktopPortal.h"
#include "Platform/Linux/OpenPanel/ApplicationChoice.h"
#include "Platform/Linux/SessionBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QFile>
#include <QUrl>
#include <QUuid>
#include <chrono>

namespace Tavrin {

/// One rule of a filter: a file pattern or a content type.
struct PortalFilterRule {
    uint kind = 0;
    QString text;
};

struct PortalFilter {
    QString name;
    QList<PortalFilterRule> rules;
};

// The portal's types (us) and (sa(us)); the names are what QtDBus looks for.
QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilterRule& rule)
{
    argument.beginStructure();
    argument << rule.kind << rule.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilterRule& rule)
{
    argument.beginStructure();
    argument >> rule.kind >> rule.text;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter& filter)
{
    argument.beginStructure();
    argument << filter.name << filter.rules;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter& filter)
{
    argument.beginStructure();
    argument >> filter.name >> filter.rules;
    argument.endStructure();
    return argument;
}

namespace {

using namespace std::chrono_literals;

/// A bus that is short of breath gets its time; the user sees nothing meanwhile.
constexpr auto connectLimit = 2s;
/// A portal that is only being started may take seconds; one that hangs must not keep the user for ever.
constexpr int answerLimitMilliseconds = 8000;

// Names and values of the XDG desktop portal's documentation, flatpak.github.io/xdg-desktop-portal.
QString requestInterface()
{
    return QStringLiteral("org.freedesktop.portal.Request");
}

constexpr uint patternRule = 0;
constexpr uint contentTypeRule = 1;
constexpr uint successResponse = 0;

PortalFilter applicationFilter()
{
    PortalFilter filter{ApplicationChoice::filterName(), {}};
    for (const QString& pattern : ApplicationChoice::filePatterns())
        filter.rules.append({patternRule, pattern});
    for (const QString& type : ApplicationChoice::contentTypes())
        filter.rules.append({contentTypeRule, type});
    return filter;
}

QVariantMap options(const QString& token)
{
    qDBusRegisterMetaType<PortalFilterRule>();
    qDBusRegisterMetaType<QList<PortalFilterRule>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
    // The portal wants the folder as bytes with a zero at the end.
    const QByteArray folder = QFile::encodeName(ApplicationChoice::folder()).append('\0');
    return {
        {QStringLiteral("handle_token"), token},
        {QStringLiteral("modal"), true},
        {QStringLiteral("multiple"), false},
        {QStringLiteral("filters"), QVariant::fromValue(QList<PortalFilter>{applicationFilter()})},
        {QStringLiteral("current_folder"), folder},
    };
}

/// Where the portal says that it puts the request with this token of ours.
QString requestPath(const QDBusConnection& bus, const QString& token)
{
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return portalPath() + u"/request/" + sender + u'/' + token;
}

QString parentName(std::uintptr_t window)
{
    constexpr int hexadecimal = 16;
    return window ? u"x11:" + QString::number(window, hexadecimal) : QString();
}

} // namespace

PortalConnection::PortalConnection()
    : m_name(QUuid::createUuid().toString())
{
    const QByteArray address = SessionBus::address();
    // The toolkit connects without any limit of its own.
    if (!address.isEmpty() && SessionBus::answers(address, connectLimit))
        QDBusConnection::connectToBus(QString::fromLocal8Bit(address), m_name);
}

PortalConnection::~PortalConnection()
{
    QDBusConnection::disconnectFromBus(m_name);
}

PortalFileChooser::PortalFileChooser(
    std::shared_ptr<PortalConnection> connection, std::uintptr_t window, Completion completion)
    : m_connection(std::move(connection))
    , m_completion(std::move(completion))
{
    if (!m_connection->isConnected()) {
        finishSoon({});
        return;
    }
    const QString token = u"tavrin" + QUuid::createUuid().toString(QUuid::Id128);
    listenTo(requestPath(m_connection->bus(), token));
    auto* const owners = new QDBusServiceWatcher(
        portalService(), m_connection->bus(), QDBusServiceWatcher::WatchForUnregistration, this);
    connect(owners, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        finish({true, std::nullopt});
    });
    open(window, token);
}

PortalFileChooser::~PortalFileChooser()
{
    if (m_completion && m_connection->isConnected())
        m_connection->bus().send(QDBusMessage::createMethodCall(
            portalService(), m_request, requestInterface(), QStringLiteral("Close")));
}

void PortalFileChooser::listenTo(const QString& request)
{
    // From any sender: naming the service would make Qt wait for the bus to tell its owner. Nobody else
    // knows the path.
    const QString signal = QStringLiteral("Response");
    QDBusConnection bus = m_connection->bus();
    if (!m_request.isEmpty())
        bus.disconnect(
            {}, m_request, requestInterface(), signal, this, SLOT(takeResponse(uint, QVariantMap)));
    m_request = request;
    bus.connect({}, m_request, requestInterface(), signal, this, SLOT(takeResponse(uint, QVariantMap)));
}

void PortalFileChooser::open(std::uintptr_t window, const QString& token)
{
    QDBusMessage message = QDBusMessage::createMethodCall(portalService(), portalPath(),
        QStringLiteral("org.freedesktop.portal.FileChooser"), QStringLiteral("OpenFile"));
    message << parentName(window) << ApplicationChoice::title() << options(token);
    auto* const call
        = new QDBusPendingCallWatcher(m_connection->bus().asyncCall(message, answerLimitMilliseconds), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &PortalFileChooser::answered);
}

void PortalFileChooser::answered(QDBusPendingCallWatcher* call)
{
    call->deleteLater();
    const QDBusPendingReply<QDBusObjectPath> reply = *call;
    if (!reply.isValid())
        return finish({});
    // Portals before version 0.9 choose the path themselves.
    if (reply.value().path() != m_request)
        listenTo(reply.value().path());
}

void PortalFileChooser::takeResponse(uint response, const QVariantMap& results)
{
    const QStringList addresses = results.value(QStringLiteral("uris")).toStringList();
    const QString path = response == successResponse ? QUrl(addresses.value(0)).toLocalFile() : QString();
    finish({true, path.isEmpty() ? std::nullopt : std::optional(path)});
}

void PortalFileChooser::finishSoon(const PortalAnswer& answer)
{
    QMetaObject::invokeMethod(
        this, [this, answer] { finish(answer); }, Qt::QueuedConnection);
}

void PortalFileChooser::finish(const PortalAnswer& answer)
{
    if (const Completion completion = std::exchange(m_completion, nullptr))
        completion(answer);
}

} // namespace Tavrin
