#pragma once

#include <QString>

namespace Tavrin::TrayMenuText {

/// Length, in UTF-16 units, beyond which a title is shortened: about 700 pixels of menu in usual fonts.
inline constexpr qsizetype longestTitle = 80;

/// A title on one line: what would break the line or the menu's columns (line breaks, tabs, other control
/// characters) becomes a space, one for a whole run. Beyond `longestTitle` the text before a
/// closing " (...)", or its end where there is none, gives way to "…". Pure.
QString singleLine(const QString& title);

/// `text` so that a QAction painted by Qt shows it letter by letter. Pure.
QString forWidget(const QString& text);

/// `text` so that, once Qt has turned a QAction's mnemonic into com.canonical.dbusmenu's, a tray's host
/// shows it letter by letter. The one exception known: the GTK library behind xfce4-panel 4.18 resolves
/// underscores twice, so that they are lost there; no label is right for both readings. Pure.
QString forDBusMenu(const QString& text);

} // namespace Tavrin::TrayMenuText
