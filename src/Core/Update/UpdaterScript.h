#pragma once

#include <QString>

namespace Tavrin {

/// Name of the downloaded archive in the user's temporary folder.
inline constexpr QStringView updateArchiveName = u"Tavrin-Update.zip";
/// Name of the updater script beside it.
inline constexpr QStringView updaterScriptName = u"tavrin_updater.sh";

/// What the updater script says differently on different systems.
struct UpdaterTarget {
    /// Path of the installed bundle.
    QString destination;
    /// Takes off the bundle what the system puts on files from the network; empty where it puts nothing.
    QString clearCommand;
    /// Starts the bundle and returns.
    QString openCommand;
};

/// The target on the system that the bundle's form comes from.
UpdaterTarget referenceUpdaterTarget();

/// The script, for bash, that waits for the end of the program, puts the bundle of the archive in the place
/// of the installed one and starts it. An archive without a bundle changes nothing. No line break follows
/// the last line. Paths are inserted as they are, between double quotes: see isSafeInUpdaterScript().
QString updaterScript(const UpdaterTarget& target, const QString& archive);

/// Whether the script means this path when it says it: whether it is free of what a shell looks for between
/// double quotes.
bool isSafeInUpdaterScript(const QString& path);

} // namespace Tavrin
