#include "App/AppDelegate.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Platform/Fake/FakePlatform.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using Testing::waitFor;

class FakeWindow : public MainWindow {
public:
    FakeWindow(const MainWindowServices& services, QStringList& journal)
        : m_services(services)
        , m_journal(journal)
    {
    }
    void show(const ActivationContext& context) override
    {
        m_isVisible = true;
        m_journal.append(QStringLiteral("show %1").arg(context.serverTime));
    }
    void hide() override
    {
        m_isVisible = false;
        m_journal.append(QStringLiteral("hide"));
    }
    bool isVisible() const override { return m_isVisible; }
    void rest() override { m_journal.append(QStringLiteral("rest")); }
    bool clickClose() { return m_services.windowShouldClose(); }

private:
    MainWindowServices m_services;
    QStringList& m_journal;
    bool m_isVisible = false;
};

class FakeWindows : public MainWindowFactory {
public:
    std::unique_ptr<MainWindow> createMainWindow(const MainWindowServices& services) override
    {
        ++created;
        if (isMissing)
            return nullptr;
        auto window = std::make_unique<FakeWindow>(services, journal);
        last = window.get();
        return window;
    }
    QStringList journal;
    FakeWindow* last = nullptr;
    int created = 0;
    bool isMissing = false;
};

class Delegate : public testing::Test {
protected:
    void launch()
    {
        delegate.applicationDidFinishLaunching();
        ASSERT_TRUE(waitFor(
            [this] { return windows.created > 0 && (windows.isMissing || !windows.journal.isEmpty()); }));
    }
    ShortcutItem script(const QString& name, std::uint32_t keyCode, bool isEnabled = true) const
    {
        return {QUuid::createUuid(), name, keyCode, cmdKey, ActionType::shellScript, name, isEnabled, 0};
    }
    void choose(const QString& title)
    {
        for (const MenuItem& item : platform.fakeStatusItem.content()) {
            if (item.title == title)
                return item.action();
        }
        FAIL() << "no entry " << qPrintable(title);
    }
    bool hasEntry(const QString& title)
    {
        for (const MenuItem& item : platform.fakeStatusItem.content()) {
            if (item.title == title)
                return true;
        }
        return false;
    }

    Testing::TemporaryFolder folder;
    FakePlatform platform{folder.path()};
    AppSettings settings{platform.settingsFile(), platform.fakeLoginItem, platform.applicationShell};
    FakeWindows windows;
    AppDelegate delegate{platform, settings, windows};
};

TEST_F(Delegate, BringsEverythingUp)
{
    launch();
    EXPECT_EQ(platform.applicationShell.policy, ActivationPolicy::accessory);
    EXPECT_EQ(platform.hotKeyBackend.entries.size(), 2U) << "the first-run defaults are live";
    EXPECT_TRUE(platform.fakeStatusItem.isShown);
    EXPECT_EQ(windows.journal, QStringList{QStringLiteral("show 0")}) << "with the Dock icon hidden, too";
    EXPECT_TRUE(QFile::exists(folder.path(QStringLiteral("Tavrin/shortcuts.json"))));
    EXPECT_EQ(platform.fakeAppearance.starts, 1);
}

TEST_F(Delegate, AnswersPressesBeforeTheWindowIsBuilt)
{
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(platform.hotKeyBackend.entries.size(), 2U);
    EXPECT_EQ(windows.created, 0);
    EXPECT_EQ(platform.fakeAppearance.starts, 0);
    EXPECT_FALSE(platform.fakeStatusItem.isShown);
}

TEST_F(Delegate, TakesASecondStartThatComesBeforeItsOwn)
{
    delegate.applicationShouldHandleReopen({1, {}});
    EXPECT_EQ(windows.created, 0);
    launch();
    EXPECT_EQ(windows.journal, QStringList{QStringLiteral("show 0")});
}

TEST_F(Delegate, RunsAShortcutThatIsPressed)
{
    launch();
    ConfigStore::shared().add(script(QStringLiteral("chạy"), 40));
    HotKeyManager::shared().syncShortcuts(ConfigStore::shared().shortcuts());
    EXPECT_TRUE(platform.hotKeyBackend.press({40, cmdKey}));
    drainEvents();
    EXPECT_EQ(platform.scriptRunner.shellScripts, QStringList{QStringLiteral("chạy")});
}

