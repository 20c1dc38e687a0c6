#pragma once

#include "Core/Storage/LoginItem.h"

namespace Tavrin {

/// Start at login through an autostart entry of the user (XDG Desktop Application Autostart). The
/// entry's presence is the system's status. Main thread.
class XdgAutostart : public LoginItem {
public:
    /// `executable` is the absolute path that the entry will start.
    XdgAutostart(const QString& configHome, const QString& executable);

    bool isEnabled() const override;
    std::optional<QString> registerItem() override;
    std::optional<QString> unregisterItem() override;

private:
    QString m_entryPath;
    QString m_executable;
};

/// `path` as the first word of a desktop entry's Exec line (Desktop Entry Specification, quoting).
QString quotedForExec(const QString& path);

/// True unless the entry's text switches it off (Hidden=true, X-GNOME-Autostart-enabled=false).
bool isActiveAutostartEntry(const QByteArray& entry);

} // namespace Tavrin
