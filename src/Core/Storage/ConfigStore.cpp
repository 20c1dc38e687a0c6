#include "Core/Storage/ConfigStore.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Core/Model/ShortcutJson.h"
#include "Core/Storage/AtomicFile.h"
#include "Core/Support/Diagnostics.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace Tavrin {
namespace {

ConfigStore* sharedStore = nullptr;

ShortcutItem defaultShortcut(const QString& name, std::uint32_t keyCode, const QString& bundleIdentifier)
{
    return {QUuid::createUuid(), name, keyCode, cmdKey, ActionType::launchApp, bundleIdentifier,
        /*isEnabled=*/true, ShortcutItem::currentDate()};
}

} // namespace

ConfigStore::ConfigStore(const QString& applicationSupport)
{
    const QDir directory(applicationSupport + u"/Tavrin");
    // A failure shows when the file is read or written.
    directory.mkpath(QStringLiteral("."));
    m_fileURL = directory.filePath(QStringLiteral("shortcuts.json"));
    AtomicFile::removeLeftovers(m_fileURL);
    load();
    if (!sharedStore)
        sharedStore = this;
}

ConfigStore::~ConfigStore()
{
    if (sharedStore == this)
        sharedStore = nullptr;
}

ConfigStore& ConfigStore::shared()
{
    Q_ASSERT_X(sharedStore, "ConfigStore::shared", "no store has been built yet");
    return *sharedStore;
}

std::vector<ShortcutItem> ConfigStore::defaultShortcuts()
{
    constexpr std::uint32_t f1Key = 122;
    constexpr std::uint32_t mKey = 46;
    return {
        defaultShortcut(QStringLiteral("Google Chrome"), f1Key, QStringLiteral("com.google.Chrome")),
        // The same keys minimise a window on some desktops; the user's habit is worth more.
        defaultShortcut(QStringLiteral("Terminal"), mKey, QStringLiteral("com.apple.Terminal")),
    };
}

void ConfigStore::load()
{
    if (QFile::exists(m_fileURL)) {
        QByteArray contents;
        auto error = AtomicFile::read(m_fileURL, contents);
        if (!error) {
            auto decoded = decodeShortcuts(contents);
            if (auto* shortcuts = std::get_if<std::vector<ShortcutItem>>(&decoded)) {
                m_shortcuts = std::move(*shortcuts);
                Q_EMIT shortcutsChanged();
                return;
            }
            error = std::get<DecodingError>(decoded).description;
        }
        Diagnostics::printLine(u"Lỗi đọc cấu hình: " + *error);
    }
    m_shortcuts = defaultShortcuts();
    saveAndPublish();
}

void ConfigStore::save()
{
    if (const auto error = AtomicFile::write(m_fileURL, encodeShortcuts(m_shortcuts)))
        Diagnostics::printLine(u"Lỗi lưu cấu hình: " + *error);
}

void ConfigStore::add(const ShortcutItem& item)
{
    m_shortcuts.push_back(item);
    saveAndPublish();
}

void ConfigStore::update(const ShortcutItem& item)
{
    if (ShortcutItem* existing = find(item.id)) {
        *existing = item;
        saveAndPublish();
    }
}

void ConfigStore::remove(const QUuid& id)
{
    std::erase_if(m_shortcuts, [&](const ShortcutItem& item) { return item.id == id; });
    saveAndPublish();
}

void ConfigStore::toggle(const QUuid& id)
{
    if (ShortcutItem* existing = find(id)) {
        existing->isEnabled = !existing->isEnabled;
        saveAndPublish();
    }
}

ShortcutItem* ConfigStore::find(const QUuid& id)
{
    const auto found = std::ranges::find(m_shortcuts, id, &ShortcutItem::id);
    return found == m_shortcuts.end() ? nullptr : &*found;
}

void ConfigStore::saveAndPublish()
{
    save();
    Q_EMIT shortcutsChanged();
}

} // namespace Tavrin
