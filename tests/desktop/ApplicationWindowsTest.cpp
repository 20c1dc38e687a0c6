// Bringing applications to the front, and starting those that have no window.
#include "Platform/Linux/Applications/WindowArrival.h"
#include "support/ApplicationsFixture.h"
#include "support/XDriver.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace Tavrin {
namespace {

using Testing::homePath;
using Testing::readFile;
using Testing::waitFor;
using Testing::writeEntry;
using Testing::writeScript;
using Testing::writeWindowEntry;
using Testing::XDriver;

class ApplicationWindows : public Testing::ApplicationsFixture { };

TEST_F(ApplicationWindows, AppearWhenAnApplicationIsOpenedByItsIdentifier)
{
    const QString path = writeWindowEntry(QStringLiteral("First"));
    EXPECT_EQ(locate(QStringLiteral("first")), path);
    EXPECT_EQ(open(path), true);
    EXPECT_TRUE(becomesActive(awaitWindows(QStringLiteral("First"))));
}

TEST_F(ApplicationWindows, ComeToTheFrontInsteadOfASecondInstance)
{
    const auto first = openWindow(QStringLiteral("First"));
    const auto second = openWindow(QStringLiteral("Second"));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First"))), true);
    EXPECT_TRUE(becomesActive(first));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("Second"))), true);
    EXPECT_TRUE(becomesActive(second));
    EXPECT_EQ(desktop.windows(QStringLiteral("First")).size(), 1U);
    EXPECT_EQ(desktop.windows(QStringLiteral("Second")).size(), 1U);
    EXPECT_EQ(children.runningCount(), 2);
}

TEST_F(ApplicationWindows, AppearInFrontOfTheOneThatIsTypedIn)
{
    const auto typedIn = openWindow(QStringLiteral("First"));
    constexpr xcb_keycode_t space = 65;
    XDriver().tap({}, space);
    ASSERT_TRUE(becomesActive(typedIn));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("Second")), {XcbSession().serverTime(), {}}), true);
    EXPECT_TRUE(becomesActive(awaitWindows(QStringLiteral("Second"))));
}

TEST_F(ApplicationWindows, ComeBackWhenMinimised)
{
    const auto window = openWindow(QStringLiteral("First"));
    openWindow(QStringLiteral("Second"));
    desktop.minimise(window);
    ASSERT_TRUE(waitFor([&] { return desktop.isMinimised(window); }));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First"))), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_TRUE(waitFor([&] { return !desktop.isMinimised(window); }));
    EXPECT_EQ(children.runningCount(), 2);
}

TEST_F(ApplicationWindows, ComeFromAnotherVirtualDesktop)
{
    const auto window = openWindow(QStringLiteral("First"));
    openWindow(QStringLiteral("Second"));
    const std::uint32_t other = desktop.currentDesktop() == 0 ? 1 : 0;
    desktop.moveToDesktop(window, other);
    ASSERT_TRUE(waitFor([&] { return desktop.desktopOf(window) == other; }));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First"))), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_TRUE(waitFor([&] { return desktop.desktopOf(window) == desktop.currentDesktop(); }));
    EXPECT_EQ(children.runningCount(), 2);
}

TEST_F(ApplicationWindows, AreChosenByTheirLastUse)
{
    // Two windows of one class, as one application with two documents has them.
    const QString path = writeWindowEntry(QStringLiteral("First"));
    const auto early = openWindow(QStringLiteral("First"));
    EXPECT_EQ(open(writeEntry(QStringLiteral("again"), "xterm -class First -e sleep 999")), true);
    awaitWindows(QStringLiteral("First"), 2);
    const auto both = desktop.windows(QStringLiteral("First"));
    const auto late = both.front() == early ? both.back() : both.front();
    ASSERT_TRUE(becomesActive(late));
    for (const auto lastUsed : {early, late, early}) {
        desktop.activate(lastUsed);
        ASSERT_TRUE(becomesActive(lastUsed));
        const auto other = openWindow(QStringLiteral("Second"));
        desktop.activate(other);
        ASSERT_TRUE(becomesActive(other));
        EXPECT_EQ(open(path), true);
        EXPECT_TRUE(becomesActive(lastUsed));
    }
    EXPECT_EQ(desktop.windows(QStringLiteral("First")).size(), 2U);
}