TEST_F(Delegate, HidesTheWindowInsteadOfClosingIt)
{
    launch();
    EXPECT_FALSE(windows.last->clickClose());
    EXPECT_FALSE(windows.last->isVisible());
    choose(QStringLiteral("Mở Bảng điều khiển..."));
    EXPECT_TRUE(windows.last->isVisible());
    EXPECT_EQ(windows.created, 1) << "the same window";
    EXPECT_EQ(platform.applicationShell.policy, ActivationPolicy::accessory);
}

TEST_F(Delegate, ComesForwardWhenStartedAgain)
{
    launch();
    windows.last->clickClose();
    delegate.applicationShouldHandleReopen({4711, {}});
    EXPECT_TRUE(windows.last->isVisible());
    EXPECT_EQ(windows.journal.last(), QStringLiteral("show 4711"));
}

TEST_F(Delegate, ShowsTheWindowOnAClickOnTheIcon)
{
    launch();
    windows.last->clickClose();
    platform.fakeStatusItem.activated();
    EXPECT_TRUE(windows.last->isVisible());
}

TEST_F(Delegate, PausesAndResumes)
{
    launch();
    choose(QStringLiteral("Tạm dừng tất cả"));
    EXPECT_TRUE(platform.hotKeyBackend.entries.empty());
    EXPECT_FALSE(platform.hotKeyBackend.press({46, cmdKey}));
    ConfigStore::shared().add(script(QStringLiteral("mới"), 40));
    ConfigStore::shared().add(script(QStringLiteral("tắt"), 41, false));
    choose(QStringLiteral("Kích hoạt lại phím tắt"));
    EXPECT_EQ(platform.hotKeyBackend.entries.size(), 3U)
        << "what was added meanwhile is live, what is off is not";
    EXPECT_TRUE(hasEntry(QStringLiteral("Tạm dừng tất cả")));
}

TEST_F(Delegate, RunsDisabledAndPausedShortcutsFromTheMenu)
{
    launch();
    ConfigStore::shared().add(script(QStringLiteral("tắt"), 41, false));
    choose(QStringLiteral("Tạm dừng tất cả"));
    choose(QStringLiteral("tắt (⌘ ;)"));
    drainEvents();
    EXPECT_EQ(platform.scriptRunner.shellScripts, QStringList{QStringLiteral("tắt")});
}

TEST_F(Delegate, TogglesTheSettings)
{
    launch();
    choose(QStringLiteral("Khởi động cùng máy"));
    EXPECT_TRUE(platform.fakeLoginItem.enabled);
    choose(QStringLiteral("Khởi động cùng máy"));
    EXPECT_FALSE(platform.fakeLoginItem.enabled);
    choose(QStringLiteral("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"));
    drainEvents();
    EXPECT_EQ(platform.applicationShell.policy, ActivationPolicy::regular);
}

TEST_F(Delegate, SteersTheWindowsTabsAfterShowingIt)
{
    launch();
    windows.last->clickClose();
    QObject::connect(&delegate.notifications(), &NotificationCenter::posted,
        [this](const QString& name) { windows.journal.append(name); });
    windows.journal.clear();
    choose(QStringLiteral("Hướng dẫn sử dụng..."));
    choose(QStringLiteral("Thông tin Tác giả..."));
    EXPECT_EQ(windows.journal,
        (QStringList{QStringLiteral("show 0"), QStringLiteral("selectGuideTab"), QStringLiteral("show 0"),
            QStringLiteral("selectAuthorTab")}));
    EXPECT_FALSE(settings.showOnboarding());
    choose(QStringLiteral("Hướng dẫn thiết lập ban đầu (Wizard)..."));
    EXPECT_TRUE(settings.showOnboarding());
}

TEST_F(Delegate, AsksToEnd)
{
    launch();
    int requests = 0;
    QObject::connect(&delegate, &AppDelegate::terminateRequested, [&] { ++requests; });
    choose(QStringLiteral("Thoát hoàn toàn Tavrin"));
    EXPECT_EQ(requests, 1);
}

TEST_F(Delegate, KeepsTheHostsCopyOfTheMenuTrue)
{
    launch();
    const auto refreshes = [this] { return platform.fakeStatusItem.refreshes; };
    int before = refreshes();
    const std::function<void()> changes[] = {
        [] { ConfigStore::shared().add(ConfigStore::defaultShortcuts()[0]); },
        [this] { settings.setLaunchAtLogin(true); },
        [this] { settings.setHideDockIcon(false); },
        [] { HotKeyManager::shared().setPaused(true); },
    };
    for (const auto& change : changes) {
        change();
        EXPECT_GT(refreshes(), before);
        before = refreshes();
    }
}

