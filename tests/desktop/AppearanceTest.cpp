// The desktop's wish for dark windows, from a portal on the private bus and from a settings manager on the
// private X server.
#include "Platform/Linux/Appearance/DesktopAppearance.h"

#include "support/MockBus.h"
#include "support/SettingsManager.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <QElapsedTimer>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::SettingsBytes;
using Testing::SettingsManager;
using Testing::waitFor;

constexpr uint noPreference = 0;
constexpr uint dark = 1;
constexpr uint light = 2;

constexpr auto connectionName = "portal";

/// When it returns, the bus has seen what was sent on the connection, and what it had for it has come.
void reachBus(const QDBusConnection& bus)
{
    bus.interface()->isServiceRegistered(QStringLiteral("app.tavrin.Nobody"));
}

SettingsBytes theme(const QByteArray& name)
{
    return SettingsBytes().text("Net/ThemeName", name);
}

/// org.freedesktop.portal.Desktop on the private bus, on a connection of its own.
class Portal {
public:
    explicit Portal(uint newScheme)
        : scheme(newScheme)
    {
        m_mock.answer = [this](const QDBusMessage& call) { return answer(call); };
        m_mock.own(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~Portal() { QDBusConnection::disconnectFromBus(QLatin1String(connectionName)); }
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;

    void change(uint newScheme)
    {
        scheme = newScheme;
        signal(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"));
    }
    void signal(const QString& space, const QString& key)
    {
        QDBusMessage message = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        message << space << key << QVariant::fromValue(QDBusVariant(scheme));
        m_bus.send(message);
    }
    /// Answers the oldest question that was left open.
    void answerLate(uint lateScheme)
    {
        ASSERT_FALSE(open.isEmpty());
        m_bus.send(open.takeFirst().createReply(nested(lateScheme)));
    }
    qsizetype questions() const { return m_mock.record.size(); }
    const QStringList& record() const { return m_mock.record; }

    uint scheme;
    bool hangs = false;
    bool isNew = false;
    bool knowsNoScheme = false;
    QList<QDBusMessage> open;

private:
    static QVariant nested(uint value)
    {
        return QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(value))));
    }
    QDBusMessage answer(const QDBusMessage& call)
    {
        if (hangs) {
            open.append(call);
            return {};
        }
        if (knowsNoScheme)
            return call.createErrorReply(
                QStringLiteral("org.freedesktop.portal.Error.NotFound"), QStringLiteral("not found"));
        if (isNew && call.member() == u"Read")
            return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method"));
        return call.createReply(isNew ? QVariant::fromValue(QDBusVariant(scheme)) : nested(scheme));
    }

    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QLatin1String(connectionName));
    Testing::MockBus m_mock{m_bus};
};

class DesktopLooks : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(connection);
        connection->watch();
        // The bus knows that the test before no longer listens.
        reachBus(QDBusConnection::sessionBus());
        QObject::connect(&appearance, &Appearance::isDarkChanged, &appearance, [this] { ++changes; });
    }
    bool becomes(bool isDark)
    {
        return waitFor([this, isDark] { return appearance.isDark() == isDark; });
    }
    /// True once the portal has been asked this often and its answers have come in.
    bool isAsked(const Portal& portal, qsizetype times)
    {
        const bool asked = waitFor([&] { return portal.questions() >= times; });
        reachBus(QDBusConnection(QLatin1String(connectionName)));
        reachBus(QDBusConnection::sessionBus());
        drainEvents();
        return asked && portal.questions() == times;
    }

    std::unique_ptr<X11Connection> connection = X11Connection::open();
    DesktopAppearance appearance{*connection};
    int changes = 0;
};

TEST_F(DesktopLooks, AreLightWhereNobodySays)
{
    appearance.start();
    EXPECT_FALSE(appearance.isDark());
    drainEvents();
    EXPECT_FALSE(appearance.isDark());
    EXPECT_EQ(changes, 0);
}

TEST_F(DesktopLooks, FollowThePortal)
{
    Portal portal(dark);
    appearance.start();
    EXPECT_TRUE(becomes(true));
    EXPECT_EQ(portal.record(),
        QStringList(
            QStringLiteral("/org/freedesktop/portal/desktop Read org.freedesktop.appearance color-scheme")));
    portal.change(light);
    EXPECT_TRUE(becomes(false));
    portal.change(dark);
    EXPECT_TRUE(becomes(true));
    portal.change(noPreference);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes, 4);
}

TEST_F(DesktopLooks, AskOnlyForWhatConcernsThem)
{
    Portal portal(light);
    appearance.start();
    ASSERT_TRUE(isAsked(portal, 1));
    portal.signal(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("accent-color"));
    portal.signal(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("color-scheme"));
    portal.change(light);
    EXPECT_TRUE(isAsked(portal, 2));
    EXPECT_EQ(changes, 0);
}

