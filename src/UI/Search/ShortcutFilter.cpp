#include "UI/Search/ShortcutFilter.h"

#include "Core/Support/SearchKey.h"

#include <algorithm>

namespace Tavrin {

SearchedShortcut::SearchedShortcut(const ShortcutItem& item)
    : m_keys{searchKey(item.name), searchKey(item.actionValue), searchKey(item.shortcutDisplay())}
    , m_actionType(item.actionType)
{
}

bool SearchedShortcut::contains(const QString& key) const
{
    return std::ranges::any_of(m_keys, [&](const QString& text) { return text.contains(key); });
}

ShortcutFilter::ShortcutFilter(const QString& searchText, std::optional<ActionType> type)
    : m_key(searchKey(searchText))
    , m_type(type)
{
}

bool ShortcutFilter::accepts(const SearchedShortcut& shortcut) const
{
    return (!m_type || shortcut.actionType() == *m_type) && (m_key.isEmpty() || shortcut.contains(m_key));
}

} // namespace Tavrin
