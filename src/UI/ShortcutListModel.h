#pragma once

#include "Core/Model/ShortcutItem.h"
#include "UI/Search/ShortcutFilter.h"

#include <QAbstractListModel>
#include <QTimer>
#include <QtQmlIntegration>
#include <memory>

namespace Tavrin {

class ConfigStore;

/// The store's shortcuts that pass the filter as rows of a view, in store order. A change reaches the view
/// as the rows that came, went or changed, so that it keeps its place. What a search needs of the shortcuts
/// is prepared a few at a time once the view is there, so that neither opening it nor the first letter pays
/// for thousands. Main thread.
class ShortcutListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built from the store")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        idRole = Qt::UserRole + 1,
        nameRole,
        combinationRole,
        typeRole,
        iconRole,
        descriptionRole,
        enabledRole
    };

    /// The store outlives the model.
    explicit ShortcutListModel(const ConfigStore& store);
    ~ShortcutListModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return static_cast<int>(m_rows.size()); }
    void setFilter(const ShortcutFilter& filter);

    /// The shortcut in a row, as the view knows it; nothing if there is no such row.
    const ShortcutItem* item(int row) const;

Q_SIGNALS:
    void countChanged();

private:
    class Entry;

    void readStore();
    void prepareSearch();
    void showFiltered();
    void replaceRows(std::vector<std::shared_ptr<const Entry>> rows);

    const ConfigStore& m_store;
    ShortcutFilter m_filter{{}, std::nullopt};
    std::vector<std::shared_ptr<const Entry>> m_all;
    /// How many of m_all are known to be prepared for a search.
    std::size_t m_prepared = 0;
    QTimer m_prepareTimer;
    /// The rows that the view has been told of.
    std::vector<std::shared_ptr<const Entry>> m_rows;
};

/// What the shortcut does, as one short line of a row.
QString detailDescription(const ShortcutItem& item);

} // namespace Tavrin
