#include "Core/Shell/StatusMenu.h"

#include "Core/HotKey/HotKeyManager.h"
#include "Core/Storage/AppSettings.h"
#include "Core/Storage/ConfigStore.h"
#include "Core/Update/UpdateService.h"

#include <QHash>

namespace Tavrin {
namespace {

using CheckState = MenuItem::CheckState;

MenuItem command(const QString& identity, const QString& title, std::function<void()> action, QChar key = {})
{
    MenuItem item;
    item.identity = identity;
    item.title = title;
    item.keyEquivalent = key;
    item.action = std::move(action);
    return item;
}

MenuItem disabled(const QString& identity, const QString& title)
{
    MenuItem item = command(identity, title, {});
    item.isEnabled = false;
    return item;
}

MenuItem checkable(MenuItem item, bool isOn)
{
    item.checkState = isOn ? CheckState::on : CheckState::off;
    return item;
}

MenuItem separator(const QString& identity)
{
    MenuItem item;
    item.kind = MenuItem::Kind::separator;
    item.identity = identity;
    return item;
}

QString updateTitle(const UpdateService& updates)
{
    if (updates.isUpdateAvailable() && updates.updateInfo())
        return QStringLiteral("🚀 Cập nhật Tavrin (Bản mới: v%1)...").arg(updates.updateInfo()->version);
    return QStringLiteral("Kiểm tra cập nhật...");
}

void appendShortcuts(StatusMenuContent& content, const ConfigStore& store, StatusMenuTarget& target)
{
    if (store.shortcuts().empty()) {
        content.push_back(disabled(QStringLiteral("no-shortcuts"), QStringLiteral("(Chưa có phím tắt nào)")));
        return;
    }
    QHash<QUuid, int> occurrences;
    for (const ShortcutItem& item : store.shortcuts()) {
        // The same id can stand in the list twice; menu entries must differ all the same.
        const QString identity = QStringLiteral("shortcut:%1:%2")
                                     .arg(item.id.toString(QUuid::WithoutBraces))
                                     .arg(occurrences[item.id]++);
        const QString title = item.name + u" (" + item.shortcutDisplay() + u')';
        content.push_back(
            checkable(command(identity, title, [&target, item] { target.triggerShortcutFromMenu(item); }),
                item.isEnabled));
    }
}

} // namespace

StatusMenuContent statusMenuContent(const ConfigStore& store, const AppSettings& settings,
    const HotKeyManager& hotKeys, const UpdateService& updates, StatusMenuTarget& target)
{
    StatusMenuContent content;
    // The version here is the text of the menu itself; the update service knows the build's own.
    content.push_back(disabled(QStringLiteral("version"), QStringLiteral("Tavrin v1.0.7")));
    content.push_back(separator(QStringLiteral("separator-1")));
    content.push_back(command(
        QStringLiteral("open"), QStringLiteral("Mở Bảng điều khiển..."),
        [&target] { target.showMainWindow(); }, u'o'));
    content.push_back(command(
        QStringLiteral("guide"), QStringLiteral("Hướng dẫn sử dụng..."),
        [&target] { target.showGuideWindow(); }, u'h'));
    content.push_back(
        command(QStringLiteral("wizard"), QStringLiteral("Hướng dẫn thiết lập ban đầu (Wizard)..."),
            [&target] { target.showOnboardingWizard(); }));
    content.push_back(command(QStringLiteral("author"), QStringLiteral("Thông tin Tác giả..."),
        [&target] { target.showAuthorWindow(); }));
    content.push_back(command(
        QStringLiteral("update"), updateTitle(updates), [&target] { target.checkForUpdates(); }, u'u'));
    content.push_back(separator(QStringLiteral("separator-2")));
    appendShortcuts(content, store, target);
    content.push_back(separator(QStringLiteral("separator-3")));
    content.push_back(
        checkable(command(QStringLiteral("launch-at-login"), QStringLiteral("Khởi động cùng máy"),
                      [&target] { target.toggleLaunchAtLogin(); }),
            settings.launchAtLogin()));
    content.push_back(checkable(
        command(QStringLiteral("hide-dock"), QStringLiteral("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"),
            [&target] { target.toggleHideDock(); }),
        settings.hideDockIcon()));
    content.push_back(command(
        QStringLiteral("pause"),
        hotKeys.isPaused() ? QStringLiteral("Kích hoạt lại phím tắt") : QStringLiteral("Tạm dừng tất cả"),
        [&target] { target.togglePause(); }, u'p'));
    content.push_back(separator(QStringLiteral("separator-4")));
    content.push_back(command(
        QStringLiteral("quit"), QStringLiteral("Thoát hoàn toàn Tavrin"), [&target] { target.quitApp(); },
        u'q'));
    return content;
}

} // namespace Tavrin
