#include "UI/ContentModel.h"

#include "support/TemporaryFolder.h"
#include "support/Wait.h"
#include "support/WindowDesk.h"

#include <atomic>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Testing::waitFor;

class Content : public testing::Test, protected Testing::HasFolder, protected Testing::WindowDesk {
protected:
    Content()
        : WindowDesk(folder.path())
    {
    }
    void SetUp() override
    {
        while (!store.shortcuts().empty())
            store.remove(store.shortcuts()[0].id);
        add("Bảng công việc", ActionType::openURL, "https://example.org/board", 13);
        add("Ghi nhật ký", ActionType::shellScript, "date", 37);
        add("Tắt", ActionType::shellScript, "Example", 38, false);
    }

    void add(const char* name, ActionType type, const char* value, std::uint32_t key, bool isEnabled = true)
    {
        store.add({QUuid::createUuid(), QString::fromUtf8(name), key, 0x100, type, QString::fromUtf8(value),
            isEnabled, 0});
    }
    std::vector<std::string> names()
    {
        std::vector<std::string> result;
        for (int row = 0; row < content.shortcuts()->rowCount(); ++row)
            result.push_back(content.shortcuts()->item(row)->name.toStdString());
        return result;
    }
    std::size_t liveHotKeys() const { return hotKeys.registeredHotKeys().size(); }

    ContentModel content{services([] { return false; })};
};

TEST_F(Content, FiltersByTextAndType)
{
    content.setSearchText(QStringLiteral("EXAMPLE"));
    EXPECT_THAT(names(), ElementsAre("Bảng công việc", "Tắt"));
    content.setSelectedFilter(4);
    EXPECT_EQ(ContentModel::filterTitles().at(4), QStringLiteral("Chạy Script / Lệnh"));
    EXPECT_THAT(names(), ElementsAre("Tắt"));
    content.setSearchText({});
    EXPECT_THAT(names(), ElementsAre("Ghi nhật ký", "Tắt"));
    content.setSelectedFilter(9);
    EXPECT_EQ(content.selectedFilter(), 4);
    content.setSearchText(QStringLiteral("⌘"));
    content.setSelectedFilter(0);
    EXPECT_EQ(names().size(), 3U);
}

TEST_F(Content, LeavesTheHotkeysAloneWhileItSearches)
{
    const int batches = platform.hotKeyBackend.batches;
    content.setSearchText(QStringLiteral("e"));
    content.setSelectedFilter(2);
    content.clearFilter();
    EXPECT_EQ(platform.hotKeyBackend.batches, batches);
    content.toggle(0);
    EXPECT_GT(platform.hotKeyBackend.batches, batches);
}

TEST_F(Content, SaysWhyTheListIsEmpty)
{
    content.setSearchText(QStringLiteral("zzz"));
    content.setSelectedFilter(2);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(content.emptyTitle(), QStringLiteral("Không tìm thấy phím tắt phù hợp"));
    EXPECT_EQ(content.emptyButton(), QStringLiteral("Xoá bộ lọc tìm kiếm"));
    content.clearFilter();
    EXPECT_EQ(content.searchText(), QString());
    EXPECT_EQ(content.selectedFilter(), 0);
    EXPECT_EQ(names().size(), 3U);

    content.setSearchText(QStringLiteral("zzz"));
    int changes = 0;
    QObject::connect(&content, &ContentModel::storeChanged, [&] { ++changes; });
    while (!store.shortcuts().empty())
        store.remove(store.shortcuts()[0].id);
    EXPECT_GT(changes, 0);
    EXPECT_EQ(content.emptyTitle(), QStringLiteral("Chưa có phím tắt nào được tạo"));
    EXPECT_EQ(content.emptyButton(), QStringLiteral("Thêm Phím Tắt Đầu Tiên"));
}

TEST_F(Content, CountsTheWholeStore)
{
    content.setSearchText(QStringLiteral("zzz"));
    EXPECT_EQ(content.totals(), QStringLiteral("Tổng cộng: 3 phím tắt (2 đang bật)"));
}

TEST_F(Content, TogglesTheRowThatIsShown)
{
    hotKeys.syncShortcuts(store.shortcuts());
    EXPECT_EQ(liveHotKeys(), 2U);
    content.setSearchText(QStringLiteral("tắt"));
    content.toggle(0);
    EXPECT_TRUE(store.shortcuts()[2].isEnabled);
    EXPECT_EQ(liveHotKeys(), 3U);
    content.toggle(7);
    EXPECT_EQ(liveHotKeys(), 3U);
}

TEST_F(Content, TriesAShortcutThatIsOff)
{
    content.test(2);
    content.test(-1);
    Testing::drainEvents();
    EXPECT_EQ(desk.scripts.shellScripts, QStringList{QStringLiteral("Example")});
}

