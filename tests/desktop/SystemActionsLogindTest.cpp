// Locking and sleeping through the login manager, on a bus of the whole system that is the test's own.
#include "support/Program.h"
#include "support/SystemActionsFixture.h"

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

using enum SystemActionType;

class LoginManager : public SystemActionsFixture {
protected:
    LoginManager()
    {
        const QString address = u"unix:path="_s + folder.path(u"system-bus"_s);
        daemon = std::make_unique<Program>(u"/usr/bin/dbus-daemon"_s,
            QStringList{u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s, u"--address"_s,
                address});
        // It prints when it listens; its socket is there before.
        EXPECT_TRUE(waitFor([this] { return !daemon->lines().isEmpty(); }));
        setVariable("DBUS_SYSTEM_BUS_ADDRESS", address.toLocal8Bit());
        setVariable("XDG_SESSION_ID", QByteArray());
        logind = std::make_unique<MockBus>(QDBusConnection::connectToBus(address, u"logind"_s));
        logind->own(u"org.freedesktop.login1"_s);
    }
    ~LoginManager() override
    {
        actions.reset();
        logind.reset();
        QDBusConnection::disconnectFromBus(u"logind"_s);
    }

    /// Refuses every call whose path and name begin like this.
    void refuse(const QString& beginning)
    {
        logind->answer = [beginning](const QDBusMessage& call) {
            const bool refused = QString(call.path() + u' ' + call.member()).startsWith(beginning);
            return refused
                ? call.createErrorReply(u"org.freedesktop.DBus.Error.AccessDenied"_s, u"Permission denied"_s)
                : call.createReply();
        };
    }

    bool becomes(const QStringList& record)
    {
        return waitFor([&] { return logind->record == record && isQuiet(); });
    }

    std::unique_ptr<Program> daemon;
    std::unique_ptr<MockBus> logind;
};

TEST_F(LoginManager, LocksThisSessionAndThenTheDisplayGoesOff)
{
    controls.displayPower = true;
    setVariable("XDG_SESSION_ID", "c7");
    perform(lockScreen);
    EXPECT_TRUE(becomes({u"/org/freedesktop/login1 LockSession c7"_s}));
    EXPECT_TRUE(waitFor([this] { return controls.record == QStringList{u"keys up"_s, u"display off"_s}; }));
    drainEvents();
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LoginManager, LocksTheSessionThatWeAreInWhereItsNameIsUnknown)
{
    perform(lockScreen);
    EXPECT_TRUE(becomes({u"/org/freedesktop/login1/session/auto Lock"_s}));
}

TEST_F(LoginManager, LocksTheSessionThatWeAreInWhereItsNameIsOfAnother)
{
    setVariable("XDG_SESSION_ID", "gone");
    refuse(u"/org/freedesktop/login1 LockSession"_s);
    perform(lockScreen);
    EXPECT_TRUE(becomes(
        {u"/org/freedesktop/login1 LockSession gone"_s, u"/org/freedesktop/login1/session/auto Lock"_s}));
}

TEST_F(LoginManager, RefusesToLockAndTheDisplayStillGoesOff)
{
    controls.displayPower = true;
    refuse(u"/"_s);
    EXPECT_THAT(failureOf(lockScreen).toStdString(), testing::HasSubstr("Permission denied"));
    EXPECT_EQ(controls.record, (QStringList{u"keys up"_s, u"display off"_s}));
}

TEST_F(LoginManager, LocksThoughTheDisplayStaysOn)
{
    EXPECT_EQ(failureOf(lockScreen), u"Máy này không có: D-Bus org.gnome.Mutter.DisplayConfig, DPMS"_s);
    EXPECT_EQ(logind->record.size(), 1);
}

TEST_F(LoginManager, Suspends)
{
    perform(sleepMac);
    EXPECT_TRUE(becomes({u"/org/freedesktop/login1 Suspend true"_s}));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(LoginManager, SaysWhyItDoesNotSuspend)
{
    refuse(u"/"_s);
    EXPECT_EQ(failureOf(sleepMac),
        u"Error: GDBus.Error:org.freedesktop.DBus.Error.AccessDenied: Permission denied"_s);
}

TEST_F(LoginManager, MayTakeLongToSuspendAndHoldsNothingElseUp)
{
    logind->answer = [](const QDBusMessage&) { return QDBusMessage(); };
    perform(sleepMac);
    EXPECT_TRUE(waitFor([this] { return logind->record.size() == 1; }));
    perform(sleepMac);
    standIn(u"rofi"_s);
    perform(openMissionControl);
    EXPECT_TRUE(waitFor([this] { return log() == QStringList{u"rofi -show window"_s}; }));
    EXPECT_EQ(logind->record.size(), 1) << "it is under way";
    daemon->end();
    EXPECT_TRUE(waitFor([this] { return failures.size() == 1; })) << "the bus is gone, and so is the request";
}

TEST_F(SystemActionsFixture, WithoutALoginManagerSaySo)
{
    EXPECT_EQ(failureOf(sleepMac), u"Máy này không có: D-Bus org.freedesktop.login1"_s);
}

} // namespace
} // namespace Tavrin
