#include "Platform/Linux/X11/DisplayPower.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Linux/X11/KeyReleaseWait.h"
#include "Platform/Linux/X11/X11HotKeyBackend.h"
#include "Platform/Linux/X11/X11KeyInjector.h"
#include "support/Program.h"
#include "support/TemporaryFolder.h"
#include "support/XDriver.h"

#include <QElapsedTimer>
#include <cstdlib>
#include <gmock/gmock.h>
#include <xcb/dpms.h>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

/// Xorg on no screen, with a display whose power can be switched. $DISPLAY is its while it runs.
class PoweredServer {
public:
    PoweredServer()
    {
        m_folder.write(u"xorg.conf"_s, R"(
            Section "ServerFlags"
                Option "AutoAddDevices" "false"
            EndSection
            Section "Device"
                Identifier "device"
                Driver "dummy"
            EndSection
            Section "Screen"
                Identifier "screen"
                Device "device"
            EndSection
        )");
        // A seat that is nobody's keeps it away from consoles and devices.
        m_server = std::make_unique<Program>(u"env"_s,
            QStringList{u"LD_PRELOAD="_s + QStringLiteral(TAVRIN_DISPLAY_POWER), u"/usr/lib/xorg/Xorg"_s,
                u"-config"_s, m_folder.path(u"xorg.conf"_s), u"-logfile"_s, m_folder.path(u"log"_s),
                u"-displayfd"_s, u"1"_s, u"-seat"_s, u"nobody"_s, u"-noreset"_s, u"-nolisten"_s, u"tcp"_s});
        QString number;
        EXPECT_TRUE(waitFor([&] {
            for (const QString& line : m_server->lines()) {
                if (bool isNumber = false; line.toInt(&isNumber) >= 0 && isNumber)
                    number = line;
            }
            return !number.isEmpty();
        })) << m_server->lines().join(u'\n').toStdString();
        qputenv("DISPLAY", u":%1"_s.arg(number).toLatin1());
    }
    ~PoweredServer() { qputenv("DISPLAY", m_usualDisplay); }
    Q_DISABLE_COPY_MOVE(PoweredServer)

private:
    QByteArray m_usualDisplay = qgetenv("DISPLAY");
    TemporaryFolder m_folder;
    std::unique_ptr<Program> m_server;
};

/// Display power on whatever server $DISPLAY names.
class Display {
public:
    Display() { m_connection->watch(); }

    void turnOffWhenKeysAreUp()
    {
        keys->whenKeysAreUp([this] { results.push_back(power->turnOff()); });
        EXPECT_TRUE(results.empty()) << "never from within the call";
    }

    /// What a second program is told.
    XcbReply<xcb_dpms_info_reply_t> info()
    {
        return XcbReply<xcb_dpms_info_reply_t>(
            xcb_dpms_info_reply(driver.xcb(), xcb_dpms_info(driver.xcb()), nullptr));
    }
    bool isOff() { return info()->power_level == XCB_DPMS_DPMS_MODE_OFF; }

    X11Connection& connection() { return *m_connection; }

    XDriver driver;
    std::vector<bool> results;

private:
    std::unique_ptr<X11Connection> m_connection = X11Connection::open();

public:
    std::unique_ptr<DisplayPower> power = std::make_unique<DisplayPower>(*m_connection);
    std::unique_ptr<KeyReleaseWait> keys = std::make_unique<KeyReleaseWait>(*m_connection);
};

TEST(DisplayPowerWithoutExtension, IsNotAvailable)
{
    Display display;
    EXPECT_FALSE(display.power->isAvailable());
    EXPECT_FALSE(display.power->turnOff());
    display.turnOffWhenKeysAreUp();
    EXPECT_TRUE(waitFor([&] { return !display.results.empty(); }));
    EXPECT_EQ(display.results, std::vector{false});
}

class Power : public testing::Test {
protected:
    PoweredServer server;
    Display display;
};

TEST_F(Power, TurnsOff)
{
    ASSERT_TRUE(display.power->isAvailable());
    ASSERT_FALSE(display.isOff());
    EXPECT_TRUE(display.power->turnOff());
    EXPECT_TRUE(display.isOff());
    EXPECT_TRUE(display.power->turnOff()) << "also when they are off";
}

TEST_F(Power, LeavesTheTimesThatAreInForce)
{
    xcb_dpms_set_timeouts(display.driver.xcb(), 100, 200, 300);
    display.driver.sync();
    ASSERT_TRUE(display.power->turnOff());
    const XcbReply<xcb_dpms_get_timeouts_reply_t> times(xcb_dpms_get_timeouts_reply(
        display.driver.xcb(), xcb_dpms_get_timeouts(display.driver.xcb()), nullptr));
    EXPECT_EQ(times->off_timeout, 300);
}

TEST_F(Power, TurnsOffWhereTheExtensionIsOffWithoutBringingItsTimesToLife)
{
    xcb_dpms_disable(display.driver.xcb());
    display.driver.sync();
    ASSERT_FALSE(display.info()->state);
    EXPECT_TRUE(display.power->turnOff());
    EXPECT_TRUE(display.isOff());
    const XcbReply<xcb_dpms_get_timeouts_reply_t> times(xcb_dpms_get_timeouts_reply(
        display.driver.xcb(), xcb_dpms_get_timeouts(display.driver.xcb()), nullptr));
    EXPECT_EQ(times->standby_timeout, 0);
    EXPECT_EQ(times->suspend_timeout, 0);
    EXPECT_EQ(times->off_timeout, 0);
}