TEST_F(Delegate, ChecksForUpdatesOnceInSilenceTwoSecondsAfterLaunch)
{
    const auto& requests = platform.manifestSource.requests;
    QElapsedTimer time;
    time.start();
    launch();
    ASSERT_TRUE(waitFor([&] { return !requests.empty(); }));
    EXPECT_GE(time.elapsed(), 2000);
    EXPECT_LT(time.elapsed(), 4000);
    EXPECT_EQ(requests[0].address.path(), QStringLiteral("/version.json"));
    EXPECT_EQ(requests[0].limits.time, std::chrono::seconds(10));
    EXPECT_TRUE(UpdateService::shared().isChecking());
    EXPECT_TRUE(platform.manifestSource.answer(ManifestRefused{}));
    EXPECT_TRUE(UpdateService::shared().statusMessage().isNull()) << "nobody has asked";
    EXPECT_FALSE(waitFor([&] { return requests.size() > 1; }, 2200)) << "once, not every two seconds";
}

TEST_F(Delegate, ShowsTheWindowAndChecksForUpdatesWhenAsked)
{
    launch();
    windows.last->clickClose();
    const int refreshes = platform.fakeStatusItem.refreshes;
    choose(QStringLiteral("Kiểm tra cập nhật..."));
    EXPECT_TRUE(windows.last->isVisible());
    EXPECT_EQ(platform.manifestSource.requests.size(), 1U);
    EXPECT_EQ(UpdateService::shared().statusMessage(), QStringLiteral("Đang kiểm tra bản cập nhật..."));

    windows.last->clickClose();
    EXPECT_TRUE(platform.manifestSource.answer(QByteArray(R"({"version":"99.0","releaseNotes":""})")));
    EXPECT_GT(platform.fakeStatusItem.refreshes, refreshes);
    EXPECT_FALSE(windows.last->isVisible()) << "a find does not push itself to the front";
    choose(QStringLiteral("🚀 Cập nhật Tavrin (Bản mới: v99.0)..."));
    EXPECT_TRUE(windows.last->isVisible());
    EXPECT_EQ(platform.manifestSource.requests.size(), 2U);
}

TEST_F(Delegate, EndsTheProgramOnceTheUpdaterRuns)
{
    launch();
    int requests = 0;
    QObject::connect(&delegate, &AppDelegate::terminateRequested, [&] { ++requests; });
    choose(QStringLiteral("Kiểm tra cập nhật..."));
    ASSERT_TRUE(platform.manifestSource.answer(
        QByteArray(R"({"version":"99.0","releaseNotes":"","zipUrl":"https://a.vn/a.zip"})")));
    UpdateService::shared().startAutoUpdate();
    ASSERT_TRUE(platform.fakeUpdateInstaller.end(DownloadedArchive{QStringLiteral("/a.zip")}));
    EXPECT_EQ(requests, 0);
    platform.fakeUpdateInstaller.answerInstall(std::nullopt);
    EXPECT_EQ(requests, 1);
}

TEST_F(Delegate, EndsACheckThatIsUnderWay)
{
    {
        AppDelegate shortLived(platform, settings, windows);
        shortLived.applicationDidFinishLaunching();
        shortLived.checkForUpdates();
        EXPECT_TRUE(platform.manifestSource.isFetching());
    }
    EXPECT_FALSE(platform.manifestSource.isFetching());
}

TEST_F(Delegate, RunsOnWithoutAWindow)
{
    windows.isMissing = true;
    launch();
    EXPECT_EQ(platform.hotKeyBackend.entries.size(), 2U);
    delegate.showMainWindow();
    EXPECT_EQ(windows.created, 2) << "and tries again when asked";
}

TEST_F(Delegate, StartsUnpausedEachTime)
{
    launch();
    delegate.togglePause();
    EXPECT_TRUE(platform.hotKeyBackend.entries.empty());
    AppDelegate next(platform, settings, windows);
    next.applicationDidFinishLaunching();
    EXPECT_EQ(platform.hotKeyBackend.entries.size(), 2U);
}

} // namespace
} // namespace Tavrin