TEST_F(DesktopLooks, AskANewPortalByItsOneMethod)
{
    Portal portal(dark);
    portal.isNew = true;
    appearance.start();
    EXPECT_TRUE(becomes(true));
    EXPECT_EQ(portal.record().value(1),
        QStringLiteral("/org/freedesktop/portal/desktop ReadOne org.freedesktop.appearance color-scheme"));
}

TEST_F(DesktopLooks, FollowAPortalThatComesLaterAndGoes)
{
    appearance.start();
    drainEvents();
    auto portal = std::make_unique<Portal>(dark);
    EXPECT_TRUE(becomes(true));
    portal.reset();
    EXPECT_TRUE(becomes(false));
    portal = std::make_unique<Portal>(dark);
    EXPECT_TRUE(becomes(true));
}

TEST_F(DesktopLooks, WaitForNoPortalThatHangs)
{
    Portal portal(dark);
    portal.hangs = true;
    SettingsManager settings(theme("Adwaita-dark"));
    QElapsedTimer clock;
    clock.start();
    appearance.start();
    EXPECT_LT(clock.elapsed(), 200);
    EXPECT_TRUE(appearance.isDark()) << "the theme says so meanwhile";
    ASSERT_TRUE(waitFor([&] { return !portal.open.isEmpty(); }));
    EXPECT_TRUE(appearance.isDark());
    portal.answerLate(light);
    EXPECT_TRUE(becomes(false));
}

TEST_F(DesktopLooks, HeedTheLastAnswerOnly)
{
    Portal portal(light);
    portal.hangs = true;
    appearance.start();
    ASSERT_TRUE(waitFor([&] { return portal.open.size() == 1; }));
    portal.hangs = false;
    portal.change(dark);
    ASSERT_TRUE(becomes(true));
    portal.answerLate(light);
    ASSERT_TRUE(isAsked(portal, 2));
    EXPECT_TRUE(appearance.isDark());
}

TEST_F(DesktopLooks, StartThePortalWhereItIsInstalled)
{
    const Testing::TemporaryFolder folder;
    const QString services = qEnvironmentVariable("XDG_DATA_HOME") + u"/dbus-1/services";
    ASSERT_TRUE(QDir().mkpath(services));
    QFile file(services + u"/portal.service");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // A program that ends well might still bring the name by a child: the bus would keep our question for it.
    file.write("[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec=/bin/sh -c 'touch "
        + folder.path(QStringLiteral("started")).toUtf8() + "; exit 1'\n");
    file.close();
    const auto reload = [] {
        QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig")));
    };
    reload();
    appearance.start();
    EXPECT_TRUE(waitFor([&] { return folder.names().contains(QStringLiteral("started")); }));
    EXPECT_TRUE(file.remove());
    reload();
    drainEvents();
    EXPECT_FALSE(appearance.isDark());
}

TEST_F(DesktopLooks, FollowTheThemeWhereThereIsNoPortal)
{
    auto settings = std::make_unique<SettingsManager>(theme("Greybird-dark"));
    appearance.start();
    EXPECT_TRUE(appearance.isDark()) << "the first frame has it, before any event is read";
    settings->set(theme("Greybird"));
    EXPECT_TRUE(becomes(false));
    settings->set(theme("Greybird").integer("Gtk/ApplicationPreferDarkTheme", 1));
    EXPECT_TRUE(becomes(true));
    settings.reset();
    EXPECT_TRUE(becomes(false)) << "nobody says any more";
    settings = std::make_unique<SettingsManager>(theme("Greybird-dark"));
    EXPECT_TRUE(becomes(true));
    // The next manager takes the selection while the one before is still there.
    const SettingsManager next(theme("Greybird"));
    EXPECT_TRUE(becomes(false));
    settings.reset();
    drainEvents();
    EXPECT_FALSE(appearance.isDark());
}

TEST_F(DesktopLooks, FollowASettingsManagerThatComesLater)
{
    appearance.start();
    EXPECT_FALSE(appearance.isDark());
    const SettingsManager settings(theme("Adwaita-dark"));
    EXPECT_TRUE(becomes(true));
}

TEST_F(DesktopLooks, AreThePortalsBeforeTheThemes)
{
    Portal portal(light);
    SettingsManager settings(theme("Adwaita-dark"));
    appearance.start();
    EXPECT_TRUE(appearance.isDark());
    EXPECT_TRUE(becomes(false));
    portal.change(noPreference);
    EXPECT_TRUE(becomes(true)) << "a portal without a preference leaves it to the theme";
    portal.knowsNoScheme = true;
    portal.change(light);
    ASSERT_TRUE(isAsked(portal, 3));
    EXPECT_TRUE(appearance.isDark()) << "nor does a portal that knows no scheme say anything";
    settings.set(theme("Adwaita"));
    EXPECT_TRUE(becomes(false));
}

} // namespace
} // namespace Tavrin
