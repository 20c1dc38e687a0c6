#include "Platform/Linux/SystemActions/SystemActionTable.h"

#include "Platform/Linux/SystemActions/SystemActionScripts.h"

#include <algorithm>

namespace Tavrin {

using namespace SystemActionScripts;

namespace {

using Kind = Need::Kind;
using Tool = Means::Tool;
using enum SystemActionType;

constexpr Desktops gnome = Desktop::gnome;
constexpr Desktops plasma = Desktop::plasma;
constexpr Desktops xfce = Desktop::xfce;
constexpr Desktops mate = Desktop::mate;
constexpr Desktops cinnamon = Desktop::cinnamon;
constexpr Desktops sway = Desktop::sway;
constexpr Desktops other = Desktop::other;
constexpr Desktops all = gnome | plasma | xfce | mate | cinnamon | sway | other;

constexpr Need program(const char* name)
{
    return {Kind::program, name};
}
constexpr Need running(const char* name)
{
    return {Kind::running, name};
}
constexpr Need startable(const char* name)
{
    return {Kind::startable, name};
}
constexpr Need setting(const char* name)
{
    return {Kind::setting, name};
}
constexpr Need variable(const char* name)
{
    return {Kind::variable, name};
}
constexpr Need logind{Kind::systemService, "org.freedesktop.login1"};

constexpr Need displayPower{Kind::displayPower, "DPMS"};

using std::chrono::seconds;
/// The file manager gets three of them to quit before it is ended.
constexpr seconds restartLimit{15};
/// The system may ask the user for a password meanwhile.
constexpr seconds passwordLimit{60};
/// A trash with a hundred thousand files takes minutes.
constexpr seconds trashLimit{600};

// Each desktop has a file manager of its own. On the others it is the one that runs, or else one that is
// installed.
constexpr Desktops elsewhere = sway | other;

constexpr Means whereRunning(Means means, const char* busName)
{
    means.desktops = elsewhere;
    means.needs.back() = running(busName);
    return means;
}

constexpr Means whereInstalled(Means means)
{
    means.desktops = elsewhere;
    return means;
}

constexpr auto nautilusName = "org.gnome.Nautilus";
constexpr auto dolphinNames = "org.kde.dolphin-*";
constexpr auto thunarName = "org.xfce.Thunar";
constexpr auto cajaName = "org.mate.Caja";
constexpr auto nemoName = "org.Nemo";

constexpr Means nautilusHidden{toggleHiddenFiles, gnome, "nautilus-hidden",
    {program("nautilus"), setting("org.gtk.gtk4.Settings.FileChooser show-hidden")},
    "shows hidden files in Files, or no longer", Tool::script,
    "toggle_setting org.gtk.gtk4.Settings.FileChooser show-hidden"};
constexpr Means dolphinHidden{toggleHiddenFiles, plasma, "dolphin-hidden", {program("dolphin")},
    "shows hidden files in Dolphin, or no longer", Tool::script, toggleDolphinHidden};
constexpr Means thunarHidden{toggleHiddenFiles, xfce, "thunar-hidden",
    {program("thunar"), program("xfconf-query")},
    "shows hidden files in Thunar's windows from the next one on, or no longer", Tool::script,
    toggleThunarHidden};
constexpr Means cajaHidden{toggleHiddenFiles, mate, "caja-hidden",
    {setting("org.mate.caja.preferences show-hidden-files")}, "shows hidden files in Caja, or no longer",
    Tool::script, "toggle_setting org.mate.caja.preferences show-hidden-files"};
constexpr Means nemoHidden{toggleHiddenFiles, cinnamon, "nemo-hidden",
    {setting("org.nemo.preferences show-hidden-files")},
    "shows hidden files in Nemo's windows from the next one on, or no longer", Tool::script,
    "toggle_setting org.nemo.preferences show-hidden-files"};

constexpr Means nautilusRestart{restartFinder, gnome, "nautilus-restart", {program("nautilus")},
    "quits Files and starts it again", Tool::script,
    "leave org.gnome.Nautilus timeout 3 nautilus -q; detach nautilus", restartLimit};
constexpr Means dolphinRestart{restartFinder, plasma, "dolphin-restart", {program("dolphin")},
    "quits Dolphin and starts it again", Tool::script, restartDolphin, restartLimit};
constexpr Means thunarRestart{restartFinder, xfce, "thunar-restart", {program("thunar")},
    "quits Thunar and starts it again", Tool::script,
    "leave org.xfce.Thunar timeout 3 thunar -q; detach thunar", restartLimit};
constexpr Means cajaRestart{restartFinder, mate, "caja-restart", {program("caja")},
    "quits Caja and starts it again", Tool::script, "leave org.mate.Caja timeout 3 caja -q; detach caja",
    restartLimit};
constexpr Means nemoRestart{restartFinder, cinnamon, "nemo-restart", {program("nemo")},
    "quits Nemo and starts it again", Tool::script, "leave org.Nemo timeout 3 nemo -q; detach nemo",
    restartLimit};

constexpr Means regionTool(Desktops desktops, const char* name, std::array<Need, 3> needs, const char* script)
{
    return {screenshotToClipboard, desktops, name, needs,
        "lets the user choose a region and puts its picture on the clipboard", Tool::region, script,
        Means::unlimited};
}

constexpr std::array<Need, 3> grimNeeds{variable("WAYLAND_DISPLAY"), program("grim"), program("slurp")};
constexpr auto grimScript = "area=$(slurp) && grim -g $area $1";

constexpr std::array table{
    Means{
        lockScreen, all, "logind-lock", {logind}, "locks the login session", Tool::script, lockLoginSession},
    Means{lockScreen, gnome, "gnome-screensaver", {running("org.gnome.ScreenSaver")},
        "locks through GNOME's screen saver", Tool::script,
        "bus org.gnome.ScreenSaver /org/gnome/ScreenSaver org.gnome.ScreenSaver.Lock"},
    Means{lockScreen, xfce, "xflock4", {program("xflock4")}, "runs xflock4", Tool::script, "xflock4"},
    Means{lockScreen, mate, "mate-screensaver", {program("mate-screensaver-command")},
        "locks through MATE's screen saver", Tool::script, "mate-screensaver-command --lock"},
    Means{lockScreen, cinnamon, "cinnamon-screensaver", {program("cinnamon-screensaver-command")},
        "locks through Cinnamon's screen saver", Tool::script, "cinnamon-screensaver-command --lock"},
    Means{lockScreen, all, "freedesktop-screensaver", {running("org.freedesktop.ScreenSaver")},
        "locks through the desktop's screen saver", Tool::script,
        "bus org.freedesktop.ScreenSaver /org/freedesktop/ScreenSaver org.freedesktop.ScreenSaver.Lock"},
    Means{lockScreen, all, "xdg-screensaver", {program("xdg-screensaver")}, "runs xdg-screensaver lock",
        Tool::script, "xdg-screensaver lock"},

    Means{sleepDisplay, gnome | other, "mutter-power", {running("org.gnome.Mutter.DisplayConfig")},
        "sets Mutter's PowerSaveMode to off", Tool::script,
        "bus org.gnome.Mutter.DisplayConfig /org/gnome/Mutter/DisplayConfig"
        " org.freedesktop.DBus.Properties.Set org.gnome.Mutter.DisplayConfig PowerSaveMode '<3>'"},
    Means{sleepDisplay, sway, "sway-dpms", {program("swaymsg")}, "turns every output off", Tool::script,
        "swaymsg 'output * dpms off'"},
    Means{sleepDisplay, all, "dpms", {displayPower}, "has the X server turn the display off",
        Tool::displayPower},
    Means{sleepDisplay, plasma, "kscreen-doctor", {program("kscreen-doctor")}, "turns every output off",
        Tool::script, "kscreen-doctor --dpms off"},

    Means{sleepMac, all, "logind-suspend", {logind}, "suspends; the system may ask for a password",
        Tool::script,
        "gdbus call --system --timeout 55 --dest org.freedesktop.login1 --object-path /org/freedesktop/login1"
        " --method org.freedesktop.login1.Manager.Suspend true",
        passwordLimit},

    Means{toggleDarkMode, plasma, "plasma-colors", {program("plasma-apply-colorscheme")},
        "changes to the light or dark sibling of the color scheme", Tool::script, togglePlasmaColors},
    Means{toggleDarkMode, xfce, "xfce-theme", {program("xfconf-query")},
        "changes to the light or dark sibling of the theme, if it is installed", Tool::script,
        toggleXfceTheme},
    Means{toggleDarkMode, mate, "mate-theme", {setting("org.mate.interface gtk-theme")},
        "changes to the light or dark sibling of the theme, if it is installed", Tool::script,
        "toggle_theme_setting org.mate.interface gtk-theme"},
    Means{toggleDarkMode, cinnamon, "cinnamon-theme", {setting("org.cinnamon.desktop.interface gtk-theme")},
        "changes to the light or dark sibling of the theme, if it is installed", Tool::script,
        "toggle_theme_setting org.cinnamon.desktop.interface gtk-theme"},
    Means{toggleDarkMode, gnome | sway | other, "color-scheme",
        {setting("org.gnome.desktop.interface color-scheme")}, "prefers dark, or no longer", Tool::script,
        toggleColorScheme},

    Means{
        toggleMute, all, "volume", {}, "mutes the sound server's default output, or no longer", Tool::volume},
    Means{volumeUp, all, "volume", {}, "raises the default output by 10 of 100", Tool::volume},
    Means{volumeDown, all, "volume", {}, "lowers the default output by 10 of 100", Tool::volume},

    Means{emptyTrash, all, "gio-trash", {program("gio"), startable("org.gtk.vfs.Daemon")},
        "runs gio trash --empty", Tool::script, "gio trash --empty", trashLimit},
    Means{emptyTrash, plasma, "ktrash6", {program("ktrash6")}, "runs ktrash6 --empty", Tool::script,
        "ktrash6 --empty", trashLimit},
    Means{emptyTrash, plasma, "ktrash5", {program("ktrash5")}, "runs ktrash5 --empty", Tool::script,
        "ktrash5 --empty", trashLimit},

    nautilusHidden,
    dolphinHidden,
    thunarHidden,
    cajaHidden,
    nemoHidden,
    whereRunning(nautilusHidden, nautilusName),
    whereRunning(dolphinHidden, dolphinNames),
    whereRunning(thunarHidden, thunarName),
    whereRunning(cajaHidden, cajaName),
    whereRunning(nemoHidden, nemoName),
    whereInstalled(thunarHidden),
    whereInstalled(dolphinHidden),
    whereInstalled(nautilusHidden),
    whereInstalled(cajaHidden),
    whereInstalled(nemoHidden),

    regionTool(gnome, "gnome-screenshot", {program("gnome-screenshot")}, "gnome-screenshot --area --file=$1"),
    regionTool(plasma, "spectacle", {program("spectacle")},
        "spectacle --background --nonotify --region --output $1"),
    regionTool(xfce, "xfce4-screenshooter", {program("xfce4-screenshooter")},
        "xfce4-screenshooter --region --save $1"),
    regionTool(all, "grim", grimNeeds, grimScript),
    regionTool(all, "maim", {variable("DISPLAY"), program("maim")}, "maim --select $1"),
    regionTool(all, "flameshot", {program("flameshot")}, "flameshot gui --raw >$1"),
    regionTool(all, "gnome-screenshot", {program("gnome-screenshot")}, "gnome-screenshot --area --file=$1"),
    regionTool(all, "xfce4-screenshooter", {program("xfce4-screenshooter")},
        "xfce4-screenshooter --region --save $1"),
    regionTool(
        all, "spectacle", {program("spectacle")}, "spectacle --background --nonotify --region --output $1"),

    Means{openMissionControl, gnome, "shell-overview", {running("org.gnome.Shell")},
        "opens GNOME's overview, or closes it", Tool::script, toggleShellOverview},
    Means{openMissionControl, plasma, "kwin-overview",
        {running("org.kde.kglobalaccel"), running("org.kde.KWin")}, "opens KWin's overview, or closes it",
        Tool::script,
        "bus org.kde.kglobalaccel /component/kwin org.kde.kglobalaccel.Component.invokeShortcut Overview"},
    Means{openMissionControl, cinnamon, "cinnamon-expo", {running("org.Cinnamon")}, "opens Cinnamon's Expo",
        Tool::script, "bus org.Cinnamon /org/Cinnamon org.Cinnamon.ShowExpo"},
    Means{openMissionControl, all, "rofi", {program("rofi")}, "lists the windows with rofi", Tool::script,
        "detach rofi -show window"},

    nautilusRestart,
    dolphinRestart,
    thunarRestart,
    cajaRestart,
    nemoRestart,
    whereRunning(nautilusRestart, nautilusName),
    whereRunning(dolphinRestart, dolphinNames),
    whereRunning(thunarRestart, thunarName),
    whereRunning(cajaRestart, cajaName),
    whereRunning(nemoRestart, nemoName),
    whereInstalled(thunarRestart),
    whereInstalled(dolphinRestart),
    whereInstalled(nautilusRestart),
    whereInstalled(cajaRestart),
    whereInstalled(nemoRestart),

    Means{restartDock, gnome, "gnome-wayland", {variable("XDG_SESSION_TYPE=wayland")},
        "is not possible, and one line says so: the shell is the session itself", Tool::impossible,
        "GNOME trên Wayland không khởi động lại được thanh Dock: nó chính là phiên làm việc"},
    Means{restartDock, gnome, "gnome-shell", {program("gnome-shell")}, "replaces GNOME Shell", Tool::script,
        "detach gnome-shell --replace"},
    Means{restartDock, plasma, "plasmashell", {program("plasmashell")},
        "quits plasmashell and starts it again", Tool::script, restartPlasmaShell, restartLimit},
    Means{restartDock, xfce | other, "xfce-panel", {program("xfce4-panel"), running("org.xfce.Panel")},
        "restarts xfce4-panel", Tool::script, restartXfcePanel, restartLimit},
    Means{restartDock, xfce, "xfce-panel-start", {program("xfce4-panel")}, "starts xfce4-panel", Tool::script,
        "detach xfce4-panel"},
    Means{restartDock, mate, "mate-panel", {program("mate-panel")}, "replaces mate-panel", Tool::script,
        "detach mate-panel --replace"},
    Means{restartDock, other, "mate-panel", {program("mate-panel"), running("org.mate.Panel")},
        "replaces mate-panel", Tool::script, "detach mate-panel --replace"},
    Means{restartDock, cinnamon, "cinnamon", {program("cinnamon")}, "replaces Cinnamon", Tool::script,
        "detach cinnamon --replace"},
    Means{restartDock, sway | other, "bars", {program("pkill")},
        "has tint2, waybar and polybar start anew; without any, has sway read its configuration again",
        Tool::script, restartBars},
};

constexpr const char* title(Need::Kind kind)
{
    switch (kind) {
    case Kind::running:
    case Kind::startable:
    case Kind::systemService:
        return "D-Bus ";
    case Kind::setting:
        return "GSettings ";
    case Kind::nothing:
    case Kind::program:
    case Kind::variable:
    case Kind::displayPower:
        return "";
    }
    return "";
}

bool isMet(const Need& need, Surroundings& surroundings)
{
    const QByteArray name(need.name);
    switch (need.kind) {
    case Kind::nothing:
        return true;
    case Kind::program:
        return surroundings.hasProgram(need.name);
    case Kind::running:
        return surroundings.isOnSessionBus(need.name);
    case Kind::startable:
        return surroundings.isOnSessionBus(need.name) || surroundings.canStartOnSessionBus(need.name);
    case Kind::systemService:
        return surroundings.isOnSystemBus(need.name);
    case Kind::setting: {
        const qsizetype space = name.indexOf(' ');
        return surroundings.hasSetting(name.left(space), name.sliced(space + 1));
    }
    case Kind::variable: {
        const qsizetype equals = name.indexOf('=');
        if (equals < 0)
            return !surroundings.variable(need.name).isEmpty();
        return surroundings.variable(name.left(equals).constData()) == name.sliced(equals + 1);
    }
    case Kind::displayPower:
        return surroundings.hasDisplayPower();
    }
    return false;
}

bool isFor(const Means& means, SystemActionType action, Desktop desktop)
{
    return means.action == action && means.desktops.testFlag(desktop);
}

} // namespace

std::span<const Means> systemActionTable()
{
    return table;
}

bool isThere(const Means& means, Surroundings& surroundings)
{
    return std::all_of(
        means.needs.begin(), means.needs.end(), [&](const Need& need) { return isMet(need, surroundings); });
}

const Means* chooseMeans(SystemActionType action, Surroundings& surroundings)
{
    const Desktop desktop = runningDesktop(surroundings);
    const auto* means = std::find_if(table.begin(), table.end(), [&](const Means& candidate) {
        return isFor(candidate, action, desktop) && isThere(candidate, surroundings);
    });
    return means == table.end() ? nullptr : means;
}

QByteArrayList missingNeeds(SystemActionType action, Surroundings& surroundings)
{
    const Desktop desktop = runningDesktop(surroundings);
    QByteArrayList result;
    for (const Means& means : table) {
        if (!isFor(means, action, desktop))
            continue;
        const auto* missing = std::find_if(means.needs.begin(), means.needs.end(),
            [&](const Need& need) { return !isMet(need, surroundings); });
        if (missing == means.needs.end())
            continue;
        if (const QByteArray name = describe(*missing); !result.contains(name))
            result.append(name);
    }
    return result;
}

QByteArray describe(const Need& need)
{
    return title(need.kind) + QByteArray(need.name);
}

} // namespace Tavrin
