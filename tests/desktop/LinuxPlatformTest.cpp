#include "Platform/Linux/LinuxPlatform.h"

#include "support/Wait.h"

#include <QApplication>
#include <QIcon>
#include <gtest/gtest.h>

#include <csignal>

namespace Tavrin {
namespace {

using Testing::waitFor;

class System : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(platform);
        platform->start({
            [this](const ActivationContext&) { ++reopened; },
            [this] { ++guides; },
            [this](int code) { exitCodes.append(code); },
        });
    }

    std::unique_ptr<Platform> platform = LinuxPlatform::connect();
    QList<int> exitCodes;
    int reopened = 0;
    int guides = 0;
};

TEST_F(System, EndsWithTheSessionThoughTheWindowOnlyHides)
{
    // What the toolkit sends itself when the session manager says that the session is over.
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
    EXPECT_EQ(exitCodes, QList<int>{0});
}

TEST_F(System, EndsOnASignal)
{
    raise(SIGTERM);
    EXPECT_TRUE(waitFor([this] { return exitCodes == QList<int>{0}; }));
}

TEST_F(System, KeepsDataAndSettingsWhereTheDesktopSays)
{
    EXPECT_EQ(platform->applicationSupport(), qEnvironmentVariable("XDG_DATA_HOME"));
    EXPECT_EQ(platform->settingsFile(), qEnvironmentVariable("XDG_CONFIG_HOME") + u"/Tavrin/Tavrin.conf");
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(platform->applicationSupport(), qEnvironmentVariable("HOME") + u"/.local/share");
    qputenv("XDG_DATA_HOME", "relative");
    EXPECT_EQ(platform->applicationSupport(), qEnvironmentVariable("HOME") + u"/.local/share");
}

TEST_F(System, MayPressKeysWhereTheServerLetsIt)
{
    EXPECT_TRUE(platform->accessibility().isTrusted());
    EXPECT_TRUE(platform->accessibility().requestTrust());
}

TEST_F(System, GivesTheWindowItsPicture)
{
    EXPECT_TRUE(waitFor([] { return !QApplication::windowIcon().isNull(); }));
}

} // namespace
} // namespace Tavrin
