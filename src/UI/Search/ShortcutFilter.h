#pragma once

#include "Core/Model/ShortcutItem.h"

#include <array>
#include <optional>

namespace Tavrin {

/// The texts of a shortcut that a search looks at, ready to be compared. Made once for each shortcut, so
/// that a letter typed into the search costs comparisons only.
class SearchedShortcut {
public:
    explicit SearchedShortcut(const ShortcutItem& item);

    ActionType actionType() const { return m_actionType; }
    /// True if the name, the action's value or the combination's text contains `key`.
    bool contains(const QString& key) const;

private:
    std::array<QString, 3> m_keys;
    ActionType m_actionType;
};

/// Which shortcuts the list shows.
class ShortcutFilter {
public:
    /// An empty text lets every shortcut through; a text of spaces is a text. Without a type, all types.
    ShortcutFilter(const QString& searchText, std::optional<ActionType> type);

    bool accepts(const SearchedShortcut& shortcut) const;

private:
    QString m_key;
    std::optional<ActionType> m_type;
};

} // namespace Tavrin