TEST_F(Content, DeletesOnlyWhenConfirmed)
{
    hotKeys.syncShortcuts(store.shortcuts());
    content.askToDelete(1);
    EXPECT_TRUE(content.isDeletePending());
    EXPECT_EQ(content.deleteMessage(),
        QStringLiteral(
            "Bạn có chắc chắn muốn xóa phím tắt \"Ghi nhật ký\" (⌘ L) không? Thao tác này không thể "
            "hoàn tác."));
    const auto file = folder.read(QStringLiteral("Tavrin/shortcuts.json"));
    content.cancelDelete();
    EXPECT_FALSE(content.isDeletePending());
    EXPECT_EQ(store.shortcuts().size(), 3U);
    EXPECT_EQ(folder.read(QStringLiteral("Tavrin/shortcuts.json")), file);
    content.confirmDelete();
    EXPECT_EQ(store.shortcuts().size(), 3U) << "nothing is pending any more";

    content.askToDelete(1);
    content.confirmDelete();
    EXPECT_THAT(names(), ElementsAre("Bảng công việc", "Tắt"));
    EXPECT_FALSE(content.isDeletePending());
    EXPECT_EQ(liveHotKeys(), 1U);
}

TEST_F(Content, SavesNewShortcutsAtTheEndAndKnownOnesInTheirPlace)
{
    ShortcutItem item = store.shortcuts()[0];
    item.name = QStringLiteral("đổi tên");
    content.save(item);
    item.id = QUuid::createUuid();
    item.name = QStringLiteral("mới");
    item.keyCode = 1;
    content.save(item);
    EXPECT_THAT(names(), ElementsAre("đổi tên", "Ghi nhật ký", "Tắt", "mới"));
    EXPECT_EQ(liveHotKeys(), 3U);
    EXPECT_TRUE(folder.read(QStringLiteral("Tavrin/shortcuts.json")).contains("mới"));
}

TEST_F(Content, OpensOneEditorAtATime)
{
    int changes = 0;
    QObject::connect(&content, &ContentModel::editingChanged, [&] { ++changes; });
    EXPECT_EQ(content.editor(), nullptr);
    content.edit(9);
    EXPECT_EQ(content.editor(), nullptr);
    content.edit(1);
    ASSERT_NE(content.editor(), nullptr);
    EXPECT_EQ(content.editor()->name(), QStringLiteral("Ghi nhật ký"));
    content.showEditor();
    EXPECT_EQ(content.editor()->name(), QStringLiteral("Ghi nhật ký"));
    content.editor()->dismiss();
    EXPECT_EQ(content.editor(), nullptr);
    EXPECT_EQ(changes, 2);
    content.showEditor();
    EXPECT_EQ(content.editor()->name(), QString());
}

TEST_F(Content, StoresWhatTheEditorSaves)
{
    content.edit(0);
    content.editor()->setName(QStringLiteral("đổi tên"));
    content.editor()->save();
    EXPECT_EQ(content.editor(), nullptr);
    EXPECT_THAT(names(), ElementsAre("đổi tên", "Ghi nhật ký", "Tắt"));
    EXPECT_TRUE(folder.read(QStringLiteral("Tavrin/shortcuts.json")).contains("đổi tên"));
    EXPECT_EQ(liveHotKeys(), 2U);
}

TEST_F(Content, RecordsNoKeysWhileItCannotBeSeen)
{
    content.showEditor();
    content.editor()->recorder()->start();
    content.setOnScreen(false);
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    EXPECT_NE(content.editor(), nullptr);
}

TEST_F(Content, RecordsNoKeysBehindTheWizard)
{
    content.finishOnboarding();
    content.showEditor();
    content.editor()->recorder()->start();
    settings.setShowOnboarding(true);
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
}

TEST_F(Content, TellsTheEditorOfThePermission)
{
    content.setOnScreen(true);
    content.showEditor();
    int changes = 0;
    QObject::connect(content.editor(), &EditorModel::permissionChanged, [&] { ++changes; });
    platform.accessibilityService.trusted = false;
    EXPECT_TRUE(waitFor([&] { return changes == 1; }, 3000));
    EXPECT_TRUE(content.editor()->isPermissionMissing());
}

TEST_F(Content, KeepsAllHotkeysOffWhilePaused)
{
    hotKeys.syncShortcuts(store.shortcuts());
    content.togglePaused();
    EXPECT_TRUE(content.isPaused());
    EXPECT_TRUE(hotKeys.isPaused());
    EXPECT_EQ(liveHotKeys(), 0U);
    ShortcutItem item = store.shortcuts()[0];
    item.id = QUuid::createUuid();
    content.save(item);
    content.toggle(0);
    content.askToDelete(1);
    content.confirmDelete();
    EXPECT_EQ(liveHotKeys(), 0U);
    content.togglePaused();
    EXPECT_FALSE(content.isPaused());
    EXPECT_EQ(liveHotKeys(), 1U);
}

TEST_F(Content, ShowsThePauseThatItSetItself)
{
    hotKeys.setPaused(true);
    EXPECT_FALSE(content.isPaused());
}

TEST_F(Content, NoticesThatAccessibilityWasTakenAway)
{
    content.setOnScreen(true);
    EXPECT_TRUE(content.isAccessibilityGranted());
    content.requestAccessibility();
    EXPECT_EQ(platform.accessibilityService.requests, 0) << "nothing to ask for";
    platform.accessibilityService.trusted = false;
    EXPECT_TRUE(waitFor([&] { return !content.isAccessibilityGranted(); }, 3000));
    content.requestAccessibility();
    EXPECT_EQ(platform.accessibilityService.requests, 1);
    content.setOnScreen(false);
    platform.accessibilityService.trusted = true;
    content.setOnScreen(true);
    EXPECT_TRUE(content.isAccessibilityGranted()) << "at once when the window comes back";
}

