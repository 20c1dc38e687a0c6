#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace Tavrin {

/// Whether a desktop's XSETTINGS ask for dark windows: by a dark theme (Net/ThemeName), or by the wish for
/// the dark variant of any theme (Gtk/ApplicationPreferDarkTheme). Nothing if they hold neither, or are not
/// what the XSETTINGS protocol (freedesktop.org, version 0.5) says they are. `property` is
/// _XSETTINGS_SETTINGS.
std::optional<bool> prefersDark(const QByteArray& property);

/// The icon theme that they name (Net/IconThemeName); empty if they name none, or are not what they should
/// be.
QString iconThemeName(const QByteArray& property);

} // namespace Tavrin