class ReleaseCounter : public X11EventListener {
public:
    explicit ReleaseCounter(X11Connection& connection)
        : m_connection(connection)
    {
        m_connection.addListener(this);
    }
    ~ReleaseCounter() override { m_connection.removeListener(this); }
    Q_DISABLE_COPY_MOVE(ReleaseCounter)

    void handleEvent(const xcb_generic_event_t& event) override
    {
        if ((event.response_type & 0x7F) == XCB_GE_GENERIC
            && reinterpret_cast<const xcb_ge_generic_event_t&>(event).event_type == XCB_INPUT_RAW_KEY_RELEASE)
            ++count;
    }

    int count = 0;

private:
    X11Connection& m_connection;
};

TEST_F(Power, WaitsForTheKeys)
{
    display.driver.press(Key::superLeft);
    display.driver.press(Key::k);
    display.turnOffWhenKeysAreUp();
    drainEvents();
    // Hears the releases after the one under test.
    ReleaseCounter counter(display.connection());
    display.driver.release(Key::k);
    EXPECT_TRUE(waitFor([&] { return counter.count > 0; }));
    EXPECT_FALSE(display.isOff());
    EXPECT_TRUE(display.results.empty());
    display.driver.release(Key::superLeft);
    EXPECT_TRUE(waitFor([&] { return !display.results.empty(); }));
    EXPECT_EQ(display.results, std::vector{true});
    EXPECT_TRUE(display.isOff());
}

TEST_F(Power, DoesNotWaitWithoutKeys)
{
    QElapsedTimer time;
    time.start();
    display.turnOffWhenKeysAreUp();
    EXPECT_TRUE(waitFor([&] { return !display.results.empty(); }));
    EXPECT_LT(time.elapsed(), 1500);
    EXPECT_TRUE(display.isOff());
}

TEST_F(Power, WaitsNoLongerThanItsLimit)
{
    display.driver.press(Key::k);
    QElapsedTimer time;
    time.start();
    display.turnOffWhenKeysAreUp();
    EXPECT_TRUE(waitFor([&] { return !display.results.empty(); }));
    EXPECT_GE(time.elapsed(), 1800);
    EXPECT_TRUE(display.isOff());
    display.driver.release(Key::k);
}

TEST_F(Power, TellsEveryCallerOnce)
{
    display.driver.press(Key::k);
    display.turnOffWhenKeysAreUp();
    display.turnOffWhenKeysAreUp();
    display.driver.release(Key::k);
    EXPECT_TRUE(waitFor([&] { return display.results.size() == 2; }));
    display.driver.tap({}, Key::k);
    drainEvents();
    EXPECT_EQ(display.results, (std::vector{true, true}));
}

TEST_F(Power, MayEndWhileItWaits)
{
    display.driver.press(Key::k);
    display.turnOffWhenKeysAreUp();
    display.keys.reset();
    display.driver.release(Key::k);
    display.driver.sync();
    drainEvents();
    EXPECT_TRUE(display.results.empty());
    EXPECT_FALSE(display.isOff());
}

/// Turns the displays off at every press, as the action does.
class Presser : public HotKeyEventHandler {
public:
    explicit Presser(Display& display)
        : m_display(display)
    {
    }
    OSStatus hotKeyPressed(const HotKeyEvent*) override
    {
        ++presses;
        m_display.keys->whenKeysAreUp([this] { m_display.results.push_back(m_display.power->turnOff()); });
        return noErr;
    }
    void hotKeySettled(EventHotKeyRef, HotKeyRegistration::State, OSStatus) override { }
    void hotKeysInvalidated() override { }

    int presses = 0;

private:
    Display& m_display;
};

TEST_F(Power, LeavesTheHotKeysAlone)
{
    // Without a real keyboard the server numbers its keys in another way.
    ASSERT_EQ(std::system("setxkbmap -rules evdev -layout us -option ''"), 0);
    X11KeyInjector injector(display.connection());
    X11HotKeyBackend backend(display.connection(), injector);
    Presser presser(display);
    ASSERT_EQ(backend.installEventHandler(&presser), noErr);
    constexpr std::uint32_t kKey = 40;
    const HotKeyCombination combination{kKey, cmdKey};
    ASSERT_EQ(
        backend.registerHotKeys({&combination, 1}).front().state, HotKeyRegistration::State::registered);
    for (int round = 1; round <= 3; ++round) {
        display.driver.press(Key::superLeft);
        display.driver.press(Key::k);
        ASSERT_TRUE(waitFor([&] { return presser.presses == round; }));
        EXPECT_EQ(display.results.size(), static_cast<std::size_t>(round - 1));
        display.driver.release(Key::k);
        display.driver.release(Key::superLeft);
        ASSERT_TRUE(waitFor([&] { return display.results.size() == static_cast<std::size_t>(round); }));
        EXPECT_TRUE(display.results.back());
    }
    EXPECT_EQ(presser.presses, 3);
}

} // namespace
} // namespace Tavrin
