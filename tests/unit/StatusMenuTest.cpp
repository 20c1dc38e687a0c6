#include "Core/Shell/StatusMenu.h"

#include "Core/HotKey/HotKeyManager.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"
#include "Platform/Fake/FakePlatform.h"
#include "support/ActionDesk.h"
#include "support/TemporaryFolder.h"

#include <QSet>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

class Target : public StatusMenuTarget {
public:
    void showMainWindow() override { calls.append(QStringLiteral("showMainWindow")); }
    void showGuideWindow() override { calls.append(QStringLiteral("showGuideWindow")); }
    void showOnboardingWizard() override { calls.append(QStringLiteral("showOnboardingWizard")); }
    void showAuthorWindow() override { calls.append(QStringLiteral("showAuthorWindow")); }
    void checkForUpdates() override { calls.append(QStringLiteral("checkForUpdates")); }
    void triggerShortcutFromMenu(const ShortcutItem& item) override { calls.append(u"run " + item.name); }
    void toggleLaunchAtLogin() override { calls.append(QStringLiteral("toggleLaunchAtLogin")); }
    void toggleHideDock() override { calls.append(QStringLiteral("toggleHideDock")); }
    void togglePause() override { calls.append(QStringLiteral("togglePause")); }
    void quitApp() override { calls.append(QStringLiteral("quitApp")); }

    QStringList calls;
};

class Menu : public testing::Test {
protected:
    Menu()
    {
        store.remove(store.shortcuts()[0].id);
        store.remove(store.shortcuts()[0].id);
    }

    StatusMenuContent content() { return statusMenuContent(store, settings, hotKeys, updates, target); }

    /// One line an entry: title, key, state.
    QStringList lines()
    {
        QStringList result;
        for (const MenuItem& item : content()) {
            if (item.kind == MenuItem::Kind::separator) {
                result.append(QStringLiteral("---"));
                continue;
            }
            QString line = item.title;
            if (!item.keyEquivalent.isNull())
                line += QStringLiteral(" [%1]").arg(item.keyEquivalent);
            if (item.checkState != MenuItem::CheckState::none)
                line += item.checkState == MenuItem::CheckState::on ? u" +" : u" -";
            if (!item.isEnabled)
                line += u" disabled";
            result.append(line);
        }
        return result;
    }

    static ShortcutItem shortcut(
        const QString& name, std::uint32_t keyCode, std::uint32_t modifiers, bool isEnabled)
    {
        return {QUuid::createUuid(), name, keyCode, modifiers, ActionType::shellScript, {}, isEnabled, 0};
    }

    Testing::TemporaryFolder folder;
    FakePlatform platform{folder.path()};
    ConfigStore store{folder.path()};
    AppSettings settings{platform.settingsFile(), platform.fakeLoginItem, platform.applicationShell};
    Testing::ActionDesk desk;
    ActionExecutor executor{desk.services()};
    HotKeyManager hotKeys{platform.hotKeyBackend, store, executor, platform.accessibilityService};
    FakeManifestSource manifests;
    FakeUpdateInstaller installer;
    UpdateService updates{manifests, installer};
    Target target;
};

TEST_F(Menu, ReadsAsItShould)
{
    store.add(shortcut(QStringLiteral("Terminal"), 46, 256, true));
    store.add(shortcut(QStringLiteral("Một mình"), 96, 0, false));
    const QStringList expected{
        QStringLiteral("Tavrin v1.0.7 disabled"),
        QStringLiteral("---"),
        QStringLiteral("Mở Bảng điều khiển... [o]"),
        QStringLiteral("Hướng dẫn sử dụng... [h]"),
        QStringLiteral("Hướng dẫn thiết lập ban đầu (Wizard)..."),
        QStringLiteral("Thông tin Tác giả..."),
        QStringLiteral("Kiểm tra cập nhật... [u]"),
        QStringLiteral("---"),
        QStringLiteral("Terminal (⌘ M) +"),
        QStringLiteral("Một mình (F5) -"),
        QStringLiteral("---"),
        QStringLiteral("Khởi động cùng máy -"),
        QStringLiteral("Ẩn icon thanh Dock (Chỉ hiện Menu Bar) +"),
        QStringLiteral("Tạm dừng tất cả [p]"),
        QStringLiteral("---"),
        QStringLiteral("Thoát hoàn toàn Tavrin [q]"),
    };
    EXPECT_EQ(lines(), expected);
}

