#include "Platform/Linux/SystemActions/Desktop.h"

#include <QByteArrayList>
#include <algorithm>
#include <vector>

namespace Tavrin {
namespace {

struct Signs {
    Desktop desktop;
    /// Its name in $XDG_CURRENT_DESKTOP.
    const char* name;
    /// Names on the session bus that only this desktop's programs own.
    std::array<const char*, 2> busNames;
};

constexpr std::array signsOfDesktops{
    Signs{Desktop::gnome, "GNOME", {"org.gnome.Shell", nullptr}},
    Signs{Desktop::plasma, "KDE", {"org.kde.plasmashell", "org.kde.KWin"}},
    Signs{Desktop::xfce, "XFCE", {"org.xfce.Panel", "org.xfce.SessionManager"}},
    Signs{Desktop::mate, "MATE", {"org.mate.Panel", "org.mate.SessionManager"}},
    Signs{Desktop::cinnamon, "X-Cinnamon", {"org.Cinnamon", nullptr}},
};

bool answers(const Signs& signs, Surroundings& surroundings)
{
    return std::any_of(signs.busNames.begin(), signs.busNames.end(),
        [&](const char* name) { return name && surroundings.isOnSessionBus(name); });
}

} // namespace

Desktop runningDesktop(Surroundings& surroundings)
{
    // Set by the compositor for the programs of its session, and nobody else.
    if (!surroundings.variable("SWAYSOCK").isEmpty())
        return Desktop::sway;
    std::vector<Signs> answering;
    std::copy_if(signsOfDesktops.begin(), signsOfDesktops.end(), std::back_inserter(answering),
        [&](const Signs& signs) { return answers(signs, surroundings); });
    if (answering.empty())
        return Desktop::other;
    const QByteArrayList named = surroundings.variable("XDG_CURRENT_DESKTOP").split(':');
    const auto match = std::find_if(
        answering.begin(), answering.end(), [&](const Signs& signs) { return named.contains(signs.name); });
    return match == answering.end() ? answering.front().desktop : match->desktop;
}

} // namespace Tavrin
