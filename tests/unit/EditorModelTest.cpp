#include "UI/Editor/EditorModel.h"

#include "Core/Applications/AppScanner.h"
#include "Core/HotKey/HotKeyManager.h"
#include "Core/Storage/ConfigStore.h"
#include "support/ActionDesk.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using testing::ElementsAre;
using Testing::waitFor;

class Editor : public testing::Test {
protected:
    EditorModel& editor(const std::optional<ShortcutItem>& item = std::nullopt)
    {
        m_editor
            = std::make_unique<EditorModel>(EditorServices{hotKeys, platform.fakeKeyCapture,
                                                referenceScriptPresets(), scanner, platform.fakeOpenPanel},
                item);
        QObject::connect(&*m_editor, &EditorModel::saved, [this](const ShortcutItem& finished) {
            events.emplace_back("saved");
            saved = finished;
        });
        QObject::connect(&*m_editor, &EditorModel::dismissed, [this] { events.emplace_back("dismissed"); });
        return *m_editor;
    }
    void scan()
    {
        ASSERT_TRUE(waitFor([&] { return !scanner.apps().empty(); }));
    }
    void record(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        m_editor->recorder()->start();
        platform.fakeKeyCapture.press(keyCode, modifiers);
    }

    static std::shared_ptr<FakeApplicationCatalog> filled(std::shared_ptr<FakeApplicationCatalog> catalog)
    {
        ApplicationInformation zalo;
        zalo.identifier = QStringLiteral("vn.zalo");
        catalog->add(QStringLiteral("/apps"), QStringLiteral("Zalo.app"), zalo);
        return catalog;
    }

    Testing::TemporaryFolder folder;
    FakePlatform platform{folder.path()};
    Testing::ActionDesk desk;
    ConfigStore store{folder.path()};
    ActionExecutor executor{desk.services()};
    HotKeyManager hotKeys{platform.hotKeyBackend, store, executor, platform.accessibilityService};
    AppScanner scanner{filled(platform.applicationCatalog)};
    std::vector<std::string> events;
    ShortcutItem saved;

private:
    std::unique_ptr<EditorModel> m_editor;
};

constexpr int launchApp = 0, openURL = 1, quickText = 2, shellScript = 3, systemAction = 4;

TEST_F(Editor, BeginsEmptyForANewShortcut)
{
    EditorModel& model = editor();
    EXPECT_EQ(model.title(), QStringLiteral("Thêm Phím Tắt Mới"));
    EXPECT_EQ(model.saveTitle(), QStringLiteral("Tạo Phím Tắt"));
    EXPECT_EQ(model.name(), QString());
    EXPECT_FALSE(model.recorder()->isAssigned());
    EXPECT_EQ(model.selectedType(), launchApp);
    EXPECT_FALSE(model.isApplicationChosen());
    EXPECT_EQ(model.selectedMode(), 0);
    EXPECT_EQ(model.selectedSystemAction(), 0);
    EXPECT_FALSE(model.restoreClipboard());
    EXPECT_EQ(model.errorMessage(), QString());
}

TEST_F(Editor, ShowsTheShortcutThatItEdits)
{
    const QuickTextPayload payload{QuickTextPayload::Mode::copyOnly, QStringLiteral("a\nb"), true};
    EditorModel& model = editor(ShortcutItem{QUuid::createUuid(), QStringLiteral("Tên"), 40, 0x300,
        ActionType::quickText, payload.encodeToString(), false, 3});
    EXPECT_EQ(model.title(), QStringLiteral("Chỉnh Sửa Phím Tắt"));
    EXPECT_EQ(model.saveTitle(), QStringLiteral("Lưu Thay Đổi"));
    EXPECT_EQ(model.name(), QStringLiteral("Tên"));
    EXPECT_EQ(model.recorder()->keyBadge(), QStringLiteral("K"));
    EXPECT_EQ(model.selectedType(), quickText);
    EXPECT_EQ(model.quickText(), QStringLiteral("a\nb"));
    EXPECT_EQ(model.selectedMode(), 1);
    EXPECT_TRUE(model.restoreClipboard());
    model.save();
    EXPECT_THAT(events, ElementsAre("saved", "dismissed"));
    EXPECT_FALSE(saved.isEnabled);
    EXPECT_EQ(QuickTextPayload::from(saved.actionValue), payload);
}

TEST_F(Editor, SaysOneMissingThingAfterTheOther)
{
    EditorModel& model = editor();
    int changes = 0;
    QObject::connect(&model, &EditorModel::errorMessageChanged, [&] { ++changes; });
    model.save();
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt."));
    model.save();
    EXPECT_EQ(changes, 1);
    record(40, 0x100);
    EXPECT_EQ(changes, 1) << "it stays until something else is missing";
    model.save();
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Vui lòng chọn ứng dụng cần mở."));
    model.setSelectedType(quickText);
    model.setQuickText(QStringLiteral(" \n "));
    model.save();
    EXPECT_EQ(
        model.errorMessage(), QStringLiteral("Vui lòng nhập nội dung văn bản muốn chèn hoặc sao chép."));
    model.setSelectedType(openURL);
    model.save();
    EXPECT_EQ(model.errorMessage(), QStringLiteral("Vui lòng chỉ định nội dung hành động."));
    EXPECT_THAT(events, ElementsAre());
    EXPECT_EQ(model.quickText(), QStringLiteral(" \n ")) << "nothing is cleared";

    model.setActionValue(QStringLiteral("a.vn"));
    model.save();
    EXPECT_THAT(events, ElementsAre("saved", "dismissed"));
    EXPECT_EQ(saved.actionValue, QStringLiteral("a.vn"));
    EXPECT_EQ(saved.modifiers, 0x100U);
}

