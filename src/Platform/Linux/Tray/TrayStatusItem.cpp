#include "Platform/Linux/Tray/TrayStatusItem.h"

#include "Platform/Linux/Tray/DesktopTrayPresence.h"
#include "Platform/Linux/Tray/TrayIconImage.h"
#include "Platform/Linux/Tray/TrayMenu.h"

#include <QSystemTrayIcon>

namespace Tavrin {

/// What lives as long as one tray does. The icon goes before the menu it refers to.
struct TrayStatusItem::Icon {
    TrayMenu menu;
    QSystemTrayIcon icon;
};

TrayStatusItem::TrayStatusItem()
    : TrayStatusItem(std::make_unique<DesktopTrayPresence>())
{
}

TrayStatusItem::TrayStatusItem(std::unique_ptr<TrayPresence> presence)
    : m_presence(std::move(presence))
{
    connect(m_presence.get(), &TrayPresence::appeared, this, &TrayStatusItem::makeIcon);
    connect(m_presence.get(), &TrayPresence::vanished, this, &TrayStatusItem::dropIcon);
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::setMenu(std::function<StatusMenuContent()> content)
{
    m_content = std::move(content);
    refresh();
}

void TrayStatusItem::setActivated(std::function<void()> activated)
{
    m_activated = std::move(activated);
}

void TrayStatusItem::show()
{
    if (std::exchange(m_isShown, true))
        return;
    m_presence->start();
}

void TrayStatusItem::refresh()
{
    if (m_icon)
        m_icon->menu.refresh();
}

void TrayStatusItem::makeIcon(TrayKind kind)
{
    const auto painter
        = kind == TrayKind::statusNotifier ? TrayMenu::Painter::host : TrayMenu::Painter::widget;
    m_icon.reset(new Icon{
        {painter, [this] { return m_content ? m_content() : StatusMenuContent(); }},
        QSystemTrayIcon(trayIcon()),
    });
    QSystemTrayIcon& icon = m_icon->icon;
    icon.setContextMenu(&m_icon->menu);
    // What hosts show under the pointer and screen readers speak; the item's title is the application's name.
    icon.setToolTip(QStringLiteral("Tavrin"));
    connect(&icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger && m_activated)
            m_activated();
    });
    icon.show();
}

void TrayStatusItem::dropIcon()
{
    m_icon.reset();
}

} // namespace Tavrin
