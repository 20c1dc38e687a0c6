#include "Core/Storage/AppSettings.h"

#include "Platform/Fake/FakePlatform.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::CapturedOutput;
using Testing::drainEvents;

class Settings : public testing::Test {
protected:
    QByteArray file() const { return folder.read(QStringLiteral("Tavrin/Tavrin.conf")); }
    void write(const QByteArray& contents) { folder.write(QStringLiteral("Tavrin/Tavrin.conf"), contents); }

    Testing::TemporaryFolder folder;
    FakeLoginItem loginItem;
    FakeApplicationShell shell;
};

TEST_F(Settings, HaveTheirDefaultsOnACleanAccount)
{
    AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_TRUE(settings.hideDockIcon());
    EXPECT_FALSE(settings.hasCompletedOnboarding());
    EXPECT_FALSE(settings.showOnboarding());
    EXPECT_EQ(settings.activationPolicy(), ActivationPolicy::accessory);
    EXPECT_EQ(shell.policyChanges, 0) << "construction applies nothing";
    EXPECT_EQ(loginItem.calls, 0);

    settings.applyDockPolicy();
    EXPECT_EQ(shell.policyChanges, 0) << "never inline";
    drainEvents();
    EXPECT_EQ(shell.policy, ActivationPolicy::accessory);
    EXPECT_EQ(shell.policyChanges, 1);
}

TEST_F(Settings, ReadWhatWasStored)
{
    write("[General]\nhideDockIcon=false\nhasCompletedOnboarding=true\nlaunchAtLogin=true\n");
    const AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    EXPECT_FALSE(settings.hideDockIcon());
    EXPECT_EQ(settings.activationPolicy(), ActivationPolicy::regular);
    EXPECT_TRUE(settings.hasCompletedOnboarding());
    EXPECT_FALSE(settings.launchAtLogin()) << "the system knows, not the file";
}

TEST_F(Settings, TakeStartAtLoginFromTheSystem)
{
    loginItem.enabled = true;
    const AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    EXPECT_TRUE(settings.launchAtLogin());
}

TEST_F(Settings, WriteAtOnceIntoTheGeneralGroup)
{
    AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    settings.setHideDockIcon(false);
    settings.setLaunchAtLogin(true);
    settings.setHasCompletedOnboarding(true);
    settings.setShowOnboarding(true);
    settings.setWindowFrame(QStringLiteral("1 2 3 4"));
    const QByteArray contents = file();
    EXPECT_TRUE(contents.startsWith("[General]\n"));
    for (const char* line : {"hideDockIcon=false", "launchAtLogin=true", "hasCompletedOnboarding=true",
             "TavrinMainWindow=1 2 3 4"})
        EXPECT_TRUE(contents.contains(line)) << line;
    EXPECT_FALSE(contents.contains("showOnboarding"));
    EXPECT_TRUE(settings.showOnboarding());

    const AppSettings again(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    EXPECT_FALSE(again.hideDockIcon());
    EXPECT_TRUE(again.hasCompletedOnboarding());
    EXPECT_FALSE(again.showOnboarding());
    EXPECT_EQ(again.windowFrame(), QStringLiteral("1 2 3 4"));
}

TEST_F(Settings, ScheduleThePolicyEvenWhenNothingChanges)
{
    AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    shell.policy = ActivationPolicy::accessory;
    settings.setHideDockIcon(true);
    EXPECT_TRUE(file().contains("hideDockIcon=true")) << "the key is written all the same";
    drainEvents();
    EXPECT_EQ(shell.policyChanges, 0) << "and the step finds nothing to change";
    settings.setHideDockIcon(false);
    drainEvents();
    EXPECT_EQ(shell.policy, ActivationPolicy::regular);
}

TEST_F(Settings, AskTheSystemOnlyWhenItDiffers)
{
    AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    settings.setLaunchAtLogin(false);
    EXPECT_EQ(loginItem.calls, 0);
    settings.setLaunchAtLogin(true);
    EXPECT_EQ(loginItem.calls, 1);
    EXPECT_TRUE(loginItem.enabled);
    settings.setLaunchAtLogin(true);
    EXPECT_EQ(loginItem.calls, 1);
    settings.setLaunchAtLogin(false);
    EXPECT_EQ(loginItem.calls, 2);
    EXPECT_FALSE(loginItem.enabled);
}

TEST_F(Settings, KeepTheUsersChoiceWhenTheSystemRefuses)
{
    AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    loginItem.error = QStringLiteral("not permitted");
    CapturedOutput output;
    settings.setLaunchAtLogin(true);
    EXPECT_EQ(output.lines(), QStringList{QStringLiteral("Lỗi SMAppService: not permitted")});
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_FALSE(loginItem.enabled);
}

TEST_F(Settings, SurviveAFileThatIsNone)
{
    for (const QByteArray& contents : {QByteArray("\x00\xff[[[=", 7),
             QByteArray("[General]\nhideDockIcon=@Variant(\\0)\n"), QByteArray(100000, 'x')}) {
        write(contents);
        const AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
        EXPECT_FALSE(settings.hasCompletedOnboarding());
    }
}

TEST_F(Settings, Publish)
{
    AppSettings settings(folder.path(QStringLiteral("Tavrin/Tavrin.conf")), loginItem, shell);
    int published = 0;
    const auto count = [&] { ++published; };
    QObject::connect(&settings, &AppSettings::launchAtLoginChanged, count);
    QObject::connect(&settings, &AppSettings::hideDockIconChanged, count);
    QObject::connect(&settings, &AppSettings::hasCompletedOnboardingChanged, count);
    QObject::connect(&settings, &AppSettings::showOnboardingChanged, count);
    settings.setLaunchAtLogin(true);
    settings.setHideDockIcon(false);
    settings.setHasCompletedOnboarding(true);
    settings.setShowOnboarding(true);
    EXPECT_EQ(published, 4);
}

} // namespace
} // namespace Tavrin