TEST_F(Editor, NamesAShortcutAfterItsApplication)
{
    scan();
    EditorModel& model = editor();
    record(40, 0x100);
    model.setActionValue(QStringLiteral(" vn.zalo "));
    EXPECT_TRUE(model.isApplicationChosen());
    EXPECT_EQ(model.applicationName(), QStringLiteral("Zalo"));
    model.save();
    EXPECT_EQ(saved.name, QStringLiteral("Zalo"));
    model.setActionValue(QStringLiteral("/opt/unknown"));
    EXPECT_EQ(model.applicationName(), QStringLiteral("/opt/unknown"));
    model.save();
    EXPECT_EQ(saved.name, QStringLiteral("Phím tắt mới"));
    model.setActionValue(QStringLiteral("  "));
    EXPECT_FALSE(model.isApplicationChosen());
}

TEST_F(Editor, LearnsOfAnApplicationWhenItIsFound)
{
    EditorModel& model = editor();
    model.setActionValue(QStringLiteral("vn.zalo"));
    EXPECT_EQ(model.applicationName(), QStringLiteral("vn.zalo"));
    int changes = 0;
    QObject::connect(&model, &EditorModel::applicationChanged, [&] { ++changes; });
    scan();
    EXPECT_GT(changes, 0);
    EXPECT_EQ(model.applicationName(), QStringLiteral("Zalo"));
}

TEST_F(Editor, TakesThePathOfTheApplicationThatIsPicked)
{
    scan();
    EditorModel& model = editor();
    model.recorder()->start();
    model.chooseApplication();
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    ASSERT_NE(model.picker(), nullptr);
    model.picker()->choose(0);
    EXPECT_EQ(model.picker(), nullptr);
    EXPECT_EQ(model.actionValue(), QStringLiteral("/apps/Zalo.app"));
    EXPECT_EQ(model.applicationName(), QStringLiteral("Zalo"));

    model.chooseApplication();
    model.closePicker();
    EXPECT_EQ(model.picker(), nullptr);
    EXPECT_EQ(model.actionValue(), QStringLiteral("/apps/Zalo.app"));
    model.closePicker();
}

TEST_F(Editor, KnowsAnApplicationThatWasBrowsedFor)
{
    EditorModel& model = editor();
    model.chooseApplication();
    model.picker()->browse();
    ASSERT_TRUE(platform.fakeOpenPanel.answer(QStringLiteral("/home/x/Krita.app")));
    ASSERT_TRUE(waitFor([&] { return !model.picker(); }));
    EXPECT_EQ(model.actionValue(), QStringLiteral("/home/x/Krita.app"));
    EXPECT_EQ(model.applicationName(), QStringLiteral("Krita"));
}

TEST_F(Editor, RemarksOnTheCombinationAtOnce)
{
    EditorModel& model = editor();
    int changes = 0;
    QObject::connect(&model, &EditorModel::keyNoticeChanged, [&] { ++changes; });
    record(99, 0x100);
    EXPECT_TRUE(model.keyNotice().startsWith(QStringLiteral("⚠️ Cmd + F3")));
    EXPECT_TRUE(model.isKeyTaken());
    record(96, 0);
    EXPECT_TRUE(model.keyNotice().startsWith(QStringLiteral("💡")));
    EXPECT_FALSE(model.isKeyTaken());
    model.recorder()->clear();
    EXPECT_EQ(model.keyNotice(), QString());
    EXPECT_EQ(changes, 3);
}

TEST_F(Editor, ListsTypesModesAndTokensInTheirOrder)
{
    EXPECT_EQ(
        EditorModel::typeLabels().join(u'|'), QStringLiteral("Mở App|Trang Web|Văn bản|Script|Hệ thống"));
    EXPECT_EQ(EditorModel::typeSymbols().join(u'|'),
        QStringLiteral("app.badge.fill|safari.fill|doc.on.clipboard.fill|terminal.fill|gearshape.2.fill"));
    EXPECT_EQ(EditorModel::modeTitles().join(u'|'),
        QStringLiteral("Tự động dán (Auto Paste)|Chỉ chép vào Clipboard|Dán & Lưu vào Clipboard"));
    EXPECT_EQ(EditorModel::tokenTitles().join(u'|'),
        QStringLiteral("Ngày hiện tại|Giờ hiện tại|Ngày & Giờ|Clipboard hiện tại"));
}