TEST_F(Menu, SaysThatThereAreNoShortcuts)
{
    const QStringList all = lines();
    EXPECT_EQ(all.mid(7, 3),
        (QStringList{QStringLiteral("---"), QStringLiteral("(Chưa có phím tắt nào) disabled"),
            QStringLiteral("---")}));
}

TEST_F(Menu, FollowsTheState)
{
    settings.setLaunchAtLogin(true);
    settings.setHideDockIcon(false);
    hotKeys.setPaused(true);
    EXPECT_TRUE(lines().contains(QStringLiteral("Khởi động cùng máy +")));
    EXPECT_TRUE(lines().contains(QStringLiteral("Ẩn icon thanh Dock (Chỉ hiện Menu Bar) -")));
    EXPECT_TRUE(lines().contains(QStringLiteral("Kích hoạt lại phím tắt [p]")));
    hotKeys.setPaused(false);
    EXPECT_TRUE(lines().contains(QStringLiteral("Tạm dừng tất cả [p]")));
}

TEST_F(Menu, OffersAnUpdateWhileThereIsOne)
{
    updates.checkForUpdates(/*manual=*/false);
    ASSERT_TRUE(manifests.answer(QByteArray(R"({"version":"2.0.0","releaseNotes":"x"})")));
    EXPECT_EQ(lines()[6], QStringLiteral("🚀 Cập nhật Tavrin (Bản mới: v2.0.0)... [u]"));
    updates.setUpdateAvailable(false);
    EXPECT_EQ(lines()[6], QStringLiteral("Kiểm tra cập nhật... [u]")) << "the news was put away";
}

TEST_F(Menu, CallsTheTarget)
{
    store.add(shortcut(QStringLiteral("tắt"), 96, 0, false));
    for (const MenuItem& item : content()) {
        if (item.action)
            item.action();
    }
    EXPECT_EQ(target.calls,
        (QStringList{QStringLiteral("showMainWindow"), QStringLiteral("showGuideWindow"),
            QStringLiteral("showOnboardingWizard"), QStringLiteral("showAuthorWindow"),
            QStringLiteral("checkForUpdates"), QStringLiteral("run tắt"),
            QStringLiteral("toggleLaunchAtLogin"), QStringLiteral("toggleHideDock"),
            QStringLiteral("togglePause"), QStringLiteral("quitApp")}));
}

TEST_F(Menu, RunsAShortcutThatWasDeletedSince)
{
    const ShortcutItem item = shortcut(QStringLiteral("a"), 96, 0, true);
    store.add(item);
    const StatusMenuContent open = content();
    store.remove(item.id);
    open[8].action();
    EXPECT_EQ(target.calls, QStringList{QStringLiteral("run a")});
}

TEST_F(Menu, GivesEveryEntryAnIdentityOfItsOwnThatStays)
{
    const ShortcutItem item = shortcut(QStringLiteral("a"), 96, 0, true);
    store.add(item);
    store.add(item);
    store.add(shortcut(QStringLiteral("b"), 97, 0, true));
    QStringList identities;
    for (const MenuItem& entry : content())
        identities.append(entry.identity);
    EXPECT_EQ(QSet<QString>(identities.begin(), identities.end()).size(), identities.size());
    store.toggle(item.id);
    hotKeys.setPaused(true);
    QStringList later;
    for (const MenuItem& entry : content())
        later.append(entry.identity);
    EXPECT_EQ(later, identities);
}

} // namespace
} // namespace Tavrin
