#pragma once

#include "Core/Model/ShortcutItem.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

namespace Tavrin {

class ConfigStore;

/// The store's shortcuts as rows of a view, in store order. Main thread.
class ShortcutListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built from the store")

public:
    enum Role { nameRole = Qt::UserRole + 1, combinationRole, typeRole, targetRole, enabledRole };

    /// The store outlives the model.
    explicit ShortcutListModel(const ConfigStore& store);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const ConfigStore& m_store;
    /// The rows that the view has been told of: the store changes before it says so.
    std::vector<ShortcutItem> m_rows;
};

/// The action's target as one short line.
QString targetLine(const ShortcutItem& item);

} // namespace Tavrin