TEST_F(Editor, GroupsTheSystemActions)
{
    EXPECT_EQ(EditorModel::systemActionGroups().join(u'|'),
        QStringLiteral("Nguồn & Bảo mật|Âm thanh & Hiển thị|Tiện ích & Hệ thống"));
    const std::pair<int, int> runs[] = {{0, 3}, {3, 4}, {7, 6}};
    for (int group = 0; group < 3; ++group) {
        EXPECT_EQ(EditorModel::firstSystemAction(group), runs[group].first);
        EXPECT_EQ(EditorModel::systemActionCount(group), runs[group].second);
    }
    EXPECT_EQ(EditorModel::systemActionCount(3), 0);
    EXPECT_EQ(EditorModel::systemActionTitles().at(12), QStringLiteral("Khởi động lại thanh Dock"));
    EXPECT_EQ(EditorModel::systemActionSymbols().at(0), QStringLiteral("lock.fill"));
}

TEST_F(Editor, SavesTheChosenSystemAction)
{
    EditorModel& model = editor();
    record(40, 0x100);
    model.setSelectedType(systemAction);
    model.setSelectedSystemAction(5);
    model.save();
    EXPECT_EQ(saved.actionValue, QStringLiteral("volumeUp"));
    EXPECT_EQ(saved.name, QStringLiteral("Tăng âm lượng (+10%)"));
}

TEST_F(Editor, AppendsTokensToTheEnd)
{
    EditorModel& model = editor();
    model.setQuickText(QStringLiteral("x "));
    for (int index = -1; index < 5; ++index)
        model.appendToken(index);
    EXPECT_EQ(model.quickText(), QStringLiteral("x {date}{time}{datetime}{clipboard}"));
}

TEST_F(Editor, AppliesPresetsAndTellsTheView)
{
    EditorModel& model = editor();
    QStringList changed;
    QObject::connect(&model, &EditorModel::nameChanged, [&] { changed += QStringLiteral("name"); });
    QObject::connect(&model, &EditorModel::actionValueChanged, [&] { changed += QStringLiteral("value"); });
    QObject::connect(&model, &EditorModel::quickTextChanged, [&] { changed += QStringLiteral("text"); });
    QObject::connect(&model, &EditorModel::selectedModeChanged, [&] { changed += QStringLiteral("mode"); });
    model.applyScriptPreset(5);
    EXPECT_EQ(changed.join(u' '), QStringLiteral("name value"));
    EXPECT_EQ(model.actionValue(), QStringLiteral("killall Dock; killall ControlCenter"));
    EXPECT_EQ(model.name(), model.scriptPresetNames().at(5));
    EXPECT_EQ(model.scriptPresetDetails().size(), 7);
    EXPECT_EQ(model.scriptPresetSymbols().at(6), QStringLiteral("terminal.fill"));
    changed.clear();
    model.setSelectedMode(1);
    model.setName({});
    model.applyQuickTextPreset(2);
    EXPECT_EQ(changed.join(u' '), QStringLiteral("mode name name text mode"));
    EXPECT_EQ(model.quickText(), QStringLiteral("{date}"));
    EXPECT_EQ(EditorModel::quickTextPresetNames().at(2), model.name());
    model.applyScriptPreset(7);
    model.applyQuickTextPreset(-1);
    EXPECT_EQ(model.quickText(), QStringLiteral("{date}"));
}

TEST_F(Editor, WarnsOfAMissingPermissionOnlyWherePasting)
{
    EditorModel& model = editor();
    EXPECT_FALSE(model.isPermissionMissing());
    platform.accessibilityService.trusted = false;
    EXPECT_TRUE(model.isPermissionMissing());
    int changes = 0;
    QObject::connect(&model, &EditorModel::permissionChanged, [&] { ++changes; });
    model.setSelectedMode(1);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(model.pastes());
    EXPECT_FALSE(model.isPermissionMissing());
    model.setSelectedMode(2);
    EXPECT_TRUE(model.isPermissionMissing());
    model.requestAccessibility();
    EXPECT_EQ(platform.accessibilityService.requests, 1);
}

TEST_F(Editor, IgnoresChoicesThatAreNotThere)
{
    EditorModel& model = editor();
    for (const int index : {-1, 13}) {
        model.setSelectedType(index);
        model.setSelectedMode(index);
        model.setSelectedSystemAction(index);
    }
    EXPECT_EQ(model.selectedType(), 0);
    EXPECT_EQ(model.selectedMode(), 0);
    EXPECT_EQ(model.selectedSystemAction(), 0);
}

TEST_F(Editor, EndsTheRecordingBeforeAnythingElse)
{
    EditorModel& model = editor();
    model.recorder()->start();
    model.escape();
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    EXPECT_THAT(events, ElementsAre()) << "the editor stays";
    model.recorder()->start();
    model.save();
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    model.recorder()->start();
    model.dismiss();
    EXPECT_FALSE(platform.fakeKeyCapture.isCapturing());
    EXPECT_THAT(events, ElementsAre("dismissed"));
    model.escape();
    EXPECT_THAT(events, ElementsAre("dismissed", "dismissed"));
}

} // namespace
} // namespace Tavrin
