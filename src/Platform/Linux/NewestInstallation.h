#pragma once

#include <QString>
#include <QStringList>

namespace Tavrin {

/// Where copies of the program are installed, as prefixes: the distribution's, which a package owns, and that
/// of the user with this home, which updates replace.
QStringList installationPrefixes(const QString& home);

/// Executable of the newest copy among `prefixes`, if that is newer than the one that `executable`, an
/// absolute path, belongs to. Empty if none is, and for an executable that belongs to no prefix: a build
/// that is being worked on stays itself. Looks at disks.
QString newerInstallation(const QString& executable, const QStringList& prefixes);

/// Goes on as the newest installed copy if that is not this one: a package cannot be replaced by an update,
/// and an update must not be lost at the next start because menus and the login item name the package's
/// program. To be called before anything is opened; returns if there is nothing newer.
void becomeNewestInstallation();

} // namespace Tavrin
