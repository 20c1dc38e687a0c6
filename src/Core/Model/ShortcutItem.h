#pragma once

#include "Core/Model/ActionType.h"

#include <QString>
#include <QUuid>
#include <cstdint>

namespace Tavrin {

/// One shortcut: a named key combination bound to one action. A value; copied freely.
struct ShortcutItem {
    /// Made once, kept through every edit.
    QUuid id;
    QString name;
    /// Virtual key code of the main key (its position on the US ANSI board).
    std::uint32_t keyCode = 0;
    /// Carbon modifier mask, 0 for none.
    std::uint32_t modifiers = 0;
    ActionType actionType = ActionType::launchApp;
    /// The action's target; what it holds depends on the type (identifier or path, address, quick
    /// text payload, script, raw value of a system action).
    QString actionValue;
    bool isEnabled = true;
    /// Seconds since 2001-01-01 00:00:00 UTC, as the file stores it; kept exactly.
    double createdAt = 0;

    bool operator==(const ShortcutItem&) const = default;

    /// The combination as the user sees it: "⌃ ⌥ K".
    QString shortcutDisplay() const;

    /// The moment now, in the form of `createdAt`.
    static double currentDate();
};

} // namespace Tavrin
