#include "UI/ShortcutListModel.h"

#include "Core/Model/QuickTextPayload.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Support/Diagnostics.h"

namespace Tavrin {
namespace {

/// More than any window shows; a name of megabytes must not be laid out on every frame.
constexpr qsizetype longestLine = 300;

QString shortLine(const QString& text)
{
    return Diagnostics::singleLine(text.left(longestLine)).simplified();
}

} // namespace

ShortcutListModel::ShortcutListModel(const ConfigStore& store)
    : m_store(store)
    , m_rows(store.shortcuts())
{
    connect(&store, &ConfigStore::shortcutsChanged, this, [this] {
        beginResetModel();
        m_rows = m_store.shortcuts();
        endResetModel();
    });
}

int ShortcutListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ShortcutListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ShortcutItem& item = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case nameRole:
        return shortLine(item.name);
    case combinationRole:
        return item.shortcutDisplay();
    case typeRole:
        return title(item.actionType);
    case targetRole:
        return targetLine(item);
    case enabledRole:
        return item.isEnabled;
    default:
        return {};
    }
}

QHash<int, QByteArray> ShortcutListModel::roleNames() const
{
    return {
        {nameRole, "name"},
        {combinationRole, "combination"},
        {typeRole, "type"},
        {targetRole, "target"},
        {enabledRole, "isEnabled"},
    };
}

QString targetLine(const ShortcutItem& item)
{
    switch (item.actionType) {
    case ActionType::quickText:
        return shortLine(QuickTextPayload::from(item.actionValue).text);
    case ActionType::systemAction:
        if (const auto action = systemActionTypeFromRawValue(item.actionValue))
            return title(*action);
        return shortLine(item.actionValue);
    default:
        return shortLine(item.actionValue);
    }
}

} // namespace Tavrin
