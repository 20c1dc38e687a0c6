#include "UI/Editor/ShortcutDraft.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Mode = QuickTextPayload::Mode;

std::optional<QString> knownApplication(const QString& value)
{
    return value == u"/usr/share/applications/zalo.desktop" ? std::optional(QStringLiteral("Zalo"))
                                                            : std::nullopt;
}

ShortcutDraft recorded(ActionType type)
{
    ShortcutDraft draft;
    draft.keyCode = 40;
    draft.modifiers = 0x100;
    draft.actionType = type;
    return draft;
}

QString message(const ShortcutDraft& draft)
{
    const auto result = draft.finished(knownApplication);
    const auto* text = std::get_if<QString>(&result);
    return text ? *text : QStringLiteral("(saved)");
}

ShortcutItem saved(const ShortcutDraft& draft)
{
    const auto result = draft.finished(knownApplication);
    const auto* item = std::get_if<ShortcutItem>(&result);
    EXPECT_TRUE(item) << message(draft).toStdString();
    return item ? *item : ShortcutItem();
}

TEST(Draft, NeedsACombinationBeforeAnythingElse)
{
    for (const ActionType type : allActionTypes) {
        ShortcutDraft draft = recorded(type);
        draft.keyCode = 0;
        draft.modifiers = 0;
        EXPECT_EQ(message(draft), QStringLiteral("Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt."));
    }
    ShortcutDraft letterA = recorded(ActionType::systemAction);
    letterA.keyCode = 0;
    EXPECT_EQ(message(letterA), QStringLiteral("(saved)"));
}

struct MissingCase {
    ActionType type;
    const char* content;
    const char* message;
};

class Missing : public testing::TestWithParam<MissingCase> { };

