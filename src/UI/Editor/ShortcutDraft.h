#pragma once

#include "Core/Model/QuickTextPayload.h"
#include "Core/Model/ShortcutItem.h"
#include "Core/Presets/QuickTextPreset.h"
#include "Core/Presets/ScriptPreset.h"

#include <functional>
#include <optional>
#include <variant>

namespace Tavrin {

/// A shortcut while it is being edited: every field keeps its content when another action type is chosen,
/// and only those of the chosen type count when the draft is finished.
struct ShortcutDraft {
    /// Name of the installed application that an action value means; nothing if none is known.
    using ApplicationName = std::function<std::optional<QString>(const QString& actionValue)>;
    /// The finished shortcut, or what is missing, in words for the user.
    using Result = std::variant<ShortcutItem, QString>;

    ShortcutDraft() = default;
    /// A draft that changes `item`.
    explicit ShortcutDraft(const ShortcutItem& item);

    /// Checks everything and derives a name where there is none. Nothing of the draft is changed.
    Result finished(const ApplicationName& applicationName) const;

    /// Replaces the script; the name too, if it is empty or comes from `table`.
    void applyScriptPreset(const ScriptPreset& preset, const std::vector<ScriptPreset>& table);
    /// Replaces the quick text and its mode; the name too, if it is empty or that of a quick-text preset.
    void applyQuickTextPreset(const QuickTextPreset& preset);

    /// The combination belongs to the desktop unless the user has changed that.
    bool isKeyTaken() const;
    /// A remark on the combination below the recorder; empty if there is none.
    QString keyNotice() const;
    /// True if the chosen mode presses keys for the user.
    bool pastes() const { return quickTextMode != QuickTextPayload::Mode::copyOnly; }

    std::optional<ShortcutItem> existingItem;
    QString name;
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    ActionType actionType = ActionType::launchApp;
    /// Application, address or script.
    QString actionValue;
    SystemActionType systemAction = allSystemActionTypes.front();
    QuickTextPayload::Mode quickTextMode = QuickTextPayload::Mode::paste;
    QString quickText;
    bool restoreClipboard = false;

private:
    QString finalValue() const;
    QString finalName(const QString& value, const ApplicationName& applicationName) const;
};

} // namespace Tavrin
