#include "Platform/Linux/Process/LinuxScriptRunner.h"

#include "Platform/Linux/Process/ChildWatcher.h"
#include "Platform/Linux/SettingsPages.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <QFile>
#include <gtest/gtest.h>

#include <csignal>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

class Scripts : public testing::Test {
protected:
    void run(const QString& script)
    {
        runner->runShellScript(script, [this](const QString& reason) { failures.append(reason); });
    }
    bool exists(const QString& name) const { return QFile::exists(folder.path(name)); }
    QString at(const QString& name) const { return u'\'' + folder.path(name) + u'\''; }

    Testing::TemporaryFolder folder;
    ChildWatcher watcher;
    std::unique_ptr<LinuxScriptRunner> runner = std::make_unique<LinuxScriptRunner>(watcher);
    QStringList failures;
};

TEST_F(Scripts, RunUnderZshUnchanged)
{
    run(u"print -rn -- \"$ZSH_VERSION|{date}|$0\" > " + at(QStringLiteral("out")));
    ASSERT_TRUE(waitFor([this] { return exists(QStringLiteral("out")) && watcher.runningCount() == 0; }));
    const QByteArray text = folder.read(QStringLiteral("out"));
    EXPECT_TRUE(text.endsWith("|{date}|/bin/zsh")) << text.constData();
    EXPECT_FALSE(text.startsWith("|"));
}

TEST_F(Scripts, RunAtTheSameTime)
{
    // Each waits for what the other does: one after the other they would never end.
    run(QStringLiteral("touch %1; while [ ! -e %2 ]; do sleep 0.01; done; touch %3")
            .arg(at(QStringLiteral("a")), at(QStringLiteral("b")), at(QStringLiteral("a-done"))));
    run(QStringLiteral("touch %1; while [ ! -e %2 ]; do sleep 0.01; done; touch %3")
            .arg(at(QStringLiteral("b")), at(QStringLiteral("a")), at(QStringLiteral("b-done"))));
    EXPECT_TRUE(
        waitFor([this] { return exists(QStringLiteral("a-done")) && exists(QStringLiteral("b-done")); }));
}

TEST_F(Scripts, BlockOnAFullPipeThatNobodyReads)
{
    run(u"echo $$ > " + at(QStringLiteral("pid")) + u"; head -c 1000000 /dev/zero; touch "
        + at(QStringLiteral("end")));
    ASSERT_TRUE(waitFor([this] { return folder.read(QStringLiteral("pid")).endsWith('\n'); }));
    const pid_t pid = folder.read(QStringLiteral("pid")).trimmed().toInt();
    const auto isBlocked = [pid] {
        QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(pid));
        if (!children.open(QIODevice::ReadOnly))
            return false;
        QFile state(QStringLiteral("/proc/%1/wchan").arg(children.readAll().trimmed().toInt()));
        return state.open(QIODevice::ReadOnly) && state.readAll().contains("pipe");
    };
    waitFor(isBlocked, 1000); // Not every kernel tells; what counts is below.
    EXPECT_FALSE(exists(QStringLiteral("end")));
    EXPECT_EQ(watcher.runningCount(), 1);
    kill(-pid, SIGKILL);
    EXPECT_TRUE(waitFor([this] { return watcher.runningCount() == 0 && watcher.keptCount() == 0; }));
    EXPECT_FALSE(exists(QStringLiteral("end")));
}

TEST_F(Scripts, LeaveTheProgramsThatTheyStartRunning)
{
    // It writes after the script has ended: a closed pipe would end it there.
    run(u"( while [ ! -e " + at(QStringLiteral("go")) + u" ]; do sleep 0.01; done; echo output; touch "
        + at(QStringLiteral("survived")) + u" ) &");
    ASSERT_TRUE(waitFor([this] { return watcher.runningCount() == 0 && watcher.keptCount() == 1; }));
    folder.write(QStringLiteral("go"), "");
    EXPECT_TRUE(waitFor([this] { return exists(QStringLiteral("survived")); }));
    EXPECT_TRUE(waitFor([this] { return watcher.keptCount() == 0; })) << "and then nothing is kept";
}

TEST_F(Scripts, IgnoreTheExitStatus)
{
    run(u"touch " + at(QStringLiteral("ran")) + u"; exit 3");
    run(QStringLiteral("syntax error ((("));
    EXPECT_TRUE(waitFor([this] { return exists(QStringLiteral("ran")) && watcher.runningCount() == 0; }));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(Scripts, SayWhyTheShellDoesNotStart)
{
    runner = std::make_unique<LinuxScriptRunner>(watcher, "/nowhere/zsh");
    run(QStringLiteral("true"));
    ASSERT_TRUE(waitFor([this] { return failures.size() == 1; }));
    EXPECT_FALSE(failures[0].isEmpty());
    EXPECT_EQ(watcher.runningCount(), 0);
}

TEST_F(Scripts, HaveNoAppleScript)
{
    runner->runAppleScript(
        QStringLiteral("beep"), [this](const QString& reason) { failures.append(reason); });
    EXPECT_TRUE(failures.isEmpty()) << "never from within the call";
    drainEvents();
    EXPECT_EQ(failures.size(), 1);
}

TEST(SettingsPrograms, BeginWithTheRunningDesktops)
{
    EXPECT_EQ(accessibilitySettingsPrograms("ubuntu:GNOME").first().first(), "gnome-control-center");
    EXPECT_EQ(accessibilitySettingsPrograms("KDE").first().first(), "systemsettings");
    EXPECT_EQ(accessibilitySettingsPrograms("XFCE").first().first(), "xfce4-accessibility-settings");
    EXPECT_EQ(accessibilitySettingsPrograms("").size(), accessibilitySettingsPrograms("KDE").size());
}

TEST(SettingsPagesTest, FallBackWhereNoDesktopHasThePage)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    ChildWatcher watcher;
    int fallbacks = 0;
    SettingsPages pages(watcher, [&] { ++fallbacks; });
    pages.openAccessibility();
    EXPECT_TRUE(waitFor([&] { return fallbacks == 1; }));
    qputenv("PATH", path);
}

} // namespace
} // namespace Tavrin