TEST_P(Missing, IsSaidInWords)
{
    ShortcutDraft draft = recorded(GetParam().type);
    draft.actionValue = draft.quickText = QString::fromUtf8(GetParam().content);
    EXPECT_EQ(message(draft), QString::fromUtf8(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(Table, Missing,
    testing::Values(MissingCase{ActionType::launchApp, "", "Vui lòng chọn ứng dụng cần mở."},
        MissingCase{ActionType::launchApp, " \t ", "Vui lòng chọn ứng dụng cần mở."},
        MissingCase{ActionType::openURL, "", "Vui lòng chỉ định nội dung hành động."},
        MissingCase{ActionType::shellScript, "   ", "Vui lòng chỉ định nội dung hành động."},
        MissingCase{ActionType::shellScript, "\n", "(saved)"},
        MissingCase{ActionType::quickText, "", "Vui lòng nhập nội dung văn bản muốn chèn hoặc sao chép."},
        MissingCase{
            ActionType::quickText, " \n\t\n", "Vui lòng nhập nội dung văn bản muốn chèn hoặc sao chép."},
        MissingCase{ActionType::systemAction, "", "(saved)"}));

struct NameCase {
    const char* what;
    ActionType type;
    const char* name;
    const char* content;
    const char* derived;
};

class Name : public testing::TestWithParam<NameCase> { };

TEST_P(Name, IsTheUsersOrDerived)
{
    ShortcutDraft draft = recorded(GetParam().type);
    draft.name = QString::fromUtf8(GetParam().name);
    draft.actionValue = draft.quickText = QString::fromUtf8(GetParam().content);
    EXPECT_EQ(saved(draft).name, QString::fromUtf8(GetParam().derived)) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(Table, Name,
    testing::Values(NameCase{"own", ActionType::openURL, " \tCủa tôi ", "a", "Của tôi"},
        NameCase{"blank", ActionType::openURL, " \t", "a", "Phím tắt mới"},
        NameCase{"script", ActionType::shellScript, "", "true", "Phím tắt mới"},
        NameCase{
            "known application", ActionType::launchApp, "", " /usr/share/applications/zalo.desktop", "Zalo"},
        NameCase{"unknown application", ActionType::launchApp, "", "/opt/x", "Phím tắt mới"},
        NameCase{"system action", ActionType::systemAction, "", "", "Khoá màn hình"},
        NameCase{"short text", ActionType::quickText, "", " Xin chào \nbạn", "Xin chào"},
        NameCase{"25 characters", ActionType::quickText, "", "1234567890123456789012345",
            "1234567890123456789012345"},
        NameCase{"26 characters", ActionType::quickText, "", "12345678901234567890123456\nx",
            "1234567890123456789012345"},
        NameCase{"decomposed letters", ActionType::quickText, "",
            "e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e"
            "\u0302\u0301"
            "e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e"
            "\u0302\u0301"
            "e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e"
            "\u0302\u0301"
            "12",
            "e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e"
            "\u0302\u0301"
            "e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e"
            "\u0302\u0301"
            "e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e\u0302\u0301e"
            "\u0302\u0301"
            "1"},
        NameCase{"empty first line", ActionType::quickText, "", " \nhai", "Văn bản nhanh"}));

TEST(Draft, KeepsWhatAnEditMustNotChange)
{
    const ShortcutItem before{QUuid::createUuid(), QStringLiteral("cũ"), 1, 0x100, ActionType::openURL,
        QStringLiteral("a.vn"), false, 12.5};
    ShortcutDraft draft(before);
    EXPECT_EQ(saved(draft), before);
    draft.name = QStringLiteral("mới");
    draft.actionType = ActionType::systemAction;
    draft.systemAction = SystemActionType::volumeUp;
    const ShortcutItem after = saved(draft);
    EXPECT_EQ(after.id, before.id);
    EXPECT_FALSE(after.isEnabled);
    EXPECT_EQ(after.createdAt, 12.5);
    EXPECT_EQ(after.actionValue, QStringLiteral("volumeUp"));
}

TEST(Draft, MakesANewShortcutThatIsOn)
{
    const double before = ShortcutItem::currentDate();
    const ShortcutItem item = saved(recorded(ActionType::systemAction));
    EXPECT_FALSE(item.id.isNull());
    EXPECT_TRUE(item.isEnabled);
    EXPECT_GE(item.createdAt, before);
    EXPECT_EQ(item.actionValue, QStringLiteral("lockScreen"));
}

TEST(Draft, UnpacksAndPacksAQuickText)
{
    const QuickTextPayload payload{Mode::copyOnly, QStringLiteral(" dòng 1\ndòng 2 "), true};
    const ShortcutDraft draft({QUuid::createUuid(), QStringLiteral("x"), 1, 1, ActionType::quickText,
        payload.encodeToString(), true, 0});
    EXPECT_EQ(draft.quickText, payload.text);
    EXPECT_EQ(draft.quickTextMode, payload.mode);
    EXPECT_TRUE(draft.restoreClipboard);
    EXPECT_FALSE(draft.pastes());
    EXPECT_EQ(QuickTextPayload::from(saved(draft).actionValue), payload);
}

TEST(Draft, UnderstandsTheSystemActionThatItEdits)
{
    ShortcutItem item{
        QUuid::createUuid(), {}, 1, 1, ActionType::systemAction, QStringLiteral("emptyTrash"), true, 0};
    EXPECT_EQ(ShortcutDraft(item).systemAction, SystemActionType::emptyTrash);
    item.actionValue = QStringLiteral("unknown");
    EXPECT_EQ(ShortcutDraft(item).systemAction, SystemActionType::lockScreen);
}

TEST(Draft, TrimsBlanksButNoLineBreaks)
{
    ShortcutDraft draft = recorded(ActionType::shellScript);
    draft.actionValue = QStringLiteral("\t echo 1\necho 2\n \t");
    EXPECT_EQ(saved(draft).actionValue, QStringLiteral("echo 1\necho 2\n"));
}

TEST(Draft, KeepsTheFieldsOfOtherTypes)
{
    ShortcutDraft draft = recorded(ActionType::quickText);
    draft.quickText = QStringLiteral("chữ");
    draft.actionValue = QStringLiteral("a.vn");
    draft.actionType = ActionType::openURL;
    EXPECT_EQ(saved(draft).actionValue, QStringLiteral("a.vn"));
    draft.actionType = ActionType::quickText;
    EXPECT_EQ(QuickTextPayload::from(saved(draft).actionValue).text, QStringLiteral("chữ"));
}

struct NoticeCase {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    const char* beginning;
};

class KeyNotice : public testing::TestWithParam<NoticeCase> { };

TEST_P(KeyNotice, SaysOneThingAtMost)
{
    ShortcutDraft draft;
    draft.keyCode = GetParam().keyCode;
    draft.modifiers = GetParam().modifiers;
    const QString beginning = QString::fromUtf8(GetParam().beginning);
    EXPECT_EQ(draft.keyNotice().left(beginning.size()), beginning);
    EXPECT_EQ(draft.keyNotice().isEmpty(), beginning.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, KeyNotice,
    testing::Values(NoticeCase{99, 0x100, "⚠️ Cmd + F3"}, NoticeCase{99, 0x900, "⚠️ Cmd + F3"},
        NoticeCase{99, 0x800, "💡 Trên"}, NoticeCase{122, 0, "💡 Trên"}, NoticeCase{111, 0x1000, "💡 Trên"},
        NoticeCase{96, 0, "💡 Trên"}, NoticeCase{105, 0, ""}, NoticeCase{40, 0x100, ""},
        NoticeCase{0, 0, ""}));

TEST(Presets, RenameOnlyWhatTheUserDidNotName)
{
    const auto& scripts = referenceScriptPresets();
    ShortcutDraft draft;
    draft.actionValue = QStringLiteral("của tôi");
    draft.applyScriptPreset(scripts[0], scripts);
    EXPECT_EQ(draft.name, scripts[0].name);
    EXPECT_EQ(draft.actionValue, scripts[0].code);
    draft.applyScriptPreset(scripts[1], scripts);
    EXPECT_EQ(draft.name, scripts[1].name);
    draft.applyQuickTextPreset(quickTextPresets()[2]);
    EXPECT_EQ(draft.name, scripts[1].name) << "each table knows its own names only";
    draft.name = QStringLiteral("Của tôi");
    draft.applyScriptPreset(scripts[2], scripts);
    EXPECT_EQ(draft.name, QStringLiteral("Của tôi"));
    EXPECT_EQ(draft.actionValue, scripts[2].code);
}

TEST(Presets, OfTextsSetTextAndModeAndNothingElse)
{
    ShortcutDraft draft = recorded(ActionType::openURL);
    draft.quickTextMode = Mode::copyOnly;
    draft.restoreClipboard = true;
    draft.applyQuickTextPreset(quickTextPresets()[5]);
    EXPECT_EQ(draft.quickText, QStringLiteral("> {clipboard}"));
    EXPECT_EQ(draft.quickTextMode, Mode::paste);
    EXPECT_EQ(draft.name, QStringLiteral("Trích dẫn Clipboard"));
    EXPECT_TRUE(draft.restoreClipboard);
    EXPECT_EQ(draft.actionType, ActionType::openURL);
    EXPECT_EQ(draft.keyCode, 40U);
}

} // namespace
} // namespace Tavrin
