#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace Tavrin {

/// What the user has chosen one application for, whichever it is.
enum class DefaultRole {
    none,
    browser,
    fileManager,
    textEditor,
    terminal,
    mail,
    calendar,
    documentViewer,
    imageViewer,
    videoPlayer,
    musicPlayer,
};

/// What an application of another desktop is here: the user's choice for its role where it has one,
/// else the first of these desktop entries that is installed, else the user's choice for what it is a
/// kind of.
struct ApplicationAlias {
    DefaultRole role = DefaultRole::none;
    QStringList desktopIds;
    DefaultRole lastResort = DefaultRole::none;
};

/// The counterpart of a bundle identifier, ignoring case.
std::optional<ApplicationAlias> aliasOfIdentifier(QStringView bundleIdentifier);

/// The counterpart of an application by its name in its application folder, ignoring case.
std::optional<ApplicationAlias> aliasOfName(QStringView name);

} // namespace Tavrin
