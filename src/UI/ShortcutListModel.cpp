#include "UI/ShortcutListModel.h"

#include "Core/Model/QuickTextPayload.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Support/Diagnostics.h"

#include <algorithm>
#include <chrono>
#include <map>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// More than any window shows; a name of megabytes must not be laid out on every frame.
constexpr qsizetype longestLine = 300;

QString shortLine(const QString& text)
{
    return Diagnostics::singleLine(text.left(longestLine));
}

QString quickTextLine(const QString& actionValue)
{
    const QuickTextPayload payload = QuickTextPayload::from(actionValue);
    return shortTitle(payload.mode) + u": \"" + shortLine(payload.text) + u'"';
}

QString systemActionLine(const QString& actionValue)
{
    const auto action = systemActionTypeFromRawValue(actionValue);
    return QStringLiteral("Hệ thống: ") + (action ? title(*action) : shortLine(actionValue));
}

/// Half a millisecond's work, and a pause for everything else: ten thousand are ready in a fifth of a second.
constexpr std::size_t preparedAtOnce = 500;
constexpr auto preparationPause = 10ms;

} // namespace

/// A shortcut as the view knows it, with what a search compares, made when it is first asked for.
class ShortcutListModel::Entry {
public:
    explicit Entry(const ShortcutItem& shortcut)
        : item(shortcut)
    {
    }

    const SearchedShortcut& searched() const
    {
        if (!m_searched)
            m_searched.emplace(item);
        return *m_searched;
    }

    const ShortcutItem item;

private:
    mutable std::optional<SearchedShortcut> m_searched;
};

ShortcutListModel::ShortcutListModel(const ConfigStore& store)
    : m_store(store)
{
    m_prepareTimer.setInterval(preparationPause);
    connect(&m_prepareTimer, &QTimer::timeout, this, &ShortcutListModel::prepareSearch);
    readStore();
    m_rows = m_all;
    connect(&store, &ConfigStore::shortcutsChanged, this, [this] {
        readStore();
        showFiltered();
    });
}

int ShortcutListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

ShortcutListModel::~ShortcutListModel() = default;

const ShortcutItem* ShortcutListModel::item(int row) const
{
    return row >= 0 && row < count() ? &m_rows[static_cast<std::size_t>(row)]->item : nullptr;
}

QVariant ShortcutListModel::data(const QModelIndex& index, int role) const
{
    const ShortcutItem* shortcut = item(index.row());
    if (!index.isValid() || !shortcut)
        return {};
    switch (role) {
    case idRole:
        return shortcut->id;
    case nameRole:
        return shortLine(shortcut->name);
    case combinationRole:
        return shortcut->shortcutDisplay();
    case typeRole:
        return rawValue(shortcut->actionType);
    case iconRole:
        return iconName(shortcut->actionType);
    case descriptionRole:
        return detailDescription(*shortcut);
    case enabledRole:
        return shortcut->isEnabled;
    default:
        return {};
    }
}

QHash<int, QByteArray> ShortcutListModel::roleNames() const
{
    return {
        {idRole, "shortcutId"},
        {nameRole, "name"},
        {combinationRole, "combination"},
        {typeRole, "type"},
        {iconRole, "icon"},
        {descriptionRole, "description"},
        {enabledRole, "isEnabled"},
    };
}

void ShortcutListModel::setFilter(const ShortcutFilter& filter)
{
    m_filter = filter;
    showFiltered();
}

void ShortcutListModel::readStore()
{
    // What has not changed keeps what was prepared for its search.
    std::map<QUuid, std::shared_ptr<const Entry>> known;
    for (const auto& entry : m_all)
        known.emplace(entry->item.id, entry);
    m_all.clear();
    m_all.reserve(m_store.shortcuts().size());
    for (const ShortcutItem& shortcut : m_store.shortcuts()) {
        const auto found = known.find(shortcut.id);
        if (found != known.end() && found->second->item == shortcut)
            m_all.push_back(found->second);
        else
            m_all.push_back(std::make_shared<const Entry>(shortcut));
    }
    m_prepared = 0;
    m_prepareTimer.start();
}

void ShortcutListModel::prepareSearch()
{
    const std::size_t end = std::min(m_all.size(), m_prepared + preparedAtOnce);
    while (m_prepared < end)
        m_all[m_prepared++]->searched();
    if (m_prepared == m_all.size())
        m_prepareTimer.stop();
}

void ShortcutListModel::showFiltered()
{
    std::vector<std::shared_ptr<const Entry>> rows;
    std::ranges::copy_if(m_all, std::back_inserter(rows),
        [this](const auto& entry) { return m_filter.accepts(entry->searched()); });
    replaceRows(std::move(rows));
}

void ShortcutListModel::replaceRows(std::vector<std::shared_ptr<const Entry>> rows)
{
    const auto isSame = [](const auto& left, const auto& right) { return left->item.id == right->item.id; };
    const auto first = std::ranges::mismatch(m_rows, rows, isSame);
    const auto begin = std::distance(m_rows.begin(), first.in1);
    auto oldEnd = std::ssize(m_rows);
    auto newEnd = std::ssize(rows);
    while (oldEnd > begin && newEnd > begin
        && isSame(m_rows[static_cast<std::size_t>(oldEnd - 1)], rows[static_cast<std::size_t>(newEnd - 1)])) {
        --oldEnd;
        --newEnd;
    }
    const auto oldCount = m_rows.size();
    if (oldEnd > begin) {
        beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(oldEnd - 1));
        m_rows.erase(m_rows.begin() + begin, m_rows.begin() + oldEnd);
        endRemoveRows();
    }
    if (newEnd > begin) {
        beginInsertRows({}, static_cast<int>(begin), static_cast<int>(newEnd - 1));
        m_rows.insert(m_rows.begin() + begin, rows.begin() + begin, rows.begin() + newEnd);
        endInsertRows();
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (m_rows[row] == rows[row])
            continue;
        m_rows[row] = std::move(rows[row]);
        const QModelIndex changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed);
    }
    if (m_rows.size() != oldCount)
        Q_EMIT countChanged();
}

QString detailDescription(const ShortcutItem& item)
{
    switch (item.actionType) {
    case ActionType::launchApp:
        return QStringLiteral("Ứng dụng: ") + shortLine(item.actionValue);
    case ActionType::openURL:
        return QStringLiteral("URL: ") + shortLine(item.actionValue);
    case ActionType::quickText:
        return quickTextLine(item.actionValue);
    case ActionType::shellScript:
        return QStringLiteral("Script: ") + shortLine(item.actionValue);
    case ActionType::systemAction:
        return systemActionLine(item.actionValue);
    }
    return {};
}

} // namespace Tavrin
