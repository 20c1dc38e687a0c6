#pragma once

#include "Platform/Linux/Tray/StatusNotifierWatch.h"
#include "Platform/Linux/Tray/TrayPresence.h"
#include "Platform/Linux/Tray/TraySelectionWatch.h"

#include <QTimer>

#include <optional>

namespace Tavrin {

/// Finds the desktop's tray: StatusNotifierItem where it is served, XEmbed where only that is there.
///
/// The kind that is found first is kept for the process's life, because Qt 6.4 asks for a
/// StatusNotifierHost when the first QSystemTrayIcon is made and never again: after an icon in an XEmbed
/// tray every further one is for XEmbed, after one on the bus every further one is for the bus. A user who
/// changes from a panel with the one to a panel with only the other starts Tavrin anew.
class DesktopTrayPresence : public TrayPresence {
    Q_OBJECT

public:
    /// Connects to nothing before start().
    DesktopTrayPresence() = default;

    void start() override;

private:
    struct Tray {
        TrayKind kind = TrayKind::none;
        /// Tells a tray from the next one of its kind.
        QString instance;

        bool operator==(const Tray&) const = default;
    };

    void evaluate();
    Tray present() const;
    bool isXEmbedWanted() const;

    std::optional<StatusNotifierWatch> m_notifiers;
    TraySelectionWatch m_selection;
    QTimer m_patience;
    Tray m_tray;
    TrayKind m_keptKind = TrayKind::none;
};

} // namespace Tavrin
