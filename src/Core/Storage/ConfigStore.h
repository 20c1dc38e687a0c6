#pragma once

#include "Core/Model/ShortcutItem.h"

#include <QObject>
#include <vector>

namespace Tavrin {

/// The user's list of shortcuts, in memory and on disk. Every change is on disk when the call returns.
/// Main thread only.
class ConfigStore : public QObject {
    Q_OBJECT

public:
    /// Opens the store in `applicationSupport`/Tavrin (made if it is missing) and loads it.
    explicit ConfigStore(const QString& applicationSupport);
    ~ConfigStore() override;

    /// The store of the running program; set by the composition root.
    static ConfigStore& shared();

    const std::vector<ShortcutItem>& shortcuts() const { return m_shortcuts; }
    const QString& fileURL() const { return m_fileURL; }

    /// What a first run starts with; fresh identities at each call.
    static std::vector<ShortcutItem> defaultShortcuts();

    /// Reads the file. If it is missing or cannot be decoded, the defaults take its place, also on disk.
    void load();
    /// Writes the whole list. On failure one line is printed and the list stays as it is.
    void save();

    void add(const ShortcutItem& item);
    /// Replaces the first shortcut with the item's id; nothing happens if there is none.
    void update(const ShortcutItem& item);
    /// Removes every shortcut with this id, and saves even if there was none.
    void remove(const QUuid& id);
    /// Turns the first shortcut with this id on or off; nothing happens if there is none.
    void toggle(const QUuid& id);

Q_SIGNALS:
    /// The list has changed.
    void shortcutsChanged();

private:
    ShortcutItem* find(const QUuid& id);
    void saveAndPublish();

    std::vector<ShortcutItem> m_shortcuts;
    QString m_fileURL;
};

} // namespace Tavrin
