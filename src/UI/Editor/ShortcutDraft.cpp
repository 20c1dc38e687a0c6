#include "UI/Editor/ShortcutDraft.h"

#include "Core/Model/KeyCodeHelper.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace Tavrin {
namespace {

constexpr std::uint32_t f3 = 99;
constexpr std::uint32_t functionKeys[] = {122, 120, f3, 118, 96, 97, 98, 100, 101, 109, 103, 111};

/// Characters of a text's first line that make a name.
constexpr qsizetype longestDerivedName = 25;

/// Spaces and tabs go, line breaks stay.
QString trimmedBlanks(const QString& text)
{
    const auto isBlank = [](QChar character) {
        return character == u'\t' || character.category() == QChar::Separator_Space;
    };
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && isBlank(text[first]))
        ++first;
    while (last > first && isBlank(text[last - 1]))
        --last;
    return text.mid(first, last - first);
}

/// The first characters as a reader counts them: never half of an emoji or of an accented letter.
QString firstCharacters(const QString& text, qsizetype count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (count-- > 0 && finder.toNextBoundary() >= 0) { }
    return finder.position() < 0 ? text : text.left(finder.position());
}

QString nameFromText(const QString& text)
{
    const auto lineEnd = std::ranges::find_if(
        text, [](QChar character) { return character == u'\n' || character == u'\r'; });
    const QString line = trimmedBlanks(text.left(std::distance(text.begin(), lineEnd)));
    return line.isEmpty() ? QStringLiteral("Văn bản nhanh") : firstCharacters(line, longestDerivedName);
}

template <typename Preset>
bool isPresetName(const QString& name, const std::vector<Preset>& presets)
{
    return std::ranges::any_of(presets, [&](const Preset& preset) { return preset.name == name; });
}

} // namespace

ShortcutDraft::ShortcutDraft(const ShortcutItem& item)
    : existingItem(item)
    , name(item.name)
    , keyCode(item.keyCode)
    , modifiers(item.modifiers)
    , actionType(item.actionType)
    , actionValue(item.actionValue)
{
    if (actionType == ActionType::systemAction)
        systemAction = systemActionTypeFromRawValue(actionValue).value_or(systemAction);
    if (actionType == ActionType::quickText) {
        const QuickTextPayload payload = QuickTextPayload::from(actionValue);
        quickTextMode = payload.mode;
        quickText = payload.text;
        restoreClipboard = payload.restoreClipboard;
    }
}

ShortcutDraft::Result ShortcutDraft::finished(const ApplicationName& applicationName) const
{
    if (keyCode == 0 && modifiers == 0)
        return QStringLiteral("Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt.");
    const QString value = finalValue();
    if (actionType == ActionType::launchApp && value.isEmpty())
        return QStringLiteral("Vui lòng chọn ứng dụng cần mở.");
    if (actionType == ActionType::quickText && quickText.trimmed().isEmpty())
        return QStringLiteral("Vui lòng nhập nội dung văn bản muốn chèn hoặc sao chép.");
    if (value.isEmpty())
        return QStringLiteral("Vui lòng chỉ định nội dung hành động.");

    ShortcutItem item;
    if (existingItem) {
        item = *existingItem;
    } else {
        item.id = QUuid::createUuid();
        item.createdAt = ShortcutItem::currentDate();
    }
    item.name = finalName(value, applicationName);
    item.keyCode = keyCode;
    item.modifiers = modifiers;
    item.actionType = actionType;
    item.actionValue = value;
    return item;
}

void ShortcutDraft::applyScriptPreset(const ScriptPreset& preset, const std::vector<ScriptPreset>& table)
{
    actionValue = preset.code.trimmed();
    if (name.isEmpty() || isPresetName(name, table))
        name = preset.name;
}

void ShortcutDraft::applyQuickTextPreset(const QuickTextPreset& preset)
{
    quickText = preset.text;
    quickTextMode = preset.mode;
    if (name.isEmpty() || isPresetName(name, quickTextPresets()))
        name = preset.name;
}

bool ShortcutDraft::isKeyTaken() const
{
    return keyCode == f3 && modifiers & cmdKey;
}

QString ShortcutDraft::keyNotice() const
{
    if (isKeyTaken())
        return QStringLiteral(
            "⚠️ Cmd + F3 mặc định bị macOS chiếm cho tính năng Show Desktop. Khuyên dùng "
            "tổ hợp khác (vd: ⌥A, ⌥T, ⌃⌥A).");
    if (std::ranges::find(functionKeys, keyCode) != std::end(functionKeys))
        return QStringLiteral(
            "💡 Trên bàn phím MacBook, mặc định cần giữ kèm nút Fn khi bấm các phím F1–F12.");
    return {};
}

QString ShortcutDraft::finalValue() const
{
    switch (actionType) {
    case ActionType::launchApp:
    case ActionType::openURL:
    case ActionType::shellScript:
        return trimmedBlanks(actionValue);
    case ActionType::quickText:
        return QuickTextPayload{quickTextMode, quickText, restoreClipboard}.encodeToString();
    case ActionType::systemAction:
        return rawValue(systemAction);
    }
    return {};
}

QString ShortcutDraft::finalName(const QString& value, const ApplicationName& applicationName) const
{
    QString ownName = trimmedBlanks(name);
    if (!ownName.isEmpty())
        return ownName;
    QString unnamed = QStringLiteral("Phím tắt mới");
    switch (actionType) {
    case ActionType::launchApp:
        return applicationName(value).value_or(unnamed);
    case ActionType::quickText:
        return nameFromText(quickText);
    case ActionType::systemAction:
        return title(systemAction);
    case ActionType::openURL:
    case ActionType::shellScript:
        return unnamed;
    }
    return unnamed;
}

} // namespace Tavrin
