#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace Tavrin {

/// What the name of a desktop file ends with.
inline constexpr QStringView desktopEntrySuffix = u".desktop";

/// What looking an application up and telling its windows needs of its desktop entry
/// (Desktop Entry Specification 1.5).
struct DesktopEntry {
    /// The desktop file, absolute.
    QString path;
    /// File name without ".desktop".
    QString id;
    QString name;
    /// The name in the user's language; equal to `name` where there is no translation.
    QString localName;
    /// The name in Vietnamese; empty where there is no such translation.
    QString vietnameseName;
    /// The picture's name in an icon theme, or its absolute path.
    QString icon;
    /// StartupWMClass: the WM_CLASS its windows have; often not given.
    QString windowClass;
    /// Exec unquoted and without field codes; empty where there is none.
    QStringList commandLine;
    /// TryExec: a program without which the application counts as not installed; empty where none is named.
    QString tryExec;
    QStringList categories;
    /// Names of the only desktops that show the entry; empty for all.
    QStringList onlyShowIn;
    /// Names of desktops that do not show it.
    QStringList notShowIn;
    /// The entry counts as deleted.
    bool hidden = false;
    /// The entry is not meant for menus.
    bool noDisplay = false;
    /// The program runs in a terminal, whose windows are the terminal's.
    bool terminal = false;
    /// The program announces that it shows a window, and knows startup ids.
    bool startupNotify = false;
};

/// The entry of an application; nothing for other types and for what is no desktop entry. `path` only
/// names it, nothing is read from disk.
std::optional<DesktopEntry> parseDesktopEntry(const QString& path, const QByteArray& contents);

/// The same from the file at `path`; nothing unless that is a regular file. Reads the disk.
std::optional<DesktopEntry> readDesktopEntry(const QString& path);

/// The words of an Exec value: unquoted, field codes gone, "%%" as "%". Nothing if its quotes do not
/// match.
std::optional<QStringList> commandLineOf(const QString& exec);

} // namespace Tavrin
