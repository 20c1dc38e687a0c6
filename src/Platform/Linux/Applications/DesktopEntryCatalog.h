#pragma once

#include "Core/Applications/ApplicationCatalog.h"
#include "Platform/Linux/Applications/IconTheme.h"

namespace Tavrin {

struct DesktopEntry;

/// The applications of a Linux desktop: desktop entries, and on the user's word also executables and
/// AppImages. Any thread.
class DesktopEntryCatalog : public ApplicationCatalog {
public:
    /// Those of the system and of the user.
    DesktopEntryCatalog();
    /// Those of other folders, as a desktop of these names shows them, with the pictures of other themes.
    DesktopEntryCatalog(QStringList folders, QStringList desktopNames, IconThemeSource icons);

    QStringList folders() const override;
    QString suffix() const override;
    QStringList contents(const QString& folder) const override;
    ApplicationInformation information(const QString& path) const override;
    QImage icon(const QString& name, int pixels) const override;

private:
    bool isListed(const DesktopEntry& entry) const;

    QStringList m_folders;
    QStringList m_desktopNames;
    IconThemes m_icons;
};

} // namespace Tavrin