TEST_F(Content, FollowsTheNotificationsToItsTabs)
{
    notifications.post(Notification::selectAuthorTab);
    EXPECT_EQ(content.selectedTab(), ContentModel::AuthorTab);
    notifications.post(Notification::selectGuideTab);
    EXPECT_EQ(content.selectedTab(), ContentModel::GuideTab);
    notifications.post(u"somethingElse");
    EXPECT_EQ(content.selectedTab(), ContentModel::GuideTab);
    notifications.post(Notification::selectShortcutsTab);
    EXPECT_EQ(content.selectedTab(), ContentModel::ShortcutsTab);
}

TEST_F(Content, BindsTheSettings)
{
    content.setLaunchAtLogin(true);
    EXPECT_TRUE(settings.launchAtLogin());
    content.setHideDockIcon(false);
    EXPECT_FALSE(settings.hideDockIcon());
    settings.setHideDockIcon(true);
    EXPECT_TRUE(content.hideDockIcon());
}

TEST_F(Content, ShowsTheWizardUntilItIsFinishedAndWhenAskedFor)
{
    EXPECT_TRUE(content.isOnboardingShown());
    content.finishOnboarding();
    EXPECT_FALSE(content.isOnboardingShown());
    settings.setShowOnboarding(true);
    EXPECT_TRUE(content.isOnboardingShown());
    content.finishOnboarding();
    EXPECT_FALSE(content.isOnboardingShown());
    EXPECT_TRUE(settings.hasCompletedOnboarding());
}

TEST_F(Content, TellsOfAnUpdateUntilItIsPutAway)
{
    EXPECT_FALSE(content.isUpdateAvailable());
    updates.checkForUpdates(false);
    ASSERT_TRUE(platform.manifestSource.answer(
        QByteArray(R"({"version":"9.9.9","downloadUrl":"https://a.vn/a.zip","releaseNotes":"x"})")));
    EXPECT_TRUE(content.isUpdateAvailable());
    EXPECT_EQ(content.updateTitle(), QStringLiteral("Đã có bản cập nhật mới: v9.9.9"));
    content.startUpdate();
    ASSERT_EQ(platform.fakeUpdateInstaller.requests.size(), 1U);
    EXPECT_EQ(platform.fakeUpdateInstaller.requests[0].address, QUrl(QStringLiteral("https://a.vn/a.zip")));
    EXPECT_TRUE(platform.fakeUpdateInstaller.progress(4279, 10000));
    EXPECT_TRUE(content.isUpdating());
    EXPECT_EQ(content.updateProgress(), QStringLiteral("42%"));
    EXPECT_EQ(content.updateStatus(), QStringLiteral("Đang tải bản cập nhật v9.9.9..."));
    content.dismissUpdate();
    EXPECT_FALSE(content.isUpdateAvailable());
}

TEST_F(Content, RegistersTheShortcutsIfNobodyHasDoneSo)
{
    EXPECT_EQ(liveHotKeys(), 0U);
    content.setOnScreen(true);
    EXPECT_EQ(liveHotKeys(), 2U) << "the enabled ones";
    const auto registered = platform.hotKeyBackend.entries;
    content.setOnScreen(false);
    content.setOnScreen(true);
    EXPECT_EQ(platform.hotKeyBackend.entries.size(), registered.size());
    EXPECT_EQ(platform.hotKeyBackend.entries.begin()->first, registered.begin()->first) << "the same ones";
}

TEST_F(Content, LooksForApplicationsOnceItIsOnScreen)
{
    platform.applicationCatalog->folderPaths = {QStringLiteral("/apps")};
    std::atomic<int> scans = 0;
    platform.applicationCatalog->listing = [&scans](const QString&) { ++scans; };
    content.setOnScreen(true);
    Testing::drainEvents();
    EXPECT_EQ(scans, 0) << "the first frame comes first";
    EXPECT_TRUE(waitFor([&] { return scans == 1; }));
    EXPECT_TRUE(waitFor([&] { return !content.scanner().isLoading(); }));
    EXPECT_EQ(scans, 1) << "asking for it scans once only";
    content.setOnScreen(false);
    content.setOnScreen(true);
    EXPECT_TRUE(waitFor([&] { return scans == 2; })) << "what was installed meanwhile";
    EXPECT_TRUE(waitFor([&] { return !content.scanner().isLoading(); }));
}

TEST_F(Content, LooksForApplicationsAtOnceWhereTheyAreWanted)
{
    platform.applicationCatalog->add(QStringLiteral("/apps"), QStringLiteral("A.app"));
    EXPECT_TRUE(content.scanner().isLoading());
    EXPECT_TRUE(waitFor([&] { return content.scanner().apps().size() == 1; }));
}

} // namespace
} // namespace Tavrin
