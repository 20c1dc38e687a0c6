#include "UI/ContentModel.h"

#include "Core/Action/ActionExecutor.h"
#include "Core/HotKey/HotKeyManager.h"
#include "Core/Shell/NotificationCenter.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"

#include <algorithm>
#include <chrono>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// A permission can be taken away at any time, and nobody says so.
constexpr auto accessibilityInterval = 1500ms;

/// The window is on screen first.
constexpr auto scanDelay = 300ms;

} // namespace

ContentModel::ContentModel(const MainWindowServices& services)
    : m_services(services)
    , m_shortcuts(services.store)
    , m_isAccessibilityGranted(services.hotKeys.isAccessibilityGranted())
{
    connect(&services.store, &ConfigStore::shortcutsChanged, this, &ContentModel::storeChanged);
    connect(&services.updates, &UpdateService::changed, this, &ContentModel::updateChanged);
    connect(&services.notifications, &NotificationCenter::posted, this, &ContentModel::handleNotification);
    connect(&services.settings, &AppSettings::launchAtLoginChanged, this, &ContentModel::settingsChanged);
    connect(&services.settings, &AppSettings::hideDockIconChanged, this, &ContentModel::settingsChanged);
    connect(&services.settings, &AppSettings::hasCompletedOnboardingChanged, this,
        &ContentModel::settingsChanged);
    connect(&services.settings, &AppSettings::showOnboardingChanged, this, &ContentModel::settingsChanged);
    // The wizard lies over the editor.
    connect(&services.settings, &AppSettings::showOnboardingChanged, this, &ContentModel::endRecording);
    m_accessibilityTimer.setInterval(accessibilityInterval);
    connect(&m_accessibilityTimer, &QTimer::timeout, this, &ContentModel::readAccessibility);
    m_scanTimer.setInterval(scanDelay);
    m_scanTimer.setSingleShot(true);
    connect(&m_scanTimer, &QTimer::timeout, this, &ContentModel::scanApplications);
}

QString ContentModel::currentVersion() const
{
    return m_services.updates.currentVersion();
}

QStringList ContentModel::tabTitles()
{
    return {QStringLiteral("Phím tắt"), QStringLiteral("Hướng dẫn"), QStringLiteral("Tác giả")};
}

QStringList ContentModel::tabSymbols()
{
    return {QStringLiteral("keyboard"), QStringLiteral("book.closed.fill"),
        QStringLiteral("person.crop.circle.fill")};
}

void ContentModel::selectTab(int rawValue)
{
    if (rawValue < ShortcutsTab || rawValue > AuthorTab)
        return;
    const auto tab = static_cast<Tab>(rawValue);
    if (std::exchange(m_selectedTab, tab) != tab)
        Q_EMIT selectedTabChanged();
}

void ContentModel::handleNotification(const QString& name)
{
    if (name == Notification::selectShortcutsTab)
        selectTab(ShortcutsTab);
    else if (name == Notification::selectGuideTab)
        selectTab(GuideTab);
    else if (name == Notification::selectAuthorTab)
        selectTab(AuthorTab);
}

bool ContentModel::launchAtLogin() const
{
    return m_services.settings.launchAtLogin();
}

void ContentModel::setLaunchAtLogin(bool value)
{
    m_services.settings.setLaunchAtLogin(value);
}

bool ContentModel::hideDockIcon() const
{
    return m_services.settings.hideDockIcon();
}

void ContentModel::setHideDockIcon(bool value)
{
    m_services.settings.setHideDockIcon(value);
}

bool ContentModel::isOnboardingShown() const
{
    return !m_services.settings.hasCompletedOnboarding() || m_services.settings.showOnboarding();
}

void ContentModel::showOnboarding()
{
    m_services.settings.setShowOnboarding(true);
}

void ContentModel::finishOnboarding()
{
    m_services.settings.setHasCompletedOnboarding(true);
    m_services.settings.setShowOnboarding(false);
}

void ContentModel::setSearchText(const QString& text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    applyFilter();
}

void ContentModel::setSelectedFilter(int index)
{
    if (m_selectedFilter == index || index < 0 || index > std::ssize(allActionTypes))
        return;
    m_selectedFilter = index;
    applyFilter();
}

void ContentModel::clearFilter()
{
    m_searchText.clear();
    m_selectedFilter = 0;
    applyFilter();
}

void ContentModel::applyFilter()
{
    std::optional<ActionType> type;
    if (m_selectedFilter > 0)
        type = allActionTypes.at(static_cast<std::size_t>(m_selectedFilter - 1));
    m_shortcuts.setFilter(ShortcutFilter(m_searchText, type));
    Q_EMIT filterChanged();
}

QStringList ContentModel::filterTitles()
{
    QStringList titles{QStringLiteral("Tất cả")};
    for (const ActionType type : allActionTypes)
        titles.append(title(type));
    return titles;
}

bool ContentModel::isStoreEmpty() const
{
    return m_services.store.shortcuts().empty();
}

QString ContentModel::emptyTitle() const
{
    return isStoreEmpty() ? QStringLiteral("Chưa có phím tắt nào được tạo")
                          : QStringLiteral("Không tìm thấy phím tắt phù hợp");
}

QString ContentModel::emptyButton() const
{
    return isStoreEmpty() ? QStringLiteral("Thêm Phím Tắt Đầu Tiên") : QStringLiteral("Xoá bộ lọc tìm kiếm");
}

