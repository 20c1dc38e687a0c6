// Bringing applications to the front, and starting those that have no window.
#include "Platform/Linux/Applications/XcbSession.h"
#include "support/ApplicationsFixture.h"

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

TEST_F(ApplicationWindows, ComeBackWhenMinimised)
{
    const auto window = openWindow(QStringLiteral("First"));
    desktop.minimise(window);
    ASSERT_TRUE(waitFor([&] { return desktop.isMinimised(window); }));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First"))), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_FALSE(desktop.isMinimised(window));
    EXPECT_EQ(children.runningCount(), 1);
}

TEST_F(ApplicationWindows, ComeFromAnotherVirtualDesktop)
{
    const auto window = openWindow(QStringLiteral("First"));
    desktop.moveToDesktop(window, 1);
    ASSERT_TRUE(waitFor([&] { return desktop.desktopOf(window) == 1 && desktop.activeWindow() != window; }));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First"))), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_EQ(desktop.desktopOf(window), desktop.currentDesktop());
    EXPECT_EQ(children.runningCount(), 1);
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

TEST_F(ApplicationWindows, OfATerminalProgramComeBackToo)
{
    const QString path = writeEntry(QStringLiteral("inside"), "sleep 998", "Terminal=true\n");
    EXPECT_EQ(open(path), true);
    const auto window = awaitWindows(QStringLiteral("XTerm"));
    openWindow(QStringLiteral("Second"));
    EXPECT_EQ(open(path), true);
    EXPECT_TRUE(becomesActive(window));
    EXPECT_EQ(desktop.windows(QStringLiteral("XTerm")).size(), 1U);
}

TEST_F(ApplicationWindows, ObeyAPressHoweverOldItsTimeIs)
{
    const auto first = openWindow(QStringLiteral("First"));
    const auto second = openWindow(QStringLiteral("Second"));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("First")), {1, {}}), true);
    EXPECT_TRUE(becomesActive(first));
    EXPECT_EQ(open(writeWindowEntry(QStringLiteral("Second")), {XcbSession().serverTime(), {}}), true);
    EXPECT_TRUE(becomesActive(second));
}

} // namespace
} // namespace Tavrin
