#pragma once

#include "Core/Model/ActionType.h"
#include "Platform/Linux/SystemActions/Desktop.h"

#include <QByteArrayList>
#include <array>
#include <chrono>
#include <span>

namespace Tavrin {

/// Something that must be there for a means to be used.
struct Need {
    enum class Kind {
        nothing,
        program, ///< `name` is in $PATH.
        running, ///< `name` is owned on the session bus.
        startable, ///< `name` is owned on the session bus, or can be started there.
        systemService, ///< `name` is owned on the system bus.
        setting, ///< `name` is a schema and a key, a space between them.
        variable, ///< `name` is NAME=value, or NAME for any value but none.
        displayPower, ///< The X server can turn the display off.
    };
    Kind kind = Kind::nothing;
    const char* name = "";
};

/// One way to carry out an action.
struct Means {
    enum class Tool {
        script, ///< `script`, for zsh, behind SystemActionScripts::sharedFunctions.
        region, ///< The same; its $1 is the file that the picture of a region goes to.
        displayPower, ///< The X server's own power control.
        volume, ///< The sound server.
        impossible, ///< Nothing can; `script` is the line that tells the user so.
    };
    /// How long a tool may take; no limit for one that waits for the user.
    static constexpr std::chrono::seconds usualLimit{5};
    static constexpr std::chrono::seconds unlimited{0};

    SystemActionType action;
    Desktops desktops;
    /// What the documents call it; unique.
    const char* name;
    std::array<Need, 3> needs;
    /// What it does, for the documents.
    const char* effect;
    Tool tool = Tool::script;
    const char* script = "";
    std::chrono::seconds limit = usualLimit;
};

/// The whole table: for an action on a desktop, the first row whose needs are there is used.
std::span<const Means> systemActionTable();

/// True if everything that the means needs is there.
bool isThere(const Means& means, Surroundings& surroundings);

/// The means for the action here and now; null if there is none.
const Means* chooseMeans(SystemActionType action, Surroundings& surroundings);

/// What would have served, were it there: a name for each means for the action on the desktop.
QByteArrayList missingNeeds(SystemActionType action, Surroundings& surroundings);

/// The need in words that a user can look for.
QByteArray describe(const Need& need);

} // namespace Tavrin