QString ContentModel::totals() const
{
    const auto& items = m_services.store.shortcuts();
    const auto enabled = std::ranges::count_if(items, &ShortcutItem::isEnabled);
    return QStringLiteral("Tổng cộng: %1 phím tắt (%2 đang bật)").arg(items.size()).arg(enabled);
}

void ContentModel::togglePaused()
{
    m_isPaused = !m_isPaused;
    m_services.hotKeys.setPaused(m_isPaused);
    Q_EMIT pausedChanged();
}

void ContentModel::requestAccessibility()
{
    // It may have gone since it was last looked at.
    readAccessibility();
    if (!m_isAccessibilityGranted)
        m_services.hotKeys.requestAccessibility();
}

void ContentModel::openAccessibilitySettings()
{
    m_services.hotKeys.openAccessibilitySettings();
}

void ContentModel::setOnScreen(bool isOnScreen)
{
    if (!isOnScreen) {
        endRecording();
        return m_accessibilityTimer.stop();
    }
    if (!m_services.hotKeys.isSynchronised())
        registerHotKeys();
    readAccessibility();
    m_accessibilityTimer.start();
    m_scanTimer.start();
}

AppScanner& ContentModel::scanner()
{
    if (!m_scanner)
        m_scanner = std::make_unique<AppScanner>(m_services.applications);
    return *m_scanner;
}

void ContentModel::scanApplications()
{
    if (m_scanner)
        m_scanner->scanApps();
    else
        scanner();
}

void ContentModel::readAccessibility()
{
    const bool isGranted = m_services.hotKeys.isAccessibilityGranted();
    if (std::exchange(m_isAccessibilityGranted, isGranted) != isGranted)
        Q_EMIT accessibilityChanged();
}

void ContentModel::toggle(int row)
{
    const ShortcutItem* item = m_shortcuts.item(row);
    if (!item)
        return;
    m_services.store.toggle(item->id);
    registerHotKeys();
}

void ContentModel::test(int row)
{
    if (const ShortcutItem* item = m_shortcuts.item(row))
        m_services.executor.execute(*item);
}

void ContentModel::askToDelete(int row)
{
    const ShortcutItem* item = m_shortcuts.item(row);
    if (!item)
        return;
    m_pendingDelete = *item;
    Q_EMIT pendingDeleteChanged();
}

QString ContentModel::deleteMessage() const
{
    if (!m_pendingDelete)
        return {};
    return QStringLiteral("Bạn có chắc chắn muốn xóa phím tắt \"") + m_pendingDelete->name + u"\" ("
        + m_pendingDelete->shortcutDisplay() + QStringLiteral(") không? Thao tác này không thể hoàn tác.");
}

void ContentModel::confirmDelete()
{
    if (!m_pendingDelete)
        return;
    m_services.store.remove(m_pendingDelete->id);
    registerHotKeys();
    cancelDelete();
}

void ContentModel::cancelDelete()
{
    m_pendingDelete.reset();
    Q_EMIT pendingDeleteChanged();
}

void ContentModel::showEditor()
{
    openEditor(std::nullopt);
}

void ContentModel::edit(int row)
{
    if (const ShortcutItem* item = m_shortcuts.item(row))
        openEditor(*item);
}

void ContentModel::openEditor(const std::optional<ShortcutItem>& item)
{
    if (m_editor)
        return;
    m_editor = new EditorModel({m_services.hotKeys, m_services.keyCapture, m_services.scriptPresets(),
                                   scanner(), m_services.openPanel},
        item, this);
    connect(m_editor, &EditorModel::saved, this, &ContentModel::save);
    connect(m_editor, &EditorModel::dismissed, this, &ContentModel::closeEditor);
    connect(this, &ContentModel::accessibilityChanged, m_editor, &EditorModel::permissionChanged);
    Q_EMIT editorOpened();
    Q_EMIT editingChanged();
}

void ContentModel::closeEditor()
{
    EditorModel* const closed = std::exchange(m_editor, nullptr);
    Q_EMIT editingChanged();
    // After the view, which goes by the same road and looks at it until then.
    closed->deleteLater();
}

void ContentModel::endRecording()
{
    if (m_editor)
        m_editor->recorder()->stop();
}

void ContentModel::save(const ShortcutItem& item)
{
    const bool isKnown = std::ranges::find(m_services.store.shortcuts(), item.id, &ShortcutItem::id)
        != m_services.store.shortcuts().end();
    if (isKnown)
        m_services.store.update(item);
    else
        m_services.store.add(item);
    registerHotKeys();
}

void ContentModel::registerHotKeys()
{
    m_services.hotKeys.syncShortcuts(m_services.store.shortcuts());
}

bool ContentModel::isUpdateAvailable() const
{
    return m_services.updates.isUpdateAvailable() && m_services.updates.updateInfo();
}

bool ContentModel::isUpdating() const
{
    return m_services.updates.isUpdating();
}

QString ContentModel::updateTitle() const
{
    const auto& info = m_services.updates.updateInfo();
    return info ? QStringLiteral("Đã có bản cập nhật mới: v") + info->version : QString();
}

QString ContentModel::updateProgress() const
{
    return m_services.updates.downloadPercentage();
}

QString ContentModel::updateStatus() const
{
    return m_services.updates.statusMessage();
}

void ContentModel::startUpdate()
{
    m_services.updates.startAutoUpdate();
}

AuthorModel* ContentModel::author()
{
    if (!m_author)
        m_author = new AuthorModel(m_services.updates, m_services.executor, {}, this);
    return m_author;
}

void ContentModel::dismissUpdate()
{
    m_services.updates.setUpdateAvailable(false);
}

} // namespace Tavrin
