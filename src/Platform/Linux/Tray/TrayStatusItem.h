#pragma once

#include "Core/Shell/StatusItem.h"
#include "Platform/Linux/Tray/TrayPresence.h"

#include <QObject>
#include <memory>

namespace Tavrin {

/// The status item in a Linux desktop's tray: a StatusNotifierItem, or a window docked by XEmbed. A primary
/// click runs the activated callback, the other button opens the menu.
///
/// While the menu is open it keeps what it was opened with; refresh() then takes effect when it has closed.
/// Needs a QApplication from the moment a tray appears; main thread.
class TrayStatusItem : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// Looks for the desktop's own tray.
    TrayStatusItem();
    /// Goes by what `presence` says.
    explicit TrayStatusItem(std::unique_ptr<TrayPresence> presence);
    ~TrayStatusItem() override;

    void setMenu(std::function<StatusMenuContent()> content) override;
    void setActivated(std::function<void()> activated) override;
    void show() override;
    void refresh() override;

private:
    struct Icon;

    void makeIcon(TrayKind kind);
    void dropIcon();

    std::function<StatusMenuContent()> m_content;
    std::function<void()> m_activated;
    std::unique_ptr<TrayPresence> m_presence;
    std::unique_ptr<Icon> m_icon;
    bool m_isShown = false;
};

} // namespace Tavrin
