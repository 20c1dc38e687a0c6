#pragma once

#include <QString>
#include <array>
#include <optional>

namespace Tavrin {

/// What a quick-text shortcut does with its text. Lives as JSON text in a shortcut's action value.
struct QuickTextPayload {
    enum class Mode { paste, copyOnly, pasteAndKeep };
    static constexpr std::array allModes{Mode::paste, Mode::copyOnly, Mode::pasteAndKeep};

    Mode mode = Mode::paste;
    /// The text as the user wrote it, placeholders unresolved.
    QString text;
    /// Put the clipboard's previous contents back after a paste.
    bool restoreClipboard = false;

    bool operator==(const QuickTextPayload&) const = default;

    /// The payload as compact JSON text.
    QString encodeToString() const;

    /// The payload that `raw` encodes. Anything else is text from before payloads existed and
    /// becomes an automatic paste of it that restores nothing. Never fails.
    static QuickTextPayload from(const QString& raw);
};

QString rawValue(QuickTextPayload::Mode mode);
/// Long label, for the editor's mode picker.
QString title(QuickTextPayload::Mode mode);
/// Short label, for rows and menus.
QString shortTitle(QuickTextPayload::Mode mode);
/// The mode with exactly this raw value (case matters), or nothing.
std::optional<QuickTextPayload::Mode> quickTextModeFromRawValue(const QString& rawValue);

} // namespace Tavrin
