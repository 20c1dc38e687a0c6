#pragma once

#include "Core/Model/ActionType.h"

#include <array>

namespace Tavrin::Testing {

/// How a row of the table of system actions was proven, and by which test.
struct SystemActionProof {
    enum class Kind {
        realProgram, ///< The program that users have did it.
        mockService, ///< A service of the test's own, on a private bus, was asked for it.
        standIn, ///< A program of the test's own was started with these arguments.
    };

    SystemActionType action;
    /// The name of the row's means.
    const char* means;
    Kind kind;
    /// LAYER.name, as ctest has it: desktop.X is tests/desktop/XTest.cpp, e2e.x is tests/e2e/test_x.py and
    /// desktops.x is tests/desktops/test_x.py.
    const char* test;
};

inline constexpr auto realProgram = SystemActionProof::Kind::realProgram;
inline constexpr auto mockService = SystemActionProof::Kind::mockService;
inline constexpr auto standIn = SystemActionProof::Kind::standIn;

/// Whoever proves a row in another way adds a line here, and has docs/system-actions.md written anew.
inline constexpr std::array systemActionProofs{
    SystemActionProof{
        SystemActionType::lockScreen, "logind-lock", mockService, "desktop.SystemActionsLogind"},
    SystemActionProof{
        SystemActionType::lockScreen, "gnome-screensaver", mockService, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::lockScreen, "xflock4", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::lockScreen, "mate-screensaver", standIn, "desktop.SystemActionCells"},
    SystemActionProof{
        SystemActionType::lockScreen, "cinnamon-screensaver", standIn, "desktop.SystemActionCells"},
    SystemActionProof{
        SystemActionType::lockScreen, "freedesktop-screensaver", mockService, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::lockScreen, "xdg-screensaver", standIn, "desktop.SystemActionCells"},

    SystemActionProof{
        SystemActionType::sleepDisplay, "mutter-power", mockService, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::sleepDisplay, "sway-dpms", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::sleepDisplay, "dpms", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::sleepDisplay, "dpms", realProgram, "e2e.system_actions"},
    SystemActionProof{SystemActionType::sleepDisplay, "kscreen-doctor", standIn, "desktop.SystemActionCells"},

    SystemActionProof{
        SystemActionType::sleepMac, "logind-suspend", mockService, "desktop.SystemActionsLogind"},

    SystemActionProof{
        SystemActionType::toggleDarkMode, "plasma-colors", standIn, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleDarkMode, "xfce-theme", realProgram, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleDarkMode, "mate-theme", standIn, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleDarkMode, "cinnamon-theme", standIn, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleDarkMode, "color-scheme", realProgram, "desktop.SystemActionSettings"},
    SystemActionProof{SystemActionType::toggleDarkMode, "color-scheme", realProgram, "e2e.system_actions"},

    SystemActionProof{SystemActionType::toggleMute, "volume", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::toggleMute, "volume", realProgram, "e2e.system_actions"},
    SystemActionProof{SystemActionType::volumeUp, "volume", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::volumeUp, "volume", realProgram, "e2e.system_actions"},
    SystemActionProof{SystemActionType::volumeDown, "volume", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::volumeDown, "volume", realProgram, "e2e.system_actions"},

    SystemActionProof{SystemActionType::emptyTrash, "gio-trash", realProgram, "desktop.SystemActionTrash"},
    SystemActionProof{SystemActionType::emptyTrash, "ktrash6", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::emptyTrash, "ktrash5", standIn, "desktop.SystemActionCells"},

    SystemActionProof{
        SystemActionType::toggleHiddenFiles, "nautilus-hidden", standIn, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleHiddenFiles, "dolphin-hidden", mockService, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleHiddenFiles, "thunar-hidden", standIn, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleHiddenFiles, "caja-hidden", standIn, "desktop.SystemActionSettings"},
    SystemActionProof{
        SystemActionType::toggleHiddenFiles, "nemo-hidden", standIn, "desktop.SystemActionSettings"},

    SystemActionProof{
        SystemActionType::screenshotToClipboard, "gnome-screenshot", standIn, "desktop.SystemActionRegion"},
    SystemActionProof{
        SystemActionType::screenshotToClipboard, "spectacle", standIn, "desktop.SystemActionRegion"},
    SystemActionProof{SystemActionType::screenshotToClipboard, "xfce4-screenshooter", standIn,
        "desktop.SystemActionRegion"},
    SystemActionProof{SystemActionType::screenshotToClipboard, "grim", standIn, "desktop.SystemActionRegion"},
    SystemActionProof{SystemActionType::screenshotToClipboard, "maim", standIn, "desktop.SystemActionRegion"},
    SystemActionProof{
        SystemActionType::screenshotToClipboard, "flameshot", standIn, "desktop.SystemActionRegion"},

    SystemActionProof{
        SystemActionType::openMissionControl, "shell-overview", mockService, "desktop.SystemActionCells"},
    SystemActionProof{
        SystemActionType::openMissionControl, "kwin-overview", mockService, "desktop.SystemActionCells"},
    SystemActionProof{
        SystemActionType::openMissionControl, "cinnamon-expo", mockService, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::openMissionControl, "rofi", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::openMissionControl, "rofi", standIn, "e2e.system_actions"},

    SystemActionProof{
        SystemActionType::restartFinder, "nautilus-restart", standIn, "desktop.SystemActionRestart"},
    SystemActionProof{
        SystemActionType::restartFinder, "dolphin-restart", mockService, "desktop.SystemActionRestart"},
    SystemActionProof{
        SystemActionType::restartFinder, "thunar-restart", standIn, "desktop.SystemActionRestart"},
    SystemActionProof{
        SystemActionType::restartFinder, "caja-restart", standIn, "desktop.SystemActionRestart"},
    SystemActionProof{
        SystemActionType::restartFinder, "nemo-restart", standIn, "desktop.SystemActionRestart"},

    SystemActionProof{SystemActionType::restartDock, "gnome-wayland", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::restartDock, "gnome-shell", standIn, "desktop.SystemActionCells"},
    SystemActionProof{
        SystemActionType::restartDock, "plasmashell", mockService, "desktop.SystemActionRestart"},
    SystemActionProof{SystemActionType::restartDock, "xfce-panel", standIn, "desktop.SystemActionRestart"},
    SystemActionProof{
        SystemActionType::restartDock, "xfce-panel-start", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::restartDock, "mate-panel", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::restartDock, "cinnamon", standIn, "desktop.SystemActionCells"},
    SystemActionProof{SystemActionType::restartDock, "bars", standIn, "desktop.SystemActionCells"},

    // On whole desktops; their last results are in docs/desktops.md.
    SystemActionProof{SystemActionType::toggleDarkMode, "xfce-theme", realProgram, "desktops.xfce"},
    SystemActionProof{SystemActionType::emptyTrash, "gio-trash", realProgram, "desktops.xfce"},
    SystemActionProof{SystemActionType::toggleHiddenFiles, "thunar-hidden", realProgram, "desktops.xfce"},
    SystemActionProof{
        SystemActionType::screenshotToClipboard, "xfce4-screenshooter", realProgram, "desktops.xfce"},
    SystemActionProof{SystemActionType::openMissionControl, "rofi", realProgram, "desktops.xfce"},
    SystemActionProof{SystemActionType::restartFinder, "thunar-restart", realProgram, "desktops.xfce"},
    SystemActionProof{SystemActionType::restartDock, "xfce-panel", realProgram, "desktops.xfce"},
    SystemActionProof{SystemActionType::toggleDarkMode, "mate-theme", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::emptyTrash, "gio-trash", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::toggleHiddenFiles, "caja-hidden", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::screenshotToClipboard, "maim", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::openMissionControl, "rofi", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::restartFinder, "caja-restart", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::restartDock, "mate-panel", realProgram, "desktops.mate"},
    SystemActionProof{SystemActionType::toggleDarkMode, "cinnamon-theme", realProgram, "desktops.cinnamon"},
    SystemActionProof{SystemActionType::emptyTrash, "gio-trash", realProgram, "desktops.cinnamon"},
    SystemActionProof{SystemActionType::toggleHiddenFiles, "nemo-hidden", realProgram, "desktops.cinnamon"},
    SystemActionProof{SystemActionType::screenshotToClipboard, "maim", realProgram, "desktops.cinnamon"},
    SystemActionProof{
        SystemActionType::openMissionControl, "cinnamon-expo", realProgram, "desktops.cinnamon"},
    SystemActionProof{SystemActionType::restartFinder, "nemo-restart", realProgram, "desktops.cinnamon"},
    SystemActionProof{SystemActionType::restartDock, "cinnamon", realProgram, "desktops.cinnamon"},
    SystemActionProof{SystemActionType::toggleDarkMode, "color-scheme", realProgram, "desktops.gnome"},
    SystemActionProof{SystemActionType::emptyTrash, "gio-trash", realProgram, "desktops.gnome"},
    SystemActionProof{SystemActionType::toggleHiddenFiles, "nautilus-hidden", realProgram, "desktops.gnome"},
    SystemActionProof{
        SystemActionType::screenshotToClipboard, "gnome-screenshot", realProgram, "desktops.gnome"},
    SystemActionProof{SystemActionType::openMissionControl, "shell-overview", realProgram, "desktops.gnome"},
    SystemActionProof{SystemActionType::restartFinder, "nautilus-restart", realProgram, "desktops.gnome"},
    SystemActionProof{SystemActionType::restartDock, "gnome-shell", realProgram, "desktops.gnome"},
    SystemActionProof{SystemActionType::sleepDisplay, "mutter-power", realProgram, "desktops.gnome_wayland"},
    SystemActionProof{SystemActionType::restartDock, "gnome-wayland", realProgram, "desktops.gnome_wayland"},
    SystemActionProof{SystemActionType::toggleDarkMode, "plasma-colors", realProgram, "desktops.plasma"},
    SystemActionProof{SystemActionType::emptyTrash, "gio-trash", realProgram, "desktops.plasma"},
    SystemActionProof{SystemActionType::toggleHiddenFiles, "dolphin-hidden", realProgram, "desktops.plasma"},
    SystemActionProof{SystemActionType::screenshotToClipboard, "spectacle", realProgram, "desktops.plasma"},
    SystemActionProof{SystemActionType::openMissionControl, "kwin-overview", realProgram, "desktops.plasma"},
    SystemActionProof{SystemActionType::restartFinder, "dolphin-restart", realProgram, "desktops.plasma"},
    SystemActionProof{SystemActionType::restartDock, "plasmashell", realProgram, "desktops.plasma"},
};

} // namespace Tavrin::Testing
