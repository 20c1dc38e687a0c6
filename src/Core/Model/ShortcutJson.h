#pragma once

#include "Core/Model/ShortcutItem.h"

#include <QByteArray>
#include <span>
#include <variant>
#include <vector>

namespace Tavrin {

/// Why a shortcuts file could not be decoded, as text for a diagnostic line.
struct DecodingError {
    QString description;
};

using DecodedShortcuts = std::variant<std::vector<ShortcutItem>, DecodingError>;

/// Decodes a JSON array of shortcuts. Strict: a missing key, a wrong type, a number that does not
/// fit, an unknown action type or a malformed UUID anywhere fails the whole array. Unknown keys are
/// ignored; of a key that stands twice the last one counts.
DecodedShortcuts decodeShortcuts(const QByteArray& json);

/// Compact JSON array, the eight keys of each record in declaration order.
QByteArray encodeShortcuts(std::span<const ShortcutItem> shortcuts);

} // namespace Tavrin