TEST_F(ApplicationWindows, AreWaitedForWhileTheApplicationStarts)
{
    const QString gate = homePath(QStringLiteral("gate"));
    const QString log = homePath(QStringLiteral("starts"));
    ASSERT_EQ(mkfifo(QFile::encodeName(gate).constData(), 0600), 0);
    // Entries quote a dollar sign inside double quotes, and then the backslash.
    const QString path = writeEntry(QStringLiteral("slow"),
        R"(sh -c "echo start >> \\$HOME/starts; read -r line < \\$HOME/gate; exec xterm -class Slow -e sleep 1000")");
    EXPECT_EQ(open(path), true);
    ASSERT_TRUE(waitFor([&] { return readFile(log) == "start\n"; }));
    EXPECT_EQ(open(path), true);
    EXPECT_EQ(open(path), true);
    EXPECT_EQ(children.runningCount(), 1);

    const FileDescriptor writer(::open(QFile::encodeName(gate).constData(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(write(writer.number(), "\n", 1), 1);
    const auto window = awaitWindows(QStringLiteral("Slow"));
    const auto other = openWindow(QStringLiteral("Second"));
    ASSERT_NE(other, window);
    EXPECT_EQ(open(path), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_EQ(readFile(log), "start\n");
}

TEST_F(ApplicationWindows, AreStartedOnceByTwoPressesAtOnce)
{
    const QString path = writeWindowEntry(QStringLiteral("First"));
    int opened = 0;
    for (int press = 0; press < 4; ++press)
        workspace.openApplication(path, {}, [&](bool success) { opened += success ? 1 : 0; });
    ASSERT_TRUE(waitFor([&] { return opened == 4; }));
    awaitWindows(QStringLiteral("First"));
    EXPECT_EQ(children.runningCount(), 1);
}

TEST_F(ApplicationWindows, AreStartedAnewOnceTheApplicationHasEnded)
{
    const auto window = openWindow(QStringLiteral("First"));
    kill(desktop.processOf(window) ? desktop.processOf(window) : Testing::ownChildren().value(0), SIGKILL);
    ASSERT_TRUE(waitFor([&] { return children.runningCount() == 0; }));
    ASSERT_TRUE(waitFor([&] { return desktop.windows(QStringLiteral("First")).empty(); }));
    EXPECT_NE(openWindow(QStringLiteral("First")), XCB_WINDOW_NONE);
}

TEST_F(ApplicationWindows, OfAnExecutableAreKnownByTheirProcess)
{
    const QString script
        = writeScript(homePath(QStringLiteral("công cụ")), "exec xterm -class Tool -e sleep 1000\n");
    EXPECT_EQ(open(script), true);
    const auto window = awaitWindows(QStringLiteral("Tool"));
    openWindow(QStringLiteral("Second"));
    EXPECT_EQ(open(script), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_EQ(desktop.windows(QStringLiteral("Tool")).size(), 1U);
}

TEST_F(ApplicationWindows, OfAnotherMachineAreNotKnownByTheirProcess)
{
    const QString script
        = writeScript(homePath(QStringLiteral("far")), "exec xterm -class Far -e sleep 1000\n");
    EXPECT_EQ(open(script), true);
    const auto window = awaitWindows(QStringLiteral("Far"));
    ASSERT_TRUE(becomesActive(window));
    const auto described = [&] { return XcbSession().windowsFromTop().constFirst(); };
    EXPECT_EQ(described().pid, desktop.processOf(window));
    desktop.setMachine(window, "another-machine");
    EXPECT_TRUE(waitFor([&] { return described().pid == 0; }));
    desktop.setMachine(window, "");
    EXPECT_TRUE(waitFor([&] { return described().pid == 0; }));
    EXPECT_EQ(described().id, window);
}

struct Terminal {
    const char* program;
    const char* className;
};

class TerminalWindows : public ApplicationWindows, public testing::WithParamInterface<Terminal> {
protected:
    void SetUp() override { qputenv("TERMINAL", GetParam().program); }
    void TearDown() override
    {
        qunsetenv("TERMINAL");
        ApplicationWindows::TearDown();
    }
};

TEST_P(TerminalWindows, ComeBackWithTheProgramThatRunsInside)
{
    const QString className = QLatin1StringView(GetParam().className);
    const QString path = writeEntry(QStringLiteral("inside"),
        R"(sh -c "echo \"\$1\" >> \$HOME/inside; sleep 998" x "hai từ")", "Terminal=true\n");
    EXPECT_EQ(open(path), true);
    const auto window = awaitWindows(className);
    ASSERT_TRUE(becomesActive(window));
    ASSERT_TRUE(waitFor([] { return readFile(homePath(QStringLiteral("inside"))) == "hai từ\n"; }));
    openWindow(QStringLiteral("Second"));
    EXPECT_EQ(open(path), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_EQ(desktop.windows(className).size(), 1U);
    QFile::remove(homePath(QStringLiteral("inside")));
}

// The second serves all its windows from one process, which is not the one that we start.
INSTANTIATE_TEST_SUITE_P(Kinds, TerminalWindows,
    testing::Values(Terminal{"xterm", "XTerm"}, Terminal{"xfce4-terminal", "Xfce4-terminal"}),
    [](const auto& each) { return each.index == 0 ? "OneProcessEach" : "OneProcessForAll"; });

TEST_F(ApplicationWindows, ObeyAPressHoweverOldItsTimeIs)
{
    const auto first = openWindow(QStringLiteral("First"));
    const auto second = openWindow(QStringLiteral("Second"));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First")), {1, {}}), true);
    EXPECT_TRUE(becomesActive(first));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("Second")), {XcbSession().serverTime(), {}}), true);
    EXPECT_TRUE(becomesActive(second));
}

/// A window that its window manager has left behind another one.
class WindowLeftBehind : public ApplicationWindows {
protected:
    void SetUp() override
    {
        m_window = openWindow(QStringLiteral("Third"));
        m_other = openWindow(QStringLiteral("Second"));
        m_inUse = openWindow(QStringLiteral("First"));
        m_now = XcbSession().serverTime();
    }

    xcb_window_t m_window = 0;
    xcb_window_t m_other = 0;
    xcb_window_t m_inUse = 0;
    std::uint32_t m_now = 0;
};

TEST_F(WindowLeftBehind, ComesForward)
{
    WindowArrival arrival(m_now);
    desktop.setUserTime(m_inUse, m_now - 1);
    arrival.bringForward(m_window);
    EXPECT_TRUE(becomesActive(m_window));
}

TEST_F(WindowLeftBehind, ComesForwardWhenTheOneInUseHasGoneByItself)
{
    WindowArrival arrival(m_now);
    XDriver driver;
    xcb_kill_client(driver.xcb(), m_inUse);
    driver.sync();
    ASSERT_TRUE(waitFor([&] { return desktop.windows(QStringLiteral("First")).empty(); }));
    desktop.activate(m_other);
    ASSERT_TRUE(becomesActive(m_other));
    arrival.bringForward(m_window);
    EXPECT_TRUE(becomesActive(m_window));
}

TEST_F(WindowLeftBehind, StaysThereWhenTheUserHasTurnedToAnother)
{
    WindowArrival arrival(m_now);
    desktop.activate(m_other);
    ASSERT_TRUE(becomesActive(m_other));
    arrival.bringForward(m_window);
    Testing::drainEvents();
    EXPECT_EQ(desktop.activeWindow(), m_other);
}

TEST_F(WindowLeftBehind, StaysThereWhenTheUserHasGoneOnTyping)
{
    WindowArrival arrival(m_now);
    desktop.setUserTime(m_inUse, m_now + 1);
    arrival.bringForward(m_window);
    Testing::drainEvents();
    EXPECT_EQ(desktop.activeWindow(), m_inUse);
}

} // namespace
} // namespace Tavrin
